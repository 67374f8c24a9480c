// SPDX-License-Identifier: MIT
#include "tests/translations/TsFile.h"

#include <QFile>
#include <QRegularExpression>
#include <QXmlStreamReader>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

TsMessage ReadMessage(QXmlStreamReader &xml, const QString &context)
{
    TsMessage message;
    message.Context = context;
    while (xml.readNextStartElement()) {
        if (xml.name() == QLatin1String("source")) {
            message.Source = xml.readElementText();
        } else if (xml.name() == QLatin1String("comment")) {
            message.Comment = xml.readElementText();
        } else if (xml.name() == QLatin1String("translation")) {
            message.Finished = !xml.attributes().hasAttribute(QLatin1String("type"));
            message.Translation = xml.readElementText(QXmlStreamReader::IncludeChildElements);
        } else {
            xml.skipCurrentElement();
        }
    }
    return message;
}

/// Every match of the pattern, sorted.
QStringList Matches(const QString &text, const QRegularExpression &pattern)
{
    QStringList matches;
    for (auto it = pattern.globalMatch(text); it.hasNext();)
        matches.append(it.next().captured());
    matches.sort();
    return matches;
}

QString BlanksAtTheEnds(const QString &text)
{
    static const QRegularExpression ends(u"^( *)(?:.*[^ ])?( *)$"_s,
                                         QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = ends.match(text);
    return match.captured(1) + u'|' + match.captured(2);
}

} // namespace

QString TsMessage::key() const
{
    const QString text = QString(Source).replace(u'\n', u"\\n"_s);
    return u"%1: \"%2\""_s.arg(Context, text) + (Comment.isEmpty() ? QString() : u" (%1)"_s.arg(Comment));
}

QList<TsMessage> ReadTsFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QXmlStreamReader xml(&file);
    QList<TsMessage> messages;
    QString context;
    xml.readNextStartElement(); // TS
    while (xml.readNextStartElement()) {
        if (xml.name() != QLatin1String("context")) {
            xml.skipCurrentElement();
            continue;
        }
        while (xml.readNextStartElement()) {
            if (xml.name() == QLatin1String("name"))
                context = xml.readElementText();
            else if (xml.name() == QLatin1String("message"))
                messages.append(ReadMessage(xml, context));
            else
                xml.skipCurrentElement();
        }
    }
    return xml.hasError() ? QList<TsMessage>() : messages;
}

QStringList Losses(const QString &source, const QString &translation)
{
    struct Kind
    {
        const char *Name;
        QRegularExpression Pattern;
    };
    static const Kind kinds[] = {
        {"placeholders", QRegularExpression(u"%(L?\\d+|n)"_s)},
        {"line breaks", QRegularExpression(u"\n"_s)},
        {"mnemonics", QRegularExpression(u"&(?=[^\\s&])(?!\\w+;)"_s)},
        {"tags", QRegularExpression(u"</?(a|b|br|h\\d|i|p|u)\\b[^>]*>"_s)},
        {"angle brackets", QRegularExpression(u"[<>]"_s)},
        {"ellipses", QRegularExpression(u"\\.\\.\\."_s)},
        {"file patterns", QRegularExpression(u"\\([^)]*\\*[^)]*\\)(;;)?"_s)},
    };
    QStringList losses;
    for (const Kind &kind : kinds) {
        if (Matches(source, kind.Pattern) != Matches(translation, kind.Pattern))
            losses.append(QString::fromLatin1(kind.Name));
    }
    // Blanks before a colon fill a label up to its column; their number follows the label's length.
    static const QRegularExpression filler(u"^ +:"_s);
    const bool fills = filler.match(source).hasMatch() && filler.match(translation).hasMatch();
    const auto shortened = [fills](QString text) { return fills ? text.replace(filler, u":"_s) : text; };
    if (BlanksAtTheEnds(shortened(source)) != BlanksAtTheEnds(shortened(translation)))
        losses.append(u"blanks at the ends"_s);
    return losses;
}

} // namespace tests
