// SPDX-License-Identifier: MIT
// Runs a fuzz target on the files and folders given, without a fuzzer: the corpus as an ordinary test.
#include "fuzz/LoadFileFuzzer.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <system_error>
#include <vector>

namespace {

/// False when the file cannot be read.
bool Replay(const std::filesystem::path &file)
{
    std::ifstream stream(file, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
    if (!stream.is_open() || stream.bad()) {
        (void)std::fprintf(stderr, "%s cannot be read\n", file.string().c_str());
        return false;
    }
    (void)std::printf("%s\n", file.filename().string().c_str());
    (void)std::fflush(stdout); // names the input when the target ends the program
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    std::vector<std::filesystem::path> files;
    for (const char *argument : std::vector<const char *>(argv + 1, argv + argc)) {
        std::error_code error;
        if (!std::filesystem::is_directory(argument, error)) {
            files.emplace_back(argument);
            continue;
        }
        for (const auto &entry : std::filesystem::directory_iterator(argument, error))
            files.push_back(entry.path());
    }
    if (files.empty()) {
        (void)std::fputs("no input\n", stderr);
        return 1;
    }
    bool allRead = true;
    for (const std::filesystem::path &file : files)
        allRead = Replay(file) && allRead;
    (void)std::printf("%zu inputs\n", files.size());
    return allRead ? 0 : 1;
}
