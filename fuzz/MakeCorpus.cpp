// SPDX-License-Identifier: MIT
// Writes the seed corpus into a folder: small valid files of every receiver type, and a few invalid ones.
#include "tools/AlignmentGenerator.h"

#include <QDir>
#include <QFile>
#include <QString>

#include <cstdio>

namespace {

bool Save(AlignStore &store, const QDir &folder, const char *name)
{
    const bool saved = store.SaveFile(folder.filePath(QString::fromLatin1(name))) == AlignResult::Ok;
    if (!saved)
        (void)std::fprintf(stderr, "%s cannot be written\n", name);
    return saved;
}

/// A file of one table whose data sets have at most `payloadSize` bytes each; none when that is 0.
bool SaveTables(const QDir &folder, const char *name, SdrType sdrType, int tables, std::size_t payloadSize)
{
    tools::AlignmentGenerator generator(static_cast<std::uint64_t>(sdrType));
    AlignStore store;
    store.SdrType = sdrType;
    for (int i = 0; i < tables; ++i) {
        AlignTable *table = store.AppendNewTable(store.Tables);
        if (table == nullptr)
            return false;
        generator.SetHwId(*table, generator.AnyHwId(), i > 0);
        table->AlignedAt = 1'700'000'000;
        table->DataSetCount = static_cast<std::uint8_t>(payloadSize > 0 ? table->DataSets.size() : 0);
        for (std::size_t set = 0; set < table->DataSetCount; ++set)
            generator.FillDataSet(table->DataSets[set], payloadSize);
    }
    return Save(store, folder, name);
}

bool SaveDamaged(const QDir &folder, const char *source, const char *name, qsizetype position,
                 qsizetype length)
{
    QFile from(folder.filePath(QString::fromLatin1(source)));
    QFile to(folder.filePath(QString::fromLatin1(name)));
    if (!from.open(QIODevice::ReadOnly) || !to.open(QIODevice::WriteOnly))
        return false;
    QByteArray bytes = from.readAll().left(length);
    bytes[position] = static_cast<char>(bytes.at(position) ^ 1);
    return to.write(bytes) == bytes.size();
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2 || !QDir(QString::fromLocal8Bit(argv[1])).exists()) {
        (void)std::fputs("usage: MakeCorpus FOLDER\n", stderr);
        return 2;
    }
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const bool written = SaveTables(folder, "none-two-tables.ad", SdrType::None, 2, 0) &&
                         SaveTables(folder, "limemini-no-data-sets.ad", SdrType::LimeMini, 1, 0) &&
                         SaveTables(folder, "limemini-data-sets.ad", SdrType::LimeMini, 1, 120) &&
                         SaveTables(folder, "limeusb-data-sets.ad", SdrType::LimeUsb, 1, 60) &&
                         SaveTables(folder, "rtlsdr-three-tables.ad", SdrType::RtlSdr, 3, 200) &&
                         SaveTables(folder, "rtlsdr-large-data-set.ad", SdrType::RtlSdr, 1, 1500) &&
                         SaveTables(folder, "airspy-two-tables.ad", SdrType::AirSpy, 2, 80) &&
                         SaveDamaged(folder, "airspy-two-tables.ad", "header-version.ad", 0, 200) &&
                         SaveDamaged(folder, "airspy-two-tables.ad", "table-version.ad", 7, 200) &&
                         SaveDamaged(folder, "airspy-two-tables.ad", "payload.ad", 170, 260) &&
                         SaveDamaged(folder, "rtlsdr-three-tables.ad", "truncated.ad", 6, 7);
    return written ? 0 : 1;
}
