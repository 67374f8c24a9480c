// SPDX-License-Identifier: MIT
#include "alignment_merge/AlignmentSave.h"

#include "alignment/AlignStore.h"
#include "alignment/AlignTableReader.h"
#include "alignment_merge/AlignmentDriver.h"
#include "alignment_merge/AlignmentRowList.h"
#include "platform/FileDigest.h"
#include "platform/FilePath.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <memory>
#include <new>

namespace {

/// How often a file that somebody else keeps writing is read again before the save gives up.
constexpr int MostReadings = 5;

QString Translated(const char *text)
{
    return QCoreApplication::translate("QDlgAlignmentCfg", text);
}

/// The id as files hold it.
QByteArray HwIdOf(const AlignmentPick &pick)
{
    return AlignmentHardwareIdBytes(pick.hardwareId);
}

QByteArray HwIdOf(const AlignTable &table)
{
    const std::string_view hwId = AlignHwIdOf(table);
    return {hwId.data(), static_cast<qsizetype>(hwId.size())};
}

/// The dates of the picks by hardware id.
QHash<QByteArray, std::uint64_t> PicksOf(const SaveSource &source)
{
    QHash<QByteArray, std::uint64_t> picks;
    for (const AlignmentPick &pick : source.picks())
        picks.insert(HwIdOf(pick), pick.alignedAt);
    return picks;
}

// What is to be saved

DriverSaveGroup &GroupOf(QList<DriverSaveGroup> &groups, int sdrType)
{
    const auto group = std::find_if(groups.begin(), groups.end(),
                                    [&](const DriverSaveGroup &other) { return other.SdrType == sdrType; });
    if (group != groups.end())
        return *group;
    DriverSaveGroup added;
    added.SdrType = sdrType;
    groups.append(added);
    return groups.last();
}

/// The driver's own file in the folder, absolute.
QString OwnFileIn(QString folder, const DriverSaveGroup &group)
{
    if (!folder.endsWith(u'/') && !folder.endsWith(QDir::separator()))
        folder += QDir::separator();
    const QString name = AlignmentDriverFileName(group.SdrType);
    return QFileInfo(folder + (name.isEmpty() ? QFileInfo(group.TargetPath).fileName() : name))
        .absoluteFilePath();
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
    if (row.has(AlignmentRow::driverIsNew) && !offersUpdate && group.HasOwnFile)
        return;
    row.Set(AlignmentRow::takenOver, checked);
    if (!checked)
        return;
    AlignmentPick pick = {row.hardwareId, offersUpdate ? *row.updateAlignedAt : row.alignedAt};
    if (row.state == AlignmentRow::NewInDataBase)
        pick.isNew = true;
    else if (row.filePath == group.OwnFile || platform::IsSameFile(row.filePath, group.OwnFile))
        pick.replaces = row.alignedAt;
    AddPick(group.Sources, offersUpdate ? row.updateFilePath : row.filePath, pick);
}

// Saving one driver

/// The dates of the tables by hardware id. Of several tables with one id the latest counts, as in the list.
QHash<QString, std::uint64_t> DatesOf(const AlignTableList &tables)
{
    QHash<QString, std::uint64_t> dates;
    for (const AlignTable &table : tables) {
        std::uint64_t &date = dates[AlignmentHardwareId(table)];
        date = std::max(date, table.AlignedAt);
    }
    return dates;
}

/// Builds the tables of one driver's file in a store.
class DriverSave
{
public:
    DriverSave(AlignStore &store, const DriverSaveGroup &group) : Store(store), Group(group) {}

    /// Reads the driver's file and the sources. Empty, or why the result must not be written.
    QString Build()
    {
        AlignResult result = LoadOwn();
        if (result == AlignResult::Ok) {
            QString conflict = Conflict();
            if (!conflict.isEmpty())
                return conflict;
        }
        for (const SaveSource &source : Group.Sources) {
            if (result == AlignResult::Ok)
                result = TakeOver(source);
        }
        if (result == AlignResult::Ok && !HasAllPicks())
            result = AlignResult::InternalError;
        return result == AlignResult::Ok ? QString() : AlignResultText(result);
    }

private:
    AlignResult LoadOwn()
    {
        if (Group.HasOwnFile || platform::FileExists(Group.OwnFile))
            return Store.LoadFile(Group.OwnFile, Store.Tables, true);
        Store.SdrType = static_cast<::SdrType>(Group.SdrType);
        AlignStore::ClearList(Store.Tables);
        return AlignResult::Ok;
    }

