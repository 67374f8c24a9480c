// SPDX-License-Identifier: MIT
#include "tests/alignment_tool/ToolFixture.h"

#include "tests/support/Patience.h"
#include "tests/support/WithoutConsole.h"

#include <QProcess>
#include <QProcessEnvironment>

using namespace Qt::StringLiterals;

namespace tests {

ToolRun ToolFixture::Run(const QStringList &arguments, const QByteArray &input,
                         const QStringList &environment) const
{
    QProcess process;
    LetRunWithoutConsole(process);
    process.setWorkingDirectory(Folder->path());
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (const QString &variable : environment)
        variables.insert(variable.section(u'=', 0, 0), variable.section(u'=', 1));
    process.setProcessEnvironment(variables);
    process.start(QStringLiteral(ALIGNMENT_TOOL), arguments);
    process.write(input);
    process.closeWriteChannel();
    ToolRun run;
    if (process.waitForFinished(Patience) && process.exitStatus() == QProcess::NormalExit)
        run.ExitCode = process.exitCode();
    run.Output = process.readAllStandardOutput().replace("\r\n", "\n");
    run.Errors = process.readAllStandardError().replace("\r\n", "\n");
    return run;
}

} // namespace tests
