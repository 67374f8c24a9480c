// SPDX-License-Identifier: MIT
// A fresh report of the stand-in recorders for each test function.
#pragma once

#include "tools/RecorderReport.h"

#include <QObject>

#include <memory>

namespace tests {

/// Base of test classes that start recorders. These write no status until a test sets another interval. A
/// class with an init() or a cleanup() of its own calls that of this class, too.
class RecorderFixture : public QObject
{
    Q_OBJECT

protected:
    /// Makes the recorders of this test end by the quit request alone. Windows sends the request to terminate
    /// together with it, and either could be the first.
    void ObeyOnlyTheQuitRequest();

    std::unique_ptr<tools::RecorderReport> Report;

protected slots:
    void init();
    void cleanup();
};

} // namespace tests
