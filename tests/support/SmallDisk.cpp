// SPDX-License-Identifier: MIT
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace tests {

QString SmallDisk()
{
    return qEnvironmentVariable("TARNVIK_SMALL_DISK");
}

bool EmptySmallDisk()
{
    QDir disk(SmallDisk());
    const QFileInfoList entries = disk.entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    for (const QFileInfo &entry : entries) {
        if (entry.isDir() ? !QDir(entry.filePath()).removeRecursively() : !disk.remove(entry.fileName()))
            return false;
    }
    return true;
}

bool FillSmallDisk(qint64 freeBlocks)
{
    const std::filesystem::path disk((SmallDisk() + u'/').toStdU16String());
    const qint64 size =
        static_cast<qint64>(std::filesystem::space(disk).available) - freeBlocks * SmallDiskBlock;
    QFile filler(SmallDisk() + u"/filler"_s);
    return size >= 0 && filler.open(QIODevice::WriteOnly) && filler.write(QByteArray(size, 'x')) == size &&
           filler.flush();
}

} // namespace tests
