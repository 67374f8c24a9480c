// SPDX-License-Identifier: MIT
#include "tests/support/MessageLog.h"

#include <QMutex>
#include <QMutexLocker>

namespace tests {

namespace {

QMutex Mutex;
QList<MessageLog::Message> Collected;

void Collect(QtMsgType type, const QMessageLogContext & /*context*/, const QString &text)
{
    const QMutexLocker locker(&Mutex);
    Collected.append({type, text});
}

} // namespace

MessageLog::MessageLog()
{
    {
        const QMutexLocker locker(&Mutex);
        Collected.clear();
    }
    Previous = qInstallMessageHandler(Collect);
}

MessageLog::~MessageLog()
{
    qInstallMessageHandler(Previous);
}

QList<MessageLog::Message> MessageLog::messages() const
{
    const QMutexLocker locker(&Mutex);
    return Collected;
}

QStringList MessageLog::texts(QtMsgType type) const
{
    QStringList texts;
    const QList<Message> all = messages();
    for (const Message &message : all) {
        if (message.Type == type)
            texts.append(message.Text);
    }
    return texts;
}

} // namespace tests
