// SPDX-License-Identifier: MIT
#include "platform/WindowIcon.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace platform {

QIcon LoadWindowIcon()
{
    QIcon icon;
    for (const int size : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QString file = u":/icons/TarnvikControl-%1.png"_s.arg(size);
        if (QFile::exists(file))
            icon.addFile(file);
    }
    return icon;
}

} // namespace platform
