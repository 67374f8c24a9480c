// SPDX-License-Identifier: MIT
// Sample files for other readers of the format, and what our own finds in a file:
//
//   AlignmentSamples make FOLDER COUNT   writes COUNT files of arbitrary tables, the same each time
//   AlignmentSamples dump FILE...        prints a line of JSON for each file: its name, the result code and,
//   when
//                                        that is 0, all values. Numbers of 64 bits are texts.
#include "alignment/AlignStore.h"
#include "alignment/AlignTableReader.h"
#include "tools/AlignmentGenerator.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QStringList>

#include <cstdio>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

int Make(const QString &folder, int count)
{
    for (int i = 0; i < count; ++i) {
        tools::AlignmentGenerator generator(static_cast<std::uint64_t>(i) + 1);
        AlignStore store;
        store.SdrType = generator.AnySdrType();
        for (std::uint64_t table = generator.UpTo(3);; --table) {
            if (generator.AppendTable(store, 10 + generator.UpTo(2000)) == nullptr)
                return 1;
            if (table == 0)
                break;
        }
        if (store.SaveFile(folder + u"/sample%1.ad"_s.arg(i, 4, 10, QLatin1Char('0'))) != AlignResult::Ok)
            return 1;
    }
    return 0;
}

QJsonArray ToJson(const AlignSampleRatePoint &point)
{
    QJsonArray entries;
    for (std::size_t i = 0; i < point.GainEntryCount; ++i) {
        const AlignGainEntry &entry = point.GainEntries[i];
        entries.append(QJsonArray{entry.Value1, entry.Value2, entry.Value3, entry.Value4});
    }
    return {QString::number(point.SampleFrequency), static_cast<qint64>(point.Attr), entries};
}

QJsonArray ToJson(const AlignFreqPoint &point)
{
    QJsonArray ratePoints;
    for (std::size_t i = 0; i < point.SampleRatePointCount; ++i)
        ratePoints.append(ToJson(point.SampleRatePoints[i]));
    return {QString::number(point.Frequency), point.Attr, ratePoints};
}

QJsonArray ToJson(const AlignDataSet &dataSet)
{
    QJsonArray points;
    for (std::size_t i = 0; i < dataSet.FreqPointCount; ++i)
        points.append(ToJson(dataSet.FreqPoints[i]));
    return {QJsonArray{dataSet.Attr1, dataSet.Attr2, dataSet.Attr3, dataSet.Attr4}, dataSet.Word1,
            dataSet.Word2, points};
}

QJsonObject ToJson(const AlignTable &table)
{
    QJsonArray dataSets;
    for (const AlignDataSet &dataSet : table.DataSets.first(table.DataSetCount))
        dataSets.append(ToJson(dataSet));
    return {{u"version"_s, table.Version},
            {u"id"_s, QString::fromLatin1(QByteArray(table.HwId.data(), AlignHwIdSize).toHex())},
            {u"date"_s, QString::number(table.AlignedAt)},
            {u"capacity"_s, table.DataSetCapacity},
            {u"dataSets"_s, dataSets}};
}

void Dump(const QString &path)
{
    const auto reader = std::make_unique<AlignTableReader>();
    AlignResult result = reader->Open(path);
    QJsonArray tables;
    AlignTable table;
    while (result == AlignResult::Ok && reader->hasNext()) {
        result = reader->ReadNext(table);
        if (result == AlignResult::Ok)
            tables.append(ToJson(table));
    }
    QJsonObject file = {{u"file"_s, path}, {u"result"_s, static_cast<int>(result)}};
    if (result == AlignResult::Ok) {
        file[u"type"_s] = static_cast<int>(reader->sdrType());
        file[u"tables"_s] = tables;
    }
    (void)std::printf("%s\n", QJsonDocument(file).toJson(QJsonDocument::Compact).constData());
}

} // namespace

int main(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments.append(QString::fromLocal8Bit(argv[i]));
    if (arguments.size() == 3 && arguments.first() == u"make"_s && QDir().mkpath(arguments.at(1)))
        return Make(arguments.at(1), arguments.at(2).toInt());
    if (arguments.size() >= 2 && arguments.first() == u"dump"_s) {
        for (const QString &path : arguments.mid(1))
            Dump(path);
        return 0;
    }
    (void)std::fputs("usage: AlignmentSamples make FOLDER COUNT | dump FILE...\n", stderr);
    return 2;
}
