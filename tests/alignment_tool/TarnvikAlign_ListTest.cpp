// SPDX-License-Identifier: MIT
// TarnvikAlign list: a line, or a JSON object, for each table.
#include "Common_Files/TarnvikBasic.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_tool/ToolFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>

#include <cstdio>
#include <limits>

#ifdef Q_OS_LINUX
#include <sys/stat.h>
#endif

using namespace Qt::StringLiterals;

using tests::Day;
using tests::WriteAlignmentFile;

class TarnvikAlign_ListTest : public tests::ToolFixture
{
    Q_OBJECT

private slots:
    void init();
    void eachTableIsALine();
    void aFolderStandsForTheDriversFiles();
    void aFolderWithoutThemIsNamed();
    void withoutArgumentTheRecordersFolderIsListed();
    void standardInputIsRead();
    void whatCannotBeReadIsNamedAndTheOthersAreListed();
    void jsonHoldsEveryNumberExactly();
    void anIdThatIsNoTextIsExactInJsonAndHarmlessInLines();
    void whatAnIdHoldsIsNoPlaceToBeFilled();
    void whatWouldHarmATerminalIsNumbered_data();
    void whatWouldHarmATerminalIsNumbered();
    void datesAreThoseOfUtcUpToTheYear9999();
    void aTableWithoutReceiverTypeIsListed();
#ifdef Q_OS_LINUX
    void aFolderHoldsTheFilesThatTheWindowReads();
    void aFileNameThatIsNoTextIsRead();
#endif

private:
    [[nodiscard]] QJsonArray listed(const QStringList &arguments) const;
};

void TarnvikAlign_ListTest::init()
{
    FolderFixture::init();
    QVERIFY(WriteAlignmentFile(path(tests::RtlFile), SdrType::RtlSdr,
                               {{"0x1", Day("2024-06-01")}, {"0x2", Day("2024-06-02") + 3723}}));
    QVERIFY(WriteAlignmentFile(path(tests::AirspyFile), SdrType::AirSpy, {{"A-7", Day("2025-01-31")}}));
    QVERIFY(WriteAlignmentFile(path(u"other.ad"_s), SdrType::LimeMini, {{"X", 1}}));
}

QJsonArray TarnvikAlign_ListTest::listed(const QStringList &arguments) const
{
    const tests::ToolRun run = Run(QStringList{u"list"_s, u"--json"_s} + arguments);
    QJsonParseError error;
    const QJsonObject document = QJsonDocument::fromJson(run.Output, &error).object();
    if (run.ExitCode != 0 || error.error != QJsonParseError::NoError ||
        document.value("format"_L1) != "tarnvik-align/list"_L1 || document.value("version"_L1) != "1.0"_L1)
        QTest::qFail(run.Errors + run.Output, __FILE__, __LINE__);
    return document.value("tables"_L1).toArray();
}

void TarnvikAlign_ListTest::eachTableIsALine()
{
    const tests::ToolRun run = Run({u"list"_s, tests::RtlFile, u"other.ad"_s});
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(run.Output,
             QByteArray("RTL-SDR   0x1                 2024-06-01 00:00:00    1  TarnvikDriver_RtlSdr.ad\n"
                        "RTL-SDR   0x2                 2024-06-02 01:02:03    1  TarnvikDriver_RtlSdr.ad\n"
                        "LimeMini  X                   1970-01-01 00:00:01    6  other.ad\n"));
    QCOMPARE(run.ExitCode, 0);
}

void TarnvikAlign_ListTest::aFolderStandsForTheDriversFiles()
{
    QStringList ids;
    for (const auto &table : listed({u"."_s}))
        ids.append(table.toObject().value("id"_L1).toString());
    QCOMPARE(ids, (QStringList{u"A-7"_s, u"0x1"_s, u"0x2"_s}));
}

void TarnvikAlign_ListTest::aFolderWithoutThemIsNamed()
{
    QVERIFY(QDir(Folder->path()).mkdir(u"empty"_s));
    const tests::ToolRun run = Run({u"list"_s, u"empty"_s});
    QCOMPARE(run.Errors,
             QByteArray("TarnvikAlign: empty: no file TarnvikDriver_*.ad is in this folder; name files\n"));
    QCOMPARE(run.ExitCode, 3);
}

void TarnvikAlign_ListTest::withoutArgumentTheRecordersFolderIsListed()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    const QString folder = QTarnvikBasic::GetRecorderFile(QString());
    QVERIFY(!folder.isEmpty());
    // Under Windows other tests use it, too.
    QVERIFY(QDir(folder).removeRecursively() && QDir().mkpath(folder));
    QVERIFY(QFile::copy(path(tests::AirspyFile), folder + u'/' + tests::AirspyFile));
    const QJsonArray tables = listed({});
    QVERIFY(QDir(folder).removeRecursively());
    QCOMPARE(tables.size(), 1);
    QCOMPARE(tables.first().toObject().value("id"_L1).toString(), u"A-7"_s);

    const tests::ToolRun run = Run({u"list"_s});
    QVERIFY2(run.Errors.contains("TarnvikRecord: there is no such file"), run.Errors.constData());
    QCOMPARE(run.ExitCode, 3);
}

