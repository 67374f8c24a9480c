// SPDX-License-Identifier: MIT
// Linked to the program, it loses what TARNVIK_PLANTED_LEAK names, "memory" (10 KB), "threads" or "windows",
// ten times a second: to see that the soak run notices.
#include <QByteArrayList>
#include <QCoreApplication>
#include <QSemaphore>
#include <QThread>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int IntervalMs = 100;
constexpr qsizetype LostBytes = 10'240;

void LoseMemory()
{
    static QByteArrayList lost;
    lost.append(QByteArray(LostBytes, 'x'));
}

void LoseThread()
{
    QThread::create([] { QSemaphore().acquire(); })->start();
}

void LoseWindow()
{
    (void)(new QWidget)->winId();
}

void PlantLeak()
{
    const QByteArray kind = qgetenv("TARNVIK_PLANTED_LEAK");
    auto *const timer = new QTimer(QCoreApplication::instance());
    if (kind == "memory") {
        timer->callOnTimeout(LoseMemory);
    } else if (kind == "threads") {
        timer->callOnTimeout(LoseThread);
    } else if (kind == "windows") {
        timer->callOnTimeout(LoseWindow);
    } else {
        (void)std::fprintf(stderr, "TARNVIK_PLANTED_LEAK names no leak\n");
        std::exit(64);
    }
    timer->start(IntervalMs);
}

} // namespace

Q_COREAPP_STARTUP_FUNCTION(PlantLeak)
