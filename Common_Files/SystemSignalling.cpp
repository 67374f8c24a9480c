// SPDX-License-Identifier: MIT
#include "Common_Files/SystemSignalling.h"

#include <QSystemSemaphore>
#include <QThread>

#include <atomic>
#include <chrono>
#include <thread>

/// Waits for one release of the entry's semaphore and reports it, unless it was told to stop.
class QSystemSignalling::WaitThread : public QThread
{
public:
    WaitThread(QSystemSignalling &owner, QSystemSemaphore &semaphore) : Owner(owner), Semaphore(semaphore) {}

    std::atomic<bool> Stop = false;

protected:
    void run() override
    {
        if (Semaphore.acquire() && !Stop)
            emit Owner.Signal_Trigger(Semaphore.key());
    }

private:
    QSystemSignalling &Owner;
    QSystemSemaphore &Semaphore;
};

struct QSystemSignalling::Entry
{
    Entry(QSystemSignalling &owner, const QString &name)
        : Semaphore(name, 0, QSystemSemaphore::Open), Thread(owner, Semaphore)
    {}

    QSystemSemaphore Semaphore;
    WaitThread Thread;
};

QSystemSignalling::QSystemSignalling() = default;

QSystemSignalling::~QSystemSignalling()
{
    while (!Entries.empty()) {
        Entry &entry = *Entries.back();
        if (entry.Thread.isRunning()) {
            entry.Thread.Stop = true;
            entry.Semaphore.release();
            while (!entry.Thread.isFinished())
                std::this_thread::sleep_for(std::chrono::microseconds(10));
        }
        Entries.pop_back();
    }
}

int QSystemSignalling::Add(const QString &name)
{
    auto entry = std::make_unique<Entry>(*this, name);
    if (entry->Semaphore.error() != QSystemSemaphore::NoError) {
        Error = entry->Semaphore.errorString();
        return -1;
    }
    Entries.push_back(std::move(entry));
    return static_cast<int>(Entries.size()) - 1;
}

bool QSystemSignalling::Wait(int index)
{
    Entry *const entry = entryAt(index);
    if (!entry || entry->Thread.isRunning())
        return false;
    entry->Thread.start();
    return true;
}

bool QSystemSignalling::isWaiting(int index) const
{
    const Entry *const entry = entryAt(index);
    return entry && entry->Thread.isRunning();
}

QSystemSignalling::Entry *QSystemSignalling::entryAt(int index) const
{
    const bool known = index >= 0 && static_cast<std::size_t>(index) < Entries.size();
    return known ? Entries[static_cast<std::size_t>(index)].get() : nullptr;
}
