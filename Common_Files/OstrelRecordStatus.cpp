// SPDX-License-Identifier: MIT
#include "Common_Files/OstrelRecordStatus.h"

#include "Common_Files/FreshIniFile.h"

#include <QDateTime>
#include <QFile>

#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Lets the burst of changes that one rewrite of the file causes settle; milliseconds.
constexpr qint32 SettleDelay = 500;

/// LastAction of a status file that does not name one.
constexpr qint32 DefaultLastAction = 8;

const StructMessageTag DefaultTag;

const std::array<StructMessageTag, 7> MessageTags = {{
    {u"<INFO>"_s, 0x69BCC0, 0, 50},
    {u"<WARNING>"_s, 0xAEAF50, 0, 100},
    {u"<ERROR>"_s, 0xBE8383, 0, 127},
    {u"<GET>"_s, 0x000000, 0, 0},
    {u"<SEND>"_s, 0x000000, 0, 0},
    {u"<CONNECTING>"_s, 0x000000, 0, 0},
    {u"<WORK>"_s, 0x76B859, 0, 0},
}};

} // namespace

QOstrelRecordStatus::QOstrelRecordStatus()
{
    qRegisterMetaType<StructOstrelRecordStatus>();
    DelayTimer.setSingleShot(true);
    // A coarse timer may fire 5 % early, and bursts would then be read more often than promised.
    DelayTimer.setTimerType(Qt::PreciseTimer);
    connect(&DelayTimer, &QTimer::timeout, this, &QOstrelRecordStatus::Slot_fileChanged_delayed);
}

QOstrelRecordStatus::~QOstrelRecordStatus() = default;

bool QOstrelRecordStatus::SetWatchFile(const QString &path)
{
    PendingPaths.clear();
    Delay = SettleDelay;
    if (path.isEmpty()) {
        Watcher.reset();
        return true;
    }
    if (path == WatchedPath)
        return true;

    if (Watcher) {
        // removePaths() warns about an empty list.
        if (const QStringList files = Watcher->files(); !files.isEmpty())
            Watcher->removePaths(files);
        if (const QStringList directories = Watcher->directories(); !directories.isEmpty())
            Watcher->removePaths(directories);
    } else {
        Watcher = std::make_unique<QFileSystemWatcher>();
        if (!connect(Watcher.get(), &QFileSystemWatcher::fileChanged, this,
                     &QOstrelRecordStatus::Slot_fileChanged)) {
            Watcher.reset();
            return false;
        }
    }

    WatchedPath.clear();
    if (!Watcher->addPath(path))
        return false;
    WatchedPath = path;
    return true;
}

void QOstrelRecordStatus::Slot_fileChanged(const QString &path)
{
    if (Delay == 0) {
        ReadStatusFile(path, Snapshot);
        emit Signal_FileChanged(Snapshot);
        return;
    }
    if (!PendingPaths.contains(path))
        PendingPaths.append(path);
    // A running timer goes on: a recorder that writes all the time must not put the reading off for ever.
    if (!DelayTimer.isActive())
        DelayTimer.start(Delay);
}

void QOstrelRecordStatus::Slot_fileChanged_delayed()
{
    // Taken out before the signal: a receiver that runs an event loop may let in the next change, which must
    // stay.
    const QStringList paths = std::exchange(PendingPaths, {});
    for (const QString &path : paths)
        ReadStatusFile(path, Snapshot);
    emit Signal_FileChanged(Snapshot);
}

bool QOstrelRecordStatus::CreateStatusFile(const QString &path)
{
    QFile::remove(path);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return false;
    // On Windows Qt tells a change by the time stamp alone: a status written within the tick of the file
    // system's clock in which the file was made would go unnoticed.
    (void)file.setFileTime(QDateTime::currentDateTimeUtc().addSecs(-60), QFileDevice::FileModificationTime);
    return true;
}

bool QOstrelRecordStatus::ReadStatusFile(const QString &path, StructOstrelRecordStatus &snapshot)
{
    snapshot = {};
    const FreshIniFile status(path);
    const QString sequenceNr =
        status.value(u"SequenceNr"_s, StructOstrelRecordStatus::InvalidSequenceNr).toString();
    if (!status.isValid())
        return false;

    bool isNumber = false;
    snapshot.SequenceNr = sequenceNr.toUInt(&isNumber); // QVariant would cut a number above 32 bits silently
    if (!isNumber || snapshot.SequenceNr == StructOstrelRecordStatus::InvalidSequenceNr)
        return false;
    snapshot.LastAction = status.value(u"LastAction"_s, DefaultLastAction).toInt();
    snapshot.LastActionResult = status.value(u"LastActionResult"_s, 0).toInt();
    snapshot.Message = status.value(u"Message"_s).toString();
    return !snapshot.Message.isEmpty() && status.isValid();
}

const StructMessageTag &QOstrelRecordStatus::GetMessageTag(QString &message)
{
    const StructMessageTag *best = &DefaultTag;
    const QStringView text(message);
    QString stripped;
    qsizetype position = 0;
    // One pass: what stands before a tag holds no bracket, so the search goes on behind the tag.
    for (;;) {
        const qsizetype opening = text.indexOf(u'<', position);
        const qsizetype closing = text.indexOf(u'>', position);
        if (opening < 0 || closing < opening)
            break;
        const QStringView tag = text.sliced(opening, closing + 1 - opening);
        const auto row = std::find_if(MessageTags.begin(), MessageTags.end(),
                                      [tag](const StructMessageTag &known) { return known.Tag == tag; });
        // Strictly higher: on equal priority the tag found first stays.
        if (row != MessageTags.end() && row->Priority > best->Priority)
            best = &*row;
        stripped += text.sliced(position, opening - position);
        position = closing + 1;
    }
    if (position > 0) {
        stripped += text.sliced(position);
        message = stripped;
    }
    return *best;
}

const StructMessageTag &QOstrelRecordStatus::DefaultMessageTag()
{
    return DefaultTag;
}
