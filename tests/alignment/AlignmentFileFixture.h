// SPDX-License-Identifier: MIT
// A place for an alignment file.
#pragma once

#include "tests/support/FolderFixture.h"

namespace tests {

/// Base of test classes that save to and load from one file in a fresh folder.
class AlignmentFileFixture : public FolderFixture
{
    Q_OBJECT

protected:
    QString Path; // of the file; at the beginning there is none

protected slots:
    void init();
};

} // namespace tests
