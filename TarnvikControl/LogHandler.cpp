// SPDX-License-Identifier: MIT
#include "TarnvikControl/LogHandler.h"

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
    // A line that nobody takes is lost; there is nobody to tell.
    const QByteArray text = message.toLocal8Bit();
    if (type == QtDebugMsg || type == QtInfoMsg) {
        (void)std::fprintf(stdout, "%s\n", text.constData());
        (void)std::fflush(stdout);
        return;
    }
    const QByteArray time = QDateTime::currentDateTime().toString(u"hh:mm:ss"_s).toLocal8Bit();
    (void)std::fprintf(stderr, "TarnvikControl %s: %s\n", time.constData(), text.constData());
    (void)std::fflush(stderr);
}
