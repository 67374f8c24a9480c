// SPDX-License-Identifier: MIT
#include "alignment_tool/JsonReader.h"

#include "alignment_tool/Command.h"
#include "alignment_tool/Terminal.h"

#include <QJsonArray>
#include <QJsonObject>

#include <cmath>

using namespace Qt::StringLiterals;

namespace aligntool {

void JsonReader::Note(const QString &what) const
{
    Errors->append(Path.isEmpty() ? what : u"%1: %2"_s.arg(Harmless(Path), what));
}

JsonReader JsonReader::member(const QString &name) const
{
    Known->insert(name);
    return {Value.toObject().value(name), Path.isEmpty() ? name : Path + u'.' + name, *Errors};
}

QList<JsonReader> JsonReader::entries(const QString &name, std::size_t most, const QString &what) const
{
    const JsonReader reader = member(name);
    if (!reader.Value.isArray()) {
        reader.Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "a list is wanted")));
        return {};
    }
    const QJsonArray array = reader.Value.toArray();
    if (static_cast<std::size_t>(array.size()) > most) {
        Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "more than %1 %2")).arg(most).arg(what));
        return {};
    }
    return reader.list(static_cast<std::size_t>(array.size()));
}

QList<JsonReader> JsonReader::list(std::size_t size) const
{
    const QJsonArray array = Value.toArray();
    if (!Value.isArray() || static_cast<std::size_t>(array.size()) != size) {
        Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "a list of %1 is wanted")).arg(size));
        return {};
    }
    QList<JsonReader> readers;
    readers.reserve(array.size());
    for (qsizetype i = 0; i < array.size(); ++i)
        readers.append(JsonReader(array.at(i), u"%1[%2]"_s.arg(Path).arg(i), *Errors));
    return readers;
}

QByteArray JsonReader::bytes(const QString &name, std::size_t most) const
{
    const JsonReader exact = member(name + u"Hex"_s);
    QByteArray bytes;
    if (exact.Value.isUndefined()) {
        const QString id = text(name);
        if (!id.isValidUtf16() || id.contains(QChar(0)))
            member(name).Note(
                Translated(
                    QT_TRANSLATE_NOOP("TarnvikAlign",
                                      "this is no text of UTF-8 without NUL; the member %1 takes all bytes"))
                    .arg(name + u"Hex"_s));
        bytes = id.toUtf8();
    } else {
        Known->insert(name);
        bytes = QByteArray::fromHex(exact.Value.toString().toLatin1());
        if (!exact.Value.isString() || QString::fromLatin1(bytes.toHex()) != exact.Value.toString().toLower())
            exact.Note(Translated(
                QT_TRANSLATE_NOOP("TarnvikAlign", "hexadecimal digits are wanted, two for each byte")));
    }
    if (static_cast<std::size_t>(bytes.size()) <= most)
        return bytes;
    member(name).Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "more than %1 bytes")).arg(most));
    return {};
}

QString JsonReader::text(const QString &name) const
{
    const JsonReader reader = member(name);
    if (!reader.Value.isString())
        reader.Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "a text is wanted")));
    return reader.Value.toString();
}

quint64 JsonReader::numberOf64Bits() const
{
    bool isNumber = false;
    const QString text = Value.toString();
    const quint64 number = text.toULongLong(&isNumber);
    // Only one way to write it: no sign, no blanks, no zeroes before.
    if (!isNumber || QString::number(number) != text)
        Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "a number from 0 to %1 in quotes is wanted"))
                 .arg(std::numeric_limits<quint64>::max()));
    return number;
}

quint64 JsonReader::numberUpTo(quint64 most) const
{
    const double number = Value.toDouble(-1);
    if (number >= 0 && number <= static_cast<double>(most) && std::floor(number) == number)
        return static_cast<quint64>(number);
    Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "a number from 0 to %1 is wanted")).arg(most));
    return 0;
}

void JsonReader::Ignore(std::initializer_list<QString> names) const
{
    for (const QString &name : names)
        Known->insert(name);
}

void JsonReader::RefuseOthers() const
{
    if (!Value.isObject()) {
        Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "an object is wanted")));
        return;
    }
    const QStringList names = Value.toObject().keys();
    for (const QString &name : names) {
        if (!Known->contains(name))
            member(name).Note(Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "there is no such member")));
    }
}

} // namespace aligntool
