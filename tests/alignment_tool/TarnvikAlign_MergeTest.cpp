// SPDX-License-Identifier: MIT
// TarnvikAlign merge: what is taken, what is said of it, and what is refused.
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_tool/ToolFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_LINUX
#include <unistd.h>

#include <cstdlib>
#endif

using namespace Qt::StringLiterals;

using tests::Day;
using tests::FileBytes;
using tests::TableBytes;
using tests::WriteAlignmentFile;

class TarnvikAlign_MergeTest : public tests::ToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void theOptionsDecideWhatIsTaken_data();
    void theOptionsDecideWhatIsTaken();
    void eachTableIsToldWithTheReason();
    void aDryRunSaysTheSameAndWritesNothing();
    void ofSeveralSourcesTheNewestCounts();
    void aTargetThatIsNotThereIsMade();
    void whatWouldChangeNothingIsNotWritten();
    void theOutputIsWrittenInTheTargetsPlace_data();
    void theOutputIsWrittenInTheTargetsPlace();
    void theOutputCanBeStandardOutput();
    void idsMatchWhole_data();
    void idsMatchWhole();
    void aTableThatStandsTwiceIsReplacedByOne();
    void ofVersionsThatStandInOneSourceTheNewestIsTaken_data();
    void ofVersionsThatStandInOneSourceTheNewestIsTaken();
    void aDryRunRefusesWhatTheMergeRefuses();
    void aLongOptionWithOneDashIsNoShortOne();
    void whatCannotBeMergedIsRefusedAndNothingIsWritten_data();
    void whatCannotBeMergedIsRefusedAndNothingIsWritten();
    void aFileIsRecognisedHoweverItIsSpelt_data();
    void aFileIsRecognisedHoweverItIsSpelt();
#ifdef Q_OS_LINUX
    void fileNamesThatAreNoTextsAreMerged();
#endif

private:
    QByteArray Target; // the bytes of its file
};

void TarnvikAlign_MergeTest::init()
{
    FolderFixture::init();
    QVERIFY(WriteAlignmentFile(path(u"t.ad"_s), SdrType::RtlSdr,
                               {{"newer", Day("2024-01-01")},
                                {"older", Day("2024-01-01")},
                                {"same", Day("2024-01-01")},
                                {"own", Day("2024-01-01")}}));
    QVERIFY(WriteAlignmentFile(path(u"s.ad"_s), SdrType::RtlSdr,
                               {{"newer", Day("2024-01-02")},
                                {"older", Day("2023-12-31")},
                                {"same", Day("2024-01-01")},
                                {"fresh", Day("2020-02-29")}}));
    Target = FileBytes(path(u"t.ad"_s));
}

void TarnvikAlign_MergeTest::theOptionsDecideWhatIsTaken_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArrayList>("taken");
    QTest::newRow("none") << QStringList() << QByteArrayList{"newer", "fresh"};
    QTest::newRow("--newer") << QStringList{u"--newer"_s} << QByteArrayList{"newer"};
    QTest::newRow("--all") << QStringList{u"--all"_s} << QByteArrayList{"newer", "older", "fresh"};
    QTest::newRow("one id") << QStringList{u"--id"_s, u"fresh"_s} << QByteArrayList{"fresh"};
    QTest::newRow("two ids") << QStringList{u"--id"_s, u"fresh"_s, u"--id=newer"_s}
                             << QByteArrayList{"newer", "fresh"};
    QTest::newRow("an id whose table is older") << QStringList{u"--id"_s, u"older"_s} << QByteArrayList();
    QTest::newRow("the same with --all")
        << QStringList{u"--id"_s, u"older"_s, u"--all"_s} << QByteArrayList{"older"};
    QTest::newRow("an id that only the target has") << QStringList{u"--id"_s, u"own"_s} << QByteArrayList();
}

