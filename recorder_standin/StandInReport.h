// SPDX-License-Identifier: MIT
// What the stand-in recorder tells about itself, for those who test the program that runs it.
#pragma once

#include <QString>

/// Appends lines to the report file: the steady clock in microseconds (the same clock for all processes of
/// the machine), the process id and the event, separated by blanks. Events: "started", "ready",
/// "quit-request", "terminate-request", "closed" (the file that it was asked to close is whole), "ends" (not
/// when it is killed or crashes). Without a file it does nothing. May be used from any thread.
class StandInReport
{
public:
    explicit StandInReport(QString file) : File(std::move(file)) {}
    void Write(const char *event) const;

private:
    QString File;
};
