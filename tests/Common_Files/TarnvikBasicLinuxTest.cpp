// SPDX-License-Identifier: MIT
// The record path from the user's configuration folder, end to end.
#include "Common_Files/TarnvikBasic.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTest>

using namespace Qt::StringLiterals;

class TarnvikBasicLinuxTest : public QObject
{
    Q_OBJECT

private slots:
    void theRecordPathComesFromTheLocationFileInTheRecordersFolder();
};

void TarnvikBasicLinuxTest::theRecordPathComesFromTheLocationFileInTheRecordersFolder()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    const QString folder = QFile::decodeName(qgetenv("XDG_CONFIG_HOME")) + u"/Quillane GmbH/TarnvikRecord"_s;
    QCOMPARE(QTarnvikBasic::GetRecorderFile(QString()), folder);
    QCOMPARE(QTarnvikBasic::GetRecordPath(), QString());
    QVERIFY(!QDir(folder).exists());

    QVERIFY(QDir().mkpath(folder));
    QFile file(folder + u"/tarnviklocation.ini"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("[Record]\nRecordPath=/srv/records\n") > 0);
    file.close();
    QCOMPARE(QTarnvikBasic::GetRecordPath(), u"/srv/records"_s);
}

TARNVIK_TEST_MAIN(TarnvikBasicLinuxTest, QCoreApplication)
#include "TarnvikBasicLinuxTest.moc"
