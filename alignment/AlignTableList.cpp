// SPDX-License-Identifier: MIT
#include "alignment/AlignTableList.h"

AlignTableList::~AlignTableList()
{
    Clear();
}

AlignTable *AlignTableList::find(std::string_view hwId) const
{
    for (const AlignTableNode *node = Head; node != nullptr; node = node->Next) {
        if (node->Table != nullptr && AlignHwIdOf(*node->Table) == hwId)
            return node->Table.get();
    }
    return nullptr;
}

void AlignTableList::Append(std::unique_ptr<AlignTableNode> node)
{
    AlignTableNode *appended = node.release();
    if (Tail != nullptr)
        Tail->Next = appended;
    else
        Head = appended;
    Tail = appended;
    ++Count;
}

void AlignTableList::RemoveAfter(AlignTableNode *previous)
{
    const std::unique_ptr<AlignTableNode> removed(previous != nullptr ? previous->Next : Head);
    if (previous != nullptr)
        previous->Next = removed->Next;
    else
        Head = removed->Next;
    if (Tail == removed.get())
        Tail = previous;
    if (Count > 0)
        --Count;
    // Frees the data sets and leaves nothing of the table in the memory that goes back.
    if (removed->Table != nullptr)
        *removed->Table = AlignTable();
}

void AlignTableList::Clear()
{
    // One by one: a chain of owning pointers would recurse once per node.
    while (Head != nullptr)
        RemoveAfter(nullptr);
    Count = 0;
}
