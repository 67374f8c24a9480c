// SPDX-License-Identifier: MIT
// The program's icon.
#pragma once

#include <QIcon>

namespace platform {

/// The icon that the build put into the program; a null icon when there is none. Needs the application
/// object.
[[nodiscard]] QIcon LoadWindowIcon();

} // namespace platform
