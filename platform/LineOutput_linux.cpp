// SPDX-License-Identifier: MIT
#include "platform/LineOutput.h"

#include <poll.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <mutex>

namespace platform {

namespace {

constexpr int PatienceMs = 1000;

/// Whether the stream takes PIPE_BUF bytes at once, or does so within the time.
bool TakesMore(std::FILE *stream, int timeoutMs)
{
    pollfd output = {fileno(stream), POLLOUT, 0};
    int ready = -1;
    do
        ready = poll(&output, 1, timeoutMs);
    while (ready == -1 && errno == EINTR);
    return ready == 1;
}

} // namespace

void WriteOut(std::FILE *stream, std::string_view text)
{
    static std::mutex mutex;
    static std::array<bool, 2> stuck = {};
    const std::scoped_lock lock(mutex);
    bool &isStuck = stuck[stream == stderr ? 1 : 0];
    while (!text.empty()) {
        isStuck = !TakesMore(stream, isStuck ? 0 : PatienceMs);
        if (isStuck)
            return;
        const std::size_t part = std::min(text.size(), std::size_t{PIPE_BUF});
        if (std::fwrite(text.data(), 1, part, stream) != part || std::fflush(stream) != 0)
            return;
        text.remove_prefix(part);
    }
}

} // namespace platform
