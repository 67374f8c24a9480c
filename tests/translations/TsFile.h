// SPDX-License-Identifier: MIT
// Translation files as translators edit them (.ts).
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tests {

/// A text and its translation.
struct TsMessage
{
    QString Context;
    QString Source;
    QString Comment; // tells equal source texts of one context apart
    QString Translation;
    bool Finished = false;

    /// What identifies the message in its file, readable.
    [[nodiscard]] QString key() const;
};

/// The messages of a file in order. Empty when it cannot be read.
[[nodiscard]] QList<TsMessage> ReadTsFile(const QString &path);

/// What a translation lost or added of that which must be the same in every language: placeholders, line
/// breaks, mnemonics, tags, ellipses, file patterns and blanks at the ends. One entry each, naming it; empty
/// when all is there.
[[nodiscard]] QStringList Losses(const QString &source, const QString &translation);

} // namespace tests
