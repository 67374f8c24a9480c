// SPDX-License-Identifier: MIT
// Where the version comes from: the resource of the program file that runs.
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QProcess>

class ProductVersionWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void aProgramFileWithoutResourceHasNone();
};

void ProductVersionWindowsTest::aProgramFileWithoutResourceHasNone()
{
    QProcess probe;
    probe.start(QStringLiteral(VERSION_PROBE), QStringList());
    QVERIFY(probe.waitForFinished());
    QCOMPARE(probe.readAllStandardOutput(), QByteArray("none"));
}

TARNVIK_TEST_MAIN(ProductVersionWindowsTest, QCoreApplication)

#include "ProductVersionWindowsTest.moc"
