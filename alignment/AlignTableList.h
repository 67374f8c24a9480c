// SPDX-License-Identifier: MIT
// The list that holds the alignment tables of several devices.
#pragma once

#include "alignment/AlignTable.h"

#include <cstdint>
#include <limits>
#include <memory>

/// One link of an AlignTableList.
struct AlignTableNode
{
    std::unique_ptr<AlignTable> Table;
    AlignTableNode *Next = nullptr; // owned by the list
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

    /// Links a node behind the tail, in constant time, and owns it from now on. The list must not be full.
    void Append(std::unique_ptr<AlignTableNode> node);

    /// Unlinks and frees the node behind `previous`, or the head when `previous` is null. There must be one.
    void RemoveAfter(AlignTableNode *previous);

    /// Frees every table and node.
    void Clear();
};
