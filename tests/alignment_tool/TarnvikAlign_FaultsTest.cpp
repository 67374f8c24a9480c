// SPDX-License-Identifier: MIT
// A file that TarnvikAlign writes is the old one or the new one, whatever happens meanwhile.
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_tool/ToolFixture.h"
#include "tests/support/Patience.h"
#include "tests/support/SmallDisk.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutConsole.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QScopeGuard>
#include <QThread>

#ifndef Q_OS_WIN
#include <sys/stat.h>
#endif

#include <atomic>
#include <memory>
#include <vector>

using namespace Qt::StringLiterals;

using tests::FileBytes;
using tests::WriteAlignmentFile;

class TarnvikAlign_FaultsTest : public tests::ToolFixture
{
    Q_OBJECT

private slots:
    void aKilledProgramLeavesTheOldFileOrTheNewOne();
    void aFileIsReplacedWhileItIsRead();
    void mergesAtTheSameTimeLoseNoTable_data();
    void mergesAtTheSameTimeLoseNoTable();
    void aFullDiskLeavesTheOldFile();
#ifdef Q_OS_LINUX
    void eachCallThatFailsIsToldAndLeavesTheOldFile();
    void whatSomebodyElseWritesMeanwhileStays_data();
    void whatSomebodyElseWritesMeanwhileStays();
    void aPipeIsNoOutput();
#endif

private:
    /// Makes the target t.ad and the source s.ad, which has a newer version of each of its tables.
    void MakeFiles(int tables);

    [[nodiscard]] QStringList entries() const
    {
        return QDir(Folder->path()).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
    }

    QByteArray Old; // the target
    QByteArray New; // the target after the merge
};

void TarnvikAlign_FaultsTest::MakeFiles(int tables)
{
    QList<tests::FileTable> target;
    QList<tests::FileTable> source;
    for (int i = 0; i < tables; ++i) {
        target.append({QByteArray::number(i), 1});
        source.append({QByteArray::number(i), 2});
    }
    QVERIFY(WriteAlignmentFile(path(u"t.ad"_s), SdrType::RtlSdr, target));
    QVERIFY(WriteAlignmentFile(path(u"s.ad"_s), SdrType::RtlSdr, source));
    Old = FileBytes(path(u"t.ad"_s));
    QCOMPARE(Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s, u"-o"_s, u"new.ad"_s}).ExitCode, 0);
    New = FileBytes(path(u"new.ad"_s));
    QVERIFY(QFile::remove(path(u"new.ad"_s)));
    QVERIFY(New != Old);
}

void TarnvikAlign_FaultsTest::aKilledProgramLeavesTheOldFileOrTheNewOne()
{
    constexpr int kills = 200;
    MakeFiles(300);
    QElapsedTimer timer;
    timer.start();
    QCOMPARE(Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s}).ExitCode, 0);
    const qint64 wholeRun = timer.elapsed();

    int killed = 0;
    int whileWriting = 0;
    for (int attempt = 0; killed < kills; ++attempt) {
        QVERIFY(tests::WriteFileBytes(path(u"t.ad"_s), Old));
        QProcess process;
        process.setWorkingDirectory(Folder->path());
        tests::LetRunWithoutConsole(process);
        process.start(QStringLiteral(ALIGNMENT_TOOL), {u"merge"_s, u"t.ad"_s, u"s.ad"_s});
        QVERIFY(process.waitForStarted(tests::Patience));
        if (attempt % 2 == 0)
            process.waitForFinished(static_cast<int>(wholeRun * (attempt % 100) / 100)); // at every moment
        else
            while (entries().size() == 2 && !process.waitForFinished(0)) { // until the writing has begun
            }
        killed += process.state() == QProcess::Running ? 1 : 0; // else it has come to its end
        process.kill();
        QVERIFY(process.waitForFinished(tests::Patience) || process.state() == QProcess::NotRunning);
        // Windows may take a moment to close what a killed program held open.
        QByteArray now;
        QTRY_VERIFY_WITH_TIMEOUT((now = FileBytes(path(u"t.ad"_s))) == Old || now == New, tests::Patience);
        for (const QString &entry : entries()) {
            if (entry == u"s.ad"_s || entry == u"t.ad"_s)
                continue;
            QVERIFY2(entry.endsWith(u".tmp"_s), qPrintable(entry));
            QTRY_VERIFY_WITH_TIMEOUT(!QFile::exists(path(entry)) || QFile::remove(path(entry)),
                                     tests::Patience);
            ++whileWriting;
        }
    }
    qInfo("%d kills in a run of %lld ms: %d while the new file was written", kills, wholeRun, whileWriting);
    QVERIFY2(whileWriting > kills / 10, qPrintable(QString::number(whileWriting)));
}

