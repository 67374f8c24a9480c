// SPDX-License-Identifier: MIT
#include "tests/translations/KnownTexts.h"

#include "tests/translations/TsFile.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tests {

namespace {

/// The parts of Qt whose texts the program can show.
const QStringList QtContexts = {
    u"QAbstractFileIconProvider"_s,
    u"QDialogButtonBox"_s,
    u"QFileDialog"_s,
    u"QFileSystemModel"_s,
    u"QLineEdit"_s,
    u"QMessageBox"_s,
    u"QPlatformTheme"_s,
    u"QScrollBar"_s,
    u"QWidgetTextControl"_s,
};

/// Menus show a mnemonic's letter without "&", and tool tips made from entries lose the ellipsis too.
QString Plain(QString text)
{
    if (text.endsWith(u"..."_s))
        text.chop(3);
    return text.remove(u'&');
}

QRegularExpression Whole(const QString &pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                              QRegularExpression::DotMatchesEverythingOption |
                                  QRegularExpression::UseUnicodePropertiesOption);
}

} // namespace

KnownTexts::KnownTexts(const QString &language)
{
    const QString own = QStringLiteral(TRANSLATIONS_FOLDER "/TarnvikControl_%1.ts").arg(language);
    const QList<TsMessage> ownTexts = ReadTsFile(own);
    for (const TsMessage &message : ownTexts)
        Add(message.Translation);
    const QList<TsMessage> qtTexts = ReadTsFile(QStringLiteral(QT_GERMAN_TEXTS));
    const bool german = language == QLatin1String("de");
    for (const TsMessage &message : qtTexts) {
        // Several words that are the same in both languages were left in English.
        const bool left = german && message.Translation == message.Source && message.Source.contains(u' ');
        if (QtContexts.contains(message.Context) && !left)
            Add(german ? message.Translation : message.Source);
    }
}

void KnownTexts::Add(const QString &text)
{
    if (text.contains(u";;"_s)) { // file filters, shown one by one
        const QStringList filters = text.split(u";;"_s);
        for (const QString &filter : filters)
            Add(filter);
        return;
    }
    static const QRegularExpression placeholder(u"%L?\\d"_s);
    static const QRegularExpression letters(u"\\p{L}{3}"_s);
    QString pattern;
    qsizetype position = 0;
    QString plain = Plain(text).trimmed();
    if (text.endsWith(u' ')) // something is appended
        plain += u" %1"_s;
    // With a placeholder, a text that is hardly more than that would know everything.
    if (plain.isEmpty() || (placeholder.match(plain).hasMatch() && !letters.match(plain).hasMatch()))
        return;
    for (auto it = placeholder.globalMatch(plain); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        pattern +=
            QRegularExpression::escape(plain.mid(position, match.capturedStart() - position)) + u"(.*)"_s;
        position = match.capturedEnd();
    }
    pattern += QRegularExpression::escape(plain.mid(position));
    Patterns.append(Whole(pattern));
}

void KnownTexts::AddData(const QString &pattern)
{
    Data.append(Whole(pattern));
}

bool KnownTexts::knowsLine(const QString &text) const
{
    if (text.isEmpty())
        return true;
    const auto matches = [&text](const QRegularExpression &pattern) {
        return pattern.match(text).hasMatch();
    };
    if (std::any_of(Data.begin(), Data.end(), matches))
        return true;
    // What fills a placeholder is shown as well.
    return std::any_of(Patterns.begin(), Patterns.end(), [&](const QRegularExpression &pattern) {
        const QRegularExpressionMatch match = pattern.match(text);
        const QStringList filled = match.capturedTexts().mid(1);
        return match.hasMatch() && std::all_of(filled.begin(), filled.end(), [&](const QString &part) {
                   return part != text && knows(part);
               });
    });
}

bool KnownTexts::knows(const QString &text) const
{
    const QString plain = Plain(text).trimmed();
    if (knowsLine(plain))
        return true;
    static const QRegularExpression separator(u"[\n\t]"_s); // a tab comes before a shortcut
    const QStringList lines = plain.split(separator);
    return lines.size() > 1 && std::all_of(lines.begin(), lines.end(), [this](const QString &line) {
               return knowsLine(Plain(line).trimmed());
           });
}

QStringList KnownTexts::unknown(const QStringList &texts) const
{
    QStringList unknown;
    for (const QString &text : texts) {
        if (!knows(text))
            unknown.append(text);
    }
    unknown.removeDuplicates();
    return unknown;
}

} // namespace tests
