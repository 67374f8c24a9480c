// SPDX-License-Identifier: MIT
// What the tests of alignment tables and files share.
#pragma once

#include "alignment/AlignStore.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QTest>

namespace tests {

/// The contents of a file; null when it cannot be read.
[[nodiscard]] QByteArray FileBytes(const QString &path);

/// False when the bytes could not be written.
[[nodiscard]] bool WriteFileBytes(const QString &path, const QByteArray &bytes);

/// A chunk with version byte and its right CRC-8.
[[nodiscard]] QByteArray ByteCrcChunk(const QByteArray &payload, int version = 5);

/// A chunk with its right CRC-32.
[[nodiscard]] QByteArray WordCrcChunk(const QByteArray &payload);

/// The header chunk of a file of `tableCount` tables.
[[nodiscard]] QByteArray HeaderChunk(SdrType sdrType, int tableCount);

/// The chunk of a table ABC of which `dataSetCount` data-set chunks follow.
[[nodiscard]] QByteArray TableChunk(int dataSetCapacity, int dataSetCount);

/// The file of one LimeMini table ABC without data sets, aligned at 0x65A0BC00.
[[nodiscard]] QByteArray FileOf150Bytes();

/// A data-set payload with the given counts; every other field but the first is zero. The sample-rate points
/// belong to the first frequency point, the gain entries to its first sample-rate point.
[[nodiscard]] QByteArray DataSetPayload(int freqPoints, int sampleRatePoints = 0, int gainEntries = 0);

/// A file with one RTL-SDR table ABC and the data-set chunk.
[[nodiscard]] QByteArray RtlSdrFile(const QByteArray &dataSetChunk);

/// One chunk within the bytes of a file: positions from the file's beginning.
struct ChunkPosition
{
    bool IsDataSet = false;
    qsizetype Begin = 0;   // of the version byte, or of the length of a data-set chunk
    qsizetype Payload = 0; // of the payload
    qsizetype Crc = 0;     // of the CRC
    qsizetype End = 0;     // behind the CRC

    [[nodiscard]] bool isVersion(qsizetype position) const { return !IsDataSet && position == Begin; }
    [[nodiscard]] bool isLength(qsizetype position) const
    {
        return position >= Payload - 2 && position < Payload;
    }
    [[nodiscard]] bool isPayload(qsizetype position) const { return position >= Payload && position < Crc; }
    [[nodiscard]] bool isCrc(qsizetype position) const { return position >= Crc && position < End; }
};

/// The chunks of a valid file.
[[nodiscard]] QList<ChunkPosition> ChunksOf(const QByteArray &file);

/// The CRC of a chunk's payload as it stands in the file, bit by bit.
[[nodiscard]] quint32 PayloadCrc(const QByteArray &file, const ChunkPosition &chunk);

/// The first difference between two tables, in words; empty when they are equal in all that a file carries
/// and in the tags.
[[nodiscard]] QString Difference(const AlignTable &left, const AlignTable &right);

/// The first difference between two lists, the order of their tables included; empty when they are equal.
[[nodiscard]] QString Difference(const AlignTableList &left, const AlignTableList &right);

/// The hardware ids of a list, in order.
[[nodiscard]] QList<QByteArray> HwIdsOf(const AlignTableList &list);

/// Appends a table with the hardware id, which must not be longer than 128 bytes; null when there is no
/// memory.
AlignTable *AppendTableWithId(AlignStore &store, AlignTableList &list, const QByteArray &hwId);

/// Whether a list says of itself, in all three members, that it is empty.
[[nodiscard]] inline bool IsEmpty(const AlignTableList &list)
{
    return list.Count == 0 && list.Head == nullptr && list.Tail == nullptr;
}

/// Name and number of a result code, as in "FileError (9)".
[[nodiscard]] QByteArray NameOf(AlignResult result);

} // namespace tests

namespace QTest {

/// Lets QCOMPARE print result codes by name and number.
template <>
inline char *toString(const AlignResult &result)
{
    return qstrdup(tests::NameOf(result).constData());
}

} // namespace QTest
