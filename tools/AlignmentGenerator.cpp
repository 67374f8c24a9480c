// SPDX-License-Identifier: MIT
#include "tools/AlignmentGenerator.h"

#include "alignment/AlignFileFormat.h"

#include <algorithm>
#include <cstdio>
#include <limits>
#include <span>

namespace tools {

namespace {

constexpr std::size_t GreatestPayload = alignfile::DataSetPayloadLimit - 1;

/// Takes `size` bytes off the budget if it has them.
bool Spend(std::size_t &budget, std::size_t size)
{
    if (size > budget)
        return false;
    budget -= size;
    return true;
}

/// Gain entries that count up, so that no two of a data set are alike.
void FillGainEntries(AlignSampleRatePoint &point, std::size_t count, std::uint16_t &value)
{
    point.GainEntryCount = static_cast<std::uint8_t>(count);
    for (AlignGainEntry &entry : std::span(point.GainEntries).first(count)) {
        for (std::uint16_t *member : {&entry.Value1, &entry.Value2, &entry.Value3, &entry.Value4})
            *member = ++value;
    }
}

} // namespace

SdrType AlignmentGenerator::AnySdrType()
{
    return static_cast<SdrType>(1 + UpTo(3));
}

std::uint64_t AlignmentGenerator::UpTo(std::uint64_t most)
{
    // Not a standard distribution: those differ between standard libraries. The slight bias does not matter.
    const std::uint64_t number = Engine();
    return most == std::numeric_limits<std::uint64_t>::max() ? number : number % (most + 1);
}

std::string AlignmentGenerator::AnyHwId()
{
    // The lengths at both ends are where mistakes are made, so they come up often.
    std::size_t length = UpTo(AlignHwIdSize);
    switch (UpTo(7)) {
    case 0:
        length = 0;
        break;
    case 1:
        length = AlignHwIdSize;
        break;
    case 2:
        length = AlignHwIdSize - 1;
        break;
    default:
        break;
    }
    std::string hwId(length, '\0');
    std::generate(hwId.begin(), hwId.end(), [this] { return static_cast<char>(1 + UpTo(254)); });
    return hwId;
}

std::string AlignmentGenerator::ReadableHwId()
{
    // An odd factor maps the running number to another one for each value; so does what the seed changes.
    const std::uint64_t number = (++ReadableIds * 0x9E3779B97F4A7C15U) ^ ReadableIdMask;
    std::array<char, 19> text = {};
    (void)std::snprintf(text.data(), text.size(), "0x%016llX", static_cast<unsigned long long>(number));
    return text.data();
}

void AlignmentGenerator::SetHwId(AlignTable &table, const std::string &hwId, bool garbage)
{
    const std::size_t length = std::min(hwId.size(), table.HwId.size());
    table.HwId.fill('\0');
    std::copy_n(hwId.begin(), length, table.HwId.begin());
    if (garbage && length + 1 < table.HwId.size())
        std::generate(table.HwId.begin() + static_cast<std::ptrdiff_t>(length) + 1, table.HwId.end(),
                      [this] { return static_cast<char>(UpTo(255)); });
}

void AlignmentGenerator::FillDataSet(AlignDataSet &dataSet, std::size_t payloadSize)
{
    for (std::uint8_t *attr : {&dataSet.Attr1, &dataSet.Attr2, &dataSet.Attr3, &dataSet.Attr4})
        *attr = static_cast<std::uint8_t>(UpTo(255));
    dataSet.Word1 = static_cast<std::uint16_t>(UpTo(65535));
    dataSet.Word2 = static_cast<std::uint16_t>(UpTo(65535));

    std::size_t budget = std::min(payloadSize, GreatestPayload) - alignfile::DataSetFieldsSize;
    const std::size_t points = UpTo(dataSet.FreqPoints.size());
    for (std::size_t i = 0; i < points && Spend(budget, alignfile::FreqPointFieldsSize); ++i) {
        AlignFreqPoint &point = dataSet.FreqPoints[i];
        dataSet.FreqPointCount = static_cast<std::uint16_t>(i + 1);
        point.Frequency = Engine();
        point.Attr = static_cast<std::uint8_t>(UpTo(255));
        const std::size_t ratePoints = UpTo(point.SampleRatePoints.size());
        for (std::size_t j = 0; j < ratePoints && Spend(budget, alignfile::SampleRatePointFieldsSize); ++j) {
            AlignSampleRatePoint &ratePoint = point.SampleRatePoints[j];
            point.SampleRatePointCount = static_cast<std::uint8_t>(j + 1);
            ratePoint.SampleFrequency = Engine();
            ratePoint.Attr = static_cast<std::uint32_t>(Engine());
            const std::size_t entries = UpTo(ratePoint.GainEntries.size());
            for (std::size_t k = 0; k < entries && Spend(budget, alignfile::GainEntrySize); ++k) {
                AlignGainEntry &entry = ratePoint.GainEntries[k];
                ratePoint.GainEntryCount = static_cast<std::uint8_t>(k + 1);
                for (std::uint16_t *member : {&entry.Value1, &entry.Value2, &entry.Value3, &entry.Value4})
                    *member = static_cast<std::uint16_t>(UpTo(65535));
            }
        }
    }
}

void AlignmentGenerator::FillDataSetFull(AlignDataSet &dataSet, Full layout)
{
    std::size_t budget = GreatestPayload - alignfile::DataSetFieldsSize;
    std::uint16_t value = 0;
    const bool wide = layout == Full::Wide;
    if (wide) {
        // The frequency points come first, one sample-rate point each; what is left goes into their gain
        // entries.
        dataSet.FreqPointCount = static_cast<std::uint16_t>(dataSet.FreqPoints.size());
        budget -= dataSet.FreqPoints.size() *
                  (alignfile::FreqPointFieldsSize + alignfile::SampleRatePointFieldsSize);
    }
    for (std::size_t i = 0; i < dataSet.FreqPoints.size(); ++i) {
        AlignFreqPoint &point = dataSet.FreqPoints[i];
        if (!wide && !Spend(budget, alignfile::FreqPointFieldsSize))
            break;
        dataSet.FreqPointCount = static_cast<std::uint16_t>(wide ? dataSet.FreqPoints.size() : i + 1);
        point.Frequency = 70'000'000 + 25'000'000 * i;
        const std::size_t ratePoints = wide ? 1 : point.SampleRatePoints.size();
        for (std::size_t j = 0; j < ratePoints; ++j) {
            if (!wide && !Spend(budget, alignfile::SampleRatePointFieldsSize))
                break;
            AlignSampleRatePoint &ratePoint = point.SampleRatePoints[j];
            point.SampleRatePointCount = static_cast<std::uint8_t>(j + 1);
            ratePoint.SampleFrequency = 2'000'000 * (j + 1);
            const std::size_t share = wide ? budget / (dataSet.FreqPoints.size() - i) : budget;
            const std::size_t entries =
                std::min(ratePoint.GainEntries.size(), share / alignfile::GainEntrySize);
            FillGainEntries(ratePoint, entries, value);
            budget -= entries * alignfile::GainEntrySize;
        }
    }
}

AlignTable *AlignmentGenerator::AppendTable(AlignStore &store, std::size_t payloadSize)
{
    AlignTable *table = store.AppendNewTable(store.Tables);
    if (table == nullptr)
        return nullptr;
    SetHwId(*table, AnyHwId(), UpTo(3) == 0);
    table->AlignedAt = UpTo(3) == 0 ? Engine() : UpTo(4'102'444'800); // any number, or a date up to 2100
    table->DataSetCount = static_cast<std::uint8_t>(UpTo(table->DataSets.size()));
    for (std::size_t set = 0; set < table->DataSetCount; ++set)
        FillDataSet(table->DataSets[set], payloadSize);
    return table;
}

AlignTable *AlignmentGenerator::AppendReadableTable(AlignStore &store)
{
    AlignTable *table = store.AppendNewTable(store.Tables);
    if (table == nullptr)
        return nullptr;
    SetHwId(*table, ReadableHwId());
    // From 2020-01-01 to 2025-12-31.
    table->AlignedAt = 1'577'836'800 + UpTo(std::uint64_t{2191} * 86'400);
    return table;
}

bool AlignmentGenerator::AppendFullTables(AlignStore &store, int count, Full layout)
{
    for (int i = 0; i < count; ++i) {
        AlignTable *table = AppendReadableTable(store);
        if (table == nullptr)
            return false;
        table->DataSetCount = static_cast<std::uint8_t>(table->DataSets.size());
        for (std::size_t set = 0; set < table->DataSets.size(); ++set)
            FillDataSetFull(table->DataSets[set], layout);
    }
    return true;
}

bool AlignmentGenerator::AppendEmptyTables(AlignStore &store, int count)
{
    for (int i = 0; i < count; ++i) {
        if (AppendReadableTable(store) == nullptr)
            return false;
    }
    return true;
}

bool AlignmentGenerator::AppendDemonstrationTables(AlignStore &store, int count)
{
    for (int i = 0; i < count; ++i) {
        AlignTable *table = AppendReadableTable(store);
        if (table == nullptr)
            return false;
        table->DataSetCount = static_cast<std::uint8_t>(table->DataSets.size());
        for (std::size_t set = 0; set < table->DataSets.size(); ++set)
            FillDataSet(table->DataSets[set], 1000);
    }
    return true;
}

} // namespace tools
