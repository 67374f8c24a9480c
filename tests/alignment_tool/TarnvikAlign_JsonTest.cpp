// SPDX-License-Identifier: MIT
// TarnvikAlign export, import and show: everything that a file holds, there and back.
#include "alignment/AlignStore.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/alignment_tool/ToolFixture.h"
#include "tests/support/TestMain.h"
#include "tools/AlignmentGenerator.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <limits>

using namespace Qt::StringLiterals;

using tests::FileBytes;
using tests::WriteFileBytes;

namespace {

/// A document of one RTL-SDR table; `table` replaces its members.
QByteArray Document(const QByteArray &table)
{
    return R"({"format": "tarnvik-align/tables", "version": "1.0", "sdrType": 3, "tables": [)" + table + "]}";
}

} // namespace

class TarnvikAlign_JsonTest : public tests::ToolFixture
{
    Q_OBJECT

private slots:
    void exportThenImportGivesTheSameBytes_data();
    void exportThenImportGivesTheSameBytes();
    void numbersOf64BitsAreTexts();
    void bytesBehindTheIdSurvive();
    void aFileWithoutTableIsADocument();
    void onlyTheChosenTablesAreExported();
    void handMadeTablesAreRead();
    void everyErrorIsToldByItsPath_data();
    void everyErrorIsToldByItsPath();
    void allErrorsAreToldAndNothingIsWritten();
    void documentsOfDifferentTypesMakeNoFile_data();
    void documentsOfDifferentTypesMakeNoFile();
    void aTableOfAnotherInnerVersionIsNotExported();
    void aDamagedFileGivesNoDocument();
    void nothingIsWrittenWhenNothingChanges();
    void whatCannotBeWrittenIsNamedWithTheStep_data();
    void whatCannotBeWrittenIsNamedWithTheStep();
    void whatIsNoObjectIsTold();
    void idsAreReadToTheirFullLength_data();
    void idsAreReadToTheirFullLength();
    void documentsOfOneFileHaveOneReceiverType();
    void whatTellsNothingNewIsPassedOver();
    void importWantsAnOutput();
    void whatIsAskedWronglyIsRefused_data();
    void whatIsAskedWronglyIsRefused();
    void showIsReadable();
};

void TarnvikAlign_JsonTest::exportThenImportGivesTheSameBytes_data()
{
    QTest::addColumn<int>("sdrType");
    for (int type = 0; type <= 5; ++type)
        QTest::addRow("type %d", type) << type;
    QTest::newRow("type 255") << 255;
}

void TarnvikAlign_JsonTest::exportThenImportGivesTheSameBytes()
{
    QFETCH(int, sdrType);
    tools::AlignmentGenerator generator(static_cast<quint32>(7 + sdrType));
    AlignStore store;
    store.SdrType = static_cast<SdrType>(sdrType);
    for (const std::size_t payload : {2000, 10, 400})
        QVERIFY(generator.AppendTable(store, payload) != nullptr); // ids of any bytes
    QCOMPARE(store.SaveFile(path(u"a.ad"_s)), AlignResult::Ok);
    const tests::ToolRun exported = Run({u"export"_s, u"a.ad"_s});
    QCOMPARE(exported.Errors, QByteArray());
    QCOMPARE(exported.ExitCode, 0);
    tests::ToolRun imported = Run({u"import"_s, u"-"_s, u"--output"_s, u"b.ad"_s}, exported.Output);
    QCOMPARE(imported.Errors, QByteArray());
    QCOMPARE(imported.ExitCode, 0);
    QCOMPARE(FileBytes(path(u"b.ad"_s)), FileBytes(path(u"a.ad"_s)));
    imported = Run({u"import"_s, u"-"_s, u"--output"_s, u"-"_s}, exported.Output);
    QCOMPARE(imported.Output.size(), FileBytes(path(u"a.ad"_s)).size());
    QCOMPARE(Run({u"show"_s, u"--json"_s, u"a.ad"_s}).Output, exported.Output);
}

