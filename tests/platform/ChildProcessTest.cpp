// SPDX-License-Identifier: MIT
// A recorder survives the program that started it. The test plays that program by running itself again with
// the argument "parent".
#include "platform/ChildProcess.h"
#include "tools/IsolatedFolders.h"
#include "tools/RecorderReport.h"

#include <QCoreApplication>
#include <QFile>
#include <QOperatingSystemVersion>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstring>

using namespace Qt::StringLiterals;

namespace {

void MakeFile(const QString &path)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
}

} // namespace

class ChildProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void theRecorderIsFound_data();
    void theRecorderIsFound();
    void aDetachedRecorderSurvivesAKilledParentAndItsBrokenPipes();
};

void ChildProcessTest::theRecorderIsFound_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("found");
    QTest::newRow("nothing there") << QStringList{} << "/TarnvikRecord.exe";
    QTest::newRow("with ending") << QStringList{u"/TarnvikRecord.exe"_s} << "/TarnvikRecord.exe";
    QTest::newRow("both") << QStringList{u"/TarnvikRecord.exe"_s, u"/TarnvikRecord"_s}
                          << "/TarnvikRecord.exe";
    const bool windows = QOperatingSystemVersion::currentType() == QOperatingSystemVersion::Windows;
    QTest::newRow("without ending") << QStringList{u"/TarnvikRecord"_s}
                                    << (windows ? "/TarnvikRecord.exe" : "/TarnvikRecord");
}

void ChildProcessTest::theRecorderIsFound()
{
    QFETCH(QStringList, files);
    QFETCH(QString, found);
    const QTemporaryDir folder;
    for (const QString &file : std::as_const(files))
        MakeFile(folder.path() + file);
    QCOMPARE(platform::RecorderProgram(folder.path()), folder.path() + found);
}

void ChildProcessTest::aDetachedRecorderSurvivesAKilledParentAndItsBrokenPipes()
{
    tools::RecorderReport report;
    report.SetOption("INTERVAL_MS", "20"); // it prints a line each time
    report.SetOption("STATUS", "none");
    report.SetOption("IGNORE_QUIT", "1");
    report.SetOption("EXIT_AFTER_MS", "3000");
    QProcess parent;
    parent.start(QCoreApplication::applicationFilePath(), QStringList{u"parent"_s});
    QTRY_COMPARE(report.count(u"ready"_s), 1);
    const qint64 recorder = report.lastProcess(u"started"_s);
    parent.kill();
    QVERIFY(parent.waitForFinished());
    QVERIFY(tools::IsAlive(recorder));
    // It prints into broken pipes for three seconds and then comes to its own end.
    QTRY_COMPARE(report.count(u"ends"_s, recorder), 1);
    QCOMPARE(report.count(u"terminate-request"_s), 0);
}

int main(int argc, char **argv)
{
    if (argc == 2 && std::strcmp(argv[1], "parent") == 0) {
        QCoreApplication application(argc, argv);
        QProcess recorder;
        platform::DetachFromThisProgram(recorder);
        recorder.start(tools::StandInProgram(), QStringList(), QIODevice::ReadOnly);
        return QCoreApplication::exec();
    }
    const tools::IsolatedFolders isolation;
    QCoreApplication application(argc, argv);
    ChildProcessTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ChildProcessTest.moc"
