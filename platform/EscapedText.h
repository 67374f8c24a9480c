// SPDX-License-Identifier: MIT
// Texts for bytes that are UTF-8 as a rule, without loss where they are not.
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <string_view>

namespace platform {

/// The bytes as text. A byte that is no part of a letter becomes a half surrogate, U+DC00 plus the byte, as
/// other programs do it.
[[nodiscard]] QString BytesText(std::string_view bytes);

/// The way back: UTF-8, and the bytes that BytesText escaped.
[[nodiscard]] QByteArray TextBytes(QStringView text);

/// Whether what stands at the position is a byte that BytesText escaped.
[[nodiscard]] bool IsEscapedByte(QStringView text, qsizetype position);

} // namespace platform
