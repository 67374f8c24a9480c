// SPDX-License-Identifier: MIT
// The stand-in recorder's entry point. StandInOptions.h lists the environment variables that change what it
// does.
#include "platform/TerminateRequest.h"
#include "recorder_standin/StandInOptions.h"
#include "recorder_standin/StandInRecorder.h"
#include "recorder_standin/StandInReport.h"

#include <QCoreApplication>

int main(int argc, char **argv)
{
    const StandInOptions options = StandInOptions::FromEnvironment();
    const StandInReport report(options.ReportFile);
    report.Write("started");
    QCoreApplication application(argc, argv);
    StandInRecorder recorder(options, report);
    const platform::TerminateRequest terminateRequest([&recorder] { recorder.Terminate(); });
    if (!terminateRequest.isListening())
        qWarning("a request to terminate cannot be received");
    recorder.Start();
    return QCoreApplication::exec();
}
