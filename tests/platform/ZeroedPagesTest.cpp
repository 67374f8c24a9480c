// SPDX-License-Identifier: MIT
// Memory from the system: zeroed, large, small, and none.
#include "platform/ZeroedPages.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <algorithm>
#include <cstring>
#include <limits>

#ifdef TARNVIK_SANITIZE
#include <sanitizer/asan_interface.h>
#endif

class ZeroedPagesTest : public QObject
{
    Q_OBJECT

private slots:
    void memoryIsZeroedEachTime_data();
    void memoryIsZeroedEachTime();
    void nothingIsGivenForNothing();
    void whatTheSystemDoesNotHaveIsNull();
};

void ZeroedPagesTest::memoryIsZeroedEachTime_data()
{
    QTest::addColumn<quint64>("size");
    QTest::newRow("one byte") << quint64{1};
    QTest::newRow("a page") << quint64{4096};
    QTest::newRow("below a megabyte") << quint64{417'616};
    QTest::newRow("five megabytes") << quint64{12 * 417'616};
}

void ZeroedPagesTest::memoryIsZeroedEachTime()
{
    QFETCH(quint64, size);
    for (int round = 0; round < 3; ++round) { // memory that was used comes back zeroed
        auto *const bytes = static_cast<char *>(platform::AllocateZeroedPages(size));
        QVERIFY(bytes != nullptr);
        QVERIFY(std::all_of(bytes, bytes + size, [](char byte) { return byte == 0; }));
#if defined(TARNVIK_SANITIZE) && defined(Q_OS_LINUX)
        // Whoever runs over the end is found, in the fuzzer too.
        QVERIFY(__asan_address_is_poisoned(bytes + size) != 0);
#endif
        std::memset(bytes, 0xFF, size);
        platform::FreePages(bytes, size);
    }
}

void ZeroedPagesTest::nothingIsGivenForNothing()
{
    QVERIFY(platform::AllocateZeroedPages(0) == nullptr);
    platform::FreePages(nullptr, 0);
    platform::FreePages(nullptr, 4096);
}

void ZeroedPagesTest::whatTheSystemDoesNotHaveIsNull()
{
    QVERIFY(platform::AllocateZeroedPages(std::numeric_limits<std::size_t>::max() / 2) == nullptr);
}

TARNVIK_TEST_MAIN(ZeroedPagesTest, QCoreApplication)

#include "ZeroedPagesTest.moc"
