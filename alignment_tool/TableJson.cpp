// SPDX-License-Identifier: MIT
#include "alignment_tool/TableJson.h"

#include "alignment_tool/Command.h"
#include "alignment_tool/Json.h"
#include "alignment_tool/JsonReader.h"
#include "alignment_tool/TableFile.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>
#include <limits>
#include <span>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

// To JSON

QJsonArray ArrayOf(const AlignSampleRatePoint &point)
{
    QJsonArray entries;
    for (const AlignGainEntry &entry : std::span(point.GainEntries).first(point.GainEntryCount))
        entries.append(QJsonArray{entry.Value1, entry.Value2, entry.Value3, entry.Value4});
    return entries;
}

QJsonArray ArrayOf(const AlignFreqPoint &point)
{
    QJsonArray points;
    for (const AlignSampleRatePoint &ratePoint :
         std::span(point.SampleRatePoints).first(point.SampleRatePointCount))
        points.append(QJsonObject{{u"sampleFrequency"_s, QString::number(ratePoint.SampleFrequency)},
                                  {u"attr"_s, qint64{ratePoint.Attr}},
                                  {u"gainEntries"_s, ArrayOf(ratePoint)}});
    return points;
}

QJsonObject ObjectOf(const AlignDataSet &dataSet)
{
    QJsonArray points;
    for (const AlignFreqPoint &point : std::span(dataSet.FreqPoints).first(dataSet.FreqPointCount))
        points.append(QJsonObject{{u"frequency"_s, QString::number(point.Frequency)},
                                  {u"attr"_s, point.Attr},
                                  {u"sampleRatePoints"_s, ArrayOf(point)}});
    return {{u"attr"_s, QJsonArray{dataSet.Attr1, dataSet.Attr2, dataSet.Attr3, dataSet.Attr4}},
            {u"word"_s, QJsonArray{dataSet.Word1, dataSet.Word2}},
            {u"freqPoints"_s, points}};
}

// From JSON

void Take(const JsonReader &reader, AlignSampleRatePoint &point)
{
    reader.Take(u"sampleFrequency"_s, point.SampleFrequency);
    reader.Take(u"attr"_s, point.Attr);
    const QList<JsonReader> entries =
        reader.entries(u"gainEntries"_s, point.GainEntries.size(),
                       Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "gain entries")));
    point.GainEntryCount = static_cast<std::uint8_t>(entries.size());
    for (qsizetype i = 0; i < entries.size(); ++i) {
        AlignGainEntry &entry = point.GainEntries[static_cast<std::size_t>(i)];
        entries[i].TakeAll({&entry.Value1, &entry.Value2, &entry.Value3, &entry.Value4});
    }
    reader.RefuseOthers();
}

void Take(const JsonReader &reader, AlignFreqPoint &point)
{
    reader.Take(u"frequency"_s, point.Frequency);
    reader.Take(u"attr"_s, point.Attr);
    const QList<JsonReader> points =
        reader.entries(u"sampleRatePoints"_s, point.SampleRatePoints.size(),
                       Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "sample-rate points")));
    point.SampleRatePointCount = static_cast<std::uint8_t>(points.size());
    for (qsizetype i = 0; i < points.size(); ++i)
        Take(points[i], point.SampleRatePoints[static_cast<std::size_t>(i)]);
    reader.RefuseOthers();
}

void Take(const JsonReader &reader, AlignDataSet &dataSet)
{
    reader.member(u"attr"_s).TakeAll({&dataSet.Attr1, &dataSet.Attr2, &dataSet.Attr3, &dataSet.Attr4});
    reader.member(u"word"_s).TakeAll({&dataSet.Word1, &dataSet.Word2});
    const QList<JsonReader> points =
        reader.entries(u"freqPoints"_s, dataSet.FreqPoints.size(),
                       Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "frequency points")));
    dataSet.FreqPointCount = static_cast<std::uint16_t>(points.size());
    for (qsizetype i = 0; i < points.size(); ++i)
        Take(points[i], dataSet.FreqPoints[static_cast<std::size_t>(i)]);
    reader.RefuseOthers();
}

