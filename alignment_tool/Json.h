// SPDX-License-Identifier: MIT
// How alignment tables look in JSON. docs/tarnvik-align.schema.json describes the documents.
#pragma once

#include "alignment/AlignTable.h"
#include "alignment_tool/Terminal.h"

#include <QCommandLineOption>
#include <QJsonObject>
#include <QString>

namespace aligntool {

/// The version of all documents: of members that come, the second number tells; of members that go or change,
/// the first.
inline const QString JsonVersion = QStringLiteral("1.0");

/// The option --json.
[[nodiscard]] QCommandLineOption JsonOption();

/// Inserts a text made by platform::BytesText: `key` for readers, with U+FFFD for bytes that are no letters,
/// and then also `key`Hex with all bytes in hexadecimal.
void PutText(QJsonObject &object, const QString &key, const QString &text);

/// What tells one table from another: driver, sdrType, id, date, alignedAt. Numbers of 64 bits are texts.
[[nodiscard]] QJsonObject TableHead(const AlignTable &table, SdrType sdrType);

/// Prints a document whose last member is a list, one entry after the other, each in a line.
class JsonArray
{
public:
    /// The document is {"format": "tarnvik-align/<kind>", "version": ..., "<name>": [...]}.
    JsonArray(Terminal &terminal, const QString &kind, const QString &name)
        : Out(terminal), Kind(kind), Name(name)
    {}

    void Begin();
    void Add(const QJsonObject &entry);
    void End();

private:
    Terminal &Out;
    QString Kind;
    QString Name;
    bool IsFirst = true;
};

} // namespace aligntool
