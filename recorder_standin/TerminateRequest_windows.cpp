// SPDX-License-Identifier: MIT
// QProcess::terminate posts WM_CLOSE to the windows and to the main thread of the process. The stand-in has
// no window, so the message arrives without one, and the event loop would drop it.
#include "recorder_standin/TerminateRequest.h"

#include "platform/ControlEvents.h"

#include <QAbstractNativeEventFilter>
#include <QCoreApplication>

#include <windows.h>

#include <utility>

namespace {

std::function<void()> OnRequest;

bool Forward(std::uint32_t /*controlType*/)
{
    OnRequest();
    return true;
}

class CloseMessageFilter : public QAbstractNativeEventFilter
{
public:
    bool nativeEventFilter(const QByteArray & /*eventType*/, void *message, qintptr * /*result*/) override
    {
        const auto *const msg = static_cast<const MSG *>(message);
        if (msg->message != WM_CLOSE || msg->hwnd)
            return false;
        OnRequest();
        return true;
    }
};

CloseMessageFilter Filter;

} // namespace

TerminateRequest::TerminateRequest(std::function<void()> onRequest)
{
    OnRequest = std::move(onRequest);
    QCoreApplication::instance()->installNativeEventFilter(&Filter);
    Listening = platform::InstallControlHandler(Forward);
}

TerminateRequest::~TerminateRequest()
{
    platform::RemoveControlHandler();
    QCoreApplication::instance()->removeNativeEventFilter(&Filter);
}
