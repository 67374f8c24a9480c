// SPDX-License-Identifier: MIT
#include "tests/support/SmallDisk.h"

#include <QDir>
#include <QFile>
#include <QStorageInfo>

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
    const QStorageInfo disk(SmallDisk());
    const qint64 size = disk.bytesAvailable() - freeBlocks * disk.blockSize();
    QFile filler(SmallDisk() + u"/filler"_s);
    return size >= 0 && filler.open(QIODevice::WriteOnly) && filler.write(QByteArray(size, 'x')) == size &&
           filler.flush();
}

qint64 SmallDiskBlock()
{
    return QStorageInfo(SmallDisk()).blockSize();
}

} // namespace tests
