// SPDX-License-Identifier: MIT
// Settings are files below the home folder here, which is the test's own.
#include "tests/support/TestIsolation.h"

namespace tests {

void TestIsolation::IsolateSettings() {}

void TestIsolation::GiveSettingsBack() {}

} // namespace tests
