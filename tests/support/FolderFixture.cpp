// SPDX-License-Identifier: MIT
#include "tests/support/FolderFixture.h"

#include <QTest>

namespace tests {

void FolderFixture::init()
{
    Folder = std::make_unique<QTemporaryDir>();
    QVERIFY(Folder->isValid());
}

void FolderFixture::cleanup()
{
    Folder.reset();
}

} // namespace tests
