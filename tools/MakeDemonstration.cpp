// SPDX-License-Identifier: MIT
// Makes what a station has on its disk, so that everything can be tried without one:
//
//   MakeDemonstration RECORDER_FOLDER RECORD_FOLDER IMPORT_FOLDER
//
// The recorder's configuration folder gets the location file and the alignment files of all drivers, the
// record folder some records, the import folder alignment files with a newer, an older and a new table and a
// damaged file. Files of these names are replaced. The contents are the same each time.
#include "alignment/AlignStore.h"
#include "tools/AlignmentGenerator.h"

#include <QDir>
#include <QFile>
#include <QSettings>
#include <QStringList>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<int, 5> TablesOf = {0, 3, 2, 4, 2}; // by receiver type
constexpr qint64 SecondsOfDay = 86'400;

bool Complain(const QString &text)
{
    (void)std::fprintf(stderr, "MakeDemonstration: %s\n", qPrintable(text));
    return false;
}

/// The tables of a station's receivers of one type; null when there is no memory.
std::unique_ptr<AlignStore> StationTables(SdrType sdrType)
{
    auto store = std::make_unique<AlignStore>();
    store->SdrType = sdrType;
    const auto type = static_cast<std::uint8_t>(sdrType);
    tools::AlignmentGenerator generator(type);
    return generator.AppendDemonstrationTables(*store, TablesOf.at(type)) ? std::move(store) : nullptr;
}

bool Save(AlignStore *store, const QString &path)
{
    if (store == nullptr)
        return Complain(u"out of memory"_s);
    const AlignResult result = store->SaveFile(path);
    return result == AlignResult::Ok || Complain(path + u": "_s + AlignResultText(result));
}

/// Writes a file with one table, measured `days` after the station's first table of the type (before it when
/// negative): another version of that table, or, with `newReceiver`, the table of a receiver that the station
/// does not know.
bool SaveMeasurement(SdrType sdrType, qint64 days, bool newReceiver, const QString &path)
{
    const std::unique_ptr<AlignStore> station = StationTables(sdrType);
    AlignStore store;
    store.SdrType = sdrType;
    tools::AlignmentGenerator generator(1'000 + static_cast<std::uint64_t>(sdrType));
    if (!station || !generator.AppendDemonstrationTables(store, 1))
        return Complain(u"out of memory"_s);
    const AlignTable &first = *station->Tables.Head->Table;
    AlignTable &table = *store.Tables.Head->Table;
    table.AlignedAt = first.AlignedAt + static_cast<std::uint64_t>(days * SecondsOfDay);
    if (!newReceiver)
        table.HwId = first.HwId;
    return Save(&store, path);
}

/// Turns one bit in the middle of a file.
bool Damage(const QString &path)
{
    QFile file(path);
    char byte = 0;
    if (!file.open(QIODevice::ReadWrite) || !file.seek(file.size() / 2) || !file.getChar(&byte) ||
        !file.seek(file.size() / 2) || !file.putChar(static_cast<char>(byte ^ 1)))
        return Complain(file.errorString());
    return true;
}

bool MakeRecorderFolder(const QDir &folder, const QString &recordFolder)
{
    for (const SdrType type : {SdrType::LimeMini, SdrType::LimeUsb, SdrType::RtlSdr, SdrType::AirSpy}) {
        const char *const name = AlignDriverFileNames.at(static_cast<std::size_t>(type));
        if (!Save(StationTables(type).get(), folder.filePath(QString::fromLatin1(name))))
            return false;
    }
    QSettings location(folder.filePath(u"tarnviklocation.ini"_s), QSettings::IniFormat);
    location.setValue(u"Record/RecordPath"_s, recordFolder);
    location.sync();
    return location.status() == QSettings::NoError || Complain(u"tarnviklocation.ini"_s);
}

bool MakeRecords(const QDir &folder)
{
    for (const int hour : {0, 6, 12, 18}) {
        QFile record(folder.filePath(u"162400kHz_2025-11-03_%1-00.iq"_s.arg(hour, 2, 10, QLatin1Char('0'))));
        if (!record.open(QIODevice::WriteOnly) || record.write(QByteArray(4096, '\0')) < 0)
            return Complain(record.errorString());
    }
    return true;
}

bool MakeImportFolder(const QDir &folder)
{
    const QString damaged = folder.filePath(u"AirSpy damaged.ad"_s);
    return SaveMeasurement(SdrType::LimeUsb, 200, false, folder.filePath(u"LimeUsb newer.ad"_s)) &&
           SaveMeasurement(SdrType::RtlSdr, -300, false, folder.filePath(u"RTL-SDR older.ad"_s)) &&
           SaveMeasurement(SdrType::LimeMini, 100, true, folder.filePath(u"LimeMini new receiver.ad"_s)) &&
           SaveMeasurement(SdrType::AirSpy, 200, false, damaged) && Damage(damaged);
}

} // namespace

int main(int argc, char **argv)
{
    QStringList folders;
    for (int i = 1; i < argc; ++i)
        folders.append(QDir(QFile::decodeName(argv[i])).absolutePath());
    if (folders.size() != 3) {
        Complain(u"three folders are needed: recorder, records, import"_s);
        return 2;
    }
    for (const QString &folder : folders) {
        if (!QDir().mkpath(folder)) {
            Complain(folder);
            return 1;
        }
    }
    const bool made = MakeRecorderFolder(QDir(folders[0]), folders[1]) && MakeRecords(QDir(folders[1])) &&
                      MakeImportFolder(QDir(folders[2]));
    return made ? 0 : 1;
}
