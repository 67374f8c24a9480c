// SPDX-License-Identifier: MIT
// Bounds the memory of a process that waits, with what Linux has for it.
#pragma once

#include <QFile>
#include <QProcess>

#include <sys/resource.h>
#include <unistd.h>

namespace tests {

/// Starts the probe of the alignment tests so that a lack of memory is told to it.
inline void StartForMemoryLimit(QProcess &probe, const QStringList &arguments)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // The sanitizers' own calloc gives up the process unless told otherwise.
    environment.insert(QStringLiteral("ASAN_OPTIONS"), QStringLiteral("allocator_may_return_null=1"));
    probe.setProcessEnvironment(environment);
    probe.start(QStringLiteral(ALIGNMENT_PROBE), arguments);
}

/// From here on the process gets so many megabytes of address space beyond what it has; false when that
/// cannot be brought about.
[[nodiscard]] inline bool LimitMemory(const QProcess &process, int megabytes)
{
    QFile statm(QStringLiteral("/proc/%1/statm").arg(process.processId()));
    if (!statm.open(QIODevice::ReadOnly))
        return false;
    const rlim_t used =
        statm.readAll().split(' ').value(0).toULongLong() * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
    const rlim_t allowed = used + static_cast<rlim_t>(megabytes) * 1024 * 1024;
    const rlimit limit = {allowed, allowed};
    return used > 0 && prlimit(static_cast<pid_t>(process.processId()), RLIMIT_AS, &limit, nullptr) == 0;
}

} // namespace tests