void TarnvikAlign_JsonTest::numbersOf64BitsAreTexts()
{
    const QByteArray table =
        R"({"id": "A", "alignedAt": "18446744073709551615", "dataSetCapacity": 1, "dataSets": [
        {"attr": [1, 2, 3, 255], "word": [0, 65535], "freqPoints": [
            {"frequency": "9007199254740993", "attr": 255, "sampleRatePoints": [
                {"sampleFrequency": "18446744073709551615", "attr": 4294967295, "gainEntries": [[0, 1, 2, 65535]]}]}]}]})";
    QVERIFY(WriteFileBytes(path(u"a.json"_s), Document(table)));
    QCOMPARE(Run({u"import"_s, u"a.json"_s, u"-o"_s, u"a.ad"_s}).Errors, QByteArray());
    const QJsonObject read = QJsonDocument::fromJson(Run({u"export"_s, u"a.ad"_s}).Output)
                                 .object()
                                 .value("tables"_L1)
                                 .toArray()
                                 .first()
                                 .toObject();
    const QJsonObject wanted = QJsonDocument::fromJson(table).object();
    for (const QString &member : wanted.keys())
        QCOMPARE(read.value(member), wanted.value(member));
    QCOMPARE(read.value("driver"_L1), QJsonValue(u"RTL-SDR"_s));
}

void TarnvikAlign_JsonTest::bytesBehindTheIdSurvive()
{
    QByteArray payload = tests::FileOf150Bytes().mid(10, 139);
    payload[1 + 100] = 'x'; // behind the NUL of ABC
    QVERIFY(WriteFileBytes(path(u"a.ad"_s), tests::FileOf150Bytes().first(7) + tests::ByteCrcChunk(payload)));
    const tests::ToolRun exported = Run({u"export"_s, u"a.ad"_s});
    QVERIFY(exported.Output.contains("\"id\":\"ABC\""));
    QCOMPARE(Run({u"import"_s, u"-"_s, u"-o"_s, u"b.ad"_s}, exported.Output).ExitCode, 0);
    QCOMPARE(FileBytes(path(u"b.ad"_s)), FileBytes(path(u"a.ad"_s)));
}

void TarnvikAlign_JsonTest::aFileWithoutTableIsADocument()
{
    QVERIFY(WriteFileBytes(path(u"a.ad"_s), tests::HeaderChunk(SdrType::RtlSdr, 0)));
    const tests::ToolRun run = Run({u"export"_s, u"a.ad"_s});
    const QJsonObject document = QJsonDocument::fromJson(run.Output).object();
    QCOMPARE(document.value("sdrType"_L1), QJsonValue(3));
    QCOMPARE(document.value("tables"_L1), QJsonValue(QJsonArray()));
    QCOMPARE(run.ExitCode, 0);
}

void TarnvikAlign_JsonTest::onlyTheChosenTablesAreExported()
{
    QVERIFY(tests::WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"0x1", 1}, {"0x12", 2}, {"", 3}}));
    tests::ToolRun run = Run({u"export"_s, u"--id"_s, u"0x1"_s, u"--id"_s, QString(), u"a.ad"_s});
    const QJsonArray tables = QJsonDocument::fromJson(run.Output).object().value("tables"_L1).toArray();
    QCOMPARE(tables.size(), 2); // ids match whole
    QCOMPARE(run.ExitCode, 0);
    run = Run({u"export"_s, u"--id"_s, u"0x"_s, u"a.ad"_s});
    QCOMPARE(run.Errors,
             QByteArray("TarnvikAlign: a.ad: there is no table \"0x\"; \"list\" shows the ids\n"));
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_JsonTest::handMadeTablesAreRead()
{
    const QByteArray table = R"({"id": "%", "alignedAt": "%", "dataSetCapacity": 1, "dataSets": []})";
    for (const QByteArray name : {"1", "2"})
        QVERIFY(WriteFileBytes(path(QLatin1String(name) + u".json"_s),
                               Document(QByteArray(table).replace("%", name))));
    const tests::ToolRun run = Run({u"import"_s, u"1.json"_s, u"2.json"_s, u"-o"_s, u"a.ad"_s});
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(tests::TableBytes(path(u"a.ad"_s)).keys(), (QList<QByteArray>{"1", "2"}));
}

