// SPDX-License-Identifier: MIT
// Names of drivers and of their files.
#include "alignment_merge/AlignmentDriver.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>

class AlignmentDriverTest : public QObject
{
    Q_OBJECT

private slots:
    void aTypeHasAName_data();
    void aTypeHasAName();
    void aNameHasAType_data();
    void aNameHasAType();
};

void AlignmentDriverTest::aTypeHasAName_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("no type") << 0 << ""
                             << "";
    QTest::newRow("LimeMini") << 1 << "LimeMini"
                              << "TarnvikDriver_LimeMini.ad";
    QTest::newRow("LimeUsb") << 2 << "LimeUsb"
                             << "TarnvikDriver_LimeUsb.ad";
    QTest::newRow("RTL-SDR is written RtlSdr in the file name") << 3 << "RTL-SDR"
                                                                << "TarnvikDriver_RtlSdr.ad";
    QTest::newRow("AirSpy is written Airspy in the file name") << 4 << "AirSpy"
                                                               << "TarnvikDriver_Airspy.ad";
    QTest::newRow("first beyond the list") << 5 << "Driver 5"
                                           << "";
    QTest::newRow("seven") << 7 << "Driver 7"
                           << "";
    QTest::newRow("the greatest byte") << 255 << "Driver 255"
                                       << "";
}

void AlignmentDriverTest::aTypeHasAName()
{
    QFETCH(int, type);
    QFETCH(QString, name);
    QFETCH(QString, file);
    QCOMPARE(AlignmentDriverName(type), name);
    QCOMPARE(AlignmentDriverFileName(type), file);
    QCOMPARE(AlignmentDriverType(name), type);
}

void AlignmentDriverTest::aNameHasAType_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("type");
    QTest::newRow("another case is another name") << "airspy" << 0;
    QTest::newRow("shorter than the word before the number") << "Drive" << 0;
    QTest::newRow("no number") << "Driver" << 0;
    QTest::newRow("letters behind the number") << "Driver 7a" << 0;
    QTest::newRow("zero is no driver") << "Driver 0" << 0;
    QTest::newRow("a negative number is no driver") << "Driver -7" << 0;
    QTest::newRow("a number too great") << "Driver 4294967297" << 0;
}

void AlignmentDriverTest::aNameHasAType()
{
    QFETCH(QString, name);
    QFETCH(int, type);
    QCOMPARE(AlignmentDriverType(name), type);
}

TARNVIK_TEST_MAIN(AlignmentDriverTest, QCoreApplication)

#include "AlignmentDriverTest.moc"
