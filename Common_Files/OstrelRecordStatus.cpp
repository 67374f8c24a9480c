// SPDX-License-Identifier: MIT
#include "Common_Files/OstrelRecordStatus.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QTemporaryFile>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// Lets the burst of changes that one rewrite of the file causes settle; milliseconds.
constexpr qint32 SettleDelay = 500;

/// The recorder writes some hundred bytes. A file beyond this is not the recorder's, and parsing it would
/// hold up the GUI thread.
constexpr qint64 MaxStatusFileSize = 1024 * 1024;

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

/// The file's bytes at this moment; nothing when it cannot be read or is too large. Only regular files are
/// opened: opening a pipe would wait for its writer.
std::optional<QByteArray> ReadWhole(const QString &path)
{
    if (!QFileInfo(path).isFile())
        return std::nullopt;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray content = file.read(MaxStatusFileSize + 1);
    if (file.error() != QFileDevice::NoError || content.size() > MaxStatusFileSize)
        return std::nullopt;
    return content;
}

/// Puts the content into the temporary file; false when that fails.
bool WriteCopy(QTemporaryFile &copy, const QByteArray &content)
{
    return copy.open() && copy.write(content) == content.size() && copy.flush();
}

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
    return QFile(path).open(QIODevice::WriteOnly | QIODevice::NewOnly);
}

bool QOstrelRecordStatus::ReadStatusFile(const QString &path, StructOstrelRecordStatus &snapshot)
{
    snapshot = {};
    const std::optional<QByteArray> content = ReadWhole(path);
    if (!content)
        return false;

    // QSettings keeps parsed files and parses one again only when its size or time stamp differ. The recorder
    // can rewrite the file with the same size within one tick of the file system's clock, so QSettings never
    // sees the file itself but a copy under a fresh name. Without room for a copy a late status is better
    // than none.
    QTemporaryFile copy(QDir::tempPath() + u"/rfrecordstatus-XXXXXX.ini"_s);
    const QSettings settings(WriteCopy(copy, *content) ? copy.fileName() : path, QSettings::IniFormat);
    // QSettings parses, and notices errors, on the first access to a key.
    const QString sequenceNr =
        settings.value(u"SequenceNr"_s, StructOstrelRecordStatus::InvalidSequenceNr).toString();
    if (settings.status() != QSettings::NoError)
        return false;

    bool isNumber = false;
    snapshot.SequenceNr = sequenceNr.toUInt(&isNumber); // QVariant would cut a number above 32 bits silently
    if (!isNumber || snapshot.SequenceNr == StructOstrelRecordStatus::InvalidSequenceNr)
        return false;
    snapshot.LastAction = settings.value(u"LastAction"_s, DefaultLastAction).toInt();
    snapshot.LastActionResult = settings.value(u"LastActionResult"_s, 0).toInt();
    snapshot.Message = settings.value(u"Message"_s).toString();
    return !snapshot.Message.isEmpty() && settings.status() == QSettings::NoError;
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
