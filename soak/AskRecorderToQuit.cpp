// SPDX-License-Identifier: MIT
// Asks the recorder that listens to quit, as the control program does, and ends.
#include "Common_Files/TarnvikBasic.h"

#include <QString>
#include <QStringList>

int main()
{
    QString program;
    QString folder;
    QStringList arguments;
    QTarnvikBasic::SendRecorderQuit(nullptr, program, folder, arguments);
    return 0;
}
