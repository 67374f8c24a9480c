// SPDX-License-Identifier: MIT
// How the alignment dialog shows a row.
#include "TarnvikControl/QDialog/AlignmentRowLook.h"

#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_merge/SampleRow.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

using tests::Day;
using tests::SampleRow;

namespace {

constexpr const char *Old = "2024-01-01";
constexpr const char *New = "2024-03-01";

} // namespace

class AlignmentRowLookTest : public QObject
{
    Q_OBJECT

private slots:
    void aRowIsShown_data();
    void aRowIsShown();
    void datesOfOneDayAreBothNamed();
};

void AlignmentRowLookTest::aRowIsShown_data()
{
    QTest::addColumn<AlignmentRow>("row");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("checkBox"); // -1: none
    QTest::addColumn<int>("backdrop"); // -1: none
    using enum AlignmentRow::State;
    QTest::newRow("present") << SampleRow(Present, Old) << "Aligned at: 2024-01-01" << -1 << -1;
    QTest::newRow("new") << SampleRow(NewInDataBase, Old) << "Aligned at: 2024-01-01 (New in data-base)"
                         << int(Qt::Checked) << int(Qt::darkGreen);
    QTest::newRow("update with exactly the same date: plain text without check box")
        << SampleRow(UpdatePresent, Old, Old) << "Aligned at: 2024-01-01" << -1 << -1;
    QTest::newRow("older version imported: offered unchecked")
        << SampleRow(UpdatePresent, New, Old) << "Aligned at: 2024-03-01 (Old data from 2024-01-01 present)"
        << int(Qt::Unchecked) << int(Qt::darkYellow);
    QTest::newRow("newer version imported: offered checked")
        << SampleRow(UpdatePresent, Old, New) << "Aligned at: 2024-01-01 (Update from 2024-03-01 present)"
        << int(Qt::Checked) << int(Qt::darkGreen);
}

void AlignmentRowLookTest::aRowIsShown()
{
    QFETCH(AlignmentRow, row);
    QFETCH(QString, text);
    QFETCH(int, checkBox);
    QFETCH(int, backdrop);
    const AlignmentRowLook look = LookOf(row);
    QCOMPARE(look.Text, text);
    QCOMPARE(look.CheckBox ? int(*look.CheckBox) : -1, checkBox);
    QCOMPARE(look.Backdrop ? int(*look.Backdrop) : -1, backdrop);
}

void AlignmentRowLookTest::datesOfOneDayAreBothNamed()
{
    AlignmentRow row = SampleRow(AlignmentRow::Present, Old);
    row.AddVersion(u"more.ad"_s, Day(Old) + 1);
    QCOMPARE(LookOf(row).Text, u"Aligned at: 2024-01-01 (Update from 2024-01-01 present)"_s);
}

TARNVIK_TEST_MAIN(AlignmentRowLookTest, QCoreApplication)

#include "AlignmentRowLookTest.moc"
