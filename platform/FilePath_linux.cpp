// SPDX-License-Identifier: MIT
#include "platform/FilePath.h"

#include <QByteArray>
#include <QFile>
#include <QStringDecoder>

#include <algorithm>
#include <cstdint>
#include <new>

namespace platform {

namespace {

constexpr char16_t EscapeBase = 0xDC00;

/// A byte above ASCII that PathText escaped.
bool IsEscape(QStringView text, qsizetype position)
{
    const char16_t unit = text[position].unicode();
    return unit >= EscapeBase + 0x80 && unit <= EscapeBase + 0xFF &&
           (position == 0 || !text[position - 1].isHighSurrogate());
}

/// How many bytes the letter at the beginning has; 0 when there is none.
qsizetype LetterSize(QByteArrayView bytes, QString &letter)
{
    constexpr qsizetype longest = 4;
    for (qsizetype size = 1; size <= longest && size <= bytes.size(); ++size) {
        QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
        letter = decoder(bytes.first(size));
        if (!decoder.hasError())
            return size;
    }
    return 0;
}

} // namespace

std::optional<std::filesystem::path> FileSystemPath(const QString &path) noexcept
{
    try {
        QByteArray bytes;
        qsizetype begin = 0;
        for (qsizetype i = 0; i < path.size(); ++i) {
            if (!IsEscape(path, i))
                continue;
            bytes += QFile::encodeName(path.mid(begin, i - begin));
            bytes += static_cast<char>(path[i].unicode() - EscapeBase);
            begin = i + 1;
        }
        // Qt encodes the name: the standard library's conversion throws on letters that it cannot convert.
        bytes += QFile::encodeName(path.mid(begin));
        return std::filesystem::path(bytes.toStdString());
    } catch (const std::bad_alloc &) {
        return std::nullopt;
    }
}

QString PathText(const std::filesystem::path &path)
{
    const QByteArrayView bytes(path.native());
    QString text;
    for (qsizetype i = 0; i < bytes.size();) {
        QString letter;
        const qsizetype size = LetterSize(bytes.sliced(i), letter);
        text += size > 0 ? letter : QString(QChar(EscapeBase + static_cast<std::uint8_t>(bytes[i])));
        i += std::max<qsizetype>(size, 1);
    }
    return text;
}

} // namespace platform
