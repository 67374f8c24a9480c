// SPDX-License-Identifier: MIT
// Runs that end before there is a window: what they say, and what they leave behind in the process.
#include "TarnvikControl/StartUp.h"

#include "CommonQt/AppTranslation.h"
#include "TarnvikControl/ArgumentStore.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/MessageLog.h"
#include "tools/IsolatedFolders.h"

#include <QTest>

#include <memory>
#include <string>

using namespace Qt::StringLiterals;

namespace {

std::unique_ptr<tests::DialogAnswers> Answers;

/// The program makes the application object, and this is called right after.
void AnswerBoxes()
{
    Answers = std::make_unique<tests::DialogAnswers>(QMessageBox::Ok);
}
Q_COREAPP_STARTUP_FUNCTION(AnswerBoxes)

} // namespace

class StartUp_RefusalTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { Answers.reset(); }

    void aSecondInstanceIsRefusedInACriticalBox();
#ifdef Q_OS_LINUX
    void withoutAScreenItIsRefusedInALineOfTheLog();
#endif
    void theMessageHandlerOfBeforeIsBack_data();
    void theMessageHandlerOfBeforeIsBack();
    void theTranslationsAreRemoved();
};

void StartUp_RefusalTest::init()
{
    qputenv("QT_QPA_PLATFORM",
            "minimal"); // the other one without display counts as a station without a screen
}

void StartUp_RefusalTest::aSecondInstanceIsRefusedInACriticalBox()
{
    QCOMPARE(RunControl({"TarnvikControl"}, ShowNormal, true), -1);
    QCOMPARE(Answers->boxes().size(), 1);
    const tests::ShownBox &box = Answers->boxes().first();
    QCOMPARE(box.Title, u"Error..."_s);
    QCOMPARE(box.Text, u"Error an instance is already running..."_s);
    QCOMPARE(box.Icon, QMessageBox::Critical);
    QCOMPARE(box.Buttons, QMessageBox::Ok);
    QCOMPARE(box.Parent, nullptr);
}

#ifdef Q_OS_LINUX
void StartUp_RefusalTest::withoutAScreenItIsRefusedInALineOfTheLog()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QCOMPARE(RunControl({"TarnvikControl"}, ShowNormal, true), -1);
    QCOMPARE(Answers->boxes().size(), 0);
}
#endif

void StartUp_RefusalTest::theMessageHandlerOfBeforeIsBack_data()
{
    QTest::addColumn<int>("argumentLength");
    QTest::newRow("after a second instance") << 1;
    QTest::newRow("after an argument that is too long") << ArgumentStore::LongestArgument + 1;
}

void StartUp_RefusalTest::theMessageHandlerOfBeforeIsBack()
{
    QFETCH(int, argumentLength);
    const std::string argument(static_cast<std::size_t>(argumentLength), 'x');
    const tests::MessageLog log;
    QCOMPARE(RunControl({"TarnvikControl", argument}, ShowNormal, true), -1);
    qWarning("afterwards");
    QCOMPARE(log.texts(QtWarningMsg), QStringList{u"afterwards"_s});
}

void StartUp_RefusalTest::theTranslationsAreRemoved()
{
    QCOMPARE(RunControl({"TarnvikControl"}, ShowNormal, true), -1);
    QVERIFY(AppTranslation.currentLanguage() < 0);
}

int main(int argc, char **argv)
{
    const tools::IsolatedFolders isolation;
    StartUp_RefusalTest test; // the program makes the application object
    return QTest::qExec(&test, argc, argv);
}

#include "StartUp_RefusalTest.moc"
