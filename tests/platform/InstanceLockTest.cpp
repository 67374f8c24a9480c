// SPDX-License-Identifier: MIT
// Takes the claim of other processes by running itself again with the argument "claim" or "ask".
#include "platform/InstanceLock.h"
#include "tests/support/TestIsolation.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <cstdio>
#include <cstring>
#include <memory>

namespace {

constexpr char Name[] = "Global\\{TarnvikControl-InstanceLockTest}";

QByteArray Run(const char *mode)
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), QStringList{QString::fromLatin1(mode)});
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
    const platform::InstanceLock lock(Name);
    QVERIFY(!lock.alreadyExisted());
}

void InstanceLockTest::anotherProcessFindsTheClaim()
{
    QCOMPARE(Run("ask"), QByteArray("free"));
    const platform::InstanceLock lock(Name);
    QCOMPARE(Run("ask"), QByteArray("taken"));
}

void InstanceLockTest::aSecondClaimOfTheSameProcessFindsTheFirst()
{
    const platform::InstanceLock first(Name);
    {
        const platform::InstanceLock second(Name);
        QVERIFY(second.alreadyExisted());
    }
    QCOMPARE(Run("ask"), QByteArray("taken")); // the second one's end does not free the first one's name
}

void InstanceLockTest::theNameIsFreeAfterTheObjectIsGone()
{
    {
        const platform::InstanceLock lock(Name);
        QVERIFY(!lock.alreadyExisted());
    }
    QCOMPARE(Run("ask"), QByteArray("free"));
}

void InstanceLockTest::theNameIsFreeAfterTheProcessWasKilled()
{
    QProcess other;
    other.start(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("claim")});
    QVERIFY(other.waitForReadyRead());
    QCOMPARE(other.readAllStandardOutput(), QByteArray("free"));
    QCOMPARE(Run("ask"), QByteArray("taken"));
    other.kill();
    QVERIFY(other.waitForFinished());
    QCOMPARE(Run("ask"), QByteArray("free"));
}

void InstanceLockTest::aChildThatOutlivesTheClaimDoesNotKeepTheName()
{
    auto lock = std::make_unique<platform::InstanceLock>(Name);
    QVERIFY(!lock->alreadyExisted());
    QProcess child;
    child.start(QCoreApplication::applicationFilePath(), QStringList{QStringLiteral("linger")});
    QVERIFY(child.waitForReadyRead());
    lock.reset();
    QCOMPARE(Run("ask"), QByteArray("free"));
    child.closeWriteChannel();
    QVERIFY(child.waitForFinished());
}

void InstanceLockTest::anotherNameIsAnotherClaim()
{
    const platform::InstanceLock lock(Name);
    const platform::InstanceLock other("Global\\{TarnvikControl-InstanceLockTest-2}");
    QVERIFY(!lock.alreadyExisted());
    QVERIFY(!other.alreadyExisted());
}

int main(int argc, char **argv)
{
    const char *const mode = argc == 2 ? argv[1] : "";
    const bool claim = std::strcmp(mode, "claim") == 0;
    const bool linger = std::strcmp(mode, "linger") == 0;
    if (claim || std::strcmp(mode, "ask") == 0) {
        const platform::InstanceLock lock(Name);
        std::fputs(lock.alreadyExisted() ? "taken" : "free", stdout);
        std::fflush(stdout);
        return claim ? std::getchar() : 0; // the claimer waits until it is killed
    }
    if (linger) {
        std::fputs("here", stdout);
        std::fflush(stdout);
        return std::getchar() == EOF ? 0 : 1;
    }
    const tests::TestIsolation isolation;
    QCoreApplication application(argc, argv);
    InstanceLockTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "InstanceLockTest.moc"