void TarnvikAlign_MergeTest::theOptionsDecideWhatIsTaken()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArrayList, taken);
    QMap<QByteArray, QByteArray> expected = TableBytes(path(u"t.ad"_s));
    const QMap<QByteArray, QByteArray> source = TableBytes(path(u"s.ad"_s));
    for (const QByteArray &id : taken)
        expected[id] = source[id];
    const tests::ToolRun run = Run(QStringList{u"merge"_s} + options + QStringList{u"t.ad"_s, u"s.ad"_s});
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(run.ExitCode, 0);
    QCOMPARE(TableBytes(path(u"t.ad"_s)), expected);
    QCOMPARE(run.Output.count("\ntaken ") + (run.Output.startsWith("taken ") ? 1 : 0), taken.size());
    QVERIFY2(run.Output.contains("\ntables taken: " + QByteArray::number(taken.size())),
             run.Output.constData());
}

void TarnvikAlign_MergeTest::eachTableIsToldWithTheReason()
{
    const tests::ToolRun run = Run({u"merge"_s, u"--id=newer"_s, u"--id=older"_s, u"--id=fresh"_s,
                                    u"--id=same"_s, u"t.ad"_s, u"s.ad"_s});
    QCOMPARE(run.Output,
             QByteArray("taken      fresh               new: 2020-02-29 00:00:00, of s.ad\n"
                        "taken      newer               newer: 2024-01-02 00:00:00, of s.ad; was 2024-01-01 "
                        "00:00:00\n"
                        "not taken  older               older: 2023-12-31 00:00:00, of s.ad; was 2024-01-01 "
                        "00:00:00\n"
                        "not taken  own                 not chosen by --id\n"
                        "not taken  same                no source has another date\n"
                        "tables taken: 2\n"));
}

void TarnvikAlign_MergeTest::aDryRunSaysTheSameAndWritesNothing()
{
    const tests::ToolRun dry = Run({u"merge"_s, u"--dry-run"_s, u"t.ad"_s, u"s.ad"_s});
    QCOMPARE(dry.ExitCode, 0);
    QCOMPARE(FileBytes(path(u"t.ad"_s)), Target);
    QCOMPARE(QDir(Folder->path()).entryList(QDir::Files), (QStringList{u"s.ad"_s, u"t.ad"_s}));
    const tests::ToolRun real = Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s});
    QCOMPARE(dry.Output,
             real.Output.chopped(1) + QByteArray("; nothing is written\n")); // behind "tables taken: 2"
}

void TarnvikAlign_MergeTest::ofSeveralSourcesTheNewestCounts()
{
    QVERIFY(WriteAlignmentFile(path(u"u.ad"_s), SdrType::RtlSdr,
                               {{"newer", Day("2024-01-03")}, {"fresh", Day("2020-02-28")}}));
    const tests::ToolRun run = Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s, u"u.ad"_s});
    QCOMPARE(run.ExitCode, 0);
    const QMap<QByteArray, QByteArray> merged = TableBytes(path(u"t.ad"_s));
    QCOMPARE(merged["newer"], TableBytes(path(u"u.ad"_s))["newer"]);
    QCOMPARE(merged["fresh"], TableBytes(path(u"s.ad"_s))["fresh"]);
}

void TarnvikAlign_MergeTest::aTargetThatIsNotThereIsMade()
{
    QVERIFY(WriteAlignmentFile(path(u"u.ad"_s), SdrType::RtlSdr, {{"newer", Day("2024-01-03")}}));
    tests::ToolRun run = Run({u"merge"_s, u"--newer"_s, u"made.ad"_s, u"s.ad"_s});
    QCOMPARE(run.ExitCode, 0);
    QVERIFY(!QFileInfo::exists(path(u"made.ad"_s)));
    run = Run({u"merge"_s, u"made.ad"_s, u"s.ad"_s, u"u.ad"_s});
    QCOMPARE(run.ExitCode, 0);
    QMap<QByteArray, QByteArray> expected = TableBytes(path(u"s.ad"_s));
    expected["newer"] = TableBytes(path(u"u.ad"_s))["newer"];
    QCOMPARE(TableBytes(path(u"made.ad"_s)), expected);
}

