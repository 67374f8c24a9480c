// SPDX-License-Identifier: MIT
// TarnvikAlign: alignment tables at the command line.
#include "Common_Files/Version.h"
#include "alignment_tool/Command.h"
#include "platform/CommandLine.h"

#include <QCoreApplication>
#include <QLocale>
#include <QTranslator>

#include <new>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    platform::PrepareStandardStreams();
    QCoreApplication application(argc, argv);
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikAlign"_s);
    QCoreApplication::setApplicationVersion(VersionText(PackVersion(platform::ReadProductVersion())));
    QTranslator translator;
    if (translator.load(QLocale(), u"TarnvikControl"_s, u"_"_s,
                        QCoreApplication::applicationDirPath() + u"/languages"_s))
        QCoreApplication::installTranslator(&translator);

    aligntool::Terminal terminal;
    aligntool::Exit exit = aligntool::Exit::FileFailed;
    try {
        exit = aligntool::RunCommandLine(platform::CommandLineArguments(argc, argv), terminal);
    } catch (const std::bad_alloc &) {
        terminal.Complain(QCoreApplication::translate("QDlgAlignmentCfg", "Out of memory"));
    }
    if (!terminal.Flush()) {
        terminal.Complain(aligntool::Translated(QT_TRANSLATE_NOOP(
            "TarnvikAlign", "standard output cannot be written; is the disk full, or the reader gone?")));
        exit = aligntool::Exit::FileFailed;
    }
    return static_cast<int>(exit);
}
