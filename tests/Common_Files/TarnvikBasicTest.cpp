// SPDX-License-Identifier: MIT
#include "Common_Files/TarnvikBasic.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QFile>
#include <QMetaClassInfo>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

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
};

void TarnvikBasicTest::init()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quillane GmbH"));
    QCoreApplication::setApplicationName(QStringLiteral("TarnvikControl"));
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

    const QString machine = QStringLiteral("C:/ProgramData/Quillane GmbH/TarnvikControl");
    const QString user = QStringLiteral("C:/Users/ann/.config/Quillane GmbH/TarnvikControl");
    const QString local = QStringLiteral("C:/Users/ann/AppData/Local/Quillane GmbH/TarnvikControl");
    const QString machineNative = QStringLiteral("C:\\ProgramData\\Quillane GmbH\\TarnvikControl");
    const QString machineLower = QStringLiteral("c:/programdata/Quillane GmbH/TarnvikControl");
    const QString userNative = QStringLiteral("C:\\Users\\ann\\.CONFIG\\Quillane GmbH\\TarnvikControl");
    const QString nowhere = QStringLiteral("/Quillane GmbH/TarnvikControl");

    QTest::newRow("ProgramData before .config: ProgramData wins") << QStringList{machine, user} << machine;
    QTest::newRow("ProgramData after .config: ProgramData wins") << QStringList{user, machine} << machine;
    QTest::newRow("ProgramData in lower case wins") << QStringList{user, machineLower} << machineLower;
    QTest::newRow("ProgramData with backslashes wins, and stays as written")
        << QStringList{user, machineNative} << machineNative;
    QTest::newRow("ProgramData between one separator of either kind wins")
        << QStringList{user, QStringLiteral("C:/ProgramData\\Quillane GmbH/TarnvikControl")}
        << QStringLiteral("C:/ProgramData\\Quillane GmbH/TarnvikControl");
    QTest::newRow("of two with ProgramData the first wins")
        << QStringList{machineLower, machine} << machineLower;
    QTest::newRow("a path that ends in ProgramData does not match")
        << QStringList{QStringLiteral("C:/ProgramData"), user} << user;
    QTest::newRow("ProgramData with a separator at its end matches")
        << QStringList{user, QStringLiteral("C:/ProgramData/")}
        << QStringLiteral("C:/ProgramData//Quillane GmbH/TarnvikControl");
    QTest::newRow("ProgramData as part of a folder's name does not match")
        << QStringList{QStringLiteral("C:/MyProgramData/x"), QStringLiteral("C:/ProgramData2/x"), user}
        << user;
    QTest::newRow("no ProgramData: .config wins over other folders") << QStringList{local, user} << user;
    QTest::newRow(".config in upper case behind a backslash matches")
        << QStringList{local, userNative} << userNative;
    QTest::newRow(".config without separator before it does not match")
        << QStringList{QStringLiteral("home.config/x")} << nowhere;
    QTest::newRow("the dot of .config is a dot")
        << QStringList{QStringLiteral("/home/ann/Xconfig")} << nowhere;
    QTest::newRow("a configuration folder of Linux is completed")
        << QStringList{QStringLiteral("/home/ann/.config"), QStringLiteral("/etc/xdg")}
        << QStringLiteral("/home/ann/.config/Quillane GmbH/TarnvikControl");
    QTest::newRow("no match: the folder is relative to the root")
        << QStringList{local, QStringLiteral("/etc/xdg")} << nowhere;
    QTest::newRow("no locations: the folder is relative to the root") << QStringList() << nowhere;
}

void TarnvikBasicTest::findsTheConfigurationFolder()
{
    QFETCH(const QStringList, locations);
    QFETCH(const QString, expected);
    QCOMPARE(QTarnvikBasic::GetConfigLocation(locations, QStringLiteral("/writable"),
                                              QCoreApplication::applicationName()),
             expected);
}

void TarnvikBasicTest::theWritableLocationIsTakenOnlyWithoutIdentity_data()
{
    QTest::addColumn<QString>("organization");
    QTest::addColumn<QString>("application");
    QTest::addColumn<QString>("writable");
    QTest::addColumn<QString>("expected");

    const QString organization = QStringLiteral("Quillane GmbH");
    const QString application = QStringLiteral("TarnvikControl");
    const QString writable = QStringLiteral("/writable");
    QTest::newRow("both names empty") << QString() << QString() << writable << writable;
    QTest::newRow("both names empty and nothing writable")
        << QString() << QString() << QString() << QString();
    QTest::newRow("only the organisation's name empty")
        << QString() << application << writable << QStringLiteral("/TarnvikControl");
    QTest::newRow("only the application's name empty")
        << organization << QString() << writable << QStringLiteral("/Quillane GmbH/");
    QTest::newRow("both names set") << organization << application << writable
                                    << QStringLiteral("/Quillane GmbH/TarnvikControl");
}

void TarnvikBasicTest::theWritableLocationIsTakenOnlyWithoutIdentity()
{
    QFETCH(const QString, organization);
    QFETCH(const QString, application);
    QFETCH(const QString, writable);
    QFETCH(const QString, expected);
    QCoreApplication::setOrganizationName(organization);
    const QStringList noMatch{QStringLiteral("/etc/xdg")};
    QCOMPARE(QTarnvikBasic::GetConfigLocation(noMatch, writable, application), expected);
}

