// SPDX-License-Identifier: MIT
#include "recorder_standin/StandInReport.h"

#include <QByteArray>
#include <QCoreApplication>
#include <QFile>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

#include <chrono>

namespace {

/// Appends in one step of the system, so that the lines of several recorders neither mix nor replace each
/// other.
void Append(const QString &path, const QByteArray &line)
{
#ifdef Q_OS_WIN
    // Qt and the C library look for the end first and write there then.
    const HANDLE file =
        CreateFileW(path.toStdWString().c_str(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE,
                    nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return;
    DWORD written = 0;
    (void)WriteFile(file, line.constData(), static_cast<DWORD>(line.size()), &written, nullptr);
    CloseHandle(file);
#else
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::Append | QIODevice::Unbuffered))
        file.write(line);
#endif
}

} // namespace

void StandInReport::Write(const char *event) const
{
    if (File.isEmpty())
        return;
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const qint64 microseconds = std::chrono::duration_cast<std::chrono::microseconds>(now).count();
    const QByteArray line = QByteArray::number(microseconds) + ' ' +
                            QByteArray::number(QCoreApplication::applicationPid()) + ' ' + event + '\n';
    Append(File, line);
}
