// SPDX-License-Identifier: MIT
// The version that the build gave this very test program.
#include "platform/ProductVersion.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

class ProductVersionTest : public QObject
{
    Q_OBJECT

private slots:
    void itIsTheBuilds();
};

void ProductVersionTest::itIsTheBuilds()
{
    const std::optional<platform::ProductVersion> version = platform::ReadProductVersion();
    QVERIFY(version.has_value());
    QCOMPARE(version->Major, std::uint16_t{VERSION_MAJOR});
    QCOMPARE(version->Minor, std::uint16_t{VERSION_MINOR});
    QCOMPARE(version->Build, std::uint16_t{VERSION_BUILD});
    QCOMPARE(version->Revision, std::uint16_t{VERSION_REVISION});
}

TARNVIK_TEST_MAIN(ProductVersionTest, QCoreApplication)

#include "ProductVersionTest.moc"
