// SPDX-License-Identifier: MIT
// The recorder's status file: its content as a value, its watcher, and the tags in the recorder's messages.
#pragma once

#include <QFileSystemWatcher>
#include <QMetaType>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <memory>

/// One snapshot of the recorder's status file.
struct StructOstrelRecordStatus
{
    /// The value of SequenceNr that marks a status file as not yet valid.
    static constexpr quint32 InvalidSequenceNr = 0xFFFFFFFF;

    quint32 SequenceNr = 0;      ///< Raised by the recorder with each write.
    qint32 LastAction = 0;       ///< Code of the recorder's last action; carried, not interpreted.
    qint32 LastActionResult = 0; ///< Result code of that action; carried, not interpreted.
    QString Message;             ///< The recorder's last message, with its tags.

    friend bool operator==(const StructOstrelRecordStatus &, const StructOstrelRecordStatus &) = default;
};
Q_DECLARE_METATYPE(StructOstrelRecordStatus)

/// One row of the message tag table: how a message with this tag is classified.
struct StructMessageTag
{
    QString Tag;              ///< With its angle brackets, for example "<INFO>"; empty in the default row.
    quint32 Colour = 0;       ///< 0xRRGGBB
    quint32 SecondColour = 0; ///< 0xRRGGBB; 0 in every row.
    qint8 Priority = -128;    ///< Among several tags of a message the highest wins.
};

/// Watches the recorder's status file and emits one snapshot per burst of changes. GUI thread only.
class QOstrelRecordStatus : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    /// Watches nothing yet.
    QOstrelRecordStatus();
    ~QOstrelRecordStatus() override;

    /// Watches the file at `path`, which must exist, in place of the one watched before; false when it cannot
    /// be watched. An empty path ends the watch. A path equal to the last one watched changes nothing, also
    /// after the watch was ended.
    bool SetWatchFile(const QString &path);

    /// Puts an empty status file in the place of whatever is at `path`, so that there is one to watch and no
    /// status of an earlier recorder. Where the file system allows it, its time stamp lies a minute back.
    /// False when it cannot be made.
    [[nodiscard]] static bool CreateStatusFile(const QString &path);

    /// Reads the status file at `path`. True when it is a valid status with a message. Otherwise the snapshot
    /// holds what could be had: all zero and empty without a readable file, only SequenceNr when that is
    /// missing, invalid or not a number. A file above 1 MiB is no status file and counts as not readable.
    static bool ReadStatusFile(const QString &path, StructOstrelRecordStatus &snapshot);

    /// Removes every "<...>" from the message and returns the row of the tag with the highest priority (of
    /// several, the first in the message), or DefaultMessageTag. Takes time linear in the message's length.
    /// The row lives as long as the program.
    static const StructMessageTag &GetMessageTag(QString &message);

    /// The row of a message without a known tag.
    static const StructMessageTag &DefaultMessageTag();

signals:
    void Signal_FileChanged(const StructOstrelRecordStatus &snapshot);

public slots:
    /// The file at `path` changed: reads it when the delay that the first change of a burst started is over.
    void Slot_fileChanged(const QString &path);

    /// The delay is over: reads what changed and emits one snapshot.
    void Slot_fileChanged_delayed();

private:
    std::unique_ptr<QFileSystemWatcher> Watcher; ///< Null while nothing is watched.
    QString WatchedPath;
    qint32 Delay = 0; ///< Milliseconds; 0: a change is read at once.
    QStringList PendingPaths;
    StructOstrelRecordStatus Snapshot;
    QTimer DelayTimer;
};
