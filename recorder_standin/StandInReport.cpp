// SPDX-License-Identifier: MIT
#include "recorder_standin/StandInReport.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>

#include <chrono>

void StandInReport::Write(const char *event) const
{
    if (File.isEmpty())
        return;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const qint64 microseconds = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    QFile file(File);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        return;
    // One write, so that the lines of several recorders do not mix.
    const QByteArray line = QByteArray::number(microseconds) + ' ' +
                            QByteArray::number(QCoreApplication::applicationPid()) + ' ' + event + '\n';
    file.write(line);
}
