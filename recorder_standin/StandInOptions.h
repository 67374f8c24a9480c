// SPDX-License-Identifier: MIT
// How the stand-in recorder is told to behave.
#pragma once

#include <QString>

/// The stand-in's settings. Each is read from an environment variable TARNVIK_STANDIN_..., so that the
/// program under test, which starts its recorder without arguments, can pass them on:
///
/// - REPORT: file to which a line is appended for each event (StandInReport)
/// - INTERVAL_MS: time between two status changes, default 1000; 0: silent for ever
/// - STATUS: "valid" (default), "none", "damaged" or "huge" status files
/// - MESSAGE: write this message each time in place of the built-in ones
/// - EXIT_AFTER_MS: end by itself after this time
/// - EXIT_CODE: exit code for that, 0 (default) to 255
/// - CRASH_AFTER_MS: crash after this time
/// - HANG_AFTER_MS: after this time hear of nothing any more, and end at once after HANG_MS (default 0)
/// - IGNORE_QUIT: "1": do not listen to the quit request
/// - IGNORE_TERMINATE: "1": go on when asked to terminate
/// - QUIT_CLOSE_MS: time it needs to close its file after the quit request, default 0
/// - TERMINATE_CLOSE_MS: the same after the request to terminate
/// - FLOOD_LINES: print this many lines at the start, as fast as they are taken
/// - FAULTS: be another one at every start, in an order drawn from this number (StandInFaults); needs a
/// report
///
/// With FAULTS the starts are counted beside the report, in a file that ends in ".starts"; the report has the
/// fault, as in "dies", and "status" for each status change.
struct StandInOptions
{
    enum class Status { Valid, None, Damaged, Huge };

    QString ReportFile;
    int IntervalMs = 1000;
    Status StatusKind = Status::Valid;
    QString Message;
    int ExitAfterMs = -1; ///< -1: never
    int ExitCode = 0;
    int CrashAfterMs = -1; ///< -1: never
    int HangAfterMs = -1;  ///< -1: never
    int HangMs = 0;
    bool IgnoreQuit = false;
    bool IgnoreTerminate = false;
    int QuitCloseMs = 0;
    int TerminateCloseMs = 0;
    int FloodLines = 0;
    int Faults = -1; ///< -1: none

    /// Reads the environment. A value that makes no sense ends the program with a message: a test must not
    /// pass because its recorder misunderstood it.
    static StandInOptions FromEnvironment();
};
