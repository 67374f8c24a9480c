// SPDX-License-Identifier: MIT
#include "alignment/Crc.h"

#include "tests/support/TestMain.h"
#include "tools/BitwiseCrc.h"

#include <QTest>

#include <array>
#include <cstdint>
#include <random>
#include <span>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<std::uint8_t, 9> Digits = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};

/// Arbitrary bytes, beginning at a multiple of 16.
struct alignas(16) Bytes
{
    std::array<std::uint8_t, 320> Data = {};

    Bytes()
    {
        std::mt19937 engine(20251212);
        for (std::uint8_t &byte : Data)
            byte = static_cast<std::uint8_t>(engine());
    }
};

} // namespace

class CrcTest : public QObject
{
    Q_OBJECT

private slots:
    void crc8OverTheDigitsIsTheCataloguesCheckValue();
    void crc32OverTheDigitsIsThePublishedCheckValue();
    void bitwiseFormsGiveTheSameCheckValues();
    void crcOfNothingIsZero();
    void crcOfFileChunks();
    void everyLengthAtEveryAlignmentEqualsTheBitwiseForm();
    void twoHalvesEqualTheWhole();
    void crc32IsTheComplementOfThePosixChecksumWithoutItsInitialValue();
};

void CrcTest::crc8OverTheDigitsIsTheCataloguesCheckValue()
{
    QCOMPARE(Crc8(Digits), std::uint8_t{0xF4});
}

void CrcTest::crc32OverTheDigitsIsThePublishedCheckValue()
{
    QCOMPARE(Crc32(Digits), std::uint32_t{0x89A1897F});
}

void CrcTest::bitwiseFormsGiveTheSameCheckValues()
{
    QCOMPARE(tools::BitwiseCrc8(Digits), std::uint8_t{0xF4});
    QCOMPARE(tools::BitwiseCrc32(Digits), std::uint32_t{0x89A1897F});
}

void CrcTest::crcOfNothingIsZero()
{
    QCOMPARE(Crc8({}), std::uint8_t{0});
    QCOMPARE(Crc32({}), std::uint32_t{0});
}

void CrcTest::crcOfFileChunks()
{
    // Payload of the header chunk of a file with one LimeMini table.
    constexpr std::array<std::uint8_t, 3> header = {0x01, 0x00, 0x01};
    QCOMPARE(Crc8(header), std::uint8_t{0x6C});

    // Payload of the chunk of a table ABC aligned at 0x65A0BC00.
    std::array<std::uint8_t, 139> table = {0x05, 'A', 'B', 'C'};
    table[133] = 0x65;
    table[134] = 0xA0;
    table[135] = 0xBC;
    table[137] = 6;
    QCOMPARE(Crc8(table), std::uint8_t{0xDE});
}

void CrcTest::everyLengthAtEveryAlignmentEqualsTheBitwiseForm()
{
    const Bytes bytes;
    for (std::size_t alignment = 0; alignment <= 15; ++alignment) {
        for (std::size_t length = 0; length <= 300; ++length) {
            const auto part = std::span(bytes.Data).subspan(alignment, length);
            if (Crc8(part) != tools::BitwiseCrc8(part) || Crc32(part) != tools::BitwiseCrc32(part))
                QFAIL(qPrintable(u"length %1 at alignment %2"_s.arg(length).arg(alignment)));
        }
    }
}

void CrcTest::twoHalvesEqualTheWhole()
{
    const Bytes bytes;
    const auto whole = std::span<const std::uint8_t>(bytes.Data);
    for (std::size_t split = 0; split <= whole.size(); ++split) {
        QCOMPARE(Crc8(whole.subspan(split), Crc8(whole.first(split))), Crc8(whole));
        QCOMPARE(Crc32(whole.subspan(split), Crc32(whole.first(split))), Crc32(whole));
    }
}

void CrcTest::crc32IsTheComplementOfThePosixChecksumWithoutItsInitialValue()
{
    // CRC-32/CKSUM has the check value 0x765E7680.
    QCOMPARE(static_cast<std::uint32_t>(~Crc32(Digits)), std::uint32_t{0x765E7680});
}

TARNVIK_TEST_MAIN(CrcTest, QCoreApplication)
#include "CrcTest.moc"
