// SPDX-License-Identifier: MIT
#include "tools/RecorderReport.h"

#include <QFile>

#include <sys/types.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace tools {

bool IsAlive(qint64 processId)
{
    // The third field of the stat file is the state; Z: ended, not yet collected by its parent.
    QFile stat(u"/proc/%1/stat"_s.arg(processId));
    if (!stat.open(QIODevice::ReadOnly))
        return false;
    const QByteArray content = stat.readAll();
    const qsizetype state = content.lastIndexOf(") ");
    return state >= 0 && content.mid(state + 2, 1) != "Z";
}

bool KillProcess(qint64 processId)
{
    return processId > 0 && kill(static_cast<pid_t>(processId), SIGKILL) == 0;
}

} // namespace tools
