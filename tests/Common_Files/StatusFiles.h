// SPDX-License-Identifier: MIT
// Status files as a recorder writes them.
#pragma once

#include "Common_Files/OstrelRecordStatus.h"

#include <QByteArray>
#include <QString>

namespace tests {

/// The text of a status file with LastAction 3 and LastActionResult -7.
[[nodiscard]] QByteArray StatusText(quint32 sequenceNr, const QByteArray &message);

/// What is read from that text.
[[nodiscard]] StructOstrelRecordStatus StatusOf(quint32 sequenceNr, const QString &message);

/// Rewrites the file in place, as the recorder does; false when that fails.
[[nodiscard]] bool Rewrite(const QString &path, const QByteArray &content);

} // namespace tests

/// For QCOMPARE: shows the values in the message of a comparison that fails; the caller deletes the text.
[[nodiscard]] char *toString(const StructOstrelRecordStatus &status);
