// SPDX-License-Identifier: MIT
#include "tests/alignment/AlignmentTestTools.h"

#include "tools/BitwiseCrc.h"

#include <QFile>
#include <QtEndian>

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

std::span<const std::uint8_t> BytesOf(const QByteArray &bytes)
{
    return {reinterpret_cast<const std::uint8_t *>(bytes.constData()),
            static_cast<std::size_t>(bytes.size())};
}

template <typename Integer>
QByteArray LittleEndian(Integer value)
{
    QByteArray bytes(sizeof(Integer), '\0');
    qToLittleEndian(value, bytes.data());
    return bytes;
}

QString DataSetDifference(const AlignDataSet &left, const AlignDataSet &right)
{
    const auto fields = [](const AlignDataSet &set) {
        return std::array<int, 9>{set.DataType,      static_cast<int>(set.SdrType),
                                  set.Attr1,         set.Attr2,
                                  set.Attr3,         set.Attr4,
                                  set.Word1,         set.Word2,
                                  set.FreqPointCount};
    };
    if (fields(left) != fields(right))
        return u"fields"_s;
    for (std::size_t i = 0; i < left.FreqPointCount; ++i) {
        const AlignFreqPoint &leftPoint = left.FreqPoints.at(i);
        const AlignFreqPoint &rightPoint = right.FreqPoints.at(i);
        if (leftPoint.Frequency != rightPoint.Frequency || leftPoint.Attr != rightPoint.Attr ||
            leftPoint.SampleRatePointCount != rightPoint.SampleRatePointCount)
            return u"frequency point %1"_s.arg(i);
        for (std::size_t j = 0; j < leftPoint.SampleRatePointCount; ++j) {
            const AlignSampleRatePoint &leftRate = leftPoint.SampleRatePoints.at(j);
            const AlignSampleRatePoint &rightRate = rightPoint.SampleRatePoints.at(j);
            if (leftRate.SampleFrequency != rightRate.SampleFrequency || leftRate.Attr != rightRate.Attr ||
                leftRate.GainEntryCount != rightRate.GainEntryCount ||
                std::memcmp(leftRate.GainEntries.data(), rightRate.GainEntries.data(),
                            leftRate.GainEntryCount * sizeof(AlignGainEntry)) != 0)
                return u"frequency point %1, sample-rate point %2"_s.arg(i).arg(j);
        }
    }
    return {};
}

} // namespace

QByteArray FileBytes(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return file.readAll();
}

bool WriteFileBytes(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(bytes) == bytes.size() &&
           file.flush();
}

QByteArray ByteCrcChunk(const QByteArray &payload, int version)
{
    return LittleEndian(static_cast<quint8>(version)) + LittleEndian(static_cast<quint16>(payload.size())) +
           payload + LittleEndian(tools::BitwiseCrc8(BytesOf(payload)));
}

QByteArray WordCrcChunk(const QByteArray &payload)
{
    return LittleEndian(static_cast<quint16>(payload.size())) + payload +
           LittleEndian(tools::BitwiseCrc32(BytesOf(payload)));
}

QByteArray HeaderChunk(SdrType sdrType, int tableCount)
{
    QByteArray payload;
    payload += static_cast<char>(sdrType);
    payload += static_cast<char>(tableCount >> 8);
    payload += static_cast<char>(tableCount);
    return ByteCrcChunk(payload);
}

QByteArray TableChunk(int dataSetCapacity, int dataSetCount)
{
    QByteArray payload;
    payload += '\5';
    payload += QByteArrayLiteral("ABC").leftJustified(128, '\0');
    payload += QByteArray(8, '\0');
    payload += static_cast<char>(dataSetCapacity);
    payload += static_cast<char>(dataSetCount);
    return ByteCrcChunk(payload);
}

QByteArray FileOf150Bytes()
{
    return QByteArray::fromHex("05 0300 010001 6C  05 8B00 05 414243") + QByteArray(125, '\0') +
           QByteArray::fromHex("0000000065A0BC00 06 00 DE");
}

QByteArray DataSetPayload(int freqPoints, int sampleRatePoints, int gainEntries)
{
    QByteArray payload(8, '\0');
    payload += static_cast<char>(freqPoints >> 8);
    payload += static_cast<char>(freqPoints);
    for (int i = 0; i < freqPoints; ++i) {
        payload += QByteArray(9, '\0');
        payload += static_cast<char>(i == 0 ? sampleRatePoints : 0);
        for (int j = 0; i == 0 && j < sampleRatePoints; ++j) {
            payload += QByteArray(8, '\0');
            payload += static_cast<char>(j == 0 ? gainEntries : 0);
            payload += QByteArray(4, '\0');
            payload += QByteArray(j == 0 ? gainEntries * 8 : 0, '\0');
        }
    }
    payload[0] = 1; // the CRC of zeros alone would be 0, with which any stored CRC passes
    return payload;
}

