// SPDX-License-Identifier: MIT
// Alignment files on a full disk, without permission and without memory, brought about with what Linux has
// for it.
#include "alignment/AlignStore.h"

#include "tests/alignment/AlignmentFileFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment/MemoryLimit.h"
#include "tests/support/TestMain.h"
#include "tests/support/WithoutPrivileges.h"
#include "tools/AlignmentGenerator.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

using tests::EverybodyReadsAndWrites;
using tests::OpenFoldersTo;
using tests::WithoutPrivileges;

namespace {

/// No file of this process can become longer than the limit as long as the object lives: a write beyond it
/// fails, as on a disk that has no more room.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t size)
    {
        (void)std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &Former);
        const rlimit limit = {size, Former.rlim_max};
        Valid = setrlimit(RLIMIT_FSIZE, &limit) == 0;
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &Former); }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

    [[nodiscard]] bool isValid() const { return Valid; }

private:
    rlimit Former = {};
    bool Valid = false;
};

} // namespace

class AlignFileLinuxTest : public tests::AlignmentFileFixture
{
    Q_OBJECT

private slots:
    void saveToAFullDiskGives9_data();
    void saveToAFullDiskGives9();
    void saveToADiskThatFillsUpGives9WhereverThatHappens();
    void saveOfALargeFileToADiskThatFillsUpGives9_data();
    void saveOfALargeFileToADiskThatFillsUpGives9();
    void withoutReadPermissionLoadGives9AndLeavesTheListAsItWas();
    void withoutWritePermissionSaveGives9AndLeavesTheFileUntouched();
    void aPipeIsNotOpened();
    void pathWithBytesThatAreNoLetters();
    void loadingAndReadingThatRunOutOfMemoryGive11_data();
    void loadingAndReadingThatRunOutOfMemoryGive11();
};

void AlignFileLinuxTest::saveToAFullDiskGives9_data()
{
    QTest::addColumn<int>("fullTables");
    QTest::newRow("noticed only when the file is closed") << 0;
    QTest::newRow("noticed while the file is written") << 2;
}

void AlignFileLinuxTest::saveToAFullDiskGives9()
{
    QFETCH(int, fullTables);
    tools::AlignmentGenerator generator(1);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QVERIFY(generator.AppendEmptyTables(store, 1));
    QVERIFY(generator.AppendFullTables(store, fullTables, tools::AlignmentGenerator::Full::Deep));
    QVERIFY(QFileInfo::exists(u"/dev/full"_s));
    QCOMPARE(store.SaveFile(u"/dev/full"_s), AlignResult::FileError);
    QCOMPARE(int{store.Tables.Count}, 1 + fullTables);
}

void AlignFileLinuxTest::saveToADiskThatFillsUpGives9WhereverThatHappens()
{
    tools::AlignmentGenerator generator(2);
    AlignStore store;
    store.SdrType = SdrType::RtlSdr;
    AlignTable *table = store.AppendNewTable(store.Tables);
    QVERIFY(table != nullptr);
    table->DataSetCount = 1;
    generator.FillDataSet(table->DataSets[0], 200);
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    const qint64 size = QFileInfo(Path).size();
    QVERIFY(size > 160);
    for (qint64 room = 0; room <= size; ++room) {
        AlignResult result = AlignResult::InternalError;
        {
            const FileSizeLimit limit(static_cast<rlim_t>(room));
            QVERIFY(limit.isValid());
            result = store.SaveFile(Path);
        }
        QCOMPARE(result, room < size ? AlignResult::FileError : AlignResult::Ok);
        QCOMPARE(QFileInfo(Path).size(), room); // what was written stays
    }
}

void AlignFileLinuxTest::saveOfALargeFileToADiskThatFillsUpGives9_data()
{
    QTest::addColumn<int>("room");
    QTest::newRow("in the first block") << 1000;
    QTest::newRow("in a later block") << 150'000;
    QTest::newRow("one byte before the end") << -1;
}

void AlignFileLinuxTest::saveOfALargeFileToADiskThatFillsUpGives9()
{
    QFETCH(int, room);
    tools::AlignmentGenerator generator(3);
    AlignStore store;
    store.SdrType = SdrType::AirSpy;
    QVERIFY(generator.AppendFullTables(store, 5, tools::AlignmentGenerator::Full::Deep));
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    const qint64 size = QFileInfo(Path).size();
    const qint64 limited = room < 0 ? size + room : room;
    QVERIFY(limited < size);
    AlignResult result = AlignResult::Ok;
    {
        const FileSizeLimit limit(static_cast<rlim_t>(limited));
        QVERIFY(limit.isValid());
        result = store.SaveFile(Path);
    }
    QCOMPARE(result, AlignResult::FileError);
    QCOMPARE(QFileInfo(Path).size(), limited);
}

