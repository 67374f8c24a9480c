// SPDX-License-Identifier: MIT
// A request to end that comes before there is an application object. Apart from the other tests, because such
// a request holds for the whole process.
#include "TarnvikControl/StartUp.h"

#include "platform/ControlEvents.h"
#include "tools/IsolatedFolders.h"

#include <QTest>

class StartUp_EarlyEndTest : public QObject
{
    Q_OBJECT

private slots:
    void aRequestBeforeTheApplicationObjectIsNotLost();
};

void StartUp_EarlyEndTest::aRequestBeforeTheApplicationObjectIsNotLost()
{
    QVERIFY(CtrlCException(platform::ControlTypeCtrlC));
    // It returns at all: the event loop is not entered.
    QCOMPARE(RunControl({"TarnvikControl"}, ShowNormal, false), 0);
    QVERIFY(!CtrlCException(platform::ControlTypeCtrlC)); // the second one is the system's
}

int main(int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    StartUp_EarlyEndTest test; // the program makes the application object
    return QTest::qExec(&test, argc, argv);
}

#include "StartUp_EarlyEndTest.moc"
