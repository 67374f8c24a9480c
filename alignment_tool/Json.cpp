// SPDX-License-Identifier: MIT
#include "alignment_tool/Json.h"

#include "alignment_merge/AlignmentDriver.h"
#include "alignment_tool/Command.h"
#include "alignment_tool/TableFile.h"
#include "platform/EscapedText.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace aligntool {

QCommandLineOption JsonOption()
{
    return {u"json"_s, Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "Prints JSON."))};
}

void PutText(QJsonObject &object, const QString &key, const QString &text)
{
    const QByteArray bytes = platform::TextBytes(text);
    object.insert(key, QString::fromUtf8(bytes)); // replaces what is no letter
    if (object.value(key).toString() != text)
        object.insert(key + u"Hex"_s, QString::fromLatin1(bytes.toHex()));
}

QJsonObject TableHead(const AlignTable &table, SdrType sdrType)
{
    QJsonObject object;
    object.insert(u"driver"_s, AlignmentDriverName(static_cast<int>(sdrType)));
    object.insert(u"sdrType"_s, static_cast<int>(sdrType));
    PutText(object, u"id"_s, platform::BytesText(AlignHwIdOf(table)));
    object.insert(u"date"_s, DateTimeText(table.AlignedAt));
    object.insert(u"alignedAt"_s, QString::number(table.AlignedAt));
    return object;
}

void JsonArray::Begin(const QString &format, const QJsonObject &head)
{
    QJsonObject document = head;
    document.insert(u"format"_s, format);
    document.insert(u"version"_s, JsonVersion);
    QByteArray text = QJsonDocument(document).toJson(QJsonDocument::Compact);
    text.chop(1); // the document goes on
    Out.PrintBytes(text + ",\"tables\":[");
}

void JsonArray::Add(const QJsonObject &entry)
{
    Out.PrintBytes(IsFirst ? "\n" : ",\n");
    Out.PrintBytes(QJsonDocument(entry).toJson(QJsonDocument::Compact));
    IsFirst = false;
}

void JsonArray::End()
{
    Out.PrintBytes(IsFirst ? "]}\n" : "\n]}\n");
}

} // namespace aligntool
