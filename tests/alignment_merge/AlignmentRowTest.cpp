// SPDX-License-Identifier: MIT
// How one more version of a table changes its row, and what a row offers.
#include "alignment_merge/AlignmentRow.h"

#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/SampleRow.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

#include <limits>

using namespace Qt::StringLiterals;

using tests::Day;
using tests::SampleRow;

namespace {

AlignmentRow From(const QString &file, AlignmentRow row)
{
    row.filePath = file;
    return row;
}

AlignmentRow WithUpdateFrom(const QString &file, AlignmentRow row)
{
    row.updateFilePath = file;
    return row;
}

constexpr const char *Old = "2024-01-01";
constexpr const char *Middle = "2024-02-01";
constexpr const char *New = "2024-03-01";

} // namespace

class AlignmentRowTest : public QObject
{
    Q_OBJECT

private slots:
    void oneMoreVersionChangesTheRow_data();
    void oneMoreVersionChangesTheRow();
    void datesAreComparedToTheSecond();
    void aRowOffersWhatWasImported_data();
    void aRowOffersWhatWasImported();
    void aDateIsShown_data();
    void aDateIsShown();
    void flagsAreSetOneByOne();
};

void AlignmentRowTest::oneMoreVersionChangesTheRow_data()
{
    QTest::addColumn<AlignmentRow>("row");
    QTest::addColumn<QString>("date"); // of the version in more.ad
    QTest::addColumn<AlignmentRow>("expected");
    using enum AlignmentRow::State;
    const QString more = u"more.ad"_s;

    QTest::newRow("present, the same date: nothing changes")
        << SampleRow(Present, Old) << Old << SampleRow(Present, Old);
    QTest::newRow("present, a later date: an update")
        << SampleRow(Present, Old) << New << WithUpdateFrom(more, SampleRow(UpdatePresent, Old, New));
    QTest::newRow("present, an earlier date: old data beside it")
        << SampleRow(Present, New) << Old << WithUpdateFrom(more, SampleRow(UpdatePresent, New, Old));

    QTest::newRow("new, the same date: nothing changes")
        << SampleRow(NewInDataBase, Old) << Old << SampleRow(NewInDataBase, Old);
    QTest::newRow("new, an earlier date: nothing changes")
        << SampleRow(NewInDataBase, New) << Old << SampleRow(NewInDataBase, New);
    QTest::newRow("new, a later date: the later file takes its place")
        << SampleRow(NewInDataBase, Old) << New << From(more, SampleRow(NewInDataBase, New));

    QTest::newRow("update present, the date of the present version: nothing changes")
        << SampleRow(UpdatePresent, Middle, Old) << Middle << SampleRow(UpdatePresent, Middle, Old);
    QTest::newRow("update present, the date of the update: nothing changes")
        << SampleRow(UpdatePresent, Old, New) << New << SampleRow(UpdatePresent, Old, New);
    QTest::newRow("update present, a date before the update: nothing changes")
        << SampleRow(UpdatePresent, Old, New) << Middle << SampleRow(UpdatePresent, Old, New);
    QTest::newRow("update present, a date after the update: the later one takes its place")
        << SampleRow(UpdatePresent, Old, Middle) << New
        << WithUpdateFrom(more, SampleRow(UpdatePresent, Old, New));
    QTest::newRow("old data present, a later date: it takes the place of the old data")
        << SampleRow(UpdatePresent, Middle, Old) << New
        << WithUpdateFrom(more, SampleRow(UpdatePresent, Middle, New));
}

void AlignmentRowTest::oneMoreVersionChangesTheRow()
{
    QFETCH(AlignmentRow, row);
    QFETCH(QString, date);
    QFETCH(AlignmentRow, expected);
    const std::uint64_t seconds = Day(date.toLatin1().constData());
    row.AddVersion(u"more.ad"_s, seconds);
    QVERIFY(row == expected);
    row.AddVersion(u"again.ad"_s, seconds); // the second time nothing changes
    QVERIFY(row == expected);
}

