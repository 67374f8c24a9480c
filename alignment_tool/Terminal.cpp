// SPDX-License-Identifier: MIT
#include "alignment_tool/Terminal.h"

#include "platform/EscapedText.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace aligntool {

void Terminal::Print(const QString &line)
{
    PrintBytes(line.toUtf8() + '\n');
}

void Terminal::PrintBytes(const QByteArray &bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    Lost = std::fwrite(bytes.constData(), 1, size, stdout) != size || Lost;
}

void Terminal::Complain(const QString &message)
{
    Lost = std::fflush(stdout) != 0 || Lost;
    const QByteArray line = u"%1: %2\n"_s.arg(QCoreApplication::applicationName(), message).toUtf8();
    (void)std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

bool Terminal::Flush()
{
    Lost = std::fflush(stdout) != 0 || Lost;
    return !Lost;
}

QString Harmless(const QString &text)
{
    QString harmless;
    const auto bytes = [](uint number) {
        return u"\\x"_s + QString::number(number & 0xFF, 16).toUpper().rightJustified(2, u'0');
    };
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i].category() == QChar::Other_Control || platform::IsEscapedByte(text, i))
            harmless += bytes(text[i].unicode());
        else
            harmless += text[i];
    }
    return harmless;
}

} // namespace aligntool
