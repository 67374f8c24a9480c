// SPDX-License-Identifier: MIT
// QProcess::terminate posts WM_CLOSE to the windows and to the main thread of the process. A program without
// a window gets the message without one, and the event loop would drop it.
#include "platform/CloseMessages.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>

#include <windows.h>

namespace platform {

namespace {

class CloseMessageFilter : public QAbstractNativeEventFilter
{
public:
    std::function<void()> OnMessage;

    bool nativeEventFilter(const QByteArray & /*eventType*/, void *message, qintptr * /*result*/) override
    {
        const auto *const msg = static_cast<const MSG *>(message);
        if (msg->message != WM_CLOSE || msg->hwnd)
            return false;
        OnMessage();
        return true;
    }
};

CloseMessageFilter Filter;

} // namespace

void ReceiveCloseMessages(const std::function<void()> &onMessage)
{
    Filter.OnMessage = onMessage;
    QCoreApplication::instance()->installNativeEventFilter(&Filter);
}

void IgnoreCloseMessages()
{
    QCoreApplication::instance()->removeNativeEventFilter(&Filter);
}

} // namespace platform