    /// Names the first picked table that is not in the driver's file as the user saw it; empty when all are.
    [[nodiscard]] QString Conflict() const
    {
        const QHash<QString, std::uint64_t> dates = DatesOf(Store.Tables);
        for (const SaveSource &source : Group.Sources) {
            for (const AlignmentPick &pick : source.picks()) {
                const auto present = dates.constFind(pick.hardwareId);
                // A table that has gone meanwhile cannot be lost.
                if (present != dates.cend() && (pick.isNew || (pick.replaces && *present != *pick.replaces)))
                    return ChangedText(pick);
            }
        }
        return {};
    }

    [[nodiscard]] QString ChangedText(const AlignmentPick &pick) const
    {
        //: The driver, and the hardware id of a device.
        return Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg",
                                            "The table of %1 %2 has changed since the list was read.\n"
                                            "Choose Reset and pick again."))
            .arg(AlignmentDriverName(Group.SdrType), pick.hardwareId);
    }

    /// Replaces tables of the store by the picked ones of the source.
    AlignResult TakeOver(const SaveSource &source)
    {
        const std::unique_ptr<AlignTableReader> reader(new (std::nothrow) AlignTableReader);
        if (reader == nullptr)
            return AlignResult::InternalError;
        AlignResult result = reader->Open(source.filePath());
        if (result == AlignResult::Ok && reader->sdrType() != Store.SdrType)
            result = AlignResult::TableWrongSdrType;
        if (result != AlignResult::Ok)
            return result;
        const QHash<QByteArray, std::uint64_t> picked = PicksOf(source);
        if (Group.WholeIds) {
            Store.Tables.RemoveIf([&](const AlignTable &table) { return picked.contains(HwIdOf(table)); });
        } else {
            for (const AlignmentPick &pick : source.picks())
                AlignStore::ClearTableByHwId(&Store.Tables, HwIdOf(pick).constData());
        }
        result = AppendPicked(*reader, picked);
        AlignStore::ClearList(Store.ImportTables);
        return result;
    }

    /// Appends the picked tables of the file that is open to those of the store. One table at a time is in
    /// memory beside them.
    AlignResult AppendPicked(AlignTableReader &reader, QHash<QByteArray, std::uint64_t> picked)
    {
        const auto now = static_cast<std::uint64_t>(QDateTime::currentSecsSinceEpoch());
        while (reader.hasNext()) {
            AlignStore::ClearList(Store.ImportTables);
            AlignTable *const table = Store.AppendNewTable(Store.ImportTables);
            AlignResult result = table != nullptr ? reader.ReadNext(*table) : AlignResult::InternalError;
            if (result != AlignResult::Ok)
                return result;
            const auto pick = picked.constFind(HwIdOf(*table));
            if (pick == picked.cend() || (Group.WholeIds && *pick != table->AlignedAt))
                continue;
            if (Group.WholeIds)
                picked.erase(pick); // of a table that stands there twice one is taken
            const AlignSelectionEntry entry = {HwIdOf(*table).toStdString(), now};
            const AlignTableNode *const last = Store.Tables.Tail;
            result = Store.MergeTables(Store.Tables, Store.ImportTables, {&entry, 1});
            // A merge ends without an error at a table that it cannot copy; the tables behind it stay out,
            // too.
            if (result != AlignResult::Ok || Store.Tables.Tail == last)
                return result;
        }
        return AlignResult::Ok;
    }

    /// Whether every picked table is there, with the date that the user saw. One can be missing because the
    /// source no longer holds it, because the merge could not copy it, and because a later pick removed it
    /// again: ids that are beginnings of each other are the same when tables are removed.
    [[nodiscard]] bool HasAllPicks() const
    {
        const QHash<QString, std::uint64_t> dates = DatesOf(Store.Tables);
        return std::all_of(Group.Sources.cbegin(), Group.Sources.cend(), [&](const SaveSource &source) {
            const QList<AlignmentPick> &picks = source.picks();
            return std::all_of(picks.cbegin(), picks.cend(), [&](const AlignmentPick &pick) {
                const auto date = dates.constFind(pick.hardwareId);
                return date != dates.cend() && *date == pick.alignedAt;
            });
        });
    }

    AlignStore &Store;
    const DriverSaveGroup &Group;
};

