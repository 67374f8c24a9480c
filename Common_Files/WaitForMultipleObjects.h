// SPDX-License-Identifier: MIT
// A set of events inside one process: any thread sets them, one thread waits for whichever is set first.
#pragma once

#include <QObject>

#include <memory>

/// Up to 64 events with one waiter and a timeout. An event is absent, present and clear, or present and set;
/// it is addressed by its id, 0 to 63. Every operation may be called from any thread; one thread at a time
/// may wait. No operation throws or logs; failures are return values.
class QWaitForMultipleObjects : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    /// The number of events that a set can hold; also what Add returns when it is full.
    static constexpr int Capacity = 64;
    /// Results of Wait other than an event's id.
    static constexpr int Timeout = -1;
    static constexpr int Failed = -2;
    static constexpr int Cancelled = -3;

    QWaitForMultipleObjects();
    /// A thread that waits on the set leaves its wait with Cancelled; the destructor gives it 100 ms for
    /// that.
    ~QWaitForMultipleObjects() override;

    /// Adds a clear event and returns the lowest free id, or 64 when all are in use (no operation accepts
    /// that id). `ignored` is for a handle that this kind of set does not need; pass 0. A negative result
    /// would mean that the system refused the event; this kind of set never gives one. An auto-reset event is
    /// cleared by the wait that returns it; any other stays set until it is removed.
    int Add(int ignored, bool autoReset);
    /// Takes the event out of the set, set or not. An id that is not in the set is left alone.
    void Remove(int id);
    /// Takes every event out of the set.
    void Clear();
    /// Sets the event; false when there is none with this id.
    bool Set(int id);
    /// Waits until an event is set and returns its id, the lowest one if several are set; Timeout after
    /// `timeoutMs` milliseconds (-1: never), Failed when another thread is waiting already, Cancelled when
    /// the set goes away. A change of the set that sets no event starts the timeout anew.
    int Wait(int timeoutMs);

private:
    struct State;

    // Shared with the waiter alone, so that it can leave safely while the set is being destroyed.
    std::shared_ptr<State> Shared;
};
