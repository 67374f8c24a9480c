// SPDX-License-Identifier: MIT
// What a reader of the panel keeps when the panel is written anew: the place, and what is selected.
#include "TarnvikControl/CMainWindow.h"

#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/support/TestMain.h"

#include <QAccessible>
#include <QApplication>
#include <QScopeGuard>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextDocument>
#include <QTextEdit>

using namespace Qt::StringLiterals;

using tests::Panel;
using tests::ShowMessage;

namespace {

/// A message of many numbered lines; one of them may read differently.
QString LongMessage(int lines, int differentLine = -1)
{
    QStringList message;
    for (int line = 0; line < lines; ++line)
        message.append(line == differentLine ? u"and now for something else"_s : QString::number(line));
    return message.join(u'\n');
}

/// How a reader selects: the caret stands at the selection's end or, upwards, at its beginning.
enum class Direction { Down, Up };

void Select(QTextEdit &panel, const QString &text, Direction direction = Direction::Down)
{
    if (text == QLatin1String("everything")) {
        panel.selectAll();
        return;
    }
    QTextCursor cursor = panel.document()->find(text, 0, QTextDocument::FindCaseSensitively);
    if (direction == Direction::Up) {
        const int begin = cursor.anchor();
        cursor.setPosition(cursor.position());
        cursor.setPosition(begin, QTextCursor::KeepAnchor);
    }
    panel.setTextCursor(cursor);
}

/// Where the caret stands right behind a text of the panel.
int CaretBehind(const QTextEdit &panel, const QString &text)
{
    return panel.document()->find(text, 0, QTextDocument::FindCaseSensitively).position();
}

/// What a document reported of its last change.
struct Change
{
    int Removed = 0;
    int Added = 0;
};

Change LastChange(const QSignalSpy &spy)
{
    return spy.isEmpty() ? Change() : Change{spy.last().at(1).toInt(), spy.last().at(2).toInt()};
}

} // namespace

class CMainWindow_ReaderTest : public tests::MainWindowFixture
{
    Q_OBJECT

private slots:
    void theSameContentIsNotWrittenAgain_data();
    void theSameContentIsNotWrittenAgain();
    void aChangedContentIsWritten();
    void theScrollPositionStays_data();
    void theScrollPositionStays();
    void theSelectionStaysWhereItsTextIsUnchanged_data();
    void theSelectionStaysWhereItsTextIsUnchanged();
    void theCaretStaysInItsPlace_data();
    void theCaretStaysInItsPlace();
    void whereASelectionIsClearedTheCaretStays();
    void theKeyboardReadsAndSelects();
    void whatSomebodyElseWroteIsWrittenOver_data();
    void whatSomebodyElseWroteIsWrittenOver();
    void newColoursLeavePlaceAndSelection();
    void aLetterOfTwoUnitsIsWrittenWhole();
};

void CMainWindow_ReaderTest::theSameContentIsNotWrittenAgain_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");
    QTest::newRow("the same message") << "ready"
                                      << "ready";
    QTest::newRow("another message that reads the same") << "<INFO>ready"
                                                         << "<ERROR>ready";
    QTest::newRow("no message") << ""
                                << "<GET>";
    QTest::newRow("several lines") << "one\ntwo\n"
                                   << "one\ntwo\n";
    QTest::newRow("line breaks of another system") << "one\r\ntwo\rthree"
                                                   << "one\r\ntwo\rthree";
    QTest::newRow("no-break blanks") << u"162.400\u00A0MHz\u2028x\u2029y"_s
                                     << u"162.400\u00A0MHz\u2028x\u2029y"_s;
}

void CMainWindow_ReaderTest::theSameContentIsNotWrittenAgain()
{
    QFETCH(QString, before);
    QFETCH(QString, after);
    CMainWindow window;
    ShowMessage(window, before);
    QSignalSpy spy(Panel(window).document(), &QTextDocument::contentsChange);
    ShowMessage(window, after);
    QCOMPARE(spy.size(), 0);
}

