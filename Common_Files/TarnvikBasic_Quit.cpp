// SPDX-License-Identifier: MIT
// The quit request to the recorder.
#include "Common_Files/RecorderNames.h"
#include "Common_Files/TarnvikBasic.h"
#include "platform/QuitSignal.h"

#include <QSystemSemaphore>

void QTarnvikBasic::SendRecorderQuit(void * /*context*/, QString & /*program*/,
                                     QString & /*workingDirectory*/, QStringList & /*arguments*/)
{
    if (platform::QuitSignalHasListener(RecorderQuitKey)) {
        QSystemSemaphore semaphore(RecorderQuitKey, 0, QSystemSemaphore::Open);
        if (semaphore.error() == QSystemSemaphore::NoError)
            semaphore.release(1);
    }
    platform::SettleQuitSignal(RecorderQuitKey);
}
