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

/// What "format" says in a document of whole tables.
inline const QString TablesFormat = QStringLiteral("tarnvik-align/tables");

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
    explicit JsonArray(Terminal &terminal) : Out(terminal) {}

    /// The document is {"format": <format>, "version": ..., <the members of `head`>, "tables": [...]}.
    void Begin(const QString &format, const QJsonObject &head = {});
    void Add(const QJsonObject &entry);
    void End();

private:
    Terminal &Out;
    bool IsFirst = true;
};

} // namespace aligntool
