// SPDX-License-Identifier: MIT
// The stand-in recorder's entry point. StandInOptions.h lists the environment variables that change what it
// does.
#include "platform/TerminateRequest.h"
#include "recorder_standin/StandInFaults.h"
#include "recorder_standin/StandInOptions.h"
#include "recorder_standin/StandInRecorder.h"
#include "recorder_standin/StandInReport.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

int main(int argc, char **argv)
{
    StandInOptions options = StandInOptions::FromEnvironment();
    const StandInReport report(options.ReportFile);
    report.Write("started");
    if (options.Faults >= 0) {
        const std::uint32_t start = StandInFaults::CountStart(options.ReportFile + u".starts"_s);
        const StandInFaults::Fault fault =
            StandInFaults::Draw(static_cast<std::uint32_t>(options.Faults), start, options);
        report.Write(StandInFaults::NameOf(fault.FaultKind));
        options = fault.Options;
    }
    QCoreApplication application(argc, argv);
    StandInRecorder recorder(options, report);
    const platform::TerminateRequest terminateRequest([&recorder] { recorder.Terminate(); });
    if (!terminateRequest.isListening())
        qWarning("a request to terminate cannot be received");
    recorder.Start();
    return QCoreApplication::exec();
}
