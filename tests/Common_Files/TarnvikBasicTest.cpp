// SPDX-License-Identifier: MIT
#include "Common_Files/TarnvikBasic.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QMetaClassInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;

class TarnvikBasicTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theClassCarriesItsInformation();
    void findsTheConfigurationFolder_data();
    void findsTheConfigurationFolder();
    void theWritableLocationIsTakenOnlyWithoutIdentity_data();
    void theWritableLocationIsTakenOnlyWithoutIdentity();
    void theSystemsLocationsGiveTheProgramsFolder();
    void completesAPath_data();
    void completesAPath();

    void anEmptyNameGivesTheRecordersFolderWithoutTrailingSeparator();
    void aNameIsPutBehindTheRecordersFolder();
    void everyOccurrenceOfTheApplicationNameIsReplacedAlsoInTheOrganisation();

    void readsTheRecordPath_data();
    void readsTheRecordPath();
    void withoutLocationFileTheRecordPathIsEmpty();
    void aLocationFileWrittenBySettingsIsRead();
    void aRewriteOfTheSameSizeAndTimeIsRead();
};

void TarnvikBasicTest::init()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
}

void TarnvikBasicTest::theClassCarriesItsInformation()
{
    const QMetaObject &meta = QTarnvikBasic::staticMetaObject;
    QCOMPARE(meta.className(), "QTarnvikBasic");
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Author")).value(), "Quillane GmbH");
    QCOMPARE(meta.classInfo(meta.indexOfClassInfo("Status")).value(), "Development");
}

void TarnvikBasicTest::findsTheConfigurationFolder_data()
{
    QTest::addColumn<QStringList>("locations");
    QTest::addColumn<QString>("expected");

    const QString machine = u"C:/ProgramData/Quillane GmbH/TarnvikControl"_s;
    const QString user = u"C:/Users/ann/.config/Quillane GmbH/TarnvikControl"_s;
    const QString local = u"C:/Users/ann/AppData/Local/Quillane GmbH/TarnvikControl"_s;
    const QString machineNative = u"C:\\ProgramData\\Quillane GmbH\\TarnvikControl"_s;
    const QString machineLower = u"c:/programdata/Quillane GmbH/TarnvikControl"_s;
    const QString userNative = u"C:\\Users\\ann\\.CONFIG\\Quillane GmbH\\TarnvikControl"_s;
    const QString nowhere = u"/Quillane GmbH/TarnvikControl"_s;

    QTest::newRow("ProgramData before .config: ProgramData wins") << QStringList{machine, user} << machine;
    QTest::newRow("ProgramData after .config: ProgramData wins") << QStringList{user, machine} << machine;
    QTest::newRow("ProgramData in lower case wins") << QStringList{user, machineLower} << machineLower;
    QTest::newRow("ProgramData with backslashes wins, and stays as written")
        << QStringList{user, machineNative} << machineNative;
    QTest::newRow("ProgramData between one separator of either kind wins")
        << QStringList{user, u"C:/ProgramData\\Quillane GmbH/TarnvikControl"_s}
        << u"C:/ProgramData\\Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("of two with ProgramData the first wins")
        << QStringList{machineLower, machine} << machineLower;
    QTest::newRow("a path that ends in ProgramData does not match")
        << QStringList{u"C:/ProgramData"_s, user} << user;
    QTest::newRow("ProgramData with a separator at its end matches")
        << QStringList{user, u"C:/ProgramData/"_s} << u"C:/ProgramData//Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("ProgramData as part of a folder's name does not match")
        << QStringList{u"C:/MyProgramData/x"_s, u"C:/ProgramData2/x"_s, user} << user;
    QTest::newRow("no ProgramData: .config wins over other folders") << QStringList{local, user} << user;
    QTest::newRow(".config in upper case behind a backslash matches")
        << QStringList{local, userNative} << userNative;
    QTest::newRow(".config without separator before it does not match")
        << QStringList{u"home.config/x"_s} << nowhere;
    QTest::newRow("the dot of .config is a dot") << QStringList{u"/home/ann/Xconfig"_s} << nowhere;
    QTest::newRow("a configuration folder of Linux is completed")
        << QStringList{u"/home/ann/.config"_s, u"/etc/xdg"_s}
        << u"/home/ann/.config/Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("no match: the folder is relative to the root")
        << QStringList{local, u"/etc/xdg"_s} << nowhere;
    QTest::newRow("no locations: the folder is relative to the root") << QStringList() << nowhere;
}

