// SPDX-License-Identifier: MIT
// Whole alignment tables to JSON and back.
#pragma once

#include "alignment/AlignStore.h"

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

namespace aligntool {

/// All that a file holds of the table.
[[nodiscard]] QJsonObject TableToJson(const AlignTable &table, SdrType sdrType);

/// Appends the tables of a document of `export` to the store's Tables, and gives the store the document's
/// receiver type. Empty, or all errors of the document, each with the path of its member, as in
/// "tables[3].dataSets[0].freqPoints[2]: more than 10 sample-rate points". The store is of no use then.
[[nodiscard]] QStringList AppendTablesOf(const QByteArray &json, AlignStore &store);

} // namespace aligntool
