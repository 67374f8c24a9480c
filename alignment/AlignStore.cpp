// SPDX-License-Identifier: MIT
#include "alignment/AlignStore.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

namespace {

/// The bytes of a hardware id up to its NUL, at most as many as a table can hold.
std::string_view HwIdBytes(const char *hwId)
{
    const void *end = std::memchr(hwId, '\0', AlignHwIdSize);
    return {hwId,
            end != nullptr ? static_cast<std::size_t>(static_cast<const char *>(end) - hwId) : AlignHwIdSize};
}

/// The ids of a selection, sorted for lookup: a merge may select tens of thousands of tables. (A standard set
/// would throw where it gets no memory.)
class SelectedIds
{
public:
    explicit SelectedIds(std::span<const AlignSelectionEntry> selection)
        : Ids(new (std::nothrow) std::string_view[selection.size()]), Count(selection.size())
    {
        if (Ids == nullptr)
            return;
        std::transform(selection.begin(), selection.end(), Ids.get(),
                       [](const AlignSelectionEntry &entry) { return std::string_view(entry.HwId); });
        std::sort(Ids.get(), Ids.get() + Count);
    }

    /// False when there was no memory.
    [[nodiscard]] bool isValid() const { return Ids != nullptr; }

    [[nodiscard]] bool contains(std::string_view id) const
    {
        return std::binary_search(Ids.get(), Ids.get() + Count, id);
    }

private:
    std::unique_ptr<std::string_view[]> Ids;
    std::size_t Count;
};

} // namespace

void AlignStore::InitTable(AlignTable &table, ::SdrType sdrType)
{
    table = AlignTable();
    table.DataType = AlignTableDataType;
    table.SdrType = sdrType;
    table.Version = AlignVersion;
    const std::uint8_t capacity = AlignDataSetCapacityOf(sdrType);
    table.DataSets = AlignDataSetBlock(capacity, sdrType);
    if (!table.DataSets.empty())
        table.DataSetCapacity = capacity;
}

AlignTable *AlignStore::AppendNewTable(AlignTableList &list) const
{
    if (list.isFull())
        return nullptr;
    std::unique_ptr<AlignTableNode> node(new (std::nothrow) AlignTableNode);
    if (node == nullptr)
        return nullptr;
    node->Table.reset(new (std::nothrow) AlignTable);
    if (node->Table == nullptr)
        return nullptr;
    InitTable(*node->Table, SdrType);
    if (node->Table->DataSetCapacity != AlignDataSetCapacityOf(SdrType))
        return nullptr; // no memory for the data sets
    list.Append(std::move(node));
    return list.Tail->Table.get();
}

void AlignStore::ClearList(AlignTableList &list)
{
    list.Clear();
}

void AlignStore::ClearTableByHwId(AlignTableList *list, const char *hwId)
{
    if (list == nullptr || hwId == nullptr)
        return;
    // A copy: the id may be that of the table that is about to be freed.
    const std::string_view bytes = HwIdBytes(hwId);
    std::array<char, AlignHwIdSize> copied = {};
    std::copy(bytes.begin(), bytes.end(), copied.begin());
    const std::string_view wanted(copied.data(), bytes.size());
    AlignTableNode *previous = nullptr;
    for (AlignTableNode *node = list->Head; node != nullptr; previous = node, node = node->Next) {
        if (node->Table == nullptr)
            continue;
        const std::string_view present = AlignHwIdOf(*node->Table);
        const std::size_t shorter = std::min(wanted.size(), present.size());
        if (wanted.substr(0, shorter) != present.substr(0, shorter))
            continue;
        list->RemoveAfter(previous);
        (void)std::printf("debug: [OK] raw_clearListElementByHwID, cleared %.*s from pstList\n",
                          static_cast<int>(wanted.size()), wanted.data());
        (void)std::fflush(stdout); // standard output may be a pipe
        return;
    }
}

AlignResult AlignStore::MergeTables(AlignTableList &target, const AlignTableList &source,
                                    std::span<const AlignSelectionEntry> selection) const
{
    const SelectedIds selected(selection);
    if (!selected.isValid())
        return AlignResult::InternalError;
    for (const AlignTableNode *from = source.Head; from != nullptr; from = from->Next) {
        if (from->Table == nullptr || !selected.contains(AlignHwIdOf(*from->Table)))
            continue;
        if (target.isFull())
            return AlignResult::InternalError;
        std::unique_ptr<AlignTableNode> node(new (std::nothrow) AlignTableNode);
        if (node == nullptr)
            return AlignResult::InternalError;
        node->Table.reset(new (std::nothrow) AlignTable);
        if (node->Table == nullptr)
            return AlignResult::Ok; // the merge ends here without an error, see the header
        const AlignTable &original = *from->Table;
        AlignTable &copy = *node->Table;
        InitTable(copy, SdrType);
        if (copy.DataSets.empty() || copy.DataSetCapacity != original.DataSetCapacity)
            return AlignResult::Ok; // likewise
        copy.DataType = original.DataType;
        copy.SdrType = original.SdrType;
        copy.Version = original.Version;
        copy.HwId = original.HwId;
        copy.AlignedAt = original.AlignedAt;
        copy.DataSetCount = original.DataSetCount;
        copy.DataSets.CopyIntoFresh(original.DataSets);
        target.Append(std::move(node));
    }
    return AlignResult::Ok;
}
