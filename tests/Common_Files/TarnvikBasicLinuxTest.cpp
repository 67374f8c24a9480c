// SPDX-License-Identifier: MIT
// The record path from the user's configuration folder, end to end.
#include "Common_Files/TarnvikBasic.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

class TarnvikBasicLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void theRecordPathComesFromTheLocationFileInTheRecordersFolder();
};

void TarnvikBasicLinuxTest::theRecordPathComesFromTheLocationFileInTheRecordersFolder()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quillane GmbH"));
    QCoreApplication::setApplicationName(QStringLiteral("TarnvikControl"));
    const QString folder =
        QFile::decodeName(qgetenv("XDG_CONFIG_HOME")) + QStringLiteral("/Quillane GmbH/TarnvikRecord");
    QCOMPARE(QTarnvikBasic::GetRecorderFile(QString()), folder);
    QCOMPARE(QTarnvikBasic::GetRecordPath(), QString());
    QVERIFY(!QDir(folder).exists());

    QVERIFY(QDir().mkpath(folder));
    QFile file(folder + QStringLiteral("/tarnviklocation.ini"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("[Record]\nRecordPath=/srv/records\n") > 0);
    file.close();
    QCOMPARE(QTarnvikBasic::GetRecordPath(), QStringLiteral("/srv/records"));
}

TARNVIK_TEST_MAIN(TarnvikBasicLinuxTest, QCoreApplication)
#include "TarnvikBasicLinuxTest.moc"
