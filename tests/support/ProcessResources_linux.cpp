// SPDX-License-Identifier: MIT
#include "tests/support/ProcessResources.h"

#include <QDir>
#include <QFile>

namespace tests {

ProcessResources ProcessResources::Count()
{
    const auto entries = [](const QString &folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    };
    ProcessResources resources;
    const QStringList threads = entries(QStringLiteral("/proc/self/task"));
    resources.Threads = threads.size();
    resources.Descriptors = entries(QStringLiteral("/proc/self/fd")).size();
    for (const QString &thread : threads) {
        QFile children(QStringLiteral("/proc/self/task/%1/children").arg(thread));
        if (!children.open(QIODevice::ReadOnly))
            continue;
        const QString list = QString::fromLatin1(children.readAll());
        resources.Children += list.split(u' ', Qt::SkipEmptyParts).size();
    }
    return resources;
}

} // namespace tests
