// SPDX-License-Identifier: MIT
// The tests make the application objects themselves, one after the other, on the stores that they fill.
#include "TarnvikControl/ArgumentStore.h"

#include "tools/IsolatedFolders.h"

#include <QApplication>
#include <QStringList>
#include <QTest>

#include <string>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

std::vector<std::string> ToArguments(const QStringList &arguments)
{
    std::vector<std::string> result;
    for (const QString &argument : arguments)
        result.push_back(argument.toStdString());
    return result;
}

/// What an application object or a scan of the vector would see.
QStringList Taken(ArgumentStore &store)
{
    QStringList taken;
    for (int i = 0; i < store.argc(); ++i)
        taken.append(QString::fromUtf8(store.argv()[i]));
    return taken;
}

} // namespace

class ArgumentStoreTest : public QObject
{
    Q_OBJECT

private slots:
    void anEmptyStoreHoldsNothing();
    void theFirstFiveArgumentsAreTaken_data();
    void theFirstFiveArgumentsAreTaken();
    void moreThanFourArgumentsAfterTheProgramsNameAreNotSeenByTheApplicationObject();
    void aSecondFillForgetsTheFirst();
    void theLengthOfAnArgument_data();
    void theLengthOfAnArgument();
    void theDebugConsole_data();
    void theDebugConsole();
    void theDebugConsoleIsDecidedByTheArgumentsAsGivenWhateverQtTakesOut();
};

void ArgumentStoreTest::anEmptyStoreHoldsNothing()
{
    ArgumentStore store;
    QCOMPARE(store.argc(), 0);
    QVERIFY(store.argv()[0] == nullptr);
    QVERIFY(!store.wantsDebugConsole());
    QVERIFY(store.Fill({}));
    QCOMPARE(store.argc(), 0);
    QVERIFY(!store.wantsDebugConsole());
}

void ArgumentStoreTest::theFirstFiveArgumentsAreTaken_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QStringList>("taken");
    const QStringList five = {"program", "a", "b", "c", "d"};
    QTest::newRow("the program's name alone") << QStringList{"program"} << QStringList{"program"};
    QTest::newRow("one argument") << QStringList{"program", "a"} << QStringList{"program", "a"};
    QTest::newRow("four arguments after the program's name") << five << five;
    QTest::newRow("a fifth is dropped") << five + QStringList{"e"} << five;
    QTest::newRow("hundreds are dropped") << five + QStringList(500, u"x"_s) << five;
    QTest::newRow("a dropped one may be of any length") << five + QStringList{QString(5000, u'x')} << five;
    const QStringList empty = {"program", "", "b", ""};
    QTest::newRow("empty arguments keep their places") << empty << empty;
    const QStringList letters = {u"Prögramm"_s, u"größe 你好 😀"_s};
    QTest::newRow("letters beyond ASCII and blanks") << letters << letters;
}

void ArgumentStoreTest::theFirstFiveArgumentsAreTaken()
{
    QFETCH(QStringList, arguments);
    QFETCH(QStringList, taken);
    ArgumentStore store;
    QVERIFY(store.Fill(ToArguments(arguments)));
    QCOMPARE(Taken(store), taken);
    QVERIFY(store.argv()[store.argc()] == nullptr);
}

void ArgumentStoreTest::moreThanFourArgumentsAfterTheProgramsNameAreNotSeenByTheApplicationObject()
{
    ArgumentStore store;
    QVERIFY(store.Fill({"program", "a", "b", "c", "d", "--DEBUG", "f"}));
    const QCoreApplication application(store.argc(), store.argv());
    // The first one is the program's own path on some systems.
    QCOMPARE(QCoreApplication::arguments().mid(1), QStringList({"a", "b", "c", "d"}));
    QVERIFY(!store.wantsDebugConsole());
}

void ArgumentStoreTest::aSecondFillForgetsTheFirst()
{
    ArgumentStore store;
    QVERIFY(store.Fill({"program", "--DEBUG", "and a rather long argument", "c", "d"}));
    QVERIFY(store.Fill({"p"}));
    QCOMPARE(Taken(store), QStringList{"p"});
    QVERIFY(store.argv()[1] == nullptr);
    QVERIFY(!store.wantsDebugConsole());
}

