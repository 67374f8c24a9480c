// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

#include <system_error>

namespace platform {

bool WaitsForOtherEnd(const std::filesystem::path &path) noexcept
{
    std::error_code ignored;
    const std::filesystem::file_type type = std::filesystem::status(path, ignored).type();
    return type == std::filesystem::file_type::fifo || type == std::filesystem::file_type::socket;
}

} // namespace platform