void TarnvikAlign_JsonTest::everyErrorIsToldByItsPath_data()
{
    QTest::addColumn<QByteArray>("document");
    QTest::addColumn<QByteArray>("message");
    const QByteArray head = R"("id": "A", "alignedAt": "1", "dataSetCapacity": 1)";
    const auto table = [&](const QByteArray &dataSets) {
        return Document("{" + head + ", \"dataSets\": " + dataSets + "}");
    };
    const auto freqPoints = [&](const QByteArray &points) {
        return table(R"([{"attr": [0,0,0,0], "word": [0,0], "freqPoints": )" + points + "}]");
    };
    const auto repeated = [](const QByteArray &entry, int times) {
        return "[" + (entry + ",").repeated(times - 1) + entry + "]";
    };
    const QByteArray point = R"({"frequency": "1", "attr": 0, "sampleRatePoints": []})";
    const QByteArray ratePoint = R"({"sampleFrequency": "1", "attr": 0, "gainEntries": []})";
    const auto withPoints = [&](const QByteArray &points) {
        return freqPoints(R"([{"frequency": "1", "attr": 0, "sampleRatePoints": )" + points + "}]");
    };
    QTest::newRow("no JSON") << QByteArray("{]") << QByteArray("no JSON, at byte 2: unterminated object");
    QTest::newRow("a number in the place of a text")
        << Document(R"({"id": "A", "alignedAt": 1, "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].alignedAt: a number from 0 to 18446744073709551615 in quotes is wanted");
    QTest::newRow("a number beyond 64 bits")
        << Document(
               R"({"id": "A", "alignedAt": "18446744073709551616", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].alignedAt: a number from 0 to 18446744073709551615 in quotes is wanted");
    QTest::newRow("a number with blanks")
        << Document(R"({"id": "A", "alignedAt": " 1", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].alignedAt: a number from 0 to 18446744073709551615 in quotes is wanted");
    QTest::newRow("a number too large for its byte")
        << Document(R"({"id": "A", "alignedAt": "1", "dataSetCapacity": 256, "dataSets": []})")
        << QByteArray("tables[0].dataSetCapacity: a number from 0 to 255 is wanted");
    QTest::newRow("a negative number")
        << Document(R"({"id": "A", "alignedAt": "1", "dataSetCapacity": -1, "dataSets": []})")
        << QByteArray("tables[0].dataSetCapacity: a number from 0 to 255 is wanted");
    QTest::newRow("a fraction")
        << Document(R"({"id": "A", "alignedAt": "1", "dataSetCapacity": 0.5, "dataSets": []})")
        << QByteArray("tables[0].dataSetCapacity: a number from 0 to 255 is wanted");
    QTest::newRow("a missing member")
        << Document(R"({"alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].id: a text is wanted");
    QTest::newRow("a misspelt member") << Document("{" + head + R"(, "dataSets": [], "datasets": []})")
                                       << QByteArray("tables[0].datasets: there is no such member");
    QTest::newRow("an id of 129 bytes")
        << Document(R"({"id": ")" + QByteArray(129, 'x') +
                    R"(", "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].id: more than 128 bytes");
    QTest::newRow("an id that is not hexadecimal")
        << Document(R"({"idHex": "0g", "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].idHex: hexadecimal digits are wanted, two for each byte");
    QTest::newRow("exact bytes that are no text")
        << Document(R"({"id": "A", "idHex": null, "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].idHex: hexadecimal digits are wanted, two for each byte");
    QTest::newRow("an id of half a surrogate pair")
        << Document(R"({"id": "\udc80", "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].id: this is no text of UTF-8 without NUL; the member idHex takes all bytes");
    QTest::newRow("an id with a NUL")
        << Document(R"({"id": "A\u0000B", "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})")
        << QByteArray("tables[0].id: this is no text of UTF-8 without NUL; the member idHex takes all bytes");
    QTest::newRow("a table of another receiver type")
        << Document("{" + head + R"(, "sdrType": 1, "dataSets": []})")
        << QByteArray("tables[0].sdrType: another one than the document's; a file has one type");
    QTest::newRow("two data sets for a type of one")
        << table("[{}, {}]") << QByteArray("tables[0]: more than 1 data sets");
    QTest::newRow("101 frequency points")
        << freqPoints(repeated(point, 101))
        << QByteArray("tables[0].dataSets[0]: more than 100 frequency points");
    QTest::newRow("11 sample-rate points")
        << withPoints(repeated(ratePoint, 11))
        << QByteArray("tables[0].dataSets[0].freqPoints[0]: more than 10 sample-rate points");
    QTest::newRow("51 gain entries")
        << withPoints(R"([{"sampleFrequency": "1", "attr": 0, "gainEntries": )" + repeated("[0,0,0,0]", 51) +
                      "}]")
        << QByteArray("tables[0].dataSets[0].freqPoints[0].sampleRatePoints[0]: more than 50 gain entries");
    QTest::newRow("a gain entry of three")
        << withPoints(R"([{"sampleFrequency": "1", "attr": 0, "gainEntries": [[0,0,0,0],[0,0,0]]}])")
        << QByteArray("tables[0].dataSets[0].freqPoints[0].sampleRatePoints[0].gainEntries[1]: a list of 4 "
                      "is wanted");
    QTest::newRow("65536 tables") << Document(QByteArray("0,").repeated(65535) + '0')
                                  << QByteArray("more than 65535 tables");
    QTest::newRow("an unknown member of the document")
        << QByteArray(
               R"({"format": "tarnvik-align/tables", "version": "1.0", "sdrType": 3, "tables": [], "x": 0})")
        << QByteArray("x: there is no such member");
    QTest::newRow("another format") << QByteArray(
                                           R"({"format": "x", "version": "1.0", "sdrType": 3, "tables": []})")
                                    << QByteArray("format: \"tarnvik-align/tables\" is wanted");
    QTest::newRow("another major version")
        << QByteArray(R"({"format": "tarnvik-align/tables", "version": "2.0", "sdrType": 3, "tables": []})")
        << QByteArray("version: this program knows version 1.0");
}

