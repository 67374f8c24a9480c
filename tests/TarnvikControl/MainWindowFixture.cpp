// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/MainWindowFixture.h"

#include "Common_Files/OstrelRecordStatus.h"
#include "Common_Files/TarnvikBasic.h"
#include "TarnvikControl/WindowHiding.h"
#include "tests/TarnvikControl/MenuEntries.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tests {

QTextEdit &Panel(const QWidget &window)
{
    return *window.findChild<QTextEdit *>();
}

QSystemTrayIcon &Tray(const QWidget &window)
{
    return *window.findChild<QSystemTrayIcon *>();
}

void ShowMessage(CMainWindow &window, const QString &message)
{
    StructOstrelRecordStatus status;
    status.Message = message;
    QMetaObject::invokeMethod(&window, "Raw_FileChanged", Qt::DirectConnection,
                              Q_ARG(StructOstrelRecordStatus, status));
}

void WriteRecordPath(const QString &path)
{
    QVERIFY(QDir().mkpath(QTarnvikBasic::GetRecorderFile(QString())));
    QSettings location(QTarnvikBasic::GetRecorderFile(u"tarnviklocation.ini"_s), QSettings::IniFormat);
    location.setValue(u"Record/RecordPath"_s, path);
}

void MainWindowFixture::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
}

void MainWindowFixture::init()
{
    StoredSettings().clear();
    HasTray = [] { return true; }; // not every platform of a test has one
    RecorderFixture::init();
}

} // namespace tests