void TarnvikAlign_MergeTest::whatWouldChangeNothingIsNotWritten()
{
    QCOMPARE(Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s}).ExitCode, 0);
    QFile file(path(u"t.ad"_s));
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QDateTime date = QDateTime::currentDateTimeUtc().addDays(-1);
    QVERIFY(file.setFileTime(date, QFileDevice::FileModificationTime));
    file.close();
    for (const QString &output : {u"t.ad"_s, u"./t.ad"_s}) {
        const tests::ToolRun run = Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s, u"--output"_s, output});
        QCOMPARE(run.ExitCode, 0);
        QVERIFY2(run.Output.endsWith("\ntables taken: 0; nothing is written\n"), run.Output.constData());
        QVERIFY(QFileInfo(path(u"t.ad"_s)).lastModified().msecsTo(date) < 1000);
    }
}

void TarnvikAlign_MergeTest::theOutputIsWrittenInTheTargetsPlace_data()
{
    QTest::addColumn<QString>("source");
    QTest::newRow("with tables to take") << u"s.ad"_s;
    QTest::newRow("without one") << u"copy.ad"_s;
}

void TarnvikAlign_MergeTest::theOutputIsWrittenInTheTargetsPlace()
{
    QFETCH(QString, source);
    QVERIFY(tests::WriteFileBytes(path(u"copy.ad"_s), Target));
    QCOMPARE(Run({u"merge"_s, u"t.ad"_s, source, u"-o"_s, u"o.ad"_s}).ExitCode, 0);
    QCOMPARE(FileBytes(path(u"t.ad"_s)), Target);
    QCOMPARE(Run({u"merge"_s, u"t.ad"_s, source}).ExitCode, 0);
    QCOMPARE(FileBytes(path(u"o.ad"_s)), FileBytes(path(u"t.ad"_s)));
}

void TarnvikAlign_MergeTest::theOutputCanBeStandardOutput()
{
    const tests::ToolRun run = Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s, u"--output"_s, u"-"_s});
    QCOMPARE(run.ExitCode, 0);
    QVERIFY2(run.Errors.endsWith("\ntables taken: 2\n"), run.Errors.constData());
    QCOMPARE(FileBytes(path(u"t.ad"_s)), Target);
    const tests::ToolRun list = Run({u"verify"_s, u"-"_s}, run.Output);
    QCOMPARE(list.Output, QByteArray("standard input: ok, 5 tables\n"));
}

void TarnvikAlign_MergeTest::idsMatchWhole_data()
{
    QTest::addColumn<QByteArray>("there");
    QTest::addColumn<QByteArray>("taken");
    QTest::newRow("the beginning of another") << QByteArray("ABC") << QByteArray("AB");
    QTest::newRow("longer than another") << QByteArray("AB") << QByteArray("ABC");
    QTest::newRow("an empty one") << QByteArray("AB") << QByteArray();
    QTest::newRow("no text") << QByteArray("\xC3") << QByteArray("\xC4");
    QTest::newRow("letters beyond ASCII") << QByteArray("M\xC3\xBC") << QByteArray("M\xC3\xBCnchen");
    QTest::newRow("of full length") << QByteArray(128, 'x') << QByteArray(127, 'x');
}

void TarnvikAlign_MergeTest::idsMatchWhole()
{
    QFETCH(QByteArray, there);
    QFETCH(QByteArray, taken);
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{there, 5}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{taken, 6}}));
    QMap<QByteArray, QByteArray> expected = TableBytes(path(u"a.ad"_s));
    expected.insert(TableBytes(path(u"b.ad"_s)));
    const tests::ToolRun run = Run({u"merge"_s, u"a.ad"_s, u"b.ad"_s});
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(TableBytes(path(u"a.ad"_s)), expected);
    QCOMPARE(expected.size(), 2);
}

void TarnvikAlign_MergeTest::aTableThatStandsTwiceIsReplacedByOne()
{
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"1", 5}, {"2", 5}, {"1", 4}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr, {{"1", 6}}));
    QCOMPARE(Run({u"merge"_s, u"a.ad"_s, u"b.ad"_s}).ExitCode, 0);
    QCOMPARE(Run({u"verify"_s, u"a.ad"_s}).Output, QByteArray("a.ad: ok, 2 tables\n"));
}

