// SPDX-License-Identifier: MIT
// The name is that of an abstract Unix socket: it lies in no folder, is the same for all users of the machine
// and goes with the process.
#include "platform/InstanceLock.h"

#include "platform/StandardStreams_linux.h"

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace platform {

namespace {

// Descriptor 0 is a valid one, so the handle holds the descriptor plus one.
void *ToHandle(int descriptor)
{
    return reinterpret_cast<void *>(static_cast<std::intptr_t>(descriptor) + 1);
}

int ToDescriptor(void *handle)
{
    return static_cast<int>(reinterpret_cast<std::intptr_t>(handle) - 1);
}

} // namespace

InstanceLock::InstanceLock(const char *name)
{
    OpenStandardStreams();
    // Close-on-exec: a recorder that outlives this program must not keep the name.
    const int descriptor = socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (descriptor == -1)
        return;
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    const std::size_t length = std::min(std::strlen(name), sizeof(address.sun_path) - 1);
    std::memcpy(address.sun_path + 1, name, length); // the leading NUL makes the name abstract
    const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 + length);
    if (bind(descriptor, reinterpret_cast<const sockaddr *>(&address), size) != 0) {
        Existed = errno == EADDRINUSE;
        close(descriptor);
        return;
    }
    Handle = ToHandle(descriptor);
}

InstanceLock::~InstanceLock()
{
    if (Handle)
        close(ToDescriptor(Handle));
    Handle = nullptr;
}

} // namespace platform
