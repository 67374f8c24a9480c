// SPDX-License-Identifier: MIT
// How a program without Qt receives the request that QProcess::terminate makes.
#pragma once

namespace tests {

/// From now on requests to terminate reach this process. Call it first, on the main thread.
void ReceiveTermination();
/// Waits until the process is asked to terminate, on the main thread; where the request ends the process, it
/// does not return.
void WaitUntilTerminated();

} // namespace tests