void TarnvikAlign_MergeTest::ofVersionsThatStandInOneSourceTheNewestIsTaken_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("none") << QStringList();
    QTest::newRow("--newer") << QStringList{u"--newer"_s};
    QTest::newRow("--all") << QStringList{u"--all"_s};
}

void TarnvikAlign_MergeTest::ofVersionsThatStandInOneSourceTheNewestIsTaken()
{
    QFETCH(QStringList, options);
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"D", 250}}));
    QVERIFY(WriteAlignmentFile(path(u"b.ad"_s), SdrType::RtlSdr,
                               {{"D", 100}, {"D", 300}, {"D", 200}, {"D", 300}}));
    QVERIFY(WriteAlignmentFile(path(u"newest.ad"_s), SdrType::RtlSdr, {{"D", 300}}));
    QCOMPARE(Run(QStringList{u"merge"_s, u"a.ad"_s, u"b.ad"_s} + options).ExitCode, 0);
    QCOMPARE(FileBytes(path(u"a.ad"_s)), FileBytes(path(u"newest.ad"_s)));
}

void TarnvikAlign_MergeTest::aDryRunRefusesWhatTheMergeRefuses()
{
    QByteArray file = tests::FileOf150Bytes(); // LimeMini, table ABC
    QByteArray payload = file.mid(10, 139);
    payload[0] = 6; // its inner version
    QVERIFY(tests::WriteFileBytes(path(u"b.ad"_s), file.first(7) + tests::ByteCrcChunk(payload)));
    QVERIFY(WriteAlignmentFile(path(u"a.ad"_s), SdrType::LimeMini, {{"1", 1}}));
    file = FileBytes(path(u"a.ad"_s));
    for (const QStringList &options : {QStringList(), QStringList{u"--dry-run"_s}}) {
        const tests::ToolRun run = Run(QStringList{u"merge"_s, u"a.ad"_s, u"b.ad"_s} + options);
        QCOMPARE(run.Errors, QByteArray("TarnvikAlign: a.ad: Version Missmatched\n"));
        QCOMPARE(run.Output, QByteArray());
        QCOMPARE(run.ExitCode, 3);
        QCOMPARE(FileBytes(path(u"a.ad"_s)), file);
    }
}

void TarnvikAlign_MergeTest::aLongOptionWithOneDashIsNoShortOne()
{
    QCOMPARE(Run({u"merge"_s, u"-output"_s, u"out.ad"_s, u"t.ad"_s, u"s.ad"_s}).ExitCode, 0);
    QCOMPARE(QDir(Folder->path()).entryList(QDir::Files), (QStringList{u"out.ad"_s, u"s.ad"_s, u"t.ad"_s}));
    QCOMPARE(FileBytes(path(u"t.ad"_s)), Target);
}