void TarnvikAlign_JsonTest::everyErrorIsToldByItsPath()
{
    QFETCH(QByteArray, document);
    QFETCH(QByteArray, message);
    QVERIFY(WriteFileBytes(path(u"a.json"_s), document));
    const tests::ToolRun run = Run({u"import"_s, u"a.json"_s, u"-o"_s, u"a.ad"_s});
    QCOMPARE(run.Errors, "TarnvikAlign: a.json: " + message + '\n');
    QCOMPARE(run.ExitCode, 1);
    QVERIFY(!QFile::exists(path(u"a.ad"_s)));
}

void TarnvikAlign_JsonTest::allErrorsAreToldAndNothingIsWritten()
{
    QVERIFY(WriteFileBytes(path(u"a.ad"_s), tests::FileOf150Bytes()));
    QVERIFY(
        WriteFileBytes(path(u"a.json"_s), Document(R"({"id": 1, "alignedAt": 1, "dataSetCapacity": "1"})")));
    const tests::ToolRun run = Run({u"import"_s, u"a.json"_s, u"missing.json"_s, u"-o"_s, u"a.ad"_s});
    QCOMPARE(run.Errors.count('\n'), 5); // id, alignedAt, dataSetCapacity, dataSets, and the missing file
    QCOMPARE(run.ExitCode, 3);
    QCOMPARE(FileBytes(path(u"a.ad"_s)), tests::FileOf150Bytes());
}

void TarnvikAlign_JsonTest::documentsOfDifferentTypesMakeNoFile_data()
{
    QTest::addColumn<int>("first");
    QTest::addColumn<int>("second");
    QTest::newRow("two known ones") << 1 << 3;
    QTest::newRow("none first") << 0 << 3;
    QTest::newRow("none last") << 3 << 0;
}

