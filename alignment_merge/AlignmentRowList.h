// SPDX-License-Identifier: MIT
// The alignment tables of several files, read and merged.
#pragma once

#include "alignment_merge/AlignmentRow.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <utility>

/// Holds each pair of driver and hardware id once at most. Reads files, never writes one.
class AlignmentRowList
{
public:
    [[nodiscard]] const QList<AlignmentRow> &rows() const { return Rows; }

    /// The row of the pair; null when there is none. Valid until the list changes.
    [[nodiscard]] AlignmentRow *Find(const QString &driver, const QString &hardwareId);

    /// Removes all rows.
    void Clear();

    /// Merges the tables of one alignment file into the rows. Empty, or why the file cannot be read; the rows
    /// are then as they were.
    QString ReadFile(const QString &path);

    /// The same with all rows counting as present then.
    QString LoadFile(const QString &path);

    /// Reads the files in order. Empty, or a line for each file that cannot be read.
    QString ReadFiles(const QStringList &paths);

    /// Reads the files of the folder, without its subfolders, whose names match the pattern. All rows then
    /// count as present. Returns what ReadFiles returns; a folder that does not exist, and an empty name,
    /// hold no files.
    QString LoadFolder(const QString &folder, const QString &pattern);

    /// Sorts by driver, then by hardware id.
    void Sort();

private:
    using Key = std::pair<QString, QString>; // driver, hardware id

    void Add(const AlignmentRow &candidate);
    void CountAsPresent();

    QList<AlignmentRow> Rows;
    QHash<Key, qsizetype> Positions; // in Rows
};
