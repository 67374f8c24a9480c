// SPDX-License-Identifier: MIT
#include "alignment_tool/Terminal.h"

#include "platform/EscapedText.h"

#include <QCoreApplication>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

/// What controls a terminal, ends a line or turns its direction round.
bool IsHarmful(QChar::Category category)
{
    return category == QChar::Other_Control || category == QChar::Other_Format ||
           category == QChar::Separator_Line || category == QChar::Separator_Paragraph;
}

QString Hexadecimal(uint number, int digits)
{
    return QString::number(number, 16).toUpper().rightJustified(digits, u'0');
}

} // namespace

void Terminal::Print(const QString &line)
{
    PrintBytes(line.toUtf8() + '\n');
}

void Terminal::PrintBytes(const QByteArray &bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    Lost = std::fwrite(bytes.constData(), 1, size, stdout) != size || Lost;
}

void Terminal::Note(const QString &line)
{
    Lost = std::fflush(stdout) != 0 || Lost;
    const QByteArray bytes = line.toUtf8() + '\n';
    (void)std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stderr);
}

void Terminal::Complain(const QString &message)
{
    Note(u"%1: %2"_s.arg(QCoreApplication::applicationName(), message));
}

bool Terminal::Flush()
{
    Lost = std::fflush(stdout) != 0 || Lost;
    return !Lost;
}

QString Harmless(const QString &text)
{
    QString harmless;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const uint unit = text[i].unicode();
        if (platform::IsEscapedByte(text, i))
            harmless += u"\\x%1"_s.arg(Hexadecimal(unit & 0xFF, 2));
        else if (IsHarmful(text[i].category()))
            harmless +=
                unit < 0x80 ? u"\\x%1"_s.arg(Hexadecimal(unit, 2)) : u"\\u%1"_s.arg(Hexadecimal(unit, 4));
        else
            harmless += text[i];
    }
    return harmless;
}

} // namespace aligntool
