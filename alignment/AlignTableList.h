// SPDX-License-Identifier: MIT
// The list that holds the alignment tables of several devices.
#pragma once

#include "alignment/AlignTable.h"

#include <cstdint>
#include <limits>
#include <memory>
#include <string_view>
#include <utility>

/// One link of an AlignTableList.
struct AlignTableNode
{
    std::unique_ptr<AlignTable> Table;
    AlignTableNode *Next = nullptr; // owned by the list
};

/// Walks over the tables of a list, for range-for. `Table` is AlignTable, const or not.
template <typename Table>
class AlignTableIterator
{
public:
    explicit AlignTableIterator(const AlignTableNode *node) : Node(node) { SkipEmptyNodes(); }

    [[nodiscard]] Table &operator*() const { return *Node->Table; }
    AlignTableIterator &operator++()
    {
        Node = Node->Next;
        SkipEmptyNodes();
        return *this;
    }
    bool operator==(const AlignTableIterator &) const = default;

private:
    void SkipEmptyNodes()
    {
        while (Node != nullptr && Node->Table == nullptr)
            Node = Node->Next;
    }

    const AlignTableNode *Node;
};

/// A singly linked list of alignment tables in the order in which they were appended. It owns its nodes and
/// their tables. The members are there to be read; change the list through its functions and those of
/// AlignStore.
struct AlignTableList
{
    /// The most tables that a list holds: what Count, and the count field of a file, can express.
    static constexpr std::uint16_t MaxCount = std::numeric_limits<std::uint16_t>::max();

    std::uint16_t Count = 0;
    AlignTableNode *Head = nullptr;
    AlignTableNode *Tail = nullptr;

    AlignTableList() = default;
    ~AlignTableList();
    AlignTableList(const AlignTableList &) = delete;
    AlignTableList &operator=(const AlignTableList &) = delete;

    [[nodiscard]] bool isFull() const { return Count == MaxCount; }

    // The tables in order, for range-for. Removing a table ends the walk over it.
    [[nodiscard]] AlignTableIterator<AlignTable> begin() { return AlignTableIterator<AlignTable>(Head); }
    [[nodiscard]] AlignTableIterator<AlignTable> end() { return AlignTableIterator<AlignTable>(nullptr); }
    [[nodiscard]] AlignTableIterator<const AlignTable> begin() const
    {
        return AlignTableIterator<const AlignTable>(Head);
    }
    [[nodiscard]] AlignTableIterator<const AlignTable> end() const
    {
        return AlignTableIterator<const AlignTable>(nullptr);
    }

    /// The first table with exactly this hardware id; null when there is none.
    [[nodiscard]] AlignTable *find(std::string_view hwId) const;

    /// Links a node behind the tail, in constant time, and owns it from now on. The list must not be full.
    void Append(std::unique_ptr<AlignTableNode> node);

    /// Unlinks and frees the node behind `previous`, or the head when `previous` is null. There must be one.
    void RemoveAfter(AlignTableNode *previous);

    /// Removes and frees all tables for which the predicate holds, in one walk.
    template <typename Predicate>
    void RemoveIf(Predicate predicate)
    {
        AlignTableNode *previous = nullptr;
        for (AlignTableNode *node = Head; node != nullptr;) {
            AlignTableNode *const next = node->Next;
            if (node->Table != nullptr && predicate(std::as_const(*node->Table)))
                RemoveAfter(previous);
            else
                previous = node;
            node = next;
        }
    }

    /// Frees every table and node.
    void Clear();
};
