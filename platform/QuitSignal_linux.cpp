// SPDX-License-Identifier: MIT
// QSystemSemaphore is a System V semaphore here, with SEM_UNDO: its count outlives all processes, a released
// count is taken back when the releasing process ends, and an acquired one is given back when the acquiring
// process ends. The first and the last would make a request reach a process that starts later.
#include "platform/QuitSignal.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSystemSemaphore>

#include <sys/ipc.h>
#include <sys/sem.h>

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace platform {

namespace {

constexpr int QtProjectId = 'Q'; // what Qt passes to ftok()

/// The argument of semctl(); by its manual page the caller declares the union.
union SemaphoreArgument {
    int val;
    semid_ds *buf;
    unsigned short *array;
};

/// The file from which Qt makes the System V key of a system semaphore with this key.
QString KeyFile(const QString &key)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
    return QSystemSemaphore::legacyNativeKey(key, QNativeIpcKey::Type::SystemV).nativeKey();
#else
    QString name = u"/qipc_systemsem_"_s;
    for (const QChar letter : key) {
        if ((letter >= u'a' && letter <= u'z') || (letter >= u'A' && letter <= u'Z'))
            name += letter;
    }
    const QByteArray hash = QCryptographicHash::hash(key.toUtf8(), QCryptographicHash::Sha1).toHex();
    return QDir::tempPath() + name + QString::fromLatin1(hash);
#endif
}

/// The semaphore as it exists now; never creates one.
std::optional<int> Find(const QString &key)
{
    const key_t systemKey = ftok(QFile::encodeName(KeyFile(key)).constData(), QtProjectId);
    if (systemKey == -1)
        return std::nullopt;
    const int semaphore = semget(systemKey, 1, 0);
    return semaphore == -1 ? std::nullopt : std::optional(semaphore);
}

/// Takes away a count that nobody took, and sees to it that a process that took one does not give it back
/// when it ends.
void Settle(const QString &key)
{
    const std::optional<int> semaphore = Find(key);
    if (!semaphore)
        return;
    // A release has already passed its count to a waiting process: the kernel does both in one step. Setting
    // the value also forgets what every process would give back or take back at its end.
    SemaphoreArgument zero = {};
    semctl(*semaphore, 0, SETVAL, zero);
}

} // namespace

int QuitSignalListeners(const QString &key)
{
    const std::optional<int> semaphore = Find(key);
    return semaphore ? std::max(semctl(*semaphore, 0, GETNCNT), 0) : 0; // -1: it has just gone
}

void SendQuitSignal(const QString &key)
{
    // Whoever waits longest is served first: with one request for several, one that was left over from an
    // earlier run would take it from the one that is meant.
    if (const int listeners = QuitSignalListeners(key); listeners > 0) {
        QSystemSemaphore semaphore(key, 0, QSystemSemaphore::Open);
        if (semaphore.error() == QSystemSemaphore::NoError)
            semaphore.release(listeners);
    }
    Settle(key);
}

} // namespace platform
