// SPDX-License-Identifier: MIT
#include "alignment_merge/AlignmentSave.h"

#include "alignment/AlignStore.h"
#include "alignment/AlignTableReader.h"
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_merge/AlignmentRowList.h"

#include <QByteArrayView>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

namespace {

DriverSaveGroup &GroupOf(QList<DriverSaveGroup> &groups, int sdrType)
{
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [&](const DriverSaveGroup &other) { return other.SdrType == sdrType; });
    if (group != groups.end())
        return *group;
    groups.append({sdrType, {}, {}, {}});
    return groups.last();
}

void AddPick(QList<SaveSource> &sources, const QString &filePath, const AlignmentPick &pick)
{
    auto source = std::find_if(sources.begin(), sources.end(),
                               [&](const SaveSource &other) { return other.filePath() == filePath; });
    if (source == sources.end())
        source = sources.insert(sources.end(), SaveSource(filePath));
    source->Add(pick);
}

void Collect(DriverSaveGroup &group, AlignmentRow &row, bool checked)
{
    const bool offersUpdate = row.state != AlignmentRow::Present && !row.updateFilePath.isEmpty() &&
                              row.updateAlignedAt.has_value();
    const QString &source = offersUpdate ? row.updateFilePath : row.filePath;
    const AlignmentPick pick = {row.hardwareId, offersUpdate ? *row.updateAlignedAt : row.alignedAt};
    if (row.has(AlignmentRow::driverIsNew)) {
        if (group.TargetPath.isEmpty())
            group.TargetPath = row.filePath;
        if (!offersUpdate) {
            // The target holds this table as a rule. It does not when a newer version came from another file.
            if (checked && source != group.TargetPath)
                AddPick(group.NewDriverSources, source, pick);
            return;
        }
    }
    row.Set(AlignmentRow::takenOver, checked);
    if (checked)
        AddPick(group.Sources, source, pick);
}

/// The picks as the store takes them.
std::vector<AlignSelectionEntry> SelectionOf(const QList<AlignmentPick> &picks)
{
    const auto now = static_cast<std::uint64_t>(QDateTime::currentSecsSinceEpoch());
    std::vector<AlignSelectionEntry> selection;
    selection.reserve(static_cast<std::size_t>(picks.size()));
    for (const AlignmentPick &pick : picks)
        selection.push_back({pick.hardwareId.toLocal8Bit().toStdString(), now});
    return selection;
}

/// True when every picked table stands in the list from `node` on.
bool HasAll(const AlignTableNode *node, const std::vector<AlignSelectionEntry> &selection)
{
    QSet<QByteArrayView> hwIds;
    for (; node != nullptr; node = node->Next)
        hwIds.insert(AlignHwIdOf(*node->Table));
    return std::all_of(selection.begin(), selection.end(),
                       [&](const AlignSelectionEntry &entry) { return hwIds.contains(entry.HwId); });
}

/// Appends the picked tables of the file that is open to those of the store. One table at a time is in memory
/// beside them.
AlignResult AppendPicked(AlignStore &store, AlignTableReader &reader,
                         const std::vector<AlignSelectionEntry> &selection)
{
    QSet<QByteArrayView> picked;
    for (const AlignSelectionEntry &entry : selection)
        picked.insert(entry.HwId);
    while (reader.hasNext()) {
        AlignStore::ClearList(store.ImportTables);
        AlignTable *const table = store.AppendNewTable(store.ImportTables);
        AlignResult result = table != nullptr ? reader.ReadNext(*table) : AlignResult::InternalError;
        if (result != AlignResult::Ok)
            return result;
        if (!picked.contains(AlignHwIdOf(*table)))
            continue;
        const AlignSelectionEntry entry = {std::string(AlignHwIdOf(*table)), selection.front().Time};
        const AlignTableNode *const last = store.Tables.Tail;
        result = store.MergeTables(store.Tables, store.ImportTables, {&entry, 1});
        // A merge ends without an error at a table that it cannot copy; the tables behind it stay out, too.
        if (result != AlignResult::Ok || store.Tables.Tail == last)
            return result;
    }
    return AlignResult::Ok;
}