void TarnvikBasicTest::findsTheConfigurationFolder()
{
    QFETCH(const QStringList, locations);
    QFETCH(const QString, expected);
    QCOMPARE(QTarnvikBasic::GetConfigLocation(locations, u"/writable"_s, QCoreApplication::applicationName()),
             expected);
}

void TarnvikBasicTest::theWritableLocationIsTakenOnlyWithoutIdentity_data()
{
    QTest::addColumn<QString>("organization");
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("writable");
    QTest::addColumn<QString>("expected");

    const QString organization = u"Quillane GmbH"_s;
    const QString application = u"TarnvikControl"_s;
    const QString writable = u"/writable"_s;
    QTest::newRow("both names empty") << QString() << QString() << writable << writable;
    QTest::newRow("both names empty and nothing writable")
        << QString() << QString() << QString() << QString();
    QTest::newRow("only the organisation's name empty")
        << QString() << application << writable << u"/TarnvikControl"_s;
    QTest::newRow("only the application's name empty")
        << organization << QString() << writable << u"/Quillane GmbH/"_s;
    QTest::newRow("both names set") << organization << application << writable
                                    << u"/Quillane GmbH/TarnvikControl"_s;
}

void TarnvikBasicTest::theWritableLocationIsTakenOnlyWithoutIdentity()
{
    QFETCH(const QString, organization);
    QFETCH(const QString, application);
    QFETCH(const QString, writable);
    QFETCH(const QString, expected);
    QCoreApplication::setOrganizationName(organization);
    const QStringList noMatch{u"/etc/xdg"_s};
    QCOMPARE(QTarnvikBasic::GetConfigLocation(noMatch, writable, application), expected);
}

void TarnvikBasicTest::theSystemsLocationsGiveTheProgramsFolder()
{
    const QString folder = QTarnvikBasic::GetConfigLocation();
    QVERIFY2(folder.endsWith(u"/Quillane GmbH/TarnvikControl"_s), qPrintable(folder));
    const QString parent = folder.chopped(u"/Quillane GmbH/TarnvikControl"_s.size());
    QVERIFY2(parent.endsWith(u"/.config"_s) || parent.endsWith(u"/ProgramData"_s, Qt::CaseInsensitive),
             qPrintable(parent));
}

void TarnvikBasicTest::completesAPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");

    QTest::newRow("the application's name alone moves below the organisation's")
        << u"C:/ProgramData/TarnvikControl"_s << u"C:/ProgramData/Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("the application's name with a trailing separator leaves that separator")
        << u"C:/ProgramData/TarnvikControl/"_s << u"C:/ProgramData//Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("every occurrence of the application's name is removed")
        << u"C:/TarnvikControl/ProgramData/TarnvikControl"_s
        << u"C://ProgramData/Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("the organisation's name alone gets the application's")
        << u"C:/ProgramData/Quillane GmbH"_s << u"C:/ProgramData/Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("a path with both names is left unchanged")
        << u"C:/ProgramData/Quillane GmbH/TarnvikControl"_s
        << u"C:/ProgramData/Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("both names in any place are enough")
        << u"/TarnvikControl/Quillane GmbH/x"_s << u"/TarnvikControl/Quillane GmbH/x"_s;
    QTest::newRow("neither name: both are appended")
        << u"/home/ann/.config"_s << u"/home/ann/.config/Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("neither name: a trailing separator stays")
        << u"/home/"_s << u"/home//Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("names in another case are other names")
        << u"/quillane gmbh/tarnvikcontrol"_s
        << u"/quillane gmbh/tarnvikcontrol/Quillane GmbH/TarnvikControl"_s;
    QTest::newRow("a path with a place marker stays as written")
        << u"/%1/%2"_s << u"/%1/%2/Quillane GmbH/TarnvikControl"_s;
}

void TarnvikBasicTest::completesAPath()
{
    QFETCH(QString, path);
    QFETCH(const QString, expected);
    QTarnvikBasic::AddOrgAndAppFolder(path, u"TarnvikControl"_s);
    QCOMPARE(path, expected);
}

