// SPDX-License-Identifier: MIT
// The platform of these tests opens nothing: it warns, and names the URL that it was given.
#include "CommonQt/PathUrlOpener.h"

#include "tests/support/TestMain.h"

#include <QDesktopServices>
#include <QGuiApplication>
#include <QTest>
#include <QUrl>

using namespace Qt::StringLiterals;

class PathUrlOpenerTest : public QObject
{
    Q_OBJECT

private slots:
    void aPathOpensTheFileThatItNames_data();
    void aPathOpensTheFileThatItNames();
    void withoutTheObjectUrlsAreWhatTheyAre();
};

void PathUrlOpenerTest::aPathOpensTheFileThatItNames_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("call");
    QTest::addColumn<QString>("opened");
    const QString url = u"openUrl"_s;
    const QString document = u"openDocument"_s;
    QTest::newRow("one that reads like its URL") << "/usr/lib/a.pdf" << url << "/usr/lib/a.pdf";
    QTest::newRow("one on a drive that reads like its URL")
        << "C:/Tarnvik/a.pdf" << url << "c:/Tarnvik/a.pdf";
    QTest::newRow("a blank") << "/my files/a.pdf" << document << "file:///my files/a.pdf";
    QTest::newRow("a blank on a drive")
        << "C:/Program Files/a.pdf" << document << "file:///c:/Program Files/a.pdf";
    QTest::newRow("a blank on another drive")
        << "Z:/my files/a.pdf" << document << "file:///z:/my files/a.pdf";
    QTest::newRow("a share") << "//server/my share/a.pdf" << document << "file://server/my share/a.pdf";
    QTest::newRow("no path") << "https://example.org/a b" << url << "https://example.org/a b";
}

void PathUrlOpenerTest::aPathOpensTheFileThatItNames()
{
    QFETCH(QString, path);
    QFETCH(QString, call);
    QFETCH(QString, opened);
    const PathUrlOpener opener;
    const QString warning =
        u"This plugin does not support QPlatformServices::%1() for '%2'."_s.arg(call, opened);
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    QDesktopServices::openUrl(QUrl(path, QUrl::TolerantMode));
}

void PathUrlOpenerTest::withoutTheObjectUrlsAreWhatTheyAre()
{
    {
        const PathUrlOpener opener;
    }
    QTest::ignoreMessage(
        QtWarningMsg,
        "This plugin does not support QPlatformServices::openUrl() for 'c:/Program Files/a.pdf'.");
    QVERIFY(!QDesktopServices::openUrl(QUrl(u"C:/Program Files/a.pdf"_s, QUrl::TolerantMode)));
}

TARNVIK_TEST_MAIN(PathUrlOpenerTest, QGuiApplication)

#include "PathUrlOpenerTest.moc"