/// Replaces tables of the store by the picked ones of the source.
AlignResult TakeOver(AlignStore &store, const SaveSource &source)
{
    const std::unique_ptr<AlignTableReader> reader(new (std::nothrow) AlignTableReader);
    if (reader == nullptr)
        return AlignResult::InternalError;
    AlignResult result = reader->Open(source.filePath());
    if (result == AlignResult::Ok && reader->sdrType() != store.SdrType)
        result = AlignResult::TableWrongSdrType;
    if (result != AlignResult::Ok)
        return result;
    const std::vector<AlignSelectionEntry> selection = SelectionOf(source.picks());
    for (const AlignSelectionEntry &entry : selection)
        AlignStore::ClearTableByHwId(&store.Tables, entry.HwId.c_str());
    const AlignTableNode *const last = store.Tables.Tail;
    result = AppendPicked(store, *reader, selection);
    AlignStore::ClearList(store.ImportTables);
    // A merge can end before the last table, and finds none whose id has other bytes in this system's
    // encoding. The tables to be replaced are gone then: such a file must not be written.
    if (result == AlignResult::Ok && !HasAll(last != nullptr ? last->Next : store.Tables.Head, selection))
        return AlignResult::InternalError;
    return result;
}

/// The driver's own file in the folder, absolute.
QString OwnFileOf(const DriverSaveGroup &group, QString folder)
{
    if (!folder.endsWith(u'/') && !folder.endsWith(QDir::separator()))
        folder += QDir::separator();
    const QString name = AlignmentDriverFileName(group.SdrType);
    return QFileInfo(folder + (name.isEmpty() ? QFileInfo(group.TargetPath).fileName() : name))
        .absoluteFilePath();
}

QString SaveGroup(const DriverSaveGroup &group, const QString &folder,
                  const AlignmentSaveQuestions &questions)
{
    const QString ownFile = OwnFileOf(group, folder);
    const bool hasOwnFile = QFileInfo::exists(ownFile);
    const QList<SaveSource> sources = hasOwnFile ? group.Sources : group.Sources + group.NewDriverSources;
    if (sources.isEmpty() && !questions.SaveUnchanged(AlignmentDriverName(group.SdrType)))
        return {};
    const std::unique_ptr<AlignStore> store(new (std::nothrow) AlignStore);
    if (store == nullptr)
        return QCoreApplication::translate("QDlgAlignmentCfg", "Out of memory");
    AlignResult result = store->LoadFile(hasOwnFile ? ownFile : group.TargetPath, store->Tables, true);
    for (const SaveSource &source : sources) {
        if (result != AlignResult::Ok)
            break;
        result = TakeOver(*store, source);
    }
    if (result != AlignResult::Ok)
        return AlignResultText(result);
    const QString file = questions.FileToWrite(ownFile);
    if (file.isEmpty())
        return {};
    result = store->SaveFile(file);
    return result == AlignResult::Ok ? QString() : AlignResultText(result);
}

} // namespace

void SaveSource::Add(const AlignmentPick &pick)
{
    if (HardwareIds.contains(pick.hardwareId))
        return;
    HardwareIds.insert(pick.hardwareId);
    Picks.append(pick);
}

QList<DriverSaveGroup> MarkRowsAndCollectSaveGroups(const QList<AlignmentChoice> &choices,
                                                    AlignmentRowList &rows)
{
    QList<DriverSaveGroup> groups;
    for (const AlignmentChoice &choice : choices) {
        const int sdrType = AlignmentDriverType(choice.driver);
        if (sdrType == 0)
            continue;
        DriverSaveGroup &group = GroupOf(groups, sdrType);
        if (AlignmentRow *const row = rows.Find(choice.driver, choice.hardwareId))
            Collect(group, *row, choice.checked);
    }
    return groups;
}

QString SaveAlignment(const QList<DriverSaveGroup> &groups, const QString &folder,
                      const AlignmentSaveQuestions &questions)
{
    for (const DriverSaveGroup &group : groups) {
        if (group.TargetPath.isEmpty())
            continue;
        QString error = SaveGroup(group, folder, questions);
        if (!error.isEmpty())
            return error;
    }
    return {};
}
