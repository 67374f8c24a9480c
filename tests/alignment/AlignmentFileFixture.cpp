// SPDX-License-Identifier: MIT
#include "tests/alignment/AlignmentFileFixture.h"

using namespace Qt::StringLiterals;

namespace tests {

void AlignmentFileFixture::init()
{
    FolderFixture::init();
    Path = path(u"TarnvikDriver_LimeMini.ad"_s);
}

} // namespace tests
