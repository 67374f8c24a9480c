// SPDX-License-Identifier: MIT
// The semaphore is a kernel object that goes with its last handle: a count that no recorder holds open is
// gone as soon as the sender closes it. A recorder that holds it open may look at it only now and then, so
// nothing is taken back.
#include "platform/QuitSignal.h"

#include <QSystemSemaphore>

namespace platform {

int QuitSignalListeners(const QString & /*key*/)
{
    return 1;
}

void SendQuitSignal(const QString &key)
{
    QSystemSemaphore semaphore(key, 0, QSystemSemaphore::Open);
    if (semaphore.error() == QSystemSemaphore::NoError)
        semaphore.release(1);
}

} // namespace platform