void TarnvikAlign_MergeTest::whatCannotBeMergedIsRefusedAndNothingIsWritten_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no source") << QStringList{u"t.ad"_s} << 2
                               << QByteArray("a target and sources are wanted; see \"--help\"");
    QTest::newRow("a target without name") << QStringList{QString(), u"s.ad"_s} << 2
                                           << QByteArray("a target and sources are wanted; see \"--help\"");
    QTest::newRow("contradicting options") << QStringList{u"--all"_s, u"--newer"_s, u"t.ad"_s, u"s.ad"_s} << 2
                                           << QByteArray("--all and --newer exclude each other");
    QTest::newRow("an empty output") << QStringList{u"t.ad"_s, u"s.ad"_s, u"--output"_s, QString()} << 2
                                     << QByteArray("--output wants a file");
    QTest::newRow("standard input as source")
        << QStringList{u"t.ad"_s, u"-"_s} << 2
        << QByteArray("files of a merge are read more than once; name files, not \"-\"");
    QTest::newRow("standard input as target")
        << QStringList{u"-"_s, u"s.ad"_s} << 2
        << QByteArray("files of a merge are read more than once; name files, not \"-\"");
    QTest::newRow("another receiver type")
        << QStringList{u"t.ad"_s, u"lime.ad"_s} << 2
        << QByteArray("lime.ad: its tables are for LimeMini, those of t.ad for RTL-SDR; a file has one "
                      "receiver type");
    QTest::newRow("a source that is not there") << QStringList{u"t.ad"_s, u"s.ad"_s, u"no.ad"_s} << 3
                                                << QByteArray("no.ad: there is no such file; check the name");
    QTest::newRow("a damaged source")
        << QStringList{u"t.ad"_s, u"s.ad"_s, u"damaged.ad"_s} << 1
        << QByteArray("damaged.ad: table 1, byte 7: File CRC check failed; the file is damaged; take it from "
                      "its source again");
    QTest::newRow("a damaged target")
        << QStringList{u"damaged.ad"_s, u"s.ad"_s} << 1
        << QByteArray("damaged.ad: table 1, byte 7: File CRC check failed; the file is damaged; take it from "
                      "its source again");
    QTest::newRow("a source without table")
        << QStringList{u"t.ad"_s, u"empty.ad"_s} << 1
        << QByteArray("empty.ad: it holds no table; the window refuses to read it");
    QTest::newRow("an id that no file has")
        << QStringList{u"--id=newer"_s, u"--id=new"_s, u"t.ad"_s, u"s.ad"_s} << 1
        << QByteArray("s.ad: there is no table \"new\"; \"list\" shows the ids");
    QTest::newRow("ids that no file has")
        << QStringList{u"--id=b"_s, u"--id=c"_s, u"--id=a"_s, u"t.ad"_s, u"s.ad"_s} << 1
        << QByteArray("s.ad: there is no table \"a\"; \"list\" shows the ids\n"
                      "TarnvikAlign: s.ad: there is no table \"b\"; \"list\" shows the ids\n"
                      "TarnvikAlign: s.ad: there is no table \"c\"; \"list\" shows the ids");
    QTest::newRow("a table that cannot be copied") // it states room for two data sets
        << QStringList{u"t.ad"_s, u"unfit.ad"_s} << 3
        << QByteArray("t.ad: Internal Error; nothing is written; \"verify\" tells more of the files");
    QTest::newRow("a folder that is not there")
        << QStringList{u"no/t.ad"_s, u"s.ad"_s} << 3
        << QByteArray("no/t.ad: there is no such folder; check the name");
    QTest::newRow("a file in the folder's place")
        << QStringList{u"s.ad/t.ad"_s, u"s.ad"_s} << 3
        << QByteArray("s.ad/t.ad: there is no such folder; check the name");
    QTest::newRow("a folder as target")
        << QStringList{u"."_s, u"s.ad"_s} << 3
        << QByteArray(".: no file TarnvikDriver_*.ad is in this folder; name files");
}

void TarnvikAlign_MergeTest::whatCannotBeMergedIsRefusedAndNothingIsWritten()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, message);
    QVERIFY(WriteAlignmentFile(path(u"lime.ad"_s), SdrType::LimeMini, {{"1", 5}}));
    QByteArray damaged = tests::FileOf150Bytes();
    damaged.back() = static_cast<char>(damaged.back() + 1);
    QVERIFY(tests::WriteFileBytes(path(u"damaged.ad"_s), damaged));
    QVERIFY(tests::WriteFileBytes(path(u"empty.ad"_s), tests::HeaderChunk(SdrType::RtlSdr, 0)));
    QVERIFY(tests::WriteFileBytes(path(u"unfit.ad"_s),
                                  tests::HeaderChunk(SdrType::RtlSdr, 1) + tests::TableChunk(2, 0)));
    const QStringList before = QDir(Folder->path()).entryList(QDir::AllEntries);
    const tests::ToolRun run = Run(QStringList{u"merge"_s} + arguments);
    QCOMPARE(run.Errors, "TarnvikAlign: " + message + '\n');
    QCOMPARE(run.Output, QByteArray());
    QCOMPARE(run.ExitCode, exitCode);
    QCOMPARE(FileBytes(path(u"t.ad"_s)), Target);
    QCOMPARE(FileBytes(path(u"damaged.ad"_s)), damaged);
    QCOMPARE(QDir(Folder->path()).entryList(QDir::AllEntries), before);
}

