// SPDX-License-Identifier: MIT
#include "Common_Files/Version.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTest>

#include <limits>
#include <optional>

using platform::ProductVersion;
using MaybeVersion = std::optional<ProductVersion>;

Q_DECLARE_METATYPE(MaybeVersion)

class VersionTest : public QObject
{
    Q_OBJECT

private slots:
    void nothingIsPackedBeforeStartUp();
    void theProductVersionIsPackedAndRaisedToTheLowest_data();
    void theProductVersionIsPackedAndRaisedToTheLowest();
    void theTextNamesOnlyThePartsThatAreNeeded_data();
    void theTextNamesOnlyThePartsThatAreNeeded();
};

void VersionTest::nothingIsPackedBeforeStartUp()
{
    QCOMPARE(PackedVersion, std::uint64_t{0});
}

void VersionTest::theProductVersionIsPackedAndRaisedToTheLowest_data()
{
    constexpr std::uint16_t most = std::numeric_limits<std::uint16_t>::max();
    QTest::addColumn<MaybeVersion>("version");
    QTest::addColumn<quint32>("packed");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const MaybeVersion &version, quint32 packed, const char *text) {
        QTest::newRow(name) << version << packed << QString::fromLatin1(text);
    };
    row("no version resource gives 25.12.1.1", std::nullopt, 0x190C0101, "2025.12.1.1");
    row("0.0.0.0 is raised to 25.12.1.1", ProductVersion{0, 0, 0, 0}, 0x190C0101, "2025.12.1.1");
    row("25.12.0.0 is raised to 25.12.1.1", ProductVersion{25, 12, 0, 0}, 0x190C0101, "2025.12.1.1");
    row("25.12.1.0 is raised to 25.12.1.1", ProductVersion{25, 12, 1, 0}, 0x190C0101, "2025.12.1.1");
    row("24.255.255.255 is raised to 25.12.1.1", ProductVersion{24, 255, 255, 255}, 0x190C0101,
        "2025.12.1.1");
    row("25.12.1.1 stays", ProductVersion{25, 12, 1, 1}, 0x190C0101, "2025.12.1.1");
    row("25.12.1.2 stays", ProductVersion{25, 12, 1, 2}, 0x190C0102, "2025.12.1.2");
    row("25.12.2.0 stays", ProductVersion{25, 12, 2, 0}, 0x190C0200, "2025.12.2");
    row("26.1.0.0 gives 2026.1", ProductVersion{26, 1, 0, 0}, 0x1A010000, "2026.1");
    row("26.1.3.0 gives 2026.1.3", ProductVersion{26, 1, 3, 0}, 0x1A010300, "2026.1.3");
    row("26.1.3.2 gives 2026.1.3.2", ProductVersion{26, 1, 3, 2}, 0x1A010302, "2026.1.3.2");
    row("the comparison is unsigned", ProductVersion{255, 255, 255, 255}, 0xFFFFFFFF, "2255.255.255.255");
    row("each part is cut to its low eight bits", ProductVersion{0x11A, 0x201, 0x303, 0xFF02}, 0x1A010302,
        "2026.1.3.2");
    row("what is too low after the cut is raised", ProductVersion{0x100, 1, 1, 1}, 0x190C0101, "2025.12.1.1");
    row("the largest parts", ProductVersion{most, most, most, most}, 0xFFFFFFFF, "2255.255.255.255");
}

void VersionTest::theProductVersionIsPackedAndRaisedToTheLowest()
{
    QFETCH(MaybeVersion, version);
    QFETCH(quint32, packed);
    QFETCH(QString, text);
    QCOMPARE(PackVersion(version), packed);
    QCOMPARE(VersionText(PackVersion(version)), text);
}

void VersionTest::theTextNamesOnlyThePartsThatAreNeeded_data()
{
    QTest::addColumn<quint32>("packed");
    QTest::addColumn<QString>("text");
    QTest::newRow("the lowest version") << LowestVersion << "2025.12.1.1";
    QTest::newRow("year and minor") << 0x1A010000U << "2026.1";
    QTest::newRow("minor 0 is shown") << 0x1A000000U << "2026.0";
    QTest::newRow("year, minor and build") << 0x1A010300U << "2026.1.3";
    QTest::newRow("all four parts") << 0x1A010302U << "2026.1.3.2";
    QTest::newRow("build 0 is shown before a revision") << 0x1A010002U << "2026.1.0.2";
    QTest::newRow("numbers are not padded") << 0x01020304U << "2001.2.3.4";
    QTest::newRow("major 0 gives year 0") << 0x00050607U << "0.5.6.7";
    QTest::newRow("nothing at all") << 0U << "0.0";
    QTest::newRow("every bit set") << 0xFFFFFFFFU << "2255.255.255.255";
}

void VersionTest::theTextNamesOnlyThePartsThatAreNeeded()
{
    QFETCH(quint32, packed);
    QFETCH(QString, text);
    QCOMPARE(VersionText(packed), text);
}

TARNVIK_TEST_MAIN(VersionTest, QCoreApplication)

#include "VersionTest.moc"
