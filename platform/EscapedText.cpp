// SPDX-License-Identifier: MIT
#include "platform/EscapedText.h"

#include <QStringDecoder>

#include <algorithm>
#include <cstdint>

namespace platform {

namespace {

constexpr char16_t EscapeBase = 0xDC00;

/// Without the second, U+FEFF at the beginning would be left out as a mark of the byte order.
constexpr QStringDecoder::Flags DecoderFlags =
    QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom;

/// How many bytes the letter at the beginning has; 0 when there is none.
qsizetype LetterSize(QByteArrayView bytes, QString &letter)
{
    constexpr qsizetype longest = 4;
    for (qsizetype size = 1; size <= std::min(longest, bytes.size()); ++size) {
        QStringDecoder decoder(QStringDecoder::Utf8, DecoderFlags);
        letter = decoder(bytes.first(size));
        if (!decoder.hasError())
            return size;
    }
    return 0;
}

} // namespace

QString BytesText(std::string_view bytes)
{
    const QByteArrayView view(bytes.data(), static_cast<qsizetype>(bytes.size()));
    QStringDecoder whole(QStringDecoder::Utf8, DecoderFlags);
    QString text = whole(view);
    if (!whole.hasError())
        return text;
    text.clear();
    for (qsizetype i = 0; i < view.size();) {
        QString letter;
        const qsizetype size = LetterSize(view.sliced(i), letter);
        text += size > 0 ? letter : QString(QChar(EscapeBase + static_cast<std::uint8_t>(view[i])));
        i += std::max<qsizetype>(size, 1);
    }
    return text;
}

QByteArray TextBytes(QStringView text)
{
    QByteArray bytes;
    qsizetype begin = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (!IsEscapedByte(text, i))
            continue;
        bytes += text.sliced(begin, i - begin).toUtf8();
        bytes += static_cast<char>(text[i].unicode() - EscapeBase);
        begin = i + 1;
    }
    return bytes + text.sliced(begin).toUtf8();
}

bool IsEscapedByte(QStringView text, qsizetype position)
{
    // What follows a first half is the second half of a letter.
    const char16_t unit = text[position].unicode();
    return unit >= EscapeBase + 0x80 && unit <= EscapeBase + 0xFF &&
           (position == 0 || !text[position - 1].isHighSurrogate());
}

} // namespace platform
