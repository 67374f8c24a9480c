// SPDX-License-Identifier: MIT
// Fuzz target: loads the input as an alignment file; what is accepted must survive saving and loading.
#include "fuzz/LoadFileFuzzer.h"

#include "alignment/AlignStore.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

namespace {

/// Ends the program as a finding.
void Require(bool holds, const char *what)
{
    if (holds)
        return;
    (void)std::fprintf(stderr, "LoadFileFuzzer: %s\n", what);
    std::abort();
}

AlignResult Load(AlignStore &store, const std::string &bytes)
{
    std::istringstream stream(bytes, std::ios::binary);
    return store.Load(stream, store.Tables, true);
}

bool IsEmpty(const AlignTableList &list)
{
    return list.Count == 0 && list.Head == nullptr && list.Tail == nullptr;
}

/// A table chunk states its version twice. Only the first is checked, and only the second survives in the
/// table.
bool AllVersionsAreValid(const AlignTableList &list)
{
    for (const AlignTable &table : list) {
        if (table.Version != AlignVersion)
            return false;
    }
    return true;
}

/// Saves what was loaded, loads that and saves it again: the same bytes.
void RequireRoundTrip(AlignStore &store)
{
    std::ostringstream saved(std::ios::binary);
    const AlignResult result = store.Save(saved);
    if (IsEmpty(store.Tables)) {
        Require(result == AlignResult::ListIsEmpty && saved.str().empty(), "an empty list was saved");
        return;
    }
    Require(result == AlignResult::Ok, "what was loaded could not be saved");
    AlignStore again;
    const AlignResult loadedAgain = Load(again, saved.str());
    if (!AllVersionsAreValid(store.Tables)) {
        Require(loadedAgain == AlignResult::VersionMismatch && IsEmpty(again.Tables),
                "a wrong version was accepted");
        return;
    }
    Require(loadedAgain == AlignResult::Ok, "what was saved could not be loaded");
    Require(again.Tables.Count == store.Tables.Count, "tables were lost");
    std::ostringstream savedAgain(std::ios::binary);
    Require(again.Save(savedAgain) == AlignResult::Ok, "what was loaded again could not be saved");
    Require(savedAgain.str() == saved.str(), "saving again gave other bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    AlignStore store;
    switch (Load(store, std::string(reinterpret_cast<const char *>(data), size))) {
    case AlignResult::Ok:
        RequireRoundTrip(store);
        break;
    case AlignResult::FileError:
    case AlignResult::InternalError:
    case AlignResult::VersionMismatch:
    case AlignResult::FileCrcFailed:
        Require(IsEmpty(store.Tables), "the list is not empty after a failure");
        break;
    default:
        Require(false, "a result that loading does not have");
    }
    return 0;
}
