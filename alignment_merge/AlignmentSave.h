// SPDX-License-Identifier: MIT
// Takes the alignment tables that the user chose over into the drivers' files: what is to be written, and the
// writing.
#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <cstdint>
#include <functional>
#include <optional>

class AlignmentRowList;
class AlignStore;

/// What the user chose for one row.
struct AlignmentChoice
{
    QString driver; // display name
    QString hardwareId;
    bool checked = false;
};

/// One table to be taken from a file. Dates are seconds since 1970-01-01 00:00:00 UTC.
struct AlignmentPick
{
    QString hardwareId;
    std::uint64_t alignedAt = 0;
    /// The date of the table in the driver's own file that the user saw and chose to replace. Nothing for a
    /// table that the user saw as new, and for one that was seen in another file of the folder.
    std::optional<std::uint64_t> replaces = {};
    /// The user saw the table as new: the driver's own file had none of this id.
    bool isNew = false;

    bool operator==(const AlignmentPick &) const = default;
};

/// The tables to be taken from one file, each hardware id once.
class SaveSource
{
public:
    explicit SaveSource(const QString &filePath) : FilePath(filePath) {}

    [[nodiscard]] const QString &filePath() const { return FilePath; }
    [[nodiscard]] const QList<AlignmentPick> &picks() const { return Picks; }

    /// Adds the table unless one of its hardware id is there already.
    void Add(const AlignmentPick &pick);

private:
    QString FilePath;
    QList<AlignmentPick> Picks;
    QSet<QString> HardwareIds; // of Picks
};

/// What a save does for one driver.
struct DriverSaveGroup
{
    std::int32_t SdrType = 0;
    /// The file whose reading made the driver known to the list; empty: the driver is not saved.
    QString TargetPath;
    /// The driver's file in the recorder's folder, absolute, and whether it was there.
    QString OwnFile;
    bool HasOwnFile = false;
    /// In the order first met.
    QList<SaveSource> Sources;
    /// Tables are replaced by the one of the same whole hardware id. Without it the shorter of two ids
    /// decides, as AlignStore::ClearTableByHwId has it, and all tables of the id are taken over.
    bool WholeIds = false;
};

/// Makes the groups from the choices, which keep their order; choices without a row are passed over. `folder`
/// is where the drivers' files lie. Notes in each row that it looks at whether the row is taken over.
///
/// A driver that has a file of its own there takes over what is checked, but for tables that were read while
/// the list knew nothing of the driver: they count as its own. A driver without one takes over all that is
/// checked.
[[nodiscard]] QList<DriverSaveGroup> MarkRowsAndCollectSaveGroups(const QList<AlignmentChoice> &choices,
                                                                  AlignmentRowList &rows,
                                                                  const QString &folder);

/// Which file is a group's own.
using OwnFileRule = std::function<QString(const DriverSaveGroup &)>;

/// The same for drivers' files that lie and are named otherwise.
[[nodiscard]] QList<DriverSaveGroup> MarkRowsAndCollectSaveGroups(const QList<AlignmentChoice> &choices,
                                                                  AlignmentRowList &rows,
                                                                  const OwnFileRule &ownFileOf);

/// The questions of a save.
struct AlignmentSaveQuestions
{
    /// Whether a driver without any change is to be saved all the same. Argument: its display name.
    std::function<bool(const QString &driver)> SaveUnchanged;
    /// The file to write, empty to leave the driver out. Argument: the driver's own file.
    std::function<QString(const QString &proposal)> FileToWrite;
    /// Writes the store's Tables to the file. Empty, or why that failed. Without it the store saves them, in
    /// place.
    std::function<QString(AlignStore &store, const QString &file)> Write = {};
};

/// Writes one file for each group: the driver's own tables, none if it has no file yet, with the chosen
/// tables in the place of those of the same hardware id. A driver without file and without choice is left
/// out. The drivers' folder is made before a file is asked for. The first error ends the run and is returned
/// as a message, empty when there was none; files written until then stay.
///
/// Nothing is written when a chosen table would be missing, or when the driver's file or the source no longer
/// holds what the user saw. A file that somebody else writes meanwhile is read again first.
[[nodiscard]] QString SaveAlignment(const QList<DriverSaveGroup> &groups,
                                    const AlignmentSaveQuestions &questions);