void TarnvikAlign_FaultsTest::aFileIsReplacedWhileItIsRead()
{
    constexpr int rounds = 20;
    MakeFiles(20);
    QVERIFY(tests::WriteFileBytes(path(u"old.ad"_s), Old));
    std::atomic<bool> ended = false;
    std::atomic<int> reads = 0;
    QByteArray fault; // what the reader said last, and should not have
    const std::unique_ptr<QThread> reader(QThread::create([&] {
        while (!ended) {
            const tests::ToolRun run = Run({u"verify"_s, u"t.ad"_s});
            if (run.Output.contains("\nt.ad: ok, 20 tables, "))
                ++reads;
#ifdef Q_OS_WIN // where a file that is being replaced can be closed for a moment
            else if (run.ExitCode == 3)
                continue;
#endif
            else {
                fault = run.Output + run.Errors;
                ended = true;
            }
        }
    }));
    const auto end = qScopeGuard([&] {
        ended = true;
        reader->wait();
    });
    reader->start();
    for (int round = 0; (round < rounds || reads < rounds) && !ended; ++round) {
        const tests::ToolRun run =
            Run({u"merge"_s, u"--all"_s, u"t.ad"_s, round % 2 == 0 ? u"s.ad"_s : u"old.ad"_s});
        QCOMPARE(run.Errors, QByteArray());
        QVERIFY2(run.Output.endsWith("\ntables taken: 20\n"), run.Output.constData());
    }
    ended = true;
    QVERIFY(reader->wait(tests::Patience));
    QCOMPARE(fault, QByteArray());
}

void TarnvikAlign_FaultsTest::mergesAtTheSameTimeLoseNoTable_data()
{
    QTest::addColumn<bool>("targetIsThere");
    QTest::newRow("into a file that is there, from which another one removes") << true;
    QTest::newRow("into a file that the first one makes") << false;
}

void TarnvikAlign_FaultsTest::mergesAtTheSameTimeLoseNoTable()
{
    QFETCH(bool, targetIsThere);
    constexpr int merges = 8;
    QVERIFY(QDir(Folder->path()).mkdir(u"folder"_s));
    QList<QStringList> commands;
    QByteArrayList left;
    for (int i = 0; i < merges; ++i) {
        const QString source = path(u"s%1.ad"_s.arg(i));
        left.append(QByteArray::number(i));
        QVERIFY(WriteAlignmentFile(source, SdrType::RtlSdr, {{left.last(), 1}}));
        commands.append({u"merge"_s, path(i % 2 == 0 ? u"t.ad"_s : u"folder/../t.ad"_s), source});
    }
    if (targetIsThere) {
        QVERIFY(WriteAlignmentFile(path(u"t.ad"_s), SdrType::RtlSdr, {{"there", 1}, {"removed", 1}}));
        left.append("there");
        commands.append({u"remove"_s, path(u"t.ad"_s), u"--id"_s, u"removed"_s});
    }
    std::vector<std::unique_ptr<QProcess>> processes;
    for (const QStringList &command : std::as_const(commands)) {
        processes.push_back(std::make_unique<QProcess>());
        tests::LetRunWithoutConsole(*processes.back());
        processes.back()->start(QStringLiteral(ALIGNMENT_TOOL), command);
    }
    for (const auto &process : processes) {
        QVERIFY(process->waitForFinished(tests::Patience) || process->state() == QProcess::NotRunning);
        QCOMPARE(process->readAllStandardError(), QByteArray());
        QCOMPARE(process->exitCode(), 0);
    }
    QCOMPARE(tests::TableBytes(path(u"t.ad"_s)).keys(), left);
}

