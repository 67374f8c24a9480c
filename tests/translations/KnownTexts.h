// SPDX-License-Identifier: MIT
// What may stand on the screen in one language.
#pragma once

#include <QList>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace tests {

/// The texts of the program and of the parts of Qt that it shows, in one language. A text on the screen is
/// known when it is one of them with its placeholders filled, or made of data, which has no language.
class KnownTexts
{
public:
    /// `language` is "de" or "en".
    explicit KnownTexts(const QString &language);

    /// Something that is the same in every language: a pattern for a whole text.
    void AddData(const QString &pattern);

    [[nodiscard]] bool knows(const QString &text) const;
    /// Those that are not known, each once.
    [[nodiscard]] QStringList unknown(const QStringList &texts) const;
    [[nodiscard]] bool isEmpty() const { return Patterns.isEmpty(); }

private:
    void Add(const QString &text);
    [[nodiscard]] bool knowsLine(const QString &text) const;

    QList<QRegularExpression> Patterns;
    QList<QRegularExpression> Data;
};

} // namespace tests