void TarnvikBasicTest::anEmptyNameGivesTheRecordersFolderWithoutTrailingSeparator()
{
    const QString folder = QTarnvikBasic::GetRecorderFile(QString());
    QVERIFY2(folder.endsWith(u"/Quillane GmbH/TarnvikRecord"_s), qPrintable(folder));
}

void TarnvikBasicTest::aNameIsPutBehindTheRecordersFolder()
{
    QCOMPARE(QTarnvikBasic::GetRecorderFile(u"tarnviklocation.ini"_s),
             QTarnvikBasic::GetRecorderFile(QString()) + u"/tarnviklocation.ini"_s);
}

void TarnvikBasicTest::everyOccurrenceOfTheApplicationNameIsReplacedAlsoInTheOrganisation()
{
    QCoreApplication::setOrganizationName(u"TarnvikControl Makers"_s);
    const QString folder = QTarnvikBasic::GetRecorderFile(QString());
    QVERIFY2(folder.endsWith(u"/TarnvikRecord Makers/TarnvikRecord"_s), qPrintable(folder));
    QVERIFY(!folder.contains(u"TarnvikControl"_s));
}

void TarnvikBasicTest::readsTheRecordPath_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a path as written") << QByteArray("[Record]\nRecordPath=D:/records\n") << u"D:/records"_s;
    QTest::newRow("a path is not changed to the system's separators")
        << QByteArray("[Record]\nRecordPath=\"D:\\\\records\\\\today, all/\"\n")
        << u"D:\\records\\today, all/"_s;
    QTest::newRow("a path beyond ASCII")
        << QByteArray("[Record]\nRecordPath=/srv/tr\xc3\xa4ger\n") << u"/srv/träger"_s;
    QTest::newRow("no key") << QByteArray("[Record]\nOther=1\n") << QString();
    QTest::newRow("the key in another group") << QByteArray("[Other]\nRecordPath=/x\n") << QString();
    QTest::newRow("the key without group") << QByteArray("RecordPath=/x\n") << QString();
    QTest::newRow("an empty file") << QByteArray() << QString();
    QTest::newRow("a file that cannot be parsed")
        << QByteArray("\x00\xff no settings [\n at all", 25) << QString();
}

void TarnvikBasicTest::readsTheRecordPath()
{
    QFETCH(const QByteArray, content);
    QFETCH(const QString, expected);
    const QTemporaryDir folder;
    QFile file(folder.filePath(u"tarnviklocation.ini"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
    file.close();

    QCOMPARE(QTarnvikBasic::GetRecordPath(file.fileName()), expected);

    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), content); // never written
}

void TarnvikBasicTest::withoutLocationFileTheRecordPathIsEmpty()
{
    const QTemporaryDir folder;
    QCOMPARE(QTarnvikBasic::GetRecordPath(QString()), QString());
    const QString missing = folder.filePath(u"missing/tarnviklocation.ini"_s);
    QCOMPARE(QTarnvikBasic::GetRecordPath(missing), QString());
    QCOMPARE(QTarnvikBasic::GetRecordPath(folder.path()), QString());
    QVERIFY(QDir(folder.path()).isEmpty()); // nothing was made
}

void TarnvikBasicTest::aLocationFileWrittenBySettingsIsRead()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tarnviklocation.ini"_s);
    const QString recordPath = u"D:\\Räkords, 2026; \"new\""_s;
    {
        QSettings settings(path, QSettings::IniFormat);
        settings.setValue(u"Record/RecordPath"_s, recordPath);
    }
    QCOMPARE(QTarnvikBasic::GetRecordPath(path), recordPath);
}

void TarnvikBasicTest::aRewriteOfTheSameSizeAndTimeIsRead()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"tarnviklocation.ini"_s);
    const QDateTime time(QDate(2026, 1, 1), QTime(12, 0));
    for (const char *recordPath : {"/srv/a", "/srv/b", "/srv/c"}) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QVERIFY(file.write(QByteArray("[Record]\nRecordPath=") + recordPath + '\n') > 0);
        QVERIFY(file.flush());
        QVERIFY(file.setFileTime(time, QFileDevice::FileModificationTime));
        file.close();
        QCOMPARE(QTarnvikBasic::GetRecordPath(path), QLatin1String(recordPath));
    }
}

TARNVIK_TEST_MAIN(TarnvikBasicTest, QCoreApplication)
#include "TarnvikBasicTest.moc"
