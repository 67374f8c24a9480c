// SPDX-License-Identifier: MIT
#include "platform/CloseMessages.h"

namespace platform {

void ReceiveCloseMessages(const std::function<void()> & /*onMessage*/) {}

void IgnoreCloseMessages() {}

} // namespace platform
