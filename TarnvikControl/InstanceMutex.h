// SPDX-License-Identifier: MIT
// The machine-wide claim of the one instance.
#pragma once

#include "platform/InstanceLock.h"

/// Claimed during static initialisation, given back when the process ends. Only the entry points use it, so
/// that tests of the other units claim nothing.
extern platform::InstanceLock InstanceMutex;
