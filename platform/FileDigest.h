// SPDX-License-Identifier: MIT
// Tells whether somebody else wrote a file meanwhile.
#pragma once

#include <QByteArray>
#include <QString>

namespace platform {

/// What tells one content of a file from another; empty for what cannot be read, and for what is no regular
/// file.
[[nodiscard]] QByteArray FileDigest(const QString &path);

} // namespace platform
