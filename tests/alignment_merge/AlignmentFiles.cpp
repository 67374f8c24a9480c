// SPDX-License-Identifier: MIT
#include "tests/alignment_merge/AlignmentFiles.h"

#include "alignment/AlignStore.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tools/AlignmentGenerator.h"

#include <QDateTime>
#include <QTimeZone>

#include <memory>

namespace tests {

std::uint64_t Day(const char *date)
{
    return static_cast<std::uint64_t>(QDate::fromString(QString::fromLatin1(date), Qt::ISODate)
                                          .startOfDay(QTimeZone::utc())
                                          .toSecsSinceEpoch());
}

bool WriteAlignmentFile(const QString &path, SdrType sdrType, const QList<FileTable> &tables)
{
    const auto store = std::make_unique<AlignStore>();
    store->SdrType = sdrType;
    for (const FileTable &wanted : tables) {
        AlignTable *const table = AppendTableWithId(*store, store->Tables, wanted.HwId);
        if (table == nullptr)
            return false;
        table->AlignedAt = wanted.AlignedAt;
        table->DataSetCount = static_cast<std::uint8_t>(table->DataSets.size());
        tools::AlignmentGenerator generator(qHash(wanted.HwId, 0) ^ wanted.AlignedAt);
        for (std::size_t i = 0; i < table->DataSets.size(); ++i)
            generator.FillDataSet(table->DataSets[i], 300);
    }
    if (!tables.isEmpty())
        return store->SaveFile(path) == AlignResult::Ok;
    return WriteFileBytes(path, HeaderChunk(sdrType, 0)); // which the store does not write
}

QMap<QByteArray, QByteArray> TableBytes(const QString &path)
{
    const QByteArray file = FileBytes(path);
    QMap<QByteArray, QByteArray> tables;
    if (file.isEmpty())
        return tables;
    QByteArray hwId;
    const QList<ChunkPosition> chunks = ChunksOf(file).mid(1); // the first is the file's header
    for (const ChunkPosition &chunk : chunks) {
        if (!chunk.IsDataSet)
            hwId = QByteArray(file.mid(chunk.Payload + 1, AlignHwIdSize) + '\0').constData();
        tables[hwId] += file.mid(chunk.Begin, chunk.End - chunk.Begin);
    }
    return tables;
}

} // namespace tests
