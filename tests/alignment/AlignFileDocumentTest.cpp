// SPDX-License-Identifier: MIT
// The document about the alignment file tells the truth: its examples and check values are the program's.
#include "alignment/AlignStore.h"
#include "alignment/Crc.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/TestMain.h"

#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

#include <array>
#include <cstddef>
#include <cstdint>

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<std::uint8_t, 9> Digits = {'1', '2', '3', '4', '5', '6', '7', '8', '9'};

/// The bytes of one example: hexadecimal, "125*00" for a repeated byte, comments behind semicolons. Null when
/// something else stands there.
QByteArray BytesOf(const QString &example)
{
    static const QRegularExpression form(u"^(?:(\\d+)\\*)?([0-9A-F]{2})$"_s);
    QByteArray bytes;
    const QStringList lines = example.split(u'\n');
    for (const QString &line : lines) {
        const QStringList words = line.section(u';', 0, 0).simplified().split(u' ', Qt::SkipEmptyParts);
        for (const QString &word : words) {
            const QRegularExpressionMatch match = form.match(word);
            if (!match.hasMatch())
                return {};
            const int count = match.captured(1).isEmpty() ? 1 : match.captured(1).toInt();
            bytes += QByteArray::fromHex(match.captured(2).toLatin1()).repeated(count);
        }
    }
    return bytes;
}

/// A data set as the second example describes it.
void FillDataSet(AlignDataSet &dataSet)
{
    dataSet.Attr1 = 1;
    dataSet.Attr2 = 2;
    dataSet.Attr3 = 3;
    dataSet.Attr4 = 4;
    dataSet.Word1 = 500;
    dataSet.Word2 = 600;
    dataSet.FreqPointCount = 1;
    AlignFreqPoint &point = dataSet.FreqPoints[0];
    point.Frequency = 162'400'000;
    point.Attr = 1;
    point.SampleRatePointCount = 1;
    AlignSampleRatePoint &ratePoint = point.SampleRatePoints[0];
    ratePoint.SampleFrequency = 250'000;
    ratePoint.GainEntryCount = 2;
    ratePoint.Attr = 7;
    ratePoint.GainEntries[0] = {10, 20, 30, 40};
    ratePoint.GainEntries[1] = {11, 22, 33, 44};
}

} // namespace

class AlignFileDocumentTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void theProgramWritesTheExample_data();
    void theProgramWritesTheExample();
    void theCheckValuesAreThoseOfTheProgram();
    void theTableOfTypesIsThatOfTheProgram();

private:
    QString Document;
    QList<QByteArray> Examples;
};

void AlignFileDocumentTest::initTestCase()
{
    Document = QString::fromUtf8(tests::FileBytes(QStringLiteral(FORMAT_DOCUMENT)));
    static const QRegularExpression block(u"```hex\n(.*?)```"_s,
                                          QRegularExpression::DotMatchesEverythingOption);
    QRegularExpressionMatchIterator blocks = block.globalMatch(Document);
    while (blocks.hasNext())
        Examples.append(BytesOf(blocks.next().captured(1)));
    QCOMPARE(Examples.size(), 2);
}

void AlignFileDocumentTest::theProgramWritesTheExample_data()
{
    QTest::addColumn<int>("example");
    QTest::addColumn<int>("sdrType");
    QTest::addColumn<QByteArray>("hardwareId");
    QTest::addColumn<quint64>("alignedAt");
    QTest::addColumn<bool>("withDataSet");
    QTest::addColumn<int>("size");
    QTest::newRow("a LimeMini without data sets")
        << 0 << 1 << QByteArray("ABC") << quint64{0x65A0BC00} << false << 150;
    QTest::newRow("an RTL-SDR with a data set")
        << 1 << 3 << QByteArray("0x1234") << quint64{1'767'355'200} << true << 205;
}

void AlignFileDocumentTest::theProgramWritesTheExample()
{
    QFETCH(int, example);
    QFETCH(int, sdrType);
    QFETCH(QByteArray, hardwareId);
    QFETCH(quint64, alignedAt);
    QFETCH(bool, withDataSet);
    QFETCH(int, size);
    AlignStore store;
    store.SdrType = static_cast<SdrType>(sdrType);
    AlignTable *const table = tests::AppendTableWithId(store, store.Tables, hardwareId);
    QVERIFY(table != nullptr);
    table->AlignedAt = alignedAt;
    if (withDataSet) {
        table->DataSetCount = 1;
        FillDataSet(table->DataSets[0]);
    }
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"example.ad"_s);
    QCOMPARE(store.SaveFile(path), AlignResult::Ok);
    QCOMPARE(Examples.at(example).toHex(' '), tests::FileBytes(path).toHex(' '));
    QCOMPARE(Examples.at(example).size(), qsizetype{size});
    QVERIFY(Document.contains(u"; %1 bytes:"_s.arg(size)));

    // And reads it back.
    QVERIFY(tests::WriteFileBytes(path, Examples.at(example)));
    AlignStore readBack;
    QCOMPARE(readBack.LoadFile(path, readBack.Tables, true), AlignResult::Ok);
    QCOMPARE(tests::Difference(readBack.Tables, store.Tables), QString());
}

void AlignFileDocumentTest::theCheckValuesAreThoseOfTheProgram()
{
    static const QRegularExpression row(u"^\\| CRC-(8|32) .*\\| `(0x[0-9A-F]+)` \\|$"_s,
                                        QRegularExpression::MultilineOption);
    QMap<QString, QString> checkValues;
    QRegularExpressionMatchIterator rows = row.globalMatch(Document);
    while (rows.hasNext()) {
        const QRegularExpressionMatch match = rows.next();
        checkValues.insert(match.captured(1), match.captured(2));
    }
    QCOMPARE(checkValues.value(u"8"_s).toUInt(nullptr, 16), static_cast<uint>(Crc8(Digits)));
    QCOMPARE(checkValues.value(u"32"_s).toUInt(nullptr, 16), static_cast<uint>(Crc32(Digits)));
}

void AlignFileDocumentTest::theTableOfTypesIsThatOfTheProgram()
{
    for (std::size_t type = 1; type < AlignDriverNames.size(); ++type) {
        const QString row =
            u"| %1 | %2 | `%3` | %4 |\n"_s.arg(type)
                .arg(QLatin1String(AlignDriverNames.at(type)), QLatin1String(AlignDriverFileNames.at(type)))
                .arg(AlignDataSetCapacityOf(static_cast<SdrType>(type)));
        QVERIFY2(Document.contains(row), qPrintable(row));
    }
}

TARNVIK_TEST_MAIN(AlignFileDocumentTest, QCoreApplication)
#include "AlignFileDocumentTest.moc"
