// SPDX-License-Identifier: MIT
// The alignment tables that the alignment dialog knows, read from files and merged.
#pragma once

#include "TarnvikControl/AlignmentRow.h"

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
    [[nodiscard]] AlignmentRow *find(const QString &driver, const QString &hardwareId);

    /// Removes all rows.
    void Clear();

    /// Merges the tables of one alignment file into the rows. Empty, or why the file cannot be read; the rows
    /// are then as they were.
    QString ReadFile(const QString &path);

    /// Reads the files in order. Empty, or a line for each file that cannot be read.
    QString ReadFiles(const QStringList &paths);

    /// Reads the files of the folder, without its subfolders, whose names match the pattern; an empty folder
    /// stands for the recorder's configuration folder. All rows then count as present. Returns what ReadFiles
    /// returns; a folder that does not exist holds no files.
    QString LoadFolder(const QString &folder, const QString &pattern);

    /// Sorts by driver, then by hardware id.
    void Sort();

private:
    using Key = std::pair<QString, QString>; // driver, hardware id

    void add(const AlignmentRow &candidate);

    QList<AlignmentRow> Rows;
    QHash<Key, qsizetype> Positions; // in Rows
};
