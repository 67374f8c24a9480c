// SPDX-License-Identifier: MIT
// The process group of a detached recorder: a terminal sends Ctrl-C to all of a group.
#include "platform/ChildProcess.h"
#include "tests/support/RecorderFixture.h"
#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QProcess>

#include <unistd.h>

using namespace Qt::StringLiterals;

class ChildProcessLinuxTest : public tests::RecorderFixture
{
    Q_OBJECT

private slots:
    void aDetachedRecorderHasAProcessGroupOfItsOwn_data();
    void aDetachedRecorderHasAProcessGroupOfItsOwn();
};

void ChildProcessLinuxTest::aDetachedRecorderHasAProcessGroupOfItsOwn_data()
{
    QTest::addColumn<bool>("detached");
    QTest::newRow("detached") << true;
    QTest::newRow("any other child") << false;
}

void ChildProcessLinuxTest::aDetachedRecorderHasAProcessGroupOfItsOwn()
{
    QFETCH(bool, detached);
    QProcess recorder;
    if (detached)
        platform::DetachFromThisProgram(recorder);
    recorder.start(tools::StandInProgram(), QStringList(), QIODevice::ReadOnly);
    QTRY_COMPARE(Report->count(u"ready"_s), 1);
    const auto process = static_cast<pid_t>(recorder.processId());
    QCOMPARE(getpgid(process), detached ? process : getpgrp());
    recorder.terminate();
    QVERIFY(recorder.waitForFinished());
}

TARNVIK_TEST_MAIN(ChildProcessLinuxTest, QCoreApplication)

#include "ChildProcessLinuxTest.moc"
