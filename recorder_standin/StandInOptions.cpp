// SPDX-License-Identifier: MIT
#include "recorder_standin/StandInOptions.h"

#include <cstdio>
#include <cstdlib>
#include <limits>

using namespace Qt::StringLiterals;

namespace {

constexpr int HighestExitCode = 255; // what Linux can tell a parent

[[noreturn]] void Refuse(const char *variable)
{
    (void)std::fprintf(stderr, "TarnvikRecord (stand-in): %s makes no sense\n", variable);
    std::exit(64);
}

void ReadNumber(const char *variable, int &value, int highest = std::numeric_limits<int>::max())
{
    if (!qEnvironmentVariableIsSet(variable))
        return;
    bool ok = false;
    const int number = qEnvironmentVariableIntValue(variable, &ok);
    if (!ok || number < 0 || number > highest)
        Refuse(variable);
    value = number;
}

bool ReadFlag(const char *variable)
{
    int number = 0;
    ReadNumber(variable, number, 1);
    return number == 1;
}

StandInOptions::Status ReadStatus(const char *variable)
{
    const QString value = qEnvironmentVariable(variable, u"valid"_s);
    if (value == QLatin1String("valid"))
        return StandInOptions::Status::Valid;
    if (value == QLatin1String("none"))
        return StandInOptions::Status::None;
    if (value == QLatin1String("damaged"))
        return StandInOptions::Status::Damaged;
    if (value == QLatin1String("huge"))
        return StandInOptions::Status::Huge;
    Refuse(variable);
}

} // namespace

StandInOptions StandInOptions::FromEnvironment()
{
    StandInOptions options;
    options.ReportFile = qEnvironmentVariable("TARNVIK_STANDIN_REPORT");
    options.Message = qEnvironmentVariable("TARNVIK_STANDIN_MESSAGE");
    options.StatusKind = ReadStatus("TARNVIK_STANDIN_STATUS");
    ReadNumber("TARNVIK_STANDIN_INTERVAL_MS", options.IntervalMs);
    ReadNumber("TARNVIK_STANDIN_EXIT_AFTER_MS", options.ExitAfterMs);
    ReadNumber("TARNVIK_STANDIN_EXIT_CODE", options.ExitCode, HighestExitCode);
    ReadNumber("TARNVIK_STANDIN_CRASH_AFTER_MS", options.CrashAfterMs);
    ReadNumber("TARNVIK_STANDIN_HANG_AFTER_MS", options.HangAfterMs);
    ReadNumber("TARNVIK_STANDIN_HANG_MS", options.HangMs);
    ReadNumber("TARNVIK_STANDIN_FLOOD_LINES", options.FloodLines);
    ReadNumber("TARNVIK_STANDIN_FAULTS", options.Faults);
    if (options.Faults >= 0 && options.ReportFile.isEmpty())
        Refuse("TARNVIK_STANDIN_FAULTS");
    options.IgnoreQuit = ReadFlag("TARNVIK_STANDIN_IGNORE_QUIT");
    options.IgnoreTerminate = ReadFlag("TARNVIK_STANDIN_IGNORE_TERMINATE");
    ReadNumber("TARNVIK_STANDIN_QUIT_CLOSE_MS", options.QuitCloseMs);
    ReadNumber("TARNVIK_STANDIN_TERMINATE_CLOSE_MS", options.TerminateCloseMs);
    return options;
}
