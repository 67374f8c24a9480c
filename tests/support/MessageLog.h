// SPDX-License-Identifier: MIT
// What the code under test logs.
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace tests {

/// Collects the messages of all threads through Qt's message handler while it exists. One at a time.
class MessageLog
{
public:
    struct Message
    {
        QtMsgType Type;
        QString Text;
    };

    MessageLog();
    ~MessageLog();
    Q_DISABLE_COPY_MOVE(MessageLog)

    [[nodiscard]] QList<Message> messages() const;
    /// The texts of one type, in order.
    [[nodiscard]] QStringList texts(QtMsgType type) const;

private:
    QtMessageHandler Previous;
};

} // namespace tests