bool MakeFolderOf(const QString &file)
{
    const auto path = platform::FileSystemPath(file);
    std::error_code error;
    if (path && path->has_parent_path())
        std::filesystem::create_directories(path->parent_path(), error);
    return path && !error;
}

QString SaveGroup(const DriverSaveGroup &group, const AlignmentSaveQuestions &questions)
{
    if (group.Sources.isEmpty() &&
        (!group.HasOwnFile || !questions.SaveUnchanged(AlignmentDriverName(group.SdrType))))
        return {};
    const std::unique_ptr<AlignStore> store(new (std::nothrow) AlignStore);
    if (store == nullptr)
        return Translated("Out of memory");
    DriverSave save(*store, group);
    QByteArray digest = platform::FileDigest(group.OwnFile);
    QString error = save.Build();
    if (!error.isEmpty())
        return error;
    if (!MakeFolderOf(group.OwnFile))
        return Translated(QT_TRANSLATE_NOOP("QDlgAlignmentCfg", "The folder can not be made:\n%1"))
            .arg(QDir::toNativeSeparators(QFileInfo(group.OwnFile).absolutePath()));
    const QString file = questions.FileToWrite(group.OwnFile);
    if (file.isEmpty())
        return {};
    for (int reading = 1; platform::FileDigest(group.OwnFile) != digest; ++reading) {
        if (reading == MostReadings)
            return AlignResultText(AlignResult::FileError);
        digest = platform::FileDigest(group.OwnFile);
        error = save.Build();
        if (!error.isEmpty())
            return error;
    }
    if (questions.Write)
        return questions.Write(*store, file);
    const AlignResult result = store->SaveFile(file);
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
                                                    AlignmentRowList &rows, const OwnFileRule &ownFileOf)
{
    QList<DriverSaveGroup> groups;
    for (const AlignmentChoice &choice : choices) {
        const int sdrType = AlignmentDriverType(choice.driver);
        if (sdrType == 0)
            continue;
        DriverSaveGroup &group = GroupOf(groups, sdrType);
        const AlignmentRow *const row = rows.Find(choice.driver, choice.hardwareId);
        if (row != nullptr && row->has(AlignmentRow::driverIsNew) && group.TargetPath.isEmpty())
            group.TargetPath = row->filePath;
    }
    for (DriverSaveGroup &group : groups) {
        group.OwnFile = ownFileOf(group);
        group.HasOwnFile = platform::FileExists(group.OwnFile);
    }
    for (const AlignmentChoice &choice : choices) {
        if (AlignmentRow *const row = rows.Find(choice.driver, choice.hardwareId))
            Collect(GroupOf(groups, AlignmentDriverType(choice.driver)), *row, choice.checked);
    }
    return groups;
}

QList<DriverSaveGroup> MarkRowsAndCollectSaveGroups(const QList<AlignmentChoice> &choices,
                                                    AlignmentRowList &rows, const QString &folder)
{
    return MarkRowsAndCollectSaveGroups(
        choices, rows, [&](const DriverSaveGroup &group) { return OwnFileIn(folder, group); });
}

QString SaveAlignment(const QList<DriverSaveGroup> &groups, const AlignmentSaveQuestions &questions)
{
    for (const DriverSaveGroup &group : groups) {
        if (group.TargetPath.isEmpty())
            continue;
        QString error = SaveGroup(group, questions);
        if (!error.isEmpty())
            return error;
    }
    return {};
}