void Take(const JsonReader &reader, AlignTable &table)
{
    const QByteArray id = reader.bytes(u"id"_s, AlignHwIdSize);
    std::copy(id.begin(), id.end(), table.HwId.begin());
    reader.Take(u"alignedAt"_s, table.AlignedAt);
    reader.Take(u"dataSetCapacity"_s, table.DataSetCapacity);
    const QList<JsonReader> dataSets = reader.entries(
        u"dataSets"_s, table.DataSets.size(), Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "data sets")));
    table.DataSetCount = static_cast<std::uint8_t>(dataSets.size());
    for (qsizetype i = 0; i < dataSets.size(); ++i)
        Take(dataSets[i], table.DataSets.Only(static_cast<std::size_t>(i)));
    if (!reader.member(u"sdrType"_s).isMissing()) {
        std::uint8_t sdrType = 0;
        reader.Take(u"sdrType"_s, sdrType);
        if (static_cast<::SdrType>(sdrType) != table.SdrType)
            reader.member(u"sdrType"_s)
                .Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign",
                                                   "another one than the document's; a file has one type")));
    }
    reader.Ignore({u"driver"_s, u"date"_s});
    reader.RefuseOthers();
}

/// Reads the tables behind their number: a store holds no more.
void TakeTables(const JsonReader &document, AlignStore &store)
{
    constexpr std::size_t most = std::numeric_limits<std::uint16_t>::max();
    const QList<JsonReader> tables =
        document.entries(u"tables"_s, most, Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "tables")));
    for (const JsonReader &reader : tables) {
        AlignTable *const table = store.AppendNewTable(store.Tables);
        if (table == nullptr) {
            reader.Note(AlignResultText(AlignResult::InternalError));
            return;
        }
        Take(reader, *table);
    }
}

} // namespace

QJsonObject TableToJson(const AlignTable &table, SdrType sdrType)
{
    QJsonObject object = TableHead(table, sdrType);
    object.insert(u"dataSetCapacity"_s, table.DataSetCapacity);
    if (HasBytesBehindId(table))
        object.insert(u"idHex"_s, QString::fromLatin1(QByteArray(table.HwId.data(), AlignHwIdSize).toHex()));
    QJsonArray dataSets;
    for (const AlignDataSet &dataSet : table.DataSets.first(table.DataSetCount))
        dataSets.append(ObjectOf(dataSet));
    object.insert(u"dataSets"_s, dataSets);
    return object;
}

QStringList AppendTablesOf(const QByteArray &json, AlignStore &store)
{
    QJsonParseError error;
    const QJsonDocument parsed = QJsonDocument::fromJson(json, &error);
    if (error.error != QJsonParseError::NoError)
        return {Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "no JSON, at byte %1: %2"))
                    .arg(error.offset)
                    .arg(error.errorString())};
    QStringList errors;
    const JsonReader document(parsed.isArray() ? QJsonValue(parsed.array()) : QJsonValue(parsed.object()),
                              errors);
    if (document.text(u"format"_s) != TablesFormat)
        document.member(u"format"_s)
            .Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "\"%1\" is wanted")).arg(TablesFormat));
    if (document.text(u"version"_s).section(u'.', 0, 0) != JsonVersion.section(u'.', 0, 0))
        document.member(u"version"_s)
            .Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "this program knows version %1"))
                      .arg(JsonVersion));
    std::uint8_t sdrType = 0;
    document.Take(u"sdrType"_s, sdrType);
    store.SdrType = static_cast<SdrType>(sdrType);
    TakeTables(document, store);
    document.Ignore({u"driver"_s});
    document.RefuseOthers();
    return errors;
}

} // namespace aligntool
