// SPDX-License-Identifier: MIT
// A console is kept from stopping by Console_windows.cpp, and there is no asking a pipe whether it takes
// more.
#include "platform/LineOutput.h"

namespace platform {

void WriteOut(std::FILE *stream, std::string_view text)
{
    (void)std::fwrite(text.data(), 1, text.size(), stream);
    (void)std::fflush(stream);
}

} // namespace platform
