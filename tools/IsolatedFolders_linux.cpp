// SPDX-License-Identifier: MIT
// Settings are files below the home folder here, which is the test's own.
#include "tools/IsolatedFolders.h"

namespace tools {

void IsolatedFolders::IsolateSettings() {}

void IsolatedFolders::GiveSettingsBack() {}

} // namespace tools
