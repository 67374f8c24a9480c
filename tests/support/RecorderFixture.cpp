// SPDX-License-Identifier: MIT
#include "tests/support/RecorderFixture.h"

namespace tests {

void RecorderFixture::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    Report->SetOption("INTERVAL_MS", "0");
}

void RecorderFixture::ObeyOnlyTheQuitRequest()
{
    Report->SetOption("IGNORE_TERMINATE", "1");
}

void RecorderFixture::cleanup()
{
    Report.reset();
}

} // namespace tests