void CMainWindow_ReaderTest::aChangedContentIsWritten()
{
    CMainWindow window;
    ShowMessage(window, u"one\ntwo\nthree"_s);
    QSignalSpy spy(Panel(window).document(), &QTextDocument::contentsChange);
    ShowMessage(window, u"one\n22\nthree"_s);
    QVERIFY(!spy.isEmpty());
    const QString indent(22, u' ');
    QVERIFY(Panel(window).toPlainText().endsWith(u"Last message        : one\n"_s + indent + "22\n" + indent +
                                                 "three\n"));
    ShowMessage(window, QString());
    QVERIFY(Panel(window).toPlainText().endsWith(u": Stopped\n"_s));
}

void CMainWindow_ReaderTest::theScrollPositionStays_data()
{
    QTest::addColumn<int>("lines");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("selected");
    QTest::newRow("a line above the shown ones changes") << 300 << LongMessage(300, 2) << "";
    QTest::newRow("a shown line changes") << 300 << LongMessage(300, 150) << "";
    QTest::newRow("a line below the shown ones changes") << 300 << LongMessage(300, 298) << "";
    QTest::newRow("lines are added") << 300 << LongMessage(400) << "";
    QTest::newRow("lines below the shown ones vanish") << 300 << LongMessage(250) << "";
    QTest::newRow("a line of very many changes") << 9000 << LongMessage(9000, 2) << "";
    QTest::newRow("while a line above is selected") << 300 << LongMessage(300, 298) << "With open GUI";
    QTest::newRow("while a line is selected that changes") << 300 << LongMessage(300, 298) << "298";
    QTest::newRow("while everything is selected") << 300 << LongMessage(300, 298) << "everything";
}

void CMainWindow_ReaderTest::theScrollPositionStays()
{
    QFETCH(int, lines);
    QFETCH(QString, after);
    QFETCH(QString, selected);
    CMainWindow window;
    window.show();
    window.resize(500, 300);
    ShowMessage(window, LongMessage(lines));
    QScrollBar &bar = *Panel(window).verticalScrollBar();
    QCOMPARE(bar.value(), 0); // a long message is shown from its beginning
    if (!selected.isEmpty())
        Select(Panel(window), selected);
    QTRY_VERIFY(bar.maximum() > 10 * lines); // some of a long document is laid out later
    const int place = bar.maximum() / 2;
    bar.setValue(place);
    ShowMessage(window, after);
    QCOMPARE(bar.value(), place);
    QCoreApplication::processEvents(); // nor does it move when it is drawn
    QCOMPARE(bar.value(), place);
}

void CMainWindow_ReaderTest::theSelectionStaysWhereItsTextIsUnchanged_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("select");
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("selected"); // afterwards
    const QString first = u"Recording\nFile 1 of 4"_s;
    const QString second = u"Recording\nFile 2 of 4"_s;
    QTest::newRow("before the change") << first << "Recording" << second << "Recording";
    QTest::newRow("right before the change") << first << "File " << second << "File ";
    QTest::newRow("right behind the change") << first << " of 4" << second << " of 4";
    QTest::newRow("behind a change of another length") << first << "of 4"
                                                       << "Recording\nFile 100 of 4"
                                                       << "of 4";
    const QString tail = u'\n' + QString(1000, u'x');
    QTest::newRow("behind a change of another length, far before the end")
        << first + tail << "of 4" << u"Recording\nFile 100 of 4"_s + tail << "of 4";
    QTest::newRow("moved by a line that was put in") << first << "File 1"
                                                     << "Now\nRecording\nFile 1 of 4"
                                                     << "File 1";
    QTest::newRow("in the fixed part") << first << "Program status" << second << "Program status";
    QTest::newRow("the same content") << first << "File 1" << first << "File 1";
    QTest::newRow("around the change nothing stays selected") << first << "File 1 of" << second << "";
    QTest::newRow("all of it: nothing stays selected") << first << "everything" << second << "";
    QTest::newRow("the message is gone") << first << "Recording"
                                         << ""
                                         << "";
    QTest::newRow("nothing was selected") << first << "nothing" << second << "";
}

