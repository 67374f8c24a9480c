// SPDX-License-Identifier: MIT
// Paths to texts and back, with bytes that are no letters on Linux; what is there, and what is the same.
#include "platform/FilePath.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;

class FilePathTest : public QObject
{
    Q_OBJECT

private slots:
    void everyTextComesBack_data();
    void everyTextComesBack();
    void theSameFileIsToldFromOthers_data();
    void theSameFileIsToldFromOthers();
#ifdef Q_OS_LINUX
    void everyPathComesBack_data();
    void everyPathComesBack();
#endif
};

void FilePathTest::everyTextComesBack_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("ASCII") << u"/data/Tarnvik Driver.ad"_s;
    QTest::newRow("letters beyond ASCII") << u"/Aufnähmen/наблюдение/電波"_s;
    QTest::newRow("beyond 16 bits") << u"/data/\U0001F4E1.ad"_s;
    QTest::newRow("beyond 16 bits, whose second half looks like an escaped byte") << u"/\U000100FF/x"_s;
}

void FilePathTest::everyTextComesBack()
{
    QFETCH(QString, text);
    const auto path = platform::FileSystemPath(text);
    QVERIFY(path.has_value());
    QCOMPARE(platform::PathText(*path), text);
}

void FilePathTest::theSameFileIsToldFromOthers_data()
{
    QTest::addColumn<QString>("left"); // below a folder with the files a and b and the empty folder f
    QTest::addColumn<QString>("right");
    QTest::addColumn<bool>("same");
    QTest::newRow("the same path") << u"a"_s << u"a"_s << true;
    QTest::newRow("another spelling") << u"a"_s << u"f/.././a"_s << true;
    QTest::newRow("another file with the same content") << u"a"_s << u"b"_s << false;
    QTest::newRow("the first is missing") << u"c"_s << u"a"_s << false;
    QTest::newRow("the second is missing") << u"a"_s << u"c"_s << false;
    QTest::newRow("a missing file and itself") << u"c"_s << u"c"_s << false;
}

void FilePathTest::theSameFileIsToldFromOthers()
{
    QFETCH(QString, left);
    QFETCH(QString, right);
    const QTemporaryDir folder;
    for (const QString &name : {u"a"_s, u"b"_s})
        QVERIFY(QFile(folder.filePath(name)).open(QIODevice::WriteOnly));
    QVERIFY(QDir(folder.path()).mkdir(u"f"_s));
    QTEST(platform::IsSameFile(folder.filePath(left), folder.filePath(right)), "same");
    QCOMPARE(platform::FileExists(folder.filePath(left)), left != u"c"_s);
}

#ifdef Q_OS_LINUX
void FilePathTest::everyPathComesBack_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QString>("text");
    QTest::newRow("one byte") << QByteArray("/a\xFF.ad") << u"/a\xDCFF.ad"_s;
    QTest::newRow("a letter cut short") << QByteArray("/\xE2\x82x") << u"/\xDCE2\xDC82x"_s;
    QTest::newRow("at the end") << QByteArray("x\xC3") << u"x\xDCC3"_s;
    QTest::newRow("an overlong form") << QByteArray("\xC0\xAF") << u"\xDCC0\xDCAF"_s;
    QTest::newRow("half a surrogate pair written as UTF-8")
        << QByteArray("\xED\xB2\x80") << u"\xDCED\xDCB2\xDC80"_s;
    QTest::newRow("between letters") << QByteArray("\xC3\xA4\x80\xC3\xA4") << u"ä\xDC80ä"_s;
}

void FilePathTest::everyPathComesBack()
{
    QFETCH(QByteArray, path);
    QFETCH(QString, text);
    QCOMPARE(platform::PathText(std::filesystem::path(path.toStdString())), text);
    QCOMPARE(QByteArray::fromStdString(platform::FileSystemPath(text)->native()), path);
}
#endif

TARNVIK_TEST_MAIN(FilePathTest, QCoreApplication)

#include "FilePathTest.moc"