void TarnvikAlign_JsonTest::documentsOfDifferentTypesMakeNoFile()
{
    QFETCH(int, first);
    QFETCH(int, second);
    for (const int type : {first, second})
        QVERIFY(tests::WriteFileBytes(
            path(u"%1.json"_s.arg(type)),
            R"({"format": "tarnvik-align/tables", "version": "1.0", "tables": [{"id": "A", "alignedAt": "1",)"
            R"( "dataSetCapacity": 1, "dataSets": []}], "sdrType": )" +
                QByteArray::number(type) + "}"));
    const tests::ToolRun run =
        Run({u"import"_s, u"%1.json"_s.arg(first), u"%1.json"_s.arg(second), u"-o"_s, u"f.ad"_s});
    QCOMPARE(run.Errors,
             "TarnvikAlign: " + QByteArray::number(second) +
                 ".json: sdrType: another one than in the documents before; a file has one type\n");
    QCOMPARE(run.ExitCode, 1);
    QVERIFY(!QFile::exists(path(u"f.ad"_s)));
}

void TarnvikAlign_JsonTest::aTableOfAnotherInnerVersionIsNotExported()
{
    const QByteArray file = tests::FileOf150Bytes();
    QByteArray payload = file.mid(10, 139);
    payload[0] = 6;
    QVERIFY(tests::WriteFileBytes(path(u"f.ad"_s), file.first(7) + tests::ByteCrcChunk(payload)));
    const tests::ToolRun run = Run({u"export"_s, u"f.ad"_s});
    QCOMPARE(run.Errors,
             QByteArray("TarnvikAlign: f.ad: table 1 has another inner version than 5; only tables of "
                        "version 5 are exported\n"));
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_JsonTest::aDamagedFileGivesNoDocument()
{
    QVERIFY(tests::WriteAlignmentFile(path(u"a.ad"_s), SdrType::RtlSdr, {{"A", 1}, {"B", 1}}));
    QVERIFY(WriteFileBytes(path(u"a.ad"_s), FileBytes(path(u"a.ad"_s)).chopped(1)));
    const tests::ToolRun run = Run({u"export"_s, u"a.ad"_s});
    QCOMPARE(run.ExitCode, 1);
    QVERIFY(QJsonDocument::fromJson(run.Output).isNull());
}

void TarnvikAlign_JsonTest::nothingIsWrittenWhenNothingChanges()
{
    QVERIFY(WriteFileBytes(path(u"a.ad"_s), tests::FileOf150Bytes()));
    const QByteArray json = Run({u"export"_s, u"a.ad"_s}).Output;
    const auto makeOld = [this] {
        QFile file(path(u"a.ad"_s));
        return file.open(QIODevice::ReadWrite) && file.setFileTime(QDateTime(QDate(2001, 1, 1), QTime(12, 0)),
                                                                   QFileDevice::FileModificationTime);
    };
    const auto year = [this] { return QFileInfo(path(u"a.ad"_s)).lastModified().date().year(); };
    QVERIFY(makeOld());
    QCOMPARE(Run({u"import"_s, u"-"_s, u"-o"_s, u"a.ad"_s}, json).ExitCode, 0);
    QCOMPARE(year(), 2001);
    for (const QByteArray &other : {tests::FileOf150Bytes() + 'x', tests::FileOf150Bytes().chopped(1)}) {
        QVERIFY(WriteFileBytes(path(u"a.ad"_s), other));
        QVERIFY(makeOld());
        QCOMPARE(Run({u"import"_s, u"-"_s, u"-o"_s, u"a.ad"_s}, json).ExitCode, 0);
        QVERIFY(year() != 2001);
        QCOMPARE(FileBytes(path(u"a.ad"_s)), tests::FileOf150Bytes());
    }
}

void TarnvikAlign_JsonTest::whatCannotBeWrittenIsNamedWithTheStep_data()
{
    QTest::addColumn<QString>("output");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("a folder") << u"."_s << QByteArray("TarnvikAlign: .: the file cannot be replaced: ");
    QTest::newRow("a missing folder")
        << u"missing/a.ad"_s
        << QByteArray("TarnvikAlign: missing/a.ad: no temporary file can be made beside it: ");
}

void TarnvikAlign_JsonTest::whatCannotBeWrittenIsNamedWithTheStep()
{
    QFETCH(QString, output);
    QFETCH(QByteArray, message);
    QVERIFY(WriteFileBytes(path(u"a.ad"_s), tests::FileOf150Bytes()));
    const tests::ToolRun run =
        Run({u"import"_s, u"-"_s, u"-o"_s, output}, Run({u"export"_s, u"a.ad"_s}).Output);
    QVERIFY2(run.Errors.startsWith(message), run.Errors.constData());
    QCOMPARE(run.Errors.count('\n'), 1);
    QCOMPARE(run.ExitCode, 3);
}

void TarnvikAlign_JsonTest::whatIsNoObjectIsTold()
{
    tests::ToolRun run = Run({u"import"_s, u"-"_s, u"-o"_s, u"a.ad"_s}, Document("5"));
    QVERIFY2(run.Errors.contains("tables[0]: an object is wanted\n"), run.Errors.constData());
    run = Run({u"import"_s, u"-"_s, u"-o"_s, u"a.ad"_s}, "[]");
    QVERIFY2(run.Errors.contains("-: an object is wanted\n"), run.Errors.constData());
    QCOMPARE(run.ExitCode, 1);
}

void TarnvikAlign_JsonTest::idsAreReadToTheirFullLength_data()
{
    QTest::addColumn<QByteArray>("member");
    QTest::addColumn<QByteArray>("id");
    QTest::newRow("128 letters") << "\"id\": \"" + QByteArray(128, 'x') + '"' << QByteArray(128, 'x');
    QTest::newRow("digits in capitals") << QByteArray(R"("idHex": "6A6b")") << QByteArray("jk");
    QTest::newRow("digits beside a text") << QByteArray(R"("id": "?", "idHex": "ff")") << QByteArray("\xFF");
}

void TarnvikAlign_JsonTest::idsAreReadToTheirFullLength()
{
    QFETCH(QByteArray, member);
    QFETCH(QByteArray, id);
    const QByteArray rest = R"(, "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})";
    const tests::ToolRun run = Run({u"import"_s, u"-"_s, u"-o"_s, u"a.ad"_s}, Document('{' + member + rest));
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(tests::TableBytes(path(u"a.ad"_s)).keys(), QByteArrayList{id});
}

