// SPDX-License-Identifier: MIT
#include "TarnvikControl/ArgumentStore.h"

#include <algorithm>
#include <cstring>

bool ArgumentStore::Fill(const std::vector<std::string> &arguments)
{
    Buffers = {};
    Vector = {};
    Count = static_cast<int>(std::min<std::size_t>(arguments.size(), Capacity));
    for (std::size_t i = 0; i < static_cast<std::size_t>(Count); ++i) {
        const std::string &argument = arguments[i];
        if (argument.size() > LongestArgument)
            return false;
        std::copy(argument.begin(), argument.end(), Buffers[i].begin());
        Vector[i] = Buffers[i].data();
    }
    return true;
}

bool ArgumentStore::wantsDebugConsole() const
{
    return std::strcmp(Buffers[1].data(), "--DEBUG") == 0;
}