void TarnvikAlign_MergeTest::aFileIsRecognisedHoweverItIsSpelt_data()
{
    QTest::addColumn<QString>("spelling");
    QTest::newRow("the same") << u"%1"_s;
    QTest::newRow("with a dot") << u"./%1"_s;
    QTest::newRow("by way of a folder") << u"folder/../%1"_s;
    QTest::newRow("absolute") << u"%2/%1"_s;
#ifdef Q_OS_WIN
    QTest::newRow("in capitals") << u"%3"_s;
    QTest::newRow("with a backslash") << u".\\%1"_s;
#else
    QTest::newRow("a symbolic link") << u"link-%1"_s;
    QTest::newRow("a hard link") << u"hard-%1"_s;
#endif
}

void TarnvikAlign_MergeTest::aFileIsRecognisedHoweverItIsSpelt()
{
    QFETCH(QString, spelling);
    QVERIFY(QDir(Folder->path()).mkdir(u"folder"_s));
    for (const QString &name : {u"t.ad"_s, u"s.ad"_s}) {
        QFile(path(name)).link(path(u"link-"_s + name));
#ifdef Q_OS_LINUX
        QCOMPARE(::link(qPrintable(path(name)), qPrintable(path(u"hard-"_s + name))), 0);
#endif
    }
    const auto spelt = [&](const QString &name) {
        return QString(spelling)
            .replace(u"%1"_s, name)
            .replace(u"%2"_s, Folder->path())
            .replace(u"%3"_s, name.toUpper());
    };
    const QByteArray source = FileBytes(path(u"s.ad"_s));
    tests::ToolRun run = Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s, spelt(u"t.ad"_s)});
    QVERIFY2(run.Errors.contains(": this source is the target itself\n"), run.Errors.constData());
    QCOMPARE(run.ExitCode, 2);
    run = Run({u"merge"_s, u"t.ad"_s, u"s.ad"_s, u"--output"_s, spelt(u"s.ad"_s)});
    QVERIFY2(run.Errors.contains(": this file is read; name another --output\n"), run.Errors.constData());
    QCOMPARE(run.ExitCode, 2);
    run = Run({u"import"_s, u"s.ad"_s, u"--output"_s, spelt(u"s.ad"_s)});
    QVERIFY2(run.Errors.contains(": this file is read; name another --output\n"), run.Errors.constData());
    QCOMPARE(run.ExitCode, 2);
    QCOMPARE(FileBytes(path(u"t.ad"_s)), Target);
    QCOMPARE(FileBytes(path(u"s.ad"_s)), source);
}

#ifdef Q_OS_LINUX
void TarnvikAlign_MergeTest::fileNamesThatAreNoTextsAreMerged()
{
    // By a shell: Qt cannot express such a name.
    const auto shell = [&](const QByteArray &command) {
        const QByteArray line = "cd '" + QFile::encodeName(Folder->path()) + "' && " + command;
        return std::system(line.constData());
    };
    QCOMPARE(shell("mkdir 'd\xFF' && cp t.ad 'd\xFF/t\xFE.ad' && mv s.ad 's\xFD.ad'"), 0);
    const QByteArray tool = "'" ALIGNMENT_TOOL "'";
    QCOMPARE(shell(tool + " merge 'd\xFF/t\xFE.ad' 's\xFD.ad' >report"), 0);
    QVERIFY2(FileBytes(path(u"report"_s)).contains("of s\\xFD.ad\n"),
             FileBytes(path(u"report"_s)).constData());
    QCOMPARE(shell("mv 'd\xFF/t\xFE.ad' merged.ad && rmdir 'd\xFF'"), 0);
    QCOMPARE(TableBytes(path(u"merged.ad"_s)).size(), 5);
    // None of another name was made.
    QCOMPARE(QDir(Folder->path()).entryList({u"*"_s}, QDir::Dirs | QDir::NoDotAndDotDot), QStringList());
}
#endif

TARNVIK_TEST_MAIN(TarnvikAlign_MergeTest, QCoreApplication)

#include "TarnvikAlign_MergeTest.moc"