void TarnvikAlign_JsonTest::documentsOfOneFileHaveOneReceiverType()
{
    const QByteArray table = R"({"id": "A", "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})";
    QVERIFY(WriteFileBytes(path(u"3.json"_s), Document(table)));
    QVERIFY(WriteFileBytes(path(u"4.json"_s), Document(table).replace(R"("sdrType": 3)", R"("sdrType": 4)")));
    const tests::ToolRun run = Run({u"import"_s, u"3.json"_s, u"4.json"_s, u"-o"_s, u"a.ad"_s});
    QCOMPARE(run.Errors, QByteArray("TarnvikAlign: 4.json: sdrType: another one than in the documents "
                                    "before; a file has one type\n"));
    QCOMPARE(run.ExitCode, 1);
    QVERIFY(!QFile::exists(path(u"a.ad"_s)));
}

void TarnvikAlign_JsonTest::whatTellsNothingNewIsPassedOver()
{
    // A later minor version may say more, and is read all the same.
    const QByteArray document =
        Document(R"({"id": "A", "alignedAt": "1", "dataSetCapacity": 1, "dataSets": [], "driver": "x",
            "sdrType": 3, "date": "x"})")
            .replace(R"("1.0")", R"("1.7")");
    const tests::ToolRun run = Run({u"import"_s, u"-"_s, u"-o"_s, u"a.ad"_s}, document);
    QCOMPARE(run.Errors, QByteArray());
    QCOMPARE(tests::TableBytes(path(u"a.ad"_s)).keys(), QByteArrayList{"A"});
}

