// SPDX-License-Identifier: MIT
#include "tests/Common_Files/StatusFiles.h"

#include <QFile>
#include <QTest>

namespace tests {

QByteArray StatusText(quint32 sequenceNr, const QByteArray &message)
{
    return "SequenceNr=" + QByteArray::number(sequenceNr) +
           "\nLastAction=3\nLastActionResult=-7\nMessage=" + message + '\n';
}

StructOstrelRecordStatus StatusOf(quint32 sequenceNr, const QString &message)
{
    return {sequenceNr, 3, -7, message};
}

bool Rewrite(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(content) == content.size();
}

} // namespace tests

char *toString(const StructOstrelRecordStatus &status)
{
    return QTest::toString(QStringLiteral("{%1, %2, %3, \"%4\"}")
                               .arg(status.SequenceNr)
                               .arg(status.LastAction)
                               .arg(status.LastActionResult)
                               .arg(status.Message));
}