void CMainWindow_ReaderTest::theSelectionStaysWhereItsTextIsUnchanged()
{
    QFETCH(QString, before);
    QFETCH(QString, select);
    QFETCH(QString, after);
    QFETCH(QString, selected);
    for (const Direction direction : {Direction::Down, Direction::Up}) {
        CMainWindow window;
        window.show();
        ShowMessage(window, before);
        Select(Panel(window), select, direction);
        QCOMPARE(Panel(window).textCursor().hasSelection(), select != QLatin1String("nothing"));
        ShowMessage(window, after);
        const QTextCursor cursor = Panel(window).textCursor();
        QCOMPARE(cursor.selectedText(), selected);
        if (cursor.hasSelection())
            QCOMPARE(cursor.position() > cursor.anchor(), direction == Direction::Down);
    }
}

void CMainWindow_ReaderTest::theCaretStaysInItsPlace_data()
{
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("caretBehind"); // this text; empty: at the beginning
    QTest::addColumn<QString>("after");
    QTest::addColumn<QString>("textBehindCaret"); // the line's rest afterwards
    QTest::newRow("at the beginning") << "ready" << QString() << "recording"
                                      << "Program information";
    QTest::newRow("in a line that stays") << "ready"
                                          << "Program sta"
                                          << "recording"
                                          << "tus      : Stopped";
    QTest::newRow("right before the change") << "file 1 of 4"
                                             << "file "
                                             << "file 2 of 4"
                                             << "2 of 4";
    QTest::newRow("in the change") << "file 1111 of 4"
                                   << "file 11"
                                   << "file 2222 of 4"
                                   << "22 of 4";
    QTest::newRow("in a change that gets shorter") << "file 1111 of 4"
                                                   << "file 111"
                                                   << "file 2 of 4"
                                                   << " of 4";
    QTest::newRow("behind the change") << "file 1 of 4"
                                       << " of"
                                       << "file 100 of 4"
                                       << " 4";
    QTest::newRow("the message is gone") << "ready"
                                         << "read" << QString() << QString();
}

void CMainWindow_ReaderTest::theCaretStaysInItsPlace()
{
    QFETCH(QString, before);
    QFETCH(QString, caretBehind);
    QFETCH(QString, after);
    QFETCH(QString, textBehindCaret);
    CMainWindow window;
    QTextEdit &panel = Panel(window);
    QCOMPARE(panel.textCursor().position(), 0);
    ShowMessage(window, before);
    if (!caretBehind.isEmpty()) {
        QTextCursor caret = panel.document()->find(caretBehind, 0, QTextDocument::FindCaseSensitively);
        QVERIFY(!caret.isNull());
        caret.clearSelection(); // stands at its end
        panel.setTextCursor(caret);
    }
    ShowMessage(window, after);
    const QTextCursor caret = panel.textCursor();
    QVERIFY(!caret.hasSelection());
    QCOMPARE(caret.block().text().sliced(caret.positionInBlock()), textBehindCaret);
}

void CMainWindow_ReaderTest::whereASelectionIsClearedTheCaretStays()
{
    CMainWindow window;
    for (const Direction direction : {Direction::Down, Direction::Up}) {
        ShowMessage(window, u"File 1 of 4"_s);
        Select(Panel(window), u"File 1 of"_s, direction);
        const int caret = Panel(window).textCursor().position();
        ShowMessage(window, u"File 2 of 4"_s);
        QVERIFY(!Panel(window).textCursor().hasSelection());
        QCOMPARE(Panel(window).textCursor().position(),
                 std::min(caret, CaretBehind(Panel(window), u"File 2"_s)));
    }
}