void TarnvikAlign_JsonTest::whatIsAskedWronglyIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode");
    QTest::addColumn<QByteArray>("message");
    const QByteArray oneFile = "one file is wanted; see \"--help\"";
    const QByteArray noTable = "a.ad: there is no table \"A\"; \"list\" shows the ids";
    QTest::newRow("export of two files") << QStringList{u"export"_s, u"a.ad"_s, u"a.ad"_s} << 2 << oneFile;
    QTest::newRow("show of no file") << QStringList{u"show"_s} << 2 << oneFile;
    QTest::newRow("show of an id that the file does not have")
        << QStringList{u"show"_s, u"--id=A"_s, u"a.ad"_s} << 1 << noTable;
    QTest::newRow("show of a damaged file")
        << QStringList{u"show"_s, u"damaged.ad"_s} << 1
        << QByteArray("damaged.ad: header, byte 0: File Error; the file ends too early; take it from its "
                      "source again");
    QTest::newRow("import of a folder") << QStringList{u"import"_s, u"."_s, u"-o"_s, u"b.ad"_s} << 3
                                        << QByteArray(".: the file cannot be read; check name and rights");
    QTest::newRow("import of no table") << QStringList{u"import"_s, u"empty.json"_s, u"-o"_s, u"b.ad"_s} << 3
                                        << QByteArray("b.ad: Aligntable-List is emptpy, nothing to save");
    QTest::newRow("import into the document that is not there")
        << QStringList{u"import"_s, u"b.ad"_s, u"-o"_s, u"b.ad"_s} << 2
        << QByteArray("b.ad: this file is read; name another --output");
}

void TarnvikAlign_JsonTest::whatIsAskedWronglyIsRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QFETCH(QByteArray, message);
    QVERIFY(WriteFileBytes(path(u"a.ad"_s), tests::FileOf150Bytes())); // of table ABC
    QVERIFY(WriteFileBytes(path(u"damaged.ad"_s), QByteArray()));
    QVERIFY(WriteFileBytes(path(u"empty.json"_s), Document({})));
    const tests::ToolRun run = Run(arguments);
    QCOMPARE(run.Errors, "TarnvikAlign: " + message + '\n');
    QCOMPARE(run.Output, QByteArray());
    QCOMPARE(run.ExitCode, exitCode);
    QVERIFY(!QFile::exists(path(u"b.ad"_s)));
}

void TarnvikAlign_JsonTest::importWantsAnOutput()
{
    const tests::ToolRun run = Run({u"import"_s, u"a.json"_s});
    QCOMPARE(run.Errors, QByteArray("TarnvikAlign: documents and --output are wanted; see \"--help\"\n"));
    QCOMPARE(run.ExitCode, 2);
}

void TarnvikAlign_JsonTest::showIsReadable()
{
    const QByteArray table = R"({"id": "A%3", "alignedAt": "86400", "dataSetCapacity": 1, "dataSets": [
        {"attr": [1, 2, 3, 4], "word": [5, 6], "freqPoints": [{"frequency": "100000000", "attr": 7, "sampleRatePoints": [
            {"sampleFrequency": "2400000", "attr": 8, "gainEntries": [[9, 10, 11, 65535]]}]}]}]})";
    const QByteArray other = R"(, {"id": "B", "alignedAt": "1", "dataSetCapacity": 1, "dataSets": []})";
    QCOMPARE(Run({u"import"_s, u"-"_s, u"-o"_s, u"a.ad"_s}, Document(table + other)).Errors, QByteArray());
    const tests::ToolRun run = Run({u"show"_s, u"--id"_s, u"A%3"_s, u"a.ad"_s});
    QCOMPARE(run.Output, QByteArray("A%3, aligned at 1970-01-02 00:00:00, data sets: 1 of 1\n"
                                    "  data set 1: attributes 1 2 3 4, words 5 6, frequencies: 1\n"
                                    "    frequency 100000000 (attribute 7)\n"
                                    "      sample rate 2400000 (attribute 8), gain entries: 1\n"
                                    "            9    10    11 65535\n"));
    QCOMPARE(run.ExitCode, 0);
}

TARNVIK_TEST_MAIN(TarnvikAlign_JsonTest, QCoreApplication)

#include "TarnvikAlign_JsonTest.moc"
