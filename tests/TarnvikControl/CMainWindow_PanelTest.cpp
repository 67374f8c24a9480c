// SPDX-License-Identifier: MIT
// What the panel says of program and recorder.
#include "TarnvikControl/CMainWindow.h"

#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/TarnvikControl/MenuEntries.h"
#include "tests/support/TestMain.h"
#include "tools/RecorderReport.h"

#include <QAccessible>
#include <QApplication>
#include <QDebug>
#include <QScopeGuard>
#include <QTextBlock>
#include <QTextEdit>

using namespace Qt::StringLiterals;

using tests::Panel;
using tests::ShowMessage;
using tests::StoredSettings;

namespace {

/// A stretch of the panel's text in one format.
struct Piece
{
    QString Text;
    bool Bold = false;
    bool Underlined = false;
    QColor Colour;

    bool operator==(const Piece &other) const = default;
};

QDebug operator<<(QDebug debug, const Piece &piece)
{
    return debug.nospace() << piece.Text << (piece.Bold ? " bold" : "")
                           << (piece.Underlined ? " underlined" : "") << " " << piece.Colour.name();
}

/// The panel's text in pieces of one format each; line breaks are "\n".
QList<Piece> PiecesOf(const QTextDocument &document)
{
    QList<Piece> pieces;
    for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
        if (block.blockNumber() > 0 && !pieces.isEmpty())
            pieces.last().Text += u'\n';
        for (auto it = block.begin(); !it.atEnd(); ++it) {
            const QTextCharFormat format = it.fragment().charFormat();
            Piece piece{it.fragment().text(), format.fontWeight() == QFont::Bold, format.fontUnderline(),
                        format.foreground().color()};
            const bool sameFormat = !pieces.isEmpty() && pieces.last().Bold == piece.Bold &&
                                    pieces.last().Underlined == piece.Underlined &&
                                    pieces.last().Colour == piece.Colour;
            if (sameFormat)
                pieces.last().Text += piece.Text;
            else
                pieces.append(piece);
        }
    }
    return pieces;
}

const QString PanelStart = u"Program information\n\nStart               : With open GUI\n\n"
                           "TarnvikRecord\n\nProgram status      : "_s;

} // namespace

class CMainWindow_PanelTest : public tests::MainWindowFixture
{
    Q_OBJECT

private slots:
    void thePanelReads_data();
    void thePanelReads();
    void thePanelIsColouredAndWeighted_data();
    void thePanelIsColouredAndWeighted();
    void thePanelFollowsNewColoursAtOnce_data();
    void thePanelFollowsNewColoursAtOnce();
    void thePanelUsesAFixedPitchFontAndIsReadOnly();
    void screenReadersFindThePanel();
    void theRunningRecorderAndItsMessageAreShown();
    void aKilledRecorderIsShownAsStoppedAndRunningAgain();
};

void CMainWindow_PanelTest::thePanelReads_data()
{
    QTest::addColumn<bool>("startHidden");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("expected");
    const QString stopped = PanelStart + u"Stopped\n"_s;
    const QString label = u"Last message        : "_s;
    QTest::newRow("stopped with the message ready") << false << "ready" << stopped + label + "ready\n";
    QTest::newRow("an empty message leaves out the line") << false << "" << stopped;
    QTest::newRow("a message made only of tags leaves out the line") << false << "<GET>" << stopped;
    QTest::newRow("tags known and unknown are removed")
        << false << "<INFO>Started <FOO>now <ERROR>Device lost"
        << stopped + label + "Started now Device lost\n";
    QTest::newRow("following lines are indented by 22 blanks")
        << false << "one\ntwo\nthree"
        << stopped + label + "one\n" + QString(22, u' ') + "two\n" + QString(22, u' ') + "three\n";
    QTest::newRow("a line break at the end is kept") << false << "one\n"
                                                     << stopped + label + "one\n" + QString(22, u' ') + "\n";
    QTest::newRow("placeholders and markup are plain text")
        << false << "100 %1 %2 &amp; > <b" << stopped + label + "100 %1 %2 &amp; > <b\n";
    QTest::newRow("hidden start")
        << true << "ready"
        << QString(stopped + label + "ready\n").replace("With open GUI", "Hide GUI into tray");
}

void CMainWindow_PanelTest::thePanelReads()
{
    QFETCH(bool, startHidden);
    QFETCH(QString, message);
    QFETCH(QString, expected);
    StoredSettings().setValue(u"StartHidden"_s, startHidden);
    CMainWindow window; // the recorder's start waits for the event loop
    ShowMessage(window, message);
    QCOMPARE(Panel(window).toPlainText(), expected);
}

void CMainWindow_PanelTest::thePanelIsColouredAndWeighted_data()
{
    QTest::addColumn<int>("guiStyle");
    QTest::addColumn<bool>("running");
    QTest::addColumn<QColor>("stateColour");
    QTest::newRow("light and running is dark green") << 1 << true << QColor(Qt::darkGreen);
    QTest::newRow("light and stopped is red") << 1 << false << QColor(Qt::red);
    QTest::newRow("dark and running is green") << 2 << true << QColor(Qt::green);
    QTest::newRow("dark and stopped is red") << 2 << false << QColor(Qt::red);
}

