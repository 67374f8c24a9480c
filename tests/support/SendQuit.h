// SPDX-License-Identifier: MIT
// The quit request as the program sends it.
#pragma once

#include "Common_Files/TarnvikBasic.h"

#include <QTest>

namespace tests {

/// Asks a listening recorder to quit. The request changes none of its arguments.
inline void SendQuit()
{
    QString program;
    QString folder;
    QStringList arguments;
    QTarnvikBasic::SendRecorderQuit(nullptr, program, folder, arguments);
    QVERIFY(program.isEmpty() && folder.isEmpty() && arguments.isEmpty());
}

} // namespace tests
