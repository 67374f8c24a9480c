// SPDX-License-Identifier: MIT
#include "tests/CommonQt/TranslationFolder.h"

#include "tests/support/WithoutConsole.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QProcess>

using namespace Qt::StringLiterals;

namespace tests {

TranslationFolder::TranslationFolder()
{
    const QString probe = QStringLiteral(TEST_PROBE);
    Program = Root.filePath(u"program/"_s + QFileInfo(probe).fileName());
    const QDir root(Root.path());
    Valid = Root.isValid() && root.mkpath(u"program/languages"_s) && root.mkpath(u"working/languages"_s) &&
            QFile::copy(probe, Program);
}

bool TranslationFolder::Add(const QString &translation, const QString &name) const
{
    return QFile::copy(QStringLiteral(TEST_TRANSLATIONS "/%1.qm").arg(translation), path(name));
}

bool TranslationFolder::AddBroken(const QString &name) const
{
    QFile file(path(name));
    return file.open(QIODevice::WriteOnly) && file.write("no translation file") > 0;
}

TranslationFolder::Output TranslationFolder::Run(const QStringList &arguments,
                                                 const QProcessEnvironment &environment) const
{
    QProcess process;
    LetRunWithoutConsole(process);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(path(u"working"_s));
    process.start(Program, arguments);
    Output output;
    if (process.waitForFinished() && process.exitStatus() == QProcess::NormalExit)
        output.ExitCode = process.exitCode();
    const QString text = QString::fromUtf8(process.readAllStandardOutput()).remove(u'\r');
    output.Lines = text.split(u'\n', Qt::SkipEmptyParts);
    output.Errors = QString::fromUtf8(process.readAllStandardError());
    return output;
}

} // namespace tests