void AlignFileLinuxTest::withoutReadPermissionLoadGives9AndLeavesTheListAsItWas()
{
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    const QString readable = path(u"readable.ad"_s);
    QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    QCOMPARE(store.SaveFile(readable), AlignResult::Ok);
    QVERIFY(QFile::setPermissions(Path, QFileDevice::WriteOwner));
    QVERIFY(QFile::setPermissions(readable, EverybodyReadsAndWrites));
    QVERIFY(OpenFoldersTo(Folder->path()));

    AlignResult refused = AlignResult::Ok;
    AlignResult allowed = AlignResult::FileError;
    {
        const WithoutPrivileges permissionsHold;
        QVERIFY(permissionsHold.isValid());
        refused = store.LoadFile(Path, store.Tables, true);
        allowed = store.LoadFile(readable, store.ImportTables, true); // it is the file, not its folder
    }
    QCOMPARE(refused, AlignResult::FileError);
    QCOMPARE(tests::HwIdsOf(store.Tables), QList<QByteArray>{"ABC"});
    QCOMPARE(allowed, AlignResult::Ok);
}

void AlignFileLinuxTest::withoutWritePermissionSaveGives9AndLeavesTheFileUntouched()
{
    AlignStore store;
    QVERIFY(store.AppendNewTable(store.Tables) != nullptr);
    const QString writable = path(u"writable.ad"_s);
    QVERIFY(tests::WriteFileBytes(Path, "untouched"));
    QVERIFY(tests::WriteFileBytes(writable, "replaced"));
    QVERIFY(QFile::setPermissions(Path, QFileDevice::ReadOwner));
    QVERIFY(QFile::setPermissions(writable, EverybodyReadsAndWrites));
    QVERIFY(OpenFoldersTo(Folder->path()));

    AlignResult refused = AlignResult::Ok;
    AlignResult allowed = AlignResult::FileError;
    {
        const WithoutPrivileges permissionsHold;
        QVERIFY(permissionsHold.isValid());
        refused = store.SaveFile(Path);
        allowed = store.SaveFile(writable);
    }
    QCOMPARE(refused, AlignResult::FileError);
    QCOMPARE(tests::FileBytes(Path), QByteArray("untouched"));
    QCOMPARE(allowed, AlignResult::Ok);
}

void AlignFileLinuxTest::aPipeIsNotOpened()
{
    // Nobody is at its other end, and nobody comes.
    QCOMPARE(mkfifo(QFile::encodeName(Path).constData(), S_IRUSR | S_IWUSR), 0);
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    QCOMPARE(store.LoadFile(Path, store.ImportTables, true), AlignResult::FileError);
    QCOMPARE(store.SaveFile(Path), AlignResult::FileError);
}

void AlignFileLinuxTest::pathWithBytesThatAreNoLetters()
{
    // Half a letter cannot be written as UTF-8; whatever comes of it must be an error or a file, no crash.
    AlignStore store;
    QVERIFY(tests::AppendTableWithId(store, store.Tables, "ABC") != nullptr);
    const QString file = path(QString(QChar(0xDC00)) + u".ad"_s);
    QCOMPARE(store.SaveFile(file), AlignResult::Ok);
    QCOMPARE(store.LoadFile(file, store.ImportTables, true), AlignResult::Ok);
}

void AlignFileLinuxTest::loadingAndReadingThatRunOutOfMemoryGive11_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("tables");
    QTest::addColumn<int>("megabytes");
    QTest::addColumn<QByteArray>("result");
    const auto row = [](const char *name, const QString &command, int tables, int megabytes,
                        const QByteArray &result) {
        QTest::newRow(name) << command << tables << megabytes << "result " + result + '\n';
    };
    // A table's block of LimeUsb takes 5 MB of address space, 200 of them 1 GB.
    row("200 tables do not fit", u"load"_s, 200, 256, "InternalError (11) 0");
    row("2 tables fit", u"load"_s, 2, 256, "Ok (0) 2");
    row("200 tables fit when they are read one by one", u"read"_s, 200, 256, "Ok (0) 200");
    row("not even one fits", u"read"_s, 2, 3, "InternalError (11) 0");
}

void AlignFileLinuxTest::loadingAndReadingThatRunOutOfMemoryGive11()
{
    QFETCH(QString, command);
    QFETCH(int, tables);
    QFETCH(int, megabytes);
    QFETCH(QByteArray, result);
    tools::AlignmentGenerator generator(4);
    {
        AlignStore store;
        store.SdrType = SdrType::LimeUsb;
        QVERIFY(generator.AppendEmptyTables(store, tables));
        QCOMPARE(store.SaveFile(Path), AlignResult::Ok);
    }
    QProcess probe;
    tests::StartForMemoryLimit(probe, {command, Path});
    QTRY_VERIFY(probe.canReadLine());
    QCOMPARE(probe.readLine(), QByteArray("ready\n"));
    QVERIFY(tests::LimitMemory(probe, megabytes));
    probe.write("\n");
    QVERIFY2(probe.waitForFinished(), qPrintable(probe.errorString()));
    QCOMPARE(probe.readAllStandardOutput(), result);
    QCOMPARE(probe.exitStatus(), QProcess::NormalExit);
    QCOMPARE(probe.exitCode(), 0);
}

TARNVIK_TEST_MAIN(AlignFileLinuxTest, QCoreApplication)
#include "AlignFileLinuxTest.moc"
