// SPDX-License-Identifier: MIT
// Fuzz target: loads the input as an alignment file; what is accepted must survive saving and loading.
#include "fuzz/LoadFileFuzzer.h"

#include "alignment/AlignStore.h"
#include "fuzz/LoadFileOracle.h"

#include <cstdio>
#include <cstdlib>
#include <istream>
#include <sstream>
#include <streambuf>
#include <string>
#include <string_view>

namespace {

/// Ends the program as a finding.
void Require(bool holds, const char *what)
{
    if (holds)
        return;
    (void)std::fprintf(stderr, "LoadFileFuzzer: %s\n", what);
    std::abort();
}

/// Reads from memory that is somebody else's.
class MemoryDevice : public std::streambuf
{
public:
    explicit MemoryDevice(std::string_view bytes)
    {
        auto *const begin =
            const_cast<char *>(bytes.data()); // the face of the base class; nothing is written
        setg(begin, begin, begin + bytes.size());
    }
};

AlignResult Load(AlignStore &store, std::string_view bytes)
{
    MemoryDevice device(bytes);
    std::istream stream(&device);
    return store.Load(stream, store.Tables, true);
}

bool IsEmpty(const AlignTableList &list)
{
    return list.Count == 0 && list.Head == nullptr && list.Tail == nullptr;
}

/// A table chunk states its version twice. Only the first is checked, and the second comes into the table.
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
    if (!AllVersionsAreValid(store.Tables)) {
        Require(result == AlignResult::VersionMismatch && saved.str().empty(), "a wrong version was saved");
        return;
    }
    Require(result == AlignResult::Ok, "what was loaded could not be saved");
    AlignStore again;
    const AlignResult loadedAgain = Load(again, saved.str());
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
    const AlignResult result = Load(store, {reinterpret_cast<const char *>(data), size});
    Require(result == ExpectedResult({data, size}), "not the result that the format demands");
    if (result == AlignResult::Ok)
        RequireRoundTrip(store);
    else
        Require(IsEmpty(store.Tables), "the list is not empty after a failure");
    return 0;
}
