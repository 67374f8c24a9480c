// SPDX-License-Identifier: MIT
// import: an alignment file made of JSON.
#include "alignment/AlignStore.h"
#include "alignment_tool/Command.h"
#include "alignment_tool/OutputFile.h"
#include "alignment_tool/TableJson.h"
#include "platform/FilePath.h"

#include <QCommandLineParser>

#include <fstream>
#include <iostream>
#include <iterator>
#include <memory>
#include <new>
#include <optional>
#include <string>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

void Declare(QCommandLineParser &parser)
{
    OutputFile::Declare(parser);
    parser.addPositionalArgument(
        u"JSON"_s,
        Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "A document as \"export\" prints it; \"-\": standard input.")),
        u"JSON..."_s);
}

/// The bytes of a file or of standard input; nothing when it cannot be read.
std::optional<QByteArray> BytesOf(const QString &path)
{
    if (path == u"-"_s)
        return QByteArray::fromStdString({std::istreambuf_iterator<char>(std::cin), {}});
    const auto file = platform::FileSystemPath(path);
    std::error_code ignored;
    if (!file || std::filesystem::is_directory(*file, ignored))
        return std::nullopt;
    std::ifstream stream(*file, std::ios::binary);
    if (!stream.is_open())
        return std::nullopt;
    QByteArray bytes = QByteArray::fromStdString({std::istreambuf_iterator<char>(stream), {}});
    return stream.bad() ? std::nullopt : std::optional(bytes);
}

Exit AppendDocument(const QString &path, AlignStore &store, Terminal &terminal)
{
    const QString name = Harmless(path);
    const std::optional<QByteArray> json = BytesOf(path);
    if (!json) {
        terminal.Complain(u"%1: %2"_s.arg(
            name,
            Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "the file cannot be read; check name and rights"))));
        return Exit::FileFailed;
    }
    const SdrType before = store.SdrType;
    const bool isFirst = store.Tables.Head == nullptr;
    QStringList errors = AppendTablesOf(*json, store);
    if (!isFirst && store.SdrType != before)
        errors.append(Translated(QT_TRANSLATE_NOOP(
            "TarnvikAlign", "sdrType: another one than in the documents before; a file has one type")));
    for (const QString &error : std::as_const(errors))
        terminal.Complain(u"%1: %2"_s.arg(name, error));
    return errors.isEmpty() ? Exit::Done : Exit::Found;
}

Exit Run(const QCommandLineParser &parser, Terminal &terminal)
{
    const OutputFile output(parser);
    const QStringList documents = parser.positionalArguments();
    if (documents.isEmpty() || !output.isSet()) {
        terminal.Complain(Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "documents and --output are wanted; see \"--help\"")));
        return Exit::WrongUsage;
    }
    for (const QString &document : documents) {
        if (!output.Is(document))
            continue;
        terminal.Complain(OutputFile::IsInputText(document));
        return Exit::WrongUsage;
    }
    const std::unique_ptr<AlignStore> store(new (std::nothrow) AlignStore);
    if (store == nullptr)
        return Exit::FileFailed;
    Exit exit = Exit::Done;
    for (const QString &document : documents)
        exit = Worse(exit, AppendDocument(document, *store, terminal));
    return exit == Exit::Done ? output.Write(*store, terminal) : exit;
}

} // namespace

const Command ImportCommand = {
    "import",
    QT_TRANSLATE_NOOP("TarnvikAlign", "Makes an alignment file of JSON."),
    "import tables.json --output TarnvikDriver_RtlSdr.ad",
    &Declare,
    &Run,
};

} // namespace aligntool