void ArgumentStoreTest::theLengthOfAnArgument_data()
{
    QTest::addColumn<QString>("argument");
    QTest::addColumn<bool>("fits");
    QTest::newRow("259 bytes fit") << QString(259, u'x') << true;
    QTest::newRow("260 bytes are refused") << QString(260, u'x') << false;
    QTest::newRow("259 bytes in 130 letters fit") << QString(129, u'ü') + u'x' << true;
    QTest::newRow("260 bytes in 130 letters are refused") << QString(130, u'ü') << false;
    QTest::newRow("thousands of bytes are refused") << QString(70000, u'x') << false;
}

void ArgumentStoreTest::theLengthOfAnArgument()
{
    QFETCH(QString, argument);
    QFETCH(bool, fits);
    for (const int place : {0, 1, 4}) {
        QStringList arguments(5, u"a"_s);
        arguments[place] = argument;
        ArgumentStore store;
        QCOMPARE(store.Fill(ToArguments(arguments)), fits);
        if (fits)
            QCOMPARE(Taken(store), arguments);
    }
}

void ArgumentStoreTest::theDebugConsole_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("wanted");
    QTest::newRow("--DEBUG alone opens it") << QStringList{"--DEBUG"} << true;
    QTest::newRow("--DEBUG first opens it, also when other arguments follow")
        << QStringList{"--DEBUG", "a", "-b"} << true;
    QTest::newRow("--DEBUG first and four further arguments")
        << QStringList{"--DEBUG", "a", "b", "c", "d"} << true;
    QTest::newRow("--DEBUG twice opens it") << QStringList{"--DEBUG", "--DEBUG"} << true;
    QTest::newRow("--DEBUG as second argument behind another one does not")
        << QStringList{"other", "--DEBUG"} << false;
    QTest::newRow("--DEBUG behind an empty argument does not") << QStringList{"", "--DEBUG"} << false;
    QTest::newRow("--DEBUG as fifth argument, which is dropped, does not")
        << QStringList{"a", "b", "c", "d", "--DEBUG"} << false;
    QTest::newRow("--debug (other case) does not") << QStringList{"--debug"} << false;
    QTest::newRow("--Debug does not") << QStringList{"--Debug"} << false;
    QTest::newRow("-DEBUG does not") << QStringList{"-DEBUG"} << false;
    QTest::newRow("--DEBUG with something behind it does not") << QStringList{"--DEBUG=1"} << false;
    QTest::newRow("--DEBUG with blanks does not") << QStringList{"--DEBUG "} << false;
    QTest::newRow("its beginning does not") << QStringList{"--DEBU"} << false;
    QTest::newRow("no argument") << QStringList() << false;
}

void ArgumentStoreTest::theDebugConsole()
{
    QFETCH(QStringList, arguments);
    QFETCH(bool, wanted);
    ArgumentStore store;
    QVERIFY(store.Fill(ToArguments(QStringList{"program"} + arguments)));
    QCOMPARE(store.wantsDebugConsole(), wanted);
    // The program's own name never counts.
    QVERIFY(store.Fill({"--DEBUG"}));
    QVERIFY(!store.wantsDebugConsole());
}

void ArgumentStoreTest::theDebugConsoleIsDecidedByTheArgumentsAsGivenWhateverQtTakesOut()
{
    ArgumentStore debugFirst;
    QVERIFY(debugFirst.Fill({"program", "--DEBUG", "-style", "fusion"}));
    {
        const QApplication application(debugFirst.argc(), debugFirst.argv());
        QCOMPARE(Taken(debugFirst), QStringList({"program", "--DEBUG"}));
        QVERIFY(debugFirst.wantsDebugConsole());
    }
    ArgumentStore debugLast;
    QVERIFY(debugLast.Fill({"program", "-style", "fusion", "--DEBUG"}));
    const QApplication application(debugLast.argc(), debugLast.argv());
    QCOMPARE(Taken(debugLast), QStringList({"program", "--DEBUG"}));
    QVERIFY(!debugLast.wantsDebugConsole());
}

int main(int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    ArgumentStoreTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "ArgumentStoreTest.moc"
