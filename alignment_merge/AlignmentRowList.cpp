// SPDX-License-Identifier: MIT
#include "alignment_merge/AlignmentRowList.h"

#include "alignment/AlignStore.h"
#include "alignment_merge/AlignmentDriver.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <memory>
#include <new>
#include <tuple>

using namespace Qt::StringLiterals;

AlignmentRow *AlignmentRowList::Find(const QString &driver, const QString &hardwareId)
{
    const auto position = Positions.constFind({driver, hardwareId});
    return position != Positions.cend() ? &Rows[*position] : nullptr;
}

void AlignmentRowList::Clear()
{
    Rows.clear();
    Positions.clear();
}

QString AlignmentRowList::ReadFile(const QString &path)
{
    const std::unique_ptr<AlignStore> store(new (std::nothrow) AlignStore);
    if (store == nullptr)
        return QCoreApplication::translate("QDlgAlignmentCfg", "Out of memory");
    const AlignResult result = store->LoadFile(path, store->Tables, true);
    if (result != AlignResult::Ok)
        return AlignResultText(result);

    AlignmentRow candidate;
    candidate.filePath = path;
    candidate.driver = AlignmentDriverName(static_cast<int>(store->SdrType));
    candidate.state = AlignmentRow::NewInDataBase;
    if (candidate.driver.isEmpty() || store->Tables.Head == nullptr)
        return AlignResultText(AlignResult::FileError);
    candidate.Set(AlignmentRow::driverIsNew, std::none_of(Rows.cbegin(), Rows.cend(), [&](const auto &row) {
                      return row.driver == candidate.driver;
                  }));
    for (const AlignTable &table : store->Tables) {
        candidate.hardwareId = AlignmentHardwareId(table);
        candidate.alignedAt = table.AlignedAt;
        Add(candidate);
    }
    return {};
}

void AlignmentRowList::Add(const AlignmentRow &candidate)
{
    if (AlignmentRow *const row = Find(candidate.driver, candidate.hardwareId)) {
        row->AddVersion(candidate.filePath, candidate.alignedAt);
        return;
    }
    Positions.insert({candidate.driver, candidate.hardwareId}, Rows.size());
    Rows.append(candidate);
}

QString AlignmentRowList::ReadFiles(const QStringList &paths)
{
    QString errors;
    for (const QString &path : paths) {
        const QString error = ReadFile(path);
        if (error.isEmpty())
            continue;
        errors +=
            u"%1%2: %3"_s.arg(errors.isEmpty() ? QString() : u"\n"_s, QFileInfo(path).fileName(), error);
    }
    return errors;
}

QString AlignmentRowList::LoadFolder(const QString &folder, const QString &pattern)
{
    QStringList files;
    if (!folder.isEmpty()) { // Qt would take that for the working folder
        // By name, so that the same folder always gives the same rows.
        const QFileInfoList entries =
            QDir(folder).entryInfoList({pattern}, QDir::Files | QDir::Readable, QDir::Name);
        for (const QFileInfo &entry : entries)
            files.append(entry.filePath());
    }
    QString errors = ReadFiles(files);
    CountAsPresent();
    return errors;
}

QString AlignmentRowList::LoadFile(const QString &path)
{
    QString error = ReadFile(path);
    CountAsPresent();
    return error;
}

void AlignmentRowList::CountAsPresent()
{
    for (AlignmentRow &row : Rows)
        row.state = AlignmentRow::Present;
}

void AlignmentRowList::Sort()
{
    std::sort(Rows.begin(), Rows.end(), [](const AlignmentRow &left, const AlignmentRow &right) {
        return std::tie(left.driver, left.hardwareId) < std::tie(right.driver, right.hardwareId);
    });
    for (qsizetype i = 0; i < Rows.size(); ++i)
        Positions[{Rows.at(i).driver, Rows.at(i).hardwareId}] = i;
}
