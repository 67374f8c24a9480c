// SPDX-License-Identifier: MIT
#include "alignment_tool/OutputFile.h"

#include "alignment/AlignStore.h"
#include "platform/FileDigest.h"
#include "platform/FilePath.h"
#include "platform/FileReplacement.h"

#include <QCommandLineParser>

#include <algorithm>
#include <fstream>
#include <iostream>
#include <streambuf>

using namespace Qt::StringLiterals;

namespace aligntool {

namespace {

/// Compares what is written into it with a file.
class Comparison : public std::streambuf
{
public:
    explicit Comparison(const std::filesystem::path &path) : File(path, std::ios::binary) {}

    /// True when all that was written is the whole file.
    [[nodiscard]] bool equal() { return Equal && File.is_open() && File.peek() == traits_type::eof(); }

protected:
    int_type overflow(int_type byte) override
    {
        const char single = traits_type::to_char_type(byte);
        return xsputn(&single, 1) == 1 ? byte : traits_type::eof();
    }
    std::streamsize xsputn(const char *bytes, std::streamsize size) override
    {
        std::string there(static_cast<std::size_t>(size), '\0');
        Equal = Equal && File.read(there.data(), size) && std::equal(there.begin(), there.end(), bytes);
        return size;
    }

private:
    std::ifstream File;
    bool Equal = true;
};

/// True when the file holds what a save would write. `result`: whether a save can write at all. The file is
/// closed again: on Windows nobody can replace it otherwise.
bool WouldChangeNothing(AlignStore &store, const std::filesystem::path &path, AlignResult &result)
{
    std::error_code ignored;
    const bool isFile = std::filesystem::is_regular_file(path, ignored); // a pipe would be waited for
    Comparison comparison(isFile ? path : std::filesystem::path());
    std::ostream compared(&comparison);
    result = store.Save(compared);
    return result == AlignResult::Ok && comparison.equal();
}

QString StepText(platform::ReplaceStep step)
{
    switch (step) {
    case platform::ReplaceStep::Check:
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "the file cannot be replaced"));
    case platform::ReplaceStep::Create:
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "no temporary file can be made beside it"));
    case platform::ReplaceStep::Write:
        return Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "the temporary file beside it cannot be written"));
    case platform::ReplaceStep::Sync:
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "the temporary file does not reach the disk"));
    case platform::ReplaceStep::LastLook:
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "somebody else is writing the file; try again"));
    case platform::ReplaceStep::Replace:
        return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "the temporary file cannot take its place"));
    case platform::ReplaceStep::SyncFolder:
        return Translated(
            QT_TRANSLATE_NOOP("TarnvikAlign", "it is written, but its folder does not reach the disk"));
    case platform::ReplaceStep::None:
        break;
    }
    return {};
}

} // namespace

void OutputFile::Declare(QCommandLineParser &parser)
{
    parser.addOption(
        {{u"o"_s, u"output"_s},
         Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "Writes this file; \"-\": standard output.")),
         u"FILE"_s});
}

OutputFile::OutputFile(const QCommandLineParser &parser, const QString &otherwise)
    : Path(parser.isSet(u"output"_s) ? parser.value(u"output"_s) : otherwise)
{}

bool OutputFile::isStandardOutput() const
{
    return Path == u"-"_s;
}

bool OutputFile::Lock(Terminal &terminal)
{
    if (isStandardOutput())
        return true;
    Held = std::make_unique<platform::WriteLock>(
        platform::FileSystemPath(Path).value_or(std::filesystem::path()));
    if (Held->timedOut())
        terminal.Complain(u"%1: %2"_s.arg(Harmless(Path), StepText(platform::ReplaceStep::LastLook)));
    Digest = platform::FileDigest(Path);
    return !Held->timedOut();
}

bool OutputFile::Is(const QString &path) const
{
    return !isStandardOutput() && (Path == path || platform::IsSameFile(Path, path));
}

QString OutputFile::IsInputText(const QString &path)
{
    return Translated(QT_TRANSLATE_NOOP("TarnvikAlign", "%1: this file is read; name another --output"))
        .arg(Harmless(path));
}

Exit OutputFile::Check(AlignStore &store, const QString &path, Terminal &terminal)
{
    AlignResult result = AlignResult::Ok;
    (void)WouldChangeNothing(store, {}, result);
    if (result == AlignResult::Ok)
        return Exit::Done;
    terminal.Complain(u"%1: %2"_s.arg(Harmless(path), AlignResultText(result)));
    return Exit::FileFailed;
}

Exit OutputFile::Write(AlignStore &store, Terminal &terminal) const
{
    if (isStandardOutput()) {
        const AlignResult result = store.Save(std::cout);
        if (result == AlignResult::Ok)
            return Exit::Done;
        terminal.Complain(AlignResultText(result));
        return Exit::FileFailed;
    }
    const std::filesystem::path path = platform::FileSystemPath(Path).value_or(std::filesystem::path());
    AlignResult result = AlignResult::Ok;
    if (WouldChangeNothing(store, path, result))
        return Exit::Done;
    platform::ReplaceResult replaced;
    if (result == AlignResult::Ok)
        replaced = platform::ReplaceFile(
            path,
            [&](std::ostream &stream) {
                result = store.Save(stream);
                return result == AlignResult::Ok;
            },
            [&] { return Held == nullptr || platform::FileDigest(Path) == Digest; });
    if (result != AlignResult::Ok && result != AlignResult::FileError) {
        terminal.Complain(u"%1: %2"_s.arg(Harmless(Path), AlignResultText(result)));
        return Exit::FileFailed;
    }
    if (replaced.Failed == platform::ReplaceStep::None)
        return Exit::Done;
    QString why = StepText(replaced.Failed);
    if (replaced.Failed != platform::ReplaceStep::LastLook)
        why += u": "_s + QString::fromLocal8Bit(replaced.Reason.message().c_str());
    terminal.Complain(u"%1: %2"_s.arg(Harmless(Path), why));
    return Exit::FileFailed;
}

} // namespace aligntool