void TarnvikAlign_ListTest::standardInputIsRead()
{
    QVERIFY(QDir(Folder->path()).mkdir(u"-"_s)); // which is not meant
    QVERIFY(QFile::copy(path(tests::RtlFile), path(u"-/"_s + tests::RtlFile)));
    const tests::ToolRun run = Run({u"list"_s, u"-"_s}, tests::FileBytes(path(u"other.ad"_s)));
    QCOMPARE(run.Output,
             QByteArray("LimeMini  X                   1970-01-01 00:00:01    6  standard input\n"));
    QCOMPARE(run.ExitCode, 0);
}

void TarnvikAlign_ListTest::whatCannotBeReadIsNamedAndTheOthersAreListed()
{
    const QByteArray bytes = tests::FileBytes(path(u"other.ad"_s));
    const QByteArray place = QByteArray::number(tests::ChunksOf(bytes).last().Begin);
    QVERIFY(tests::WriteFileBytes(path(u"damaged.ad"_s), bytes.chopped(1)));
    tests::ToolRun run = Run({u"list"_s, u"damaged.ad"_s, u"other.ad"_s});
    QCOMPARE(run.Output, QByteArray("LimeMini  X                   1970-01-01 00:00:01    6  other.ad\n"));
    QCOMPARE(run.Errors, QByteArray("TarnvikAlign: damaged.ad: table 1, byte " + place +
                                    ": File CRC check failed; "
                                    "the file is damaged; take it from its source again\n"));
    QCOMPARE(run.ExitCode, 1);
    run = Run({u"list"_s, u"--json"_s, u"other.ad"_s, u"damaged.ad"_s});
    QCOMPARE(QJsonDocument::fromJson(run.Output).object().value("tables"_L1).toArray().size(), 1);
    QCOMPARE(run.ExitCode, 1);
    run = Run({u"list"_s, u"missing.ad"_s, u"damaged.ad"_s});
    QVERIFY(run.Errors.startsWith("TarnvikAlign: missing.ad: there is no such file; check the name\n"));
    QCOMPARE(run.ExitCode, 3);
}

void TarnvikAlign_ListTest::jsonHoldsEveryNumberExactly()
{
    constexpr std::uint64_t most = std::numeric_limits<std::uint64_t>::max();
    constexpr std::uint64_t inexact = (std::uint64_t{1} << 53) + 1;
    QVERIFY(WriteAlignmentFile(path(u"n.ad"_s), SdrType::RtlSdr, {{"a", most}, {"b", inexact}}));
    const QJsonArray tables = listed({u"n.ad"_s});
    QCOMPARE(tables.at(0).toObject().value("alignedAt"_L1), QJsonValue(u"18446744073709551615"_s));
    QCOMPARE(tables.at(1).toObject().value("alignedAt"_L1), QJsonValue(u"9007199254740993"_s));
    QCOMPARE(tables.at(0).toObject().value("date"_L1), QJsonValue(u"18446744073709551615 s"_s));
    QCOMPARE(tables.at(0).toObject().value("sdrType"_L1), QJsonValue(3));
    QCOMPARE(tables.at(0).toObject().value("dataSets"_L1), QJsonValue(1));
    QCOMPARE(tables.at(0).toObject().value("file"_L1), QJsonValue(u"n.ad"_s));
}

void TarnvikAlign_ListTest::anIdThatIsNoTextIsExactInJsonAndHarmlessInLines()
{
    QVERIFY(WriteAlignmentFile(path(u"i.ad"_s), SdrType::RtlSdr, {{"a\x1B[2J\xFF", 1}, {"\xC3\xA4", 1}}));
    const QJsonArray tables = listed({u"i.ad"_s});
    QCOMPARE(tables.at(0).toObject().value("id"_L1), QJsonValue(u"a\x1B[2J\xFFFD"_s));
    QCOMPARE(tables.at(0).toObject().value("idHex"_L1), QJsonValue(u"611b5b324aff"_s));
    QCOMPARE(tables.at(1).toObject().value("id"_L1), QJsonValue(u"ä"_s));
    QVERIFY(!tables.at(1).toObject().contains("idHex"_L1));
    const tests::ToolRun run = Run({u"list"_s, u"i.ad"_s});
    QVERIFY2(run.Output.startsWith("RTL-SDR   a\\x1B[2J\\xFF "), run.Output.constData());
}

void TarnvikAlign_ListTest::whatAnIdHoldsIsNoPlaceToBeFilled()
{
    QVERIFY(WriteAlignmentFile(path(u"p.ad"_s), SdrType::RtlSdr, {{"%5 %4 %L1", 1}}));
    const tests::ToolRun run = Run({u"list"_s, u"p.ad"_s});
    QCOMPARE(run.Output, QByteArray("RTL-SDR   %5 %4 %L1           1970-01-01 00:00:01    1  p.ad\n"));
}

