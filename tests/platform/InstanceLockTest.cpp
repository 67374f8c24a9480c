// SPDX-License-Identifier: MIT
// Takes the claim of other processes by running itself again with the argument "claim" or "ask".
#include "platform/InstanceLock.h"
#include "tools/IsolatedFolders.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <cstdio>
#include <cstring>
#include <memory>
#include <string>

using namespace Qt::StringLiterals;

namespace {

// Other runs of this test on the machine must not meet this one: the name holds the first process's id.
std::string Name;

QByteArray Run(const char *mode)
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(),
                QStringList{QString::fromLatin1(mode), QString::fromStdString(Name)});
    other.waitForFinished();
    return other.readAllStandardOutput();
}

} // namespace

class InstanceLockTest : public QObject
{
    Q_OBJECT

private slots:
    void theFirstClaimFindsNothing();
    void anotherProcessFindsTheClaim();
    void aSecondClaimOfTheSameProcessFindsTheFirst();
    void theNameIsFreeAfterTheObjectIsGone();
    void theNameIsFreeAfterTheProcessWasKilled();
    void aChildThatOutlivesTheClaimDoesNotKeepTheName();
    void anotherNameIsAnotherClaim();
};

void InstanceLockTest::theFirstClaimFindsNothing()
{
    const platform::InstanceLock lock(Name.c_str());
    QVERIFY(!lock.alreadyExisted());
}

void InstanceLockTest::anotherProcessFindsTheClaim()
{
    QCOMPARE(Run("ask"), QByteArray("free"));
    const platform::InstanceLock lock(Name.c_str());
    QCOMPARE(Run("ask"), QByteArray("taken"));
}

void InstanceLockTest::aSecondClaimOfTheSameProcessFindsTheFirst()
{
    const platform::InstanceLock first(Name.c_str());
    {
        const platform::InstanceLock second(Name.c_str());
        QVERIFY(second.alreadyExisted());
    }
    QCOMPARE(Run("ask"), QByteArray("taken")); // the second one's end does not free the first one's name
}

void InstanceLockTest::theNameIsFreeAfterTheObjectIsGone()
{
    {
        const platform::InstanceLock lock(Name.c_str());
        QVERIFY(!lock.alreadyExisted());
    }
    QCOMPARE(Run("ask"), QByteArray("free"));
}

void InstanceLockTest::theNameIsFreeAfterTheProcessWasKilled()
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(),
                QStringList{u"claim"_s, QString::fromStdString(Name)});
    QVERIFY(other.waitForReadyRead());
    QCOMPARE(other.readAllStandardOutput(), QByteArray("free"));
    QCOMPARE(Run("ask"), QByteArray("taken"));
    other.kill();
    QVERIFY(other.waitForFinished());
    QCOMPARE(Run("ask"), QByteArray("free"));
}

void InstanceLockTest::aChildThatOutlivesTheClaimDoesNotKeepTheName()
{
    auto lock = std::make_unique<platform::InstanceLock>(Name.c_str());
    QVERIFY(!lock->alreadyExisted());
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(),
                QStringList{u"linger"_s, QString::fromStdString(Name)});
    QVERIFY(child.waitForReadyRead());
    lock.reset();
    QCOMPARE(Run("ask"), QByteArray("free"));
    child.closeWriteChannel();
    QVERIFY(child.waitForFinished());
}

void InstanceLockTest::anotherNameIsAnotherClaim()
{
    const platform::InstanceLock lock(Name.c_str());
    const platform::InstanceLock other((Name + "-2").c_str());
    QVERIFY(!lock.alreadyExisted());
    QVERIFY(!other.alreadyExisted());
}

int main(int argc, char **argv)
{
    const char *const mode = argc == 3 ? argv[1] : "";
    Name = argc == 3
               ? argv[2]
               : "Global\\{InstanceLockTest-" + std::to_string(QCoreApplication::applicationPid()) + "}";
    const bool claim = std::strcmp(mode, "claim") == 0;
    const bool linger = std::strcmp(mode, "linger") == 0;
    if (claim || std::strcmp(mode, "ask") == 0) {
        const platform::InstanceLock lock(Name.c_str());
        std::fputs(lock.alreadyExisted() ? "taken" : "free", stdout);
        std::fflush(stdout);
        return claim ? std::getchar() : 0; // the claimer waits until it is killed
    }
    if (linger) {
        std::fputs("here", stdout);
        std::fflush(stdout);
        return std::getchar() == EOF ? 0 : 1;
    }
    const tools::IsolatedFolders isolation;
    QCoreApplication application(argc, argv);
    InstanceLockTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "InstanceLockTest.moc"