void CMainWindow_PanelTest::thePanelIsColouredAndWeighted()
{
    QFETCH(int, guiStyle);
    QFETCH(bool, running);
    QFETCH(QColor, stateColour);
    StoredSettings().setValue(u"GuiStyle"_s, guiStyle);
    CMainWindow window;
    if (running)
        QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    ShowMessage(window, u"ready"_s);
    const QColor text = QApplication::palette().color(QPalette::Text);
    QCOMPARE(text == QColor(Qt::black), guiStyle == 1);
    const QList<Piece> expected = {
        {u"Program information"_s, true, true, text},
        {u"\n\n"_s, false, false, text},
        {u"Start"_s, true, false, text},
        {u"               : With open GUI\n\n"_s, false, false, text},
        {u"TarnvikRecord"_s, true, true, text},
        {u"\n\n"_s, false, false, text},
        {u"Program status"_s, true, false, text},
        {u"      : "_s, false, false, text},
        {running ? u"Running"_s : u"Stopped"_s, true, false, stateColour},
        {u"\n"_s, false, false, text},
        {u"Last message"_s, true, false, text},
        {u"        : ready\n"_s, false, false, text},
    };
    // A line break has no format of its own to be seen, so breaks are compared with the piece before them.
    QList<Piece> joined;
    for (const Piece &piece : expected) {
        if (QString(piece.Text).remove(u'\n').isEmpty())
            joined.last().Text += piece.Text;
        else
            joined.append(piece);
    }
    QCOMPARE(PiecesOf(*Panel(window).document()), joined);
}

void CMainWindow_PanelTest::thePanelFollowsNewColoursAtOnce_data()
{
    QTest::addColumn<QString>("how");
    QTest::newRow("of the system") << "";
    QTest::newRow("of a style that is chosen") << "View in dark Fusion style";
}

void CMainWindow_PanelTest::thePanelFollowsNewColoursAtOnce()
{
    QFETCH(QString, how);
    StoredSettings().setValue(u"GuiStyle"_s, 1);
    CMainWindow window;
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    const QList<Piece> before = PiecesOf(*Panel(window).document());
    const auto backToTheDefault = qScopeGuard([] { QApplication::setPalette(QPalette()); });
    if (how.isEmpty())
        QApplication::setPalette(QPalette(Qt::yellow, Qt::black)); // a light text on dark, as the system's
    else
        tests::MenuEntry(window, how)->trigger();
    const QColor text = QApplication::palette().color(QPalette::Text);
    QVERIFY(text.lightness() > 100);
    QList<Piece> expected = before;
    for (Piece &piece : expected)
        piece.Colour = piece.Colour == QColor(Qt::darkGreen) ? QColor(Qt::green) : text;
    QTRY_COMPARE(PiecesOf(*Panel(window).document()), expected);
}

void CMainWindow_PanelTest::thePanelUsesAFixedPitchFontAndIsReadOnly()
{
    CMainWindow window;
    const QTextEdit &panel = Panel(window);
    QVERIFY(panel.isReadOnly());
    QCOMPARE(window.centralWidget(), &panel);
    QVERIFY(panel.font().fixedPitch());
    QCOMPARE(panel.font().styleHint(), QFont::Monospace);
    const bool hasConsolas = QFontInfo(QFont(u"Consolas"_s)).exactMatch();
    QCOMPARE(panel.font().family(), hasConsolas ? u"Consolas"_s : u"monospace"_s);
    QCOMPARE(panel.document()->defaultFont(), panel.font()); // in which its text is drawn
}

void CMainWindow_PanelTest::screenReadersFindThePanel()
{
    CMainWindow window;
    ShowMessage(window, u"ready"_s);
    QAccessibleInterface *const panel = QAccessible::queryAccessibleInterface(window.centralWidget());
    QCOMPARE(panel->text(QAccessible::Name), u"Program information"_s);
    QVERIFY(panel->state().readOnly);
    QAccessibleTextInterface *const text = panel->textInterface();
    QVERIFY(text);
    QVERIFY(text->text(0, text->characterCount()).contains(u"ready"_s));
}

void CMainWindow_PanelTest::theRunningRecorderAndItsMessageAreShown()
{
    Report->SetOption("INTERVAL_MS", "100");
    Report->SetOption("MESSAGE", "<WORK>Recording 162.400 MHz\n<INFO>second line");
    CMainWindow window;
    QVERIFY(Panel(window).toPlainText().startsWith(PanelStart + u"Stopped\n"_s));
    QTRY_COMPARE(Panel(window).toPlainText(),
                 PanelStart + u"Running\nLast message        : Recording 162.400 MHz\n"_s +
                     QString(22, u' ') + u"second line\n"_s);
}

void CMainWindow_PanelTest::aKilledRecorderIsShownAsStoppedAndRunningAgain()
{
    CMainWindow window;
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    QTRY_COMPARE(Report->count(u"started"_s), 1);
    bool stoppedShown = false;
    connect(Panel(window).document(), &QTextDocument::contentsChanged, this,
            [&] { stoppedShown = stoppedShown || Panel(window).toPlainText().contains(u"Stopped"_s); });
    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    QTRY_VERIFY(stoppedShown);
    QTRY_VERIFY(Panel(window).toPlainText().contains(u"Running"_s));
    QTRY_COMPARE(Report->count(u"started"_s), 2);
}

TARNVIK_TEST_MAIN(CMainWindow_PanelTest, QApplication)

#include "CMainWindow_PanelTest.moc"
