// SPDX-License-Identifier: MIT
#include "Common_Files/WaitForMultipleObjects.h"

#include <QSemaphore>

#include <bit>
#include <cstdint>

namespace {

constexpr int LockTimeoutMs = 1000;
constexpr int WaiterTimeoutMs = 100;
constexpr int CancelTimeoutMs = 1;

constexpr std::uint64_t BitOf(int id)
{
    return std::uint64_t{1} << id;
}

constexpr bool IsId(int id)
{
    return id >= 0 && id < QWaitForMultipleObjects::Capacity;
}

/// Holds the lock of the masks for its lifetime. After the timeout the operation goes on without the lock, so
/// that no caller hangs for ever; what was not taken is not given back, or the lock would let two threads in
/// from then on.
class Locker
{
public:
    explicit Locker(QSemaphore &lock, int timeoutMs = LockTimeoutMs)
        : Semaphore(lock), Taken(lock.tryAcquire(1, timeoutMs))
    {}
    ~Locker()
    {
        if (Taken)
            Semaphore.release();
    }
    Q_DISABLE_COPY_MOVE(Locker)

private:
    QSemaphore &Semaphore;
    bool Taken;
};

} // namespace

struct QWaitForMultipleObjects::State
{
    QSemaphore Wake{0};              // one release per change of the set; carries no data
    QSemaphore Lock{1};              // guards the masks; a semaphore because it is taken with a timeout
    QSemaphore Cancel{0};            // released by the destructor
    QSemaphore WaiterGuard{1};       // held by the thread that waits
    std::uint64_t UsedMask = 0;      // bit n: event n exists
    std::uint64_t AutoResetMask = 0; // bit n: event n is cleared by the wait that returns it
    std::uint64_t SignalledMask = 0; // bit n: event n is set

    void RemoveEvents(std::uint64_t mask)
    {
        UsedMask &= ~mask;
        AutoResetMask &= ~mask;
        SignalledMask &= ~mask;
    }
};

QWaitForMultipleObjects::QWaitForMultipleObjects() : Shared(std::make_shared<State>()) {}

QWaitForMultipleObjects::~QWaitForMultipleObjects()
{
    {
        const Locker locker(Shared->Lock);
        Shared->RemoveEvents(~std::uint64_t{0});
    }
    if (Shared->WaiterGuard.tryAcquire()) // nobody waits
        return;
    Shared->Cancel.release();
    Shared->Wake.release();
    // Lets the waiter return before its caller sees the set gone; on a loaded machine it may return later.
    (void)Shared->WaiterGuard.tryAcquire(1, WaiterTimeoutMs);
}

int QWaitForMultipleObjects::Add(int /*ignored*/, bool autoReset)
{
    const Locker locker(Shared->Lock);
    const int id = std::countr_one(Shared->UsedMask);
    if (id == Capacity)
        return Capacity;
    Shared->RemoveEvents(BitOf(id));
    Shared->UsedMask |= BitOf(id);
    if (autoReset)
        Shared->AutoResetMask |= BitOf(id);
    return id;
}

void QWaitForMultipleObjects::Remove(int id)
{
    if (!IsId(id))
        return;
    {
        const Locker locker(Shared->Lock);
        Shared->RemoveEvents(BitOf(id));
    }
    Shared->Wake.release();
}

void QWaitForMultipleObjects::Clear()
{
    {
        const Locker locker(Shared->Lock);
        if (Shared->UsedMask == 0)
            return;
        Shared->RemoveEvents(~std::uint64_t{0});
    }
    Shared->Wake.release();
}

bool QWaitForMultipleObjects::Set(int id)
{
    if (!IsId(id))
        return false;
    {
        const Locker locker(Shared->Lock);
        if ((Shared->UsedMask & BitOf(id)) == 0)
            return false;
        Shared->SignalledMask |= BitOf(id);
    }
    Shared->Wake.release();
    return true;
}

int QWaitForMultipleObjects::Wait(int timeoutMs)
{
    const std::shared_ptr<State> state = Shared;
    if (!state->WaiterGuard.tryAcquire(1, WaiterTimeoutMs))
        return Failed;
    const QSemaphoreReleaser guardReleaser(state->WaiterGuard);
    for (;;) {
        {
            const Locker locker(state->Lock, -1);
            if (state->Cancel.available() > 0 && state->Cancel.tryAcquire(1, CancelTimeoutMs))
                return Cancelled;
            if (state->SignalledMask != 0) {
                const int id = std::countr_zero(state->SignalledMask);
                state->SignalledMask &= ~(BitOf(id) & state->AutoResetMask);
                return id;
            }
        }
        if (!state->Wake.tryAcquire(1, timeoutMs))
            return Timeout;
    }
}