void TarnvikAlign_ListTest::whatWouldHarmATerminalIsNumbered_data()
{
    QTest::addColumn<QByteArray>("id");
    QTest::addColumn<QByteArray>("shown");
    QTest::newRow("a control letter") << QByteArray("\x07") << QByteArray("\\x07");
    QTest::newRow("the last one of ASCII") << QByteArray("\x7F") << QByteArray("\\x7F");
    QTest::newRow("one beyond ASCII") << QByteArray("\xC2\x85") << QByteArray("\\u0085");
    QTest::newRow("the direction") << QByteArray("\xE2\x80\xAE") << QByteArray("\\u202E");
    QTest::newRow("the end of a line") << QByteArray("\xE2\x80\xA8") << QByteArray("\\u2028");
    QTest::newRow("the end of a paragraph") << QByteArray("\xE2\x80\xA9") << QByteArray("\\u2029");
    QTest::newRow("a byte of no letter") << QByteArray("\x85") << QByteArray("\\x85");
}

void TarnvikAlign_ListTest::whatWouldHarmATerminalIsNumbered()
{
    QFETCH(QByteArray, id);
    QFETCH(QByteArray, shown);
    QVERIFY(WriteAlignmentFile(path(u"p.ad"_s), SdrType::RtlSdr, {{id, 1}}));
    QCOMPARE(Run({u"list"_s, u"p.ad"_s}).Output,
             "RTL-SDR   " + shown.leftJustified(18) + "  1970-01-01 00:00:01    1  p.ad\n");
}

void TarnvikAlign_ListTest::datesAreThoseOfUtcUpToTheYear9999()
{
    QVERIFY(WriteAlignmentFile(path(u"d.ad"_s), SdrType::RtlSdr,
                               {{"1", Day("2024-06-01")}, {"2", 253402300799}, {"3", 253402300800}}));
    const tests::ToolRun run = Run({u"list"_s, u"d.ad"_s}, {}, {u"TZ=Etc/GMT-5"_s});
    QCOMPARE(run.Output, QByteArray("RTL-SDR   1                   2024-06-01 00:00:00    1  d.ad\n"
                                    "RTL-SDR   2                   9999-12-31 23:59:59    1  d.ad\n"
                                    "RTL-SDR   3                   10000-01-01            1  d.ad\n"));
}

void TarnvikAlign_ListTest::aTableWithoutReceiverTypeIsListed()
{
    QVERIFY(WriteAlignmentFile(path(u"none.ad"_s), SdrType::None, {{"1", 1}}));
    QCOMPARE(Run({u"list"_s, u"none.ad"_s}).Output,
             QByteArray("-         1                   1970-01-01 00:00:01    0  none.ad\n"));
}

#ifdef Q_OS_LINUX
void TarnvikAlign_ListTest::aFolderHoldsTheFilesThatTheWindowReads()
{
    const QByteArray folder = QFile::encodeName(Folder->path());
    QCOMPARE(mkfifo((folder + "/TarnvikDriver_pipe.ad").constData(), S_IRUSR), 0);
    QVERIFY(QDir(Folder->path()).mkdir(u"TarnvikDriver_folder.ad"_s));
    QVERIFY(QFile::rename(path(u"other.ad"_s), path(u"tarnvikdriver_x.AD"_s)));
    QCOMPARE(std::rename((folder + '/' + tests::RtlFile.toLatin1()).constData(),
                         (folder + "/TarnvikDriver_\xFF.ad").constData()),
             0);
    QStringList ids;
    for (const auto &table : listed({u"."_s}))
        ids.append(table.toObject().value("id"_L1).toString());
    ids.sort();
    QCOMPARE(ids, (QStringList{u"0x1"_s, u"0x2"_s, u"A-7"_s, u"X"_s}));
}

void TarnvikAlign_ListTest::aFileNameThatIsNoTextIsRead()
{
    // Qt cannot name such a file.
    QCOMPARE(std::rename(QFile::encodeName(path(u"other.ad"_s)).constData(),
                         (QFile::encodeName(Folder->path()) + "/b\xFF.ad").constData()),
             0);
    QProcess shell;
    shell.setWorkingDirectory(Folder->path());
    shell.start(u"bash"_s, {u"-c"_s, u"\"%1\" list b*.ad; \"%1\" list --json b*.ad"_s.arg(
                                         QStringLiteral(ALIGNMENT_TOOL))});
    QVERIFY(shell.waitForFinished());
    const QByteArray output = shell.readAllStandardOutput();
    QVERIFY2(output.contains("6  b\\xFF.ad\n"), output.constData());
    QVERIFY2(output.contains("\"fileHex\":\"62ff2e6164\""), output.constData());
}
#endif

TARNVIK_TEST_MAIN(TarnvikAlign_ListTest, QCoreApplication)

#include "TarnvikAlign_ListTest.moc"
