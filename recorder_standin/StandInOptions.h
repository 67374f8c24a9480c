// SPDX-License-Identifier: MIT
// How the stand-in recorder is told to behave.
#pragma once

#include <QString>

/// The stand-in's settings. Each is read from an environment variable, so that the program under test, which
/// starts its recorder without arguments, can pass them on:
///
/// | variable                           | meaning |
/// |------------------------------------|--------------------------------------------------------------------|
/// | TARNVIK_STANDIN_REPORT             | file to which a line is appended for each event (StandInReport) |
/// | TARNVIK_STANDIN_INTERVAL_MS        | time between two status changes, default 1000; 0: silent for ever |
/// | TARNVIK_STANDIN_STATUS             | "valid" (default), "none", "damaged" or "huge" status files | |
/// TARNVIK_STANDIN_MESSAGE            | write this message each time in place of the built-in ones         |
/// | TARNVIK_STANDIN_EXIT_AFTER_MS      | end by itself after this time | | TARNVIK_STANDIN_EXIT_CODE | exit
/// code for that, 0 (default) to 255                             | | TARNVIK_STANDIN_CRASH_AFTER_MS     |
/// crash after this time                                              | | TARNVIK_STANDIN_IGNORE_QUIT | "1":
/// do not listen to the quit request                             | | TARNVIK_STANDIN_IGNORE_TERMINATE   |
/// "1": go on when asked to terminate                                 | | TARNVIK_STANDIN_QUIT_CLOSE_MS |
/// time it needs to close its file after the quit request, default 0  | | TARNVIK_STANDIN_TERMINATE_CLOSE_MS
/// | the same after the request to terminate                            | | TARNVIK_STANDIN_FLOOD_LINES |
/// print this many lines at the start, as fast as they are taken      |
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
    bool IgnoreQuit = false;
    bool IgnoreTerminate = false;
    int QuitCloseMs = 0;
    int TerminateCloseMs = 0;
    int FloodLines = 0;

    /// Reads the environment. A value that makes no sense ends the program with a message: a test must not
    /// pass because its recorder misunderstood it.
    static StandInOptions FromEnvironment();
};
