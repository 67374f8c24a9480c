// SPDX-License-Identifier: MIT
// Named signals between processes: a program waits for them on threads of its own and reports them as a Qt
// signal.
#pragma once

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

/// Holds named system signals. Each is a system semaphore with a thread that waits on it. All operations
/// belong to the thread of the object; Signal_Trigger is emitted by a waiting thread, so connections to
/// objects of other threads are queued.
class QSystemSignalling : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    QSystemSignalling();
    /// Ends every wait, from the last entry to the first, by releasing its semaphore once. A process that
    /// waits on the same name at that moment can be woken in its place.
    ~QSystemSignalling() override;

    /// Opens the named signal, creating it with no count when it is missing. Returns its index, or -1 when
    /// the system refuses it (`errorText` says why).
    int Add(const QString &name);
    /// Begins to wait for the signal on the entry's thread. The wait ends with the first trigger: a program
    /// that is asked to quit must not take a second request that is meant for its successor. False when the
    /// index is unknown or its wait is under way.
    bool Wait(int index);
    /// True while the entry's thread waits.
    [[nodiscard]] bool isWaiting(int index) const;
    /// What the system said to the last Add that failed.
    [[nodiscard]] QString errorText() const { return Error; }

signals:
    /// The named signal fired.
    void Signal_Trigger(const QString &clstrName);

private:
    class WaitThread;
    struct Entry;

    [[nodiscard]] Entry *entryAt(int index) const;

    std::vector<std::unique_ptr<Entry>> Entries;
    QString Error;
};
