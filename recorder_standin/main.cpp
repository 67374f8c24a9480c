// SPDX-License-Identifier: MIT
// The stand-in recorder's entry point. StandInOptions.h lists the environment variables that change what it
// does.
#include "platform/ControlEvents.h"
#include "recorder_standin/StandInOptions.h"
#include "recorder_standin/StandInRecorder.h"
#include "recorder_standin/StandInReport.h"

#include <QCoreApplication>

namespace {

const StandInOptions *Options = nullptr;
const StandInReport *Report = nullptr;

/// Runs on a thread of its own. Always true: unlike a Ctrl-C, a request to terminate is never left to the
/// system.
bool Terminate(std::uint32_t /*controlType*/)
{
    Report->write("terminate-request");
    if (!Options->IgnoreTerminate) {
        Report->write("ends");
        QMetaObject::invokeMethod(
            QCoreApplication::instance(), [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    const StandInOptions options = StandInOptions::FromEnvironment();
    const StandInReport report(options.ReportFile);
    report.write("started");
    Options = &options;
    Report = &report;
    QCoreApplication application(argc, argv);
    if (!platform::InstallControlHandler(Terminate))
        qWarning("a request to terminate cannot be received");
    int exitCode = 0;
    {
        StandInRecorder recorder(options, report);
        recorder.start();
        exitCode = QCoreApplication::exec();
    }
    platform::RemoveControlHandler();
    return exitCode;
}
