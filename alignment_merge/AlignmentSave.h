// SPDX-License-Identifier: MIT
// Takes the alignment tables that the user chose over into the drivers' files: what is to be written, and the
// writing.
#pragma once

#include <QList>
#include <QSet>
#include <QString>

#include <cstdint>
#include <functional>

class AlignmentRowList;

/// What the user chose for one row.
struct AlignmentChoice
{
    QString driver; // display name
    QString hardwareId;
    bool checked = false;
};

/// One table to be taken from a file.
struct AlignmentPick
{
    QString hardwareId;
    std::uint64_t alignedAt = 0; // seconds since 1970-01-01 00:00:00 UTC

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
    /// In the order first met, as are NewDriverSources.
    QList<SaveSource> Sources;
    /// Checked tables of a driver that was unknown, from files other than TargetPath. They count only while
    /// the driver has no file of its own and TargetPath is what the new file is made from.
    QList<SaveSource> NewDriverSources;
};

/// Makes the groups from the choices, which keep their order; choices without a row are passed over. Notes in
/// each row that it looks at whether the row is taken over.
[[nodiscard]] QList<DriverSaveGroup> MarkRowsAndCollectSaveGroups(const QList<AlignmentChoice> &choices,
                                                                  AlignmentRowList &rows);

/// The questions of a save.
struct AlignmentSaveQuestions
{
    /// Whether a driver without any change is to be saved all the same. Argument: its display name.
    std::function<bool(const QString &driver)> SaveUnchanged;
    /// The file to write, empty to leave the driver out. Argument: the driver's own file.
    std::function<QString(const QString &proposal)> FileToWrite;
};

/// Writes one file for each group: the driver's file in `folder` with the chosen tables in the place of those
/// of the same hardware id. Where the driver has no file there, that of TargetPath takes its place. The first
/// error ends the run and is returned as a message, empty when there was none; files written until then stay.
[[nodiscard]] QString SaveAlignment(const QList<DriverSaveGroup> &groups, const QString &folder,
                                    const AlignmentSaveQuestions &questions);
