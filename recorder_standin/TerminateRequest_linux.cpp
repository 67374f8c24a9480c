// SPDX-License-Identifier: MIT
#include "recorder_standin/TerminateRequest.h"

#include "platform/ControlEvents.h"

#include <utility>

namespace {

std::function<void()> OnRequest;

bool Forward(std::uint32_t /*controlType*/)
{
    OnRequest();
    return true;
}

} // namespace

TerminateRequest::TerminateRequest(std::function<void()> onRequest)
{
    OnRequest = std::move(onRequest);
    Listening = platform::InstallControlHandler(Forward);
}

TerminateRequest::~TerminateRequest()
{
    platform::RemoveControlHandler();
}
