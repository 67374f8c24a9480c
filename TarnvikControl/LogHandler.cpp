// SPDX-License-Identifier: MIT
#include "TarnvikControl/LogHandler.h"

#include <QDateTime>

#include <cstdio>

using namespace Qt::StringLiterals;

void ConsoleMessageHandler(QtMsgType type, const QMessageLogContext & /*context*/, const QString &message)
{
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
