// SPDX-License-Identifier: MIT
// One instance per machine.
#pragma once

#include <QString>

namespace platform {

/// Claims a machine-wide name for the lifetime of the object. The system gives the name free when the process
/// ends, however it ends. Nobody ever waits for it: its only use is the question whether the name was taken
/// already.
class InstanceLock
{
public:
    /// Claims the name; `name` is that of a Windows kernel object.
    explicit InstanceLock(const char *name);
    ~InstanceLock();
    InstanceLock(const InstanceLock &) = delete;
    InstanceLock &operator=(const InstanceLock &) = delete;

    /// True when another process had claimed the name before this object did.
    [[nodiscard]] bool alreadyExisted() const { return Existed; }

private:
    void *Handle = nullptr; // what the system gave; null when it gave nothing
    bool Existed = false;
};

} // namespace platform
