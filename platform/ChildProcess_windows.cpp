// SPDX-License-Identifier: MIT
#include "platform/ChildProcess.h"

#include <QProcess>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace platform {

QString RecorderProgram(const QString &folder)
{
    return folder + u"/TarnvikRecord.exe"_s;
}

void DetachFromThisProgram(QProcess &process)
{
    process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments *arguments) {
        // A console of its own that nobody sees: in the debug console of this program it would get its
        // Ctrl-C, and end with it. A broken output pipe is only a failed write here. No job object: it would
        // end the recorder with this program.
        arguments->flags |= CREATE_NO_WINDOW;
    });
}

} // namespace platform
