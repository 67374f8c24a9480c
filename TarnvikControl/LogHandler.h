// SPDX-License-Identifier: MIT
// Where log lines go.
#pragma once

#include <QString>
#include <QtGlobal>

/// Qt's message handler of the program: debug and info lines plainly to standard output, all others with the
/// program's name and the local time to standard error. Lines appear at once, also when a pipe takes them;
/// what nobody takes is lost (platform::WriteOut). It leaves out what Qt always says where there is no
/// screen. It never ends the process. Any thread.
void ConsoleMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message);