void CMainWindow_ReaderTest::theKeyboardReadsAndSelects()
{
    CMainWindow window;
    window.show();
    QTextEdit &panel = Panel(window);
    QVERIFY(panel.textInteractionFlags().testFlag(Qt::TextSelectableByMouse)); // as before
    QTest::keyClick(&panel, Qt::Key_Down);
    QTest::keyClick(&panel, Qt::Key_Down);
    QCOMPARE(panel.textCursor().block().text().section(u' ', 0, 0), u"Start"_s);
    QTest::keyClick(&panel, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
    QCOMPARE(panel.textCursor().selectedText().trimmed(), u"Start"_s);
    const QString text = panel.toPlainText();
    QTest::keyClicks(&panel, u"x"_s);
    QTest::keyClick(&panel, Qt::Key_Delete);
    QCOMPARE(panel.toPlainText(), text); // it is only read
}

void CMainWindow_ReaderTest::whatSomebodyElseWroteIsWrittenOver_data()
{
    QTest::addColumn<QString>("written"); // in place of everything; "$" is what was there
    const QString much(100000, u'x');
    QTest::newRow("nothing") << QString();
    QTest::newRow("a word") << "something";
    QTest::newRow("much more") << much;
    QTest::newRow("much in front") << much + u'$';
    QTest::newRow("much behind") << u'$' + much;
    QTest::newRow("the same twice") << "$$";
}

void CMainWindow_ReaderTest::whatSomebodyElseWroteIsWrittenOver()
{
    QFETCH(QString, written);
    CMainWindow window;
    ShowMessage(window, u"ready"_s);
    const QString text = Panel(window).toPlainText();
    // As a screen reader may: that the panel is only read binds the keyboard and the mouse.
    QAccessibleInterface *const panel = QAccessible::queryAccessibleInterface(&Panel(window));
    panel->editableTextInterface()->replaceText(0, panel->textInterface()->characterCount(),
                                                written.replace(u'$', text));
    QVERIFY(Panel(window).toPlainText() != text);
    ShowMessage(window, u"ready"_s);
    QCOMPARE(Panel(window).toPlainText(), text);
}

void CMainWindow_ReaderTest::newColoursLeavePlaceAndSelection()
{
    CMainWindow window;
    window.show();
    window.resize(500, 300);
    ShowMessage(window, LongMessage(300));
    Select(Panel(window), u"Program status"_s);
    QScrollBar &bar = *Panel(window).verticalScrollBar();
    QTRY_VERIFY(bar.maximum() > 3000);
    bar.setValue(2000);
    QSignalSpy spy(Panel(window).document(), &QTextDocument::contentsChange);
    const auto backToTheDefault = qScopeGuard([] { QApplication::setPalette(QPalette()); });
    QApplication::setPalette(QPalette(Qt::yellow, Qt::black));
    QTRY_VERIFY(!spy.isEmpty());
    QCOMPARE(Panel(window).textCursor().selectedText(), u"Program status"_s);
    QCOMPARE(bar.value(), 2000);
    spy.clear();
    QApplication::setPalette(QPalette(Qt::yellow, Qt::darkBlue)); // the same colour of the text
    QTRY_COMPARE(Panel(window).palette().color(QPalette::Base),
                 QApplication::palette().color(QPalette::Base));
    QCOMPARE(spy.size(), 0);
}

void CMainWindow_ReaderTest::aLetterOfTwoUnitsIsWrittenWhole()
{
    // These have their first unit in common, and with the second pair the last one.
    const QStringList letters = {u"\U0001F600"_s, u"\U0001F601"_s, u"\U0001FA01"_s};
    CMainWindow window;
    ShowMessage(window, u"a%1b"_s.arg(letters.first()));
    QSignalSpy spy(Panel(window).document(), &QTextDocument::contentsChange);
    for (const QString &letter : {letters.at(1), letters.at(2)}) {
        ShowMessage(window, u"a%1b"_s.arg(letter));
        QVERIFY(Panel(window).toPlainText().contains(letter));
        QCOMPARE(LastChange(spy).Removed, 2);
        QCOMPARE(LastChange(spy).Added, 2);
    }
}

TARNVIK_TEST_MAIN(CMainWindow_ReaderTest, QApplication)

#include "CMainWindow_ReaderTest.moc"