void AlignmentRowTest::datesAreComparedToTheSecond()
{
    AlignmentRow row = SampleRow(AlignmentRow::Present, Old);
    row.AddVersion(u"more.ad"_s, Day(Old) + 1);
    QCOMPARE(row.state, AlignmentRow::UpdatePresent);
    QCOMPARE(OfferOf(row), AlignmentOffer::NewerVersion);

    // Beyond what a date-time of Qt can hold.
    row.alignedAt = std::numeric_limits<std::uint64_t>::max() - 1;
    row.AddVersion(u"latest.ad"_s, std::numeric_limits<std::uint64_t>::max());
    QCOMPARE(row.updateFilePath, u"latest.ad"_s);
    QCOMPARE(OfferOf(row), AlignmentOffer::NewerVersion);
}

void AlignmentRowTest::aRowOffersWhatWasImported_data()
{
    QTest::addColumn<AlignmentRow>("row");
    QTest::addColumn<AlignmentOffer>("offer");
    QTest::addColumn<bool>("taken");
    using enum AlignmentRow::State;
    using enum AlignmentOffer;
    QTest::newRow("present") << SampleRow(Present, Old) << Nothing << false;
    QTest::newRow("new") << SampleRow(NewInDataBase, Old) << NewTable << true;
    QTest::newRow("update with exactly the same date: no offer")
        << SampleRow(UpdatePresent, Old, Old) << Nothing << false;
    QTest::newRow("older version imported: not taken unless asked for")
        << SampleRow(UpdatePresent, New, Old) << OlderVersion << false;
    QTest::newRow("newer version imported") << SampleRow(UpdatePresent, Old, New) << NewerVersion << true;
}

void AlignmentRowTest::aRowOffersWhatWasImported()
{
    QFETCH(AlignmentRow, row);
    QFETCH(AlignmentOffer, offer);
    QFETCH(bool, taken);
    QCOMPARE(OfferOf(row), offer);
    QCOMPARE(IsTakenByDefault(offer), taken);
}

void AlignmentRowTest::aDateIsShown_data()
{
    QTest::addColumn<quint64>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("the epoch") << quint64(0) << "1970-01-01";
    QTest::newRow("the last second of a day is still that day, in UTC")
        << quint64(1'704'067'199) << "2023-12-31";
    QTest::newRow("the next day begins at midnight UTC") << quint64(1'704'067'200) << "2024-01-01";
    QTest::newRow("beyond 32 bits") << quint64(4'294'967'296) << "2106-02-07";
    QTest::newRow("the last year of four digits") << quint64(253'402'300'799) << "9999-12-31";
    QTest::newRow("a year of five digits") << quint64(253'402'300'800) << "10000-01-01";
    QTest::newRow("more seconds than milliseconds fit")
        << quint64(9'300'000'000'000'000) << "9300000000000000 s";
    QTest::newRow("the greatest signed number")
        << quint64(std::numeric_limits<qint64>::max()) << "9223372036854775807 s";
    QTest::newRow("would be negative if it were signed")
        << std::numeric_limits<quint64>::max() << "18446744073709551615 s";
}

void AlignmentRowTest::aDateIsShown()
{
    QFETCH(quint64, seconds);
    QFETCH(QString, text);
    QCOMPARE(AlignmentDateText(seconds), text);
}

void AlignmentRowTest::flagsAreSetOneByOne()
{
    AlignmentRow row;
    row.Set(AlignmentRow::takenOver, true);
    row.Set(AlignmentRow::driverIsNew, true);
    QCOMPARE(int(row.flags), 3);
    row.Set(AlignmentRow::takenOver, false);
    QVERIFY(row.has(AlignmentRow::driverIsNew));
    QVERIFY(!row.has(AlignmentRow::takenOver));
}

TARNVIK_TEST_MAIN(AlignmentRowTest, QCoreApplication)

#include "AlignmentRowTest.moc"
