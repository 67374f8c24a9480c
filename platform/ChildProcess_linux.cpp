// SPDX-License-Identifier: MIT
#include "platform/ChildProcess.h"

#include <QFileInfo>
#include <QProcess>

#include <unistd.h>

#include <csignal>

namespace platform {

QString RecorderProgram(const QString &folder)
{
    const QString program = folder + QStringLiteral("/TarnvikRecord.exe");
    const QString nativeProgram = folder + QStringLiteral("/TarnvikRecord");
    return !QFileInfo::exists(program) && QFileInfo::exists(nativeProgram) ? nativeProgram : program;
}

void DetachFromThisProgram(QProcess &process)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
    // From then on Qt sets this signal itself, after the modifier.
    process.setUnixProcessParameters(QProcess::UnixProcessFlag::IgnoreSigPipe);
#endif
    // Runs between fork and exec: only calls that are safe there.
    process.setChildProcessModifier([] {
        // A process group of its own: the terminal sends Ctrl-C to the whole group of this program.
        setpgid(0, 0);
        // An ignored signal stays ignored in the new program.
        std::signal(SIGPIPE, SIG_IGN);
    });
}

} // namespace platform
