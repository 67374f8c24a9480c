// SPDX-License-Identifier: MIT
// Fuzz target: loads the input as an alignment file; what is accepted must survive saving and loading.
#include "fuzz/LoadFileFuzzer.h"

#include "alignment/AlignStore.h"

#include <QCoreApplication>
#include <QString>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>

namespace {

/// Ends the program as a finding.
void Require(bool holds, const char *what)
{
    if (holds)
        return;
    (void)std::fprintf(stderr, "LoadFileFuzzer: %s\n", what);
    std::abort();
}

/// A file of this process in the temporary folder; removed with the object, unless a finding ends the program
/// first.
class ScratchFile
{
public:
    explicit ScratchFile(const char *name)
    {
        std::error_code error;
        Path = std::filesystem::temp_directory_path(error) /
               (std::string(name) + "-" + std::to_string(QCoreApplication::applicationPid()) + ".ad");
    }
    ~ScratchFile()
    {
        std::error_code ignored;
        std::filesystem::remove(Path, ignored);
    }
    ScratchFile(const ScratchFile &) = delete;
    ScratchFile &operator=(const ScratchFile &) = delete;

    [[nodiscard]] QString QtPath() const { return QString::fromStdU16String(Path.u16string()); }

    void Write(const std::uint8_t *data, std::size_t size) const
    {
        std::ofstream stream(Path, std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char *>(data), static_cast<std::streamsize>(size));
        stream.close();
        Require(stream.good(), "the input could not be written");
    }

    [[nodiscard]] std::string Bytes() const
    {
        std::ifstream stream(Path, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

private:
    std::filesystem::path Path;
};

bool IsEmpty(const AlignTableList &list)
{
    return list.Count == 0 && list.Head == nullptr && list.Tail == nullptr;
}

/// A table chunk states its version twice. Only the first is checked, and only the second survives in the
/// table.
bool AllVersionsAreValid(const AlignTableList &list)
{
    for (const AlignTableNode *node = list.Head; node != nullptr; node = node->Next) {
        if (node->Table->Version != AlignVersion)
            return false;
    }
    return true;
}

/// Saves what was loaded, loads that and saves it again: the same bytes.
void RequireRoundTrip(AlignStore &store)
{
    static const ScratchFile saved("tarnvik-fuzz-saved");
    if (IsEmpty(store.Tables)) {
        Require(store.SaveFile(saved.QtPath()) == AlignResult::ListIsEmpty, "an empty list was saved");
        return;
    }
    Require(store.SaveFile(saved.QtPath()) == AlignResult::Ok, "what was loaded could not be saved");
    const std::string bytes = saved.Bytes();
    AlignStore again;
    const AlignResult result = again.LoadFile(saved.QtPath(), again.Tables, true);
    if (!AllVersionsAreValid(store.Tables)) {
        Require(result == AlignResult::VersionMismatch && IsEmpty(again.Tables),
                "a wrong version was accepted");
        return;
    }
    Require(result == AlignResult::Ok, "what was saved could not be loaded");
    Require(again.Tables.Count == store.Tables.Count, "tables were lost");
    Require(again.SaveFile(saved.QtPath()) == AlignResult::Ok, "what was loaded again could not be saved");
    Require(saved.Bytes() == bytes, "saving again gave other bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const ScratchFile input("tarnvik-fuzz-input");
    input.Write(data, size);
    AlignStore store;
    switch (store.LoadFile(input.QtPath(), store.Tables, true)) {
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
