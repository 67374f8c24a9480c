// SPDX-License-Identifier: MIT
// A signal handler may do next to nothing, so it only writes the signal's number into a pipe; a thread reads
// the pipe and calls the handler.
#include "platform/ControlEvents.h"

#include "platform/StandardStreams_linux.h"

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>
#include <memory>
#include <thread>

namespace platform {

namespace {

constexpr std::array HandledSignals = {SIGINT, SIGTERM};
constexpr unsigned char EndOfReading = 0; // no signal has this number

int WriteEnd = -1; // what the signal handler needs; constant while a handler is installed

void WriteByte(unsigned char byte)
{
    // A full pipe means that tens of thousands of requests are waiting already: one more may be dropped.
    while (write(WriteEnd, &byte, 1) == -1 && errno == EINTR) {
    }
}

extern "C" void ForwardSignal(int signalNumber)
{
    const int savedErrno = errno;
    WriteByte(static_cast<unsigned char>(signalNumber));
    errno = savedErrno;
}

void DefaultAction(int signalNumber)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    sigaction(signalNumber, &action, nullptr);
    kill(getpid(), signalNumber);
}

void ReadSignals(ControlHandler handler, int readEnd)
{
    unsigned char byte = EndOfReading;
    for (;;) {
        const ssize_t count = read(readEnd, &byte, 1);
        if (count == -1 && errno == EINTR)
            continue;
        if (count != 1 || byte == EndOfReading)
            return;
        const std::uint32_t type = byte == SIGINT ? ControlTypeCtrlC : ControlTypeShutdown;
        if (!handler(type))
            DefaultAction(byte);
    }
}

/// The handler in force; it is taken away with the object. That may happen as late as in exit(), which the
/// toolkit calls when it loses the display.
struct Installation
{
    int ReadEnd = -1;
    std::array<struct sigaction, HandledSignals.size()> Previous = {};
    std::thread Reader;

    Installation() = default;
    ~Installation()
    {
        for (std::size_t i = 0; i < HandledSignals.size(); ++i)
            sigaction(HandledSignals[i], &Previous[i], nullptr);
        WriteByte(EndOfReading);
        Reader.join();
        close(ReadEnd);
        close(WriteEnd);
        WriteEnd = -1;
    }
    Installation(const Installation &) = delete;
    Installation &operator=(const Installation &) = delete;
};

std::unique_ptr<Installation> Installed;

} // namespace

bool InstallControlHandler(ControlHandler handler)
{
    OpenStandardStreams();
    int ends[2] = {-1, -1};
    if (Installed || !handler || pipe2(ends, O_CLOEXEC) != 0)
        return false;
    fcntl(ends[1], F_SETFL, O_NONBLOCK); // a signal handler must not wait
    Installed = std::make_unique<Installation>();
    Installed->ReadEnd = ends[0];
    WriteEnd = ends[1];
    Installed->Reader = std::thread(ReadSignals, handler, Installed->ReadEnd);
    struct sigaction action = {};
    action.sa_handler = ForwardSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (std::size_t i = 0; i < HandledSignals.size(); ++i)
        sigaction(HandledSignals[i], &action, &Installed->Previous[i]);
    return true;
}

void RemoveControlHandler()
{
    Installed.reset();
}

} // namespace platform
