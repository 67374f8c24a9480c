// SPDX-License-Identifier: MIT
#include "platform/TerminateRequest.h"

#include "platform/CloseMessages.h"
#include "platform/ControlEvents.h"

#include <utility>

namespace platform {

namespace {

std::function<void()> OnRequest;

bool ReportControlEvent(std::uint32_t /*controlType*/)
{
    OnRequest();
    return true;
}

} // namespace

TerminateRequest::TerminateRequest(std::function<void()> onRequest)
{
    OnRequest = std::move(onRequest);
    ReceiveCloseMessages(OnRequest);
    Listening = InstallControlHandler(ReportControlEvent);
}

TerminateRequest::~TerminateRequest()
{
    RemoveControlHandler();
    IgnoreCloseMessages();
}

} // namespace platform
