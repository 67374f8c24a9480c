// SPDX-License-Identifier: MIT
#include "TarnvikControl/LogHandler.h"

#include "platform/LineOutput.h"

#include <QDateTime>

#include <algorithm>
#include <array>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// What Qt's platform "offscreen" says at each start, of things that nobody misses where there is no screen.
constexpr std::array NoScreenMessages = {
    "This plugin does not support propagateSizeHints()"_L1,
    "QObject::connect: No such signal QPlatformNativeInterface::systemTrayWindowChanged(QScreen*)"_L1,
};

} // namespace

void ConsoleMessageHandler(QtMsgType type, const QMessageLogContext & /*context*/, const QString &message)
{
    if (std::find(NoScreenMessages.begin(), NoScreenMessages.end(), message) != NoScreenMessages.end())
        return;
    const bool isPlain = type == QtDebugMsg || type == QtInfoMsg;
    QByteArray line(message.toLocal8Bit().constData()); // up to a zero byte
    if (!isPlain)
        line.prepend("TarnvikControl " + QDateTime::currentDateTime().toString(u"hh:mm:ss"_s).toLocal8Bit() +
                     ": ");
    line += '\n';
    platform::WriteOut(isPlain ? stdout : stderr, {line.constData(), static_cast<std::size_t>(line.size())});
}