void TarnvikBasicTest::theSystemsLocationsGiveTheProgramsFolder()
{
    const QString folder = QTarnvikBasic::GetConfigLocation();
    QVERIFY2(folder.endsWith(QStringLiteral("/Quillane GmbH/TarnvikControl")), qPrintable(folder));
    const QString parent = folder.chopped(QStringLiteral("/Quillane GmbH/TarnvikControl").size());
    QVERIFY2(parent.endsWith(QStringLiteral("/.config")) ||
                 parent.endsWith(QStringLiteral("/ProgramData"), Qt::CaseInsensitive),
             qPrintable(parent));
}

void TarnvikBasicTest::completesAPath_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");

    QTest::newRow("the application's name alone moves below the organisation's")
        << QStringLiteral("C:/ProgramData/TarnvikControl")
        << QStringLiteral("C:/ProgramData/Quillane GmbH/TarnvikControl");
    QTest::newRow("the application's name with a trailing separator leaves that separator")
        << QStringLiteral("C:/ProgramData/TarnvikControl/")
        << QStringLiteral("C:/ProgramData//Quillane GmbH/TarnvikControl");
    QTest::newRow("every occurrence of the application's name is removed")
        << QStringLiteral("C:/TarnvikControl/ProgramData/TarnvikControl")
        << QStringLiteral("C://ProgramData/Quillane GmbH/TarnvikControl");
    QTest::newRow("the organisation's name alone gets the application's")
        << QStringLiteral("C:/ProgramData/Quillane GmbH")
        << QStringLiteral("C:/ProgramData/Quillane GmbH/TarnvikControl");
    QTest::newRow("a path with both names is left unchanged")
        << QStringLiteral("C:/ProgramData/Quillane GmbH/TarnvikControl")
        << QStringLiteral("C:/ProgramData/Quillane GmbH/TarnvikControl");
    QTest::newRow("both names in any place are enough") << QStringLiteral("/TarnvikControl/Quillane GmbH/x")
                                                        << QStringLiteral("/TarnvikControl/Quillane GmbH/x");
    QTest::newRow("neither name: both are appended")
        << QStringLiteral("/home/ann/.config")
        << QStringLiteral("/home/ann/.config/Quillane GmbH/TarnvikControl");
    QTest::newRow("neither name: a trailing separator stays")
        << QStringLiteral("/home/") << QStringLiteral("/home//Quillane GmbH/TarnvikControl");
    QTest::newRow("names in another case are other names")
        << QStringLiteral("/quillane gmbh/tarnvikcontrol")
        << QStringLiteral("/quillane gmbh/tarnvikcontrol/Quillane GmbH/TarnvikControl");
    QTest::newRow("a path with a place marker stays as written")
        << QStringLiteral("/%1/%2") << QStringLiteral("/%1/%2/Quillane GmbH/TarnvikControl");
}

void TarnvikBasicTest::completesAPath()
{
    QFETCH(QString, path);
    QFETCH(const QString, expected);
    QTarnvikBasic::AddOrgAndAppFolder(path, QStringLiteral("TarnvikControl"));
    QCOMPARE(path, expected);
}

void TarnvikBasicTest::anEmptyNameGivesTheRecordersFolderWithoutTrailingSeparator()
{
    const QString folder = QTarnvikBasic::GetRecorderFile(QString());
    QVERIFY2(folder.endsWith(QStringLiteral("/Quillane GmbH/TarnvikRecord")), qPrintable(folder));
}

void TarnvikBasicTest::aNameIsPutBehindTheRecordersFolder()
{
    QCOMPARE(QTarnvikBasic::GetRecorderFile(QStringLiteral("tarnviklocation.ini")),
             QTarnvikBasic::GetRecorderFile(QString()) + QStringLiteral("/tarnviklocation.ini"));
}

void TarnvikBasicTest::everyOccurrenceOfTheApplicationNameIsReplacedAlsoInTheOrganisation()
{
    QCoreApplication::setOrganizationName(QStringLiteral("TarnvikControl Makers"));
    const QString folder = QTarnvikBasic::GetRecorderFile(QString());
    QVERIFY2(folder.endsWith(QStringLiteral("/TarnvikRecord Makers/TarnvikRecord")), qPrintable(folder));
    QVERIFY(!folder.contains(QStringLiteral("TarnvikControl")));
}

void TarnvikBasicTest::readsTheRecordPath_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");

    QTest::newRow("a path as written")
        << QByteArray("[Record]\nRecordPath=D:/records\n") << QStringLiteral("D:/records");
    QTest::newRow("a path is not changed to the system's separators")
        << QByteArray("[Record]\nRecordPath=\"D:\\\\records\\\\today, all/\"\n")
        << QStringLiteral("D:\\records\\today, all/");
    QTest::newRow("a path beyond ASCII")
        << QByteArray("[Record]\nRecordPath=/srv/tr\xc3\xa4ger\n") << QStringLiteral("/srv/träger");
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
    QFile file(folder.filePath(QStringLiteral("tarnviklocation.ini")));
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
    const QString missing = folder.filePath(QStringLiteral("missing/tarnviklocation.ini"));
    QCOMPARE(QTarnvikBasic::GetRecordPath(missing), QString());
    QCOMPARE(QTarnvikBasic::GetRecordPath(folder.path()), QString());
    QVERIFY(QDir(folder.path()).isEmpty()); // nothing was made
}

void TarnvikBasicTest::aLocationFileWrittenBySettingsIsRead()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("tarnviklocation.ini"));
    const QString recordPath = QStringLiteral("D:\\Räkords, 2026; \"new\"");
    {
        QSettings settings(path, QSettings::IniFormat);
        settings.setValue(QStringLiteral("Record/RecordPath"), recordPath);
    }
    QCOMPARE(QTarnvikBasic::GetRecordPath(path), recordPath);
}

TARNVIK_TEST_MAIN(TarnvikBasicTest, QCoreApplication)
#include "TarnvikBasicTest.moc"