void TarnvikAlign_FaultsTest::aFullDiskLeavesTheOldFile()
{
    TARNVIK_NEEDS_SMALL_DISK();
    QVERIFY(tests::EmptySmallDisk());
    MakeFiles(20);
    const QString target = tests::SmallDisk() + u"/t.ad"_s;
    QVERIFY(tests::WriteFileBytes(target, Old));
    QVERIFY(tests::FillSmallDisk(1));
    const tests::ToolRun run = Run({u"merge"_s, target, u"s.ad"_s});
    QVERIFY2(run.Errors.contains(": the temporary file beside it cannot be written: "),
             run.Errors.constData());
    QCOMPARE(run.Errors.count('\n'), 1);
    QCOMPARE(run.Output, QByteArray());
    QCOMPARE(run.ExitCode, 3);
    QCOMPARE(FileBytes(target), Old);
    QCOMPARE(QDir(tests::SmallDisk()).entryList({u"*.tmp"_s}, QDir::Files), QStringList());
    QVERIFY(tests::EmptySmallDisk());
}

#ifdef Q_OS_LINUX
void TarnvikAlign_FaultsTest::eachCallThatFailsIsToldAndLeavesTheOldFile()
{
    MakeFiles(100);
    QByteArrayList steps;
    for (int call = 1;; ++call) {
        QVERIFY(tests::WriteFileBytes(path(u"t.ad"_s), Old));
        const tests::ToolRun run =
            Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s}, {},
                {u"LD_PRELOAD="_s + QStringLiteral(FAILING_CALLS), u"TARNVIK_FAILING_CALL=%1"_s.arg(call),
                 // the sanitizer wants to come first, which makes no difference here
                 u"ASAN_OPTIONS=verify_asan_link_order=0"_s});
        QCOMPARE(entries(), (QStringList{u"s.ad"_s, u"t.ad"_s}));
        if (run.ExitCode == 0) { // no call is left that could fail
            QCOMPARE(FileBytes(path(u"t.ad"_s)), New);
            QVERIFY2(call > 7, qPrintable(QString::number(call)));
            break;
        }
        const QByteArrayList parts = run.Errors.split(':');
        QVERIFY2(parts.size() == 4 && parts[1] == " t.ad" && parts[3] == " Input/output error\n",
                 run.Errors.constData());
        QCOMPARE(run.ExitCode, 3);
        QCOMPARE(run.Output, QByteArray());
        if (steps.isEmpty() || steps.last() != parts[2])
            steps.append(parts[2]);
        const bool isWritten = parts[2].startsWith(" it is written, ");
        QCOMPARE(FileBytes(path(u"t.ad"_s)), isWritten ? New : Old);
    }
    QCOMPARE(steps, (QByteArrayList{" no temporary file can be made beside it",
                                    " the temporary file beside it cannot be written",
                                    " the temporary file does not reach the disk",
                                    " the temporary file cannot take its place",
                                    " it is written, but its folder does not reach the disk"}));
}

void TarnvikAlign_FaultsTest::whatSomebodyElseWritesMeanwhileStays_data()
{
    QTest::addColumn<QStringList>("command");
    QTest::newRow("merge") << QStringList{u"merge"_s, u"t.ad"_s, u"s.ad"_s};
    QTest::newRow("remove") << QStringList{u"remove"_s, u"t.ad"_s, u"--id"_s, u"1"_s};
}

void TarnvikAlign_FaultsTest::whatSomebodyElseWritesMeanwhileStays()
{
    QFETCH(QStringList, command);
    MakeFiles(10);
    const tests::ToolRun run =
        Run(command, {},
            {u"LD_PRELOAD="_s + QStringLiteral(FAILING_CALLS), u"TARNVIK_WRITTEN_MEANWHILE=t.ad"_s,
             u"ASAN_OPTIONS=verify_asan_link_order=0"_s});
    QCOMPARE(run.Errors, QByteArray("TarnvikAlign: t.ad: somebody else is writing the file; try again\n"));
    QCOMPARE(run.ExitCode, 3);
    QCOMPARE(FileBytes(path(u"t.ad"_s)), Old + '!');
    QCOMPARE(entries(), (QStringList{u"s.ad"_s, u"t.ad"_s}));
}

void TarnvikAlign_FaultsTest::aPipeIsNoOutput()
{
    MakeFiles(1);
    QCOMPARE(mkfifo(QFile::encodeName(path(u"pipe"_s)).constData(), 0600), 0);
    const tests::ToolRun run = Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s, u"-o"_s, u"pipe"_s});
    QVERIFY2(run.Errors.startsWith("TarnvikAlign: pipe: the file cannot be replaced: "),
             run.Errors.constData());
    QCOMPARE(run.ExitCode, 3);
}
#endif

TARNVIK_TEST_MAIN(TarnvikAlign_FaultsTest, QCoreApplication)

#include "TarnvikAlign_FaultsTest.moc"