QByteArray RtlSdrFile(const QByteArray &dataSetChunk)
{
    return HeaderChunk(SdrType::RtlSdr, 1) + TableChunk(1, 1) + dataSetChunk;
}

QList<ChunkPosition> ChunksOf(const QByteArray &file)
{
    QList<ChunkPosition> chunks;
    int dataSetsLeft = 0;
    qsizetype position = 0;
    while (position < file.size()) {
        ChunkPosition chunk;
        chunk.IsDataSet = dataSetsLeft > 0;
        chunk.Begin = position;
        chunk.Payload = position + (chunk.IsDataSet ? 2 : 3);
        chunk.Crc = chunk.Payload + qFromLittleEndian<quint16>(file.constData() + chunk.Payload - 2);
        chunk.End = chunk.Crc + (chunk.IsDataSet ? 4 : 1);
        if (chunk.IsDataSet)
            --dataSetsLeft;
        else if (!chunks.isEmpty()) // a table chunk; its last payload byte is the number of data sets
            dataSetsLeft = static_cast<quint8>(file.at(chunk.Crc - 1));
        position = chunk.End;
        chunks.append(chunk);
    }
    return chunks;
}

quint32 PayloadCrc(const QByteArray &file, const ChunkPosition &chunk)
{
    const QByteArray payload = file.mid(chunk.Payload, chunk.Crc - chunk.Payload);
    return chunk.IsDataSet ? tools::BitwiseCrc32(BytesOf(payload)) : tools::BitwiseCrc8(BytesOf(payload));
}

QString Difference(const AlignTable &left, const AlignTable &right)
{
    if (left.DataType != right.DataType || left.SdrType != right.SdrType || left.Version != right.Version)
        return u"tag, type or version"_s;
    if (left.HwId != right.HwId)
        return u"hardware id"_s;
    if (left.AlignedAt != right.AlignedAt)
        return u"date of alignment"_s;
    if (left.DataSetCapacity != right.DataSetCapacity || left.DataSetCount != right.DataSetCount ||
        left.DataSets.size() != right.DataSets.size())
        return u"number of data sets"_s;
    for (std::size_t i = 0; i < left.DataSets.size(); ++i) {
        const QString difference = DataSetDifference(left.DataSets[i], right.DataSets[i]);
        if (!difference.isEmpty())
            return u"data set %1: %2"_s.arg(i).arg(difference);
    }
    return {};
}

QString Difference(const AlignTableList &left, const AlignTableList &right)
{
    if (left.Count != right.Count)
        return u"%1 tables and %2 tables"_s.arg(left.Count).arg(right.Count);
    const AlignTableNode *rightNode = right.Head;
    int index = 0;
    for (const AlignTableNode *node = left.Head; node != nullptr; node = node->Next, ++index) {
        if (rightNode == nullptr)
            return u"fewer nodes than Count says"_s;
        const QString difference = Difference(*node->Table, *rightNode->Table);
        if (!difference.isEmpty())
            return u"table %1: %2"_s.arg(index).arg(difference);
        rightNode = rightNode->Next;
    }
    if (index != left.Count || rightNode != nullptr)
        return u"more or fewer nodes than Count says"_s;
    return {};
}

QList<QByteArray> HwIdsOf(const AlignTableList &list)
{
    QList<QByteArray> ids;
    for (const AlignTableNode *node = list.Head; node != nullptr; node = node->Next) {
        const std::array<char, AlignHwIdSize> &hwId = node->Table->HwId;
        ids.append(QByteArray(hwId.data(), std::find(hwId.begin(), hwId.end(), '\0') - hwId.begin()));
    }
    return ids;
}

AlignTable *AppendTableWithId(AlignStore &store, AlignTableList &list, const QByteArray &hwId)
{
    AlignTable *table = store.AppendNewTable(list);
    if (table != nullptr)
        std::copy(hwId.begin(), hwId.end(), table->HwId.begin());
    return table;
}

QByteArray NameOf(AlignResult result)
{
    // The other codes come from other programs.
    constexpr std::pair<AlignResult, const char *> names[] = {
        {AlignResult::Ok, "Ok"},
        {AlignResult::FileError, "FileError"},
        {AlignResult::InternalError, "InternalError"},
        {AlignResult::VersionMismatch, "VersionMismatch"},
        {AlignResult::FileCrcFailed, "FileCrcFailed"},
        {AlignResult::TableWrongSdrType, "TableWrongSdrType"},
        {AlignResult::ListIsEmpty, "ListIsEmpty"},
    };
    const auto *const found = std::find_if(std::begin(names), std::end(names),
                                           [result](const auto &named) { return named.first == result; });
    const QByteArray name = found != std::end(names) ? found->second : "a code of other programs";
    return name + " (" + QByteArray::number(static_cast<int>(result)) + ')';
}

} // namespace tests
