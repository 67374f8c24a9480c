// SPDX-License-Identifier: MIT
#include "tests/support/ProcessResources.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace tests {

ProcessResources ProcessResources::Count()
{
    const auto entries = [](const QString &folder) {
        return QDir(folder).entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    };
    ProcessResources resources;
    const QStringList threads = entries(u"/proc/self/task"_s);
    resources.Threads = threads.size();
    resources.Descriptors = entries(u"/proc/self/fd"_s).size();
    for (const QString &thread : threads) {
        QFile children(u"/proc/self/task/%1/children"_s.arg(thread));
        if (!children.open(QIODevice::ReadOnly))
            continue;
        const QString list = QString::fromLatin1(children.readAll());
        resources.Children += list.split(u' ', Qt::SkipEmptyParts).size();
    }
    return resources;
}

} // namespace tests
