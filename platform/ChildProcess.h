// SPDX-License-Identifier: MIT
// What the recorder's process needs on each system.
#pragma once

#include <QString>

class QProcess;

namespace platform {

/// Full path of the recorder in the folder given (no trailing separator): "TarnvikRecord.exe"; on Linux
/// "TarnvikRecord" when only that exists.
[[nodiscard]] QString RecorderProgram(const QString &folder);

/// Makes a process that is about to be started independent of this one, so that it survives a crash of this
/// program until the next run asks it to quit: a broken output pipe must not end it, nor a Ctrl-C meant for
/// this program.
void DetachFromThisProgram(QProcess &process);

} // namespace platform
