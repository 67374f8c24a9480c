// SPDX-License-Identifier: MIT
#include "TarnvikControl/InstanceMutex.h"

platform::InstanceLock InstanceMutex("Global\\{4S434D52-A533-F53B-557E-C5D152152213}");
