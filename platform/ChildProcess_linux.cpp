// SPDX-License-Identifier: MIT
#include "platform/ChildProcess.h"

#include <QFileInfo>
#include <QProcess>

#include <unistd.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace platform {

QString RecorderProgram(const QString &folder)
{
    const QString program = folder + u"/TarnvikRecord.exe"_s;
    const QString nativeProgram = folder + u"/TarnvikRecord"_s;
    return !QFileInfo::exists(program) && QFileInfo::exists(nativeProgram) ? nativeProgram : program;
}

void DetachFromThisProgram(QProcess &process)
{
    // Runs between fork and exec: only calls that are safe there.
    process.setChildProcessModifier([] {
        // A process group of its own: the terminal sends Ctrl-C to the whole group of this program.
        setpgid(0, 0);
        // A blocked signal stays blocked in the new program. Ignoring it does not last: from Qt 6.6 on the
        // handler is set back behind this function.
        sigset_t brokenPipe;
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        sigprocmask(SIG_BLOCK, &brokenPipe, nullptr);
    });
}

} // namespace platform
