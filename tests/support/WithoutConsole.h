// SPDX-License-Identifier: MIT
// Console programs that a test starts.
#pragma once

#include <QProcess>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

namespace tests {

/// On Windows, lets the program that the process will run have no console; elsewhere nothing. For the console
/// of each program Wine runs one more program, and leaves it behind when the first is killed: it would keep
/// the test's output open.
inline void LetRunWithoutConsole([[maybe_unused]] QProcess &process)
{
#ifdef Q_OS_WIN
    process.setCreateProcessArgumentsModifier(
        [](QProcess::CreateProcessArguments *arguments) { arguments->flags |= DETACHED_PROCESS; });
#endif
}

} // namespace tests
