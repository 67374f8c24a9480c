// SPDX-License-Identifier: MIT
// Merging without memory for the data sets, brought about by a limit on the address space of a process.
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/MemoryLimit.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class AlignStoreMergeLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void withoutMemoryForDataSetsAMergeEndsWith0_data();
    void withoutMemoryForDataSetsAMergeEndsWith0();
};

void AlignStoreMergeLinuxTest::withoutMemoryForDataSetsAMergeEndsWith0_data()
{
    QTest::addColumn<int>("megabytes");
    QTest::addColumn<QByteArray>("result");
    QTest::newRow("not for the first table") << 3 << QByteArray("result Ok (0) 0\n");
    QTest::newRow("for some tables") << 32 << QByteArray();
    QTest::newRow("for all tables") << 400 << QByteArray("result Ok (0) 40\n");
}

void AlignStoreMergeLinuxTest::withoutMemoryForDataSetsAMergeEndsWith0()
{
    QFETCH(int, megabytes);
    QFETCH(QByteArray, result);
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"file.ad"_s);
    {
        tools::AlignmentGenerator generator(4);
        AlignStore store;
        store.SdrType = SdrType::LimeUsb; // 5 MB of address space for each table
        QVERIFY(generator.AppendEmptyTables(store, 40));
        QCOMPARE(store.SaveFile(path), AlignResult::Ok);
    }
    QProcess probe;
    tests::StartForMemoryLimit(probe, {u"merge"_s, path});
    QTRY_VERIFY(probe.canReadLine());
    QCOMPARE(probe.readLine(), QByteArray("ready\n"));
    QVERIFY(tests::LimitMemory(probe, megabytes));
    probe.write("\n");
    QVERIFY2(probe.waitForFinished(), qPrintable(probe.errorString()));
    const QByteArray output = probe.readAllStandardOutput();
    if (!result.isEmpty())
        QCOMPARE(output, result);
    else // as many tables as fit, and no error
        QVERIFY2(output.startsWith("result Ok (0) ") && output != "result Ok (0) 0\n" &&
                     output != "result Ok (0) 40\n",
                 output.constData());
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 0);
}

TARNVIK_TEST_MAIN(AlignStoreMergeLinuxTest, QCoreApplication)

#include "AlignStoreMergeLinuxTest.moc"
