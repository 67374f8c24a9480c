// SPDX-License-Identifier: MIT
// The whole program as somebody meets it who hears it: what has a name, what is said of it, and the way from
// the menu to the written file and to the end by what a screen reader can do.
#include "Common_Files/RecorderNames.h"
#include "tests/Common_Files/StatusFiles.h"
#include "tests/TarnvikControl/AlignmentDesktop.h"
#include "tests/TarnvikControl/Station.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tests/support/ScreenReader.h"
#include "tools/RecorderReport.h"

#include <QDir>
#include <QLibraryInfo>
#include <QRegularExpression>
#include <QSettings>
#include <QTranslator>
#include <QVersionNumber>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

using tests::Accessible;
using tests::Day;
using tests::DesktopPath;
using tests::DriverPath;
using tests::ScreenReader;
using tests::Station;
using tests::Title;
using tests::VirtualDesktop;

namespace {

const QString Button = QStringLiteral("push button");
const QString Dialog = QStringLiteral("dialog");
const QString Frame = QStringLiteral("frame");
const QString MenuItem = QStringLiteral("menu item");
const QString Text = QStringLiteral("text");
const QString TreeItem = QStringLiteral("tree item");

/// The texts of the program and of Qt in one language, without the marks of their keys.
class Texts
{
public:
    Texts(const QString &folder, const QString &language)
        : Loaded(Program.load(u"TarnvikControl_"_s + language, folder) &&
                 OfQt.load(u"qt_"_s + language, folder))
    {}

    [[nodiscard]] bool isLoaded() const { return Loaded; }
    [[nodiscard]] QString of(const char *context, const char *source) const
    {
        QString text = Program.translate(context, source);
        if (text.isEmpty())
            text = OfQt.translate(context, source);
        if (text.isEmpty())
            text = QString::fromUtf8(source);
        return text.remove(u'&');
    }

private:
    QTranslator Program;
    QTranslator OfQt;
    bool Loaded;
};

/// What is shown in a window and has no name, by its role; layout, and cells that are empty, leave nothing to
/// name.
QStringList Nameless(const Accessible &window)
{
    static const QStringList needNone = {u"filler"_s, u"scroll bar"_s, u"menu bar"_s, TreeItem};
    QStringList nameless;
    if (window.name().isEmpty())
        nameless.append(window.role());
    const QList<Accessible> shown = window.shownDescendants();
    for (const Accessible &control : shown) {
        const QString role = control.role();
        if (role.isEmpty() || (control.name().isEmpty() && !needNone.contains(role)))
            nameless.append(role);
    }
    return nameless;
}

/// What the program printed, without Qt's remarks on questions about what has just vanished, and on texts of
/// its file dialog as that vanishes: without that dialog there is none.
QString ErrorOutput(Station &station)
{
    static const QRegularExpression remark(
        u"^TarnvikControl [\\d:]+: (WARNING Qt AtSpiAdaptor: Accessible invalid|"
        "Could not find accessible on path|Received text event for invalid interface)[^\\n]*\\n"_s,
        QRegularExpression::MultilineOption);
    return station.errorOutput().remove(remark);
}

/// From Qt 6.8 on the check mark of a line is told as its state, before as a part of its name.
bool StateIsTold()
{
    return QLibraryInfo::version() >= QVersionNumber(6, 8);
}

QString LineName(const Texts &texts, const QString &hardwareId, bool isChecked)
{
    if (StateIsTold())
        return hardwareId;
    return texts.of("QDlgAlignmentCfg", isChecked ? "%1, checked" : "%1, not checked").arg(hardwareId);
}

} // namespace

class TarnvikControl_ScreenReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { Report.reset(); }

    void theWholeWayIsGoneByWhatAScreenReaderCanDo_data();
    void theWholeWayIsGoneByWhatAScreenReaderCanDo();
    void whatChangesIsTold();

private:
    /// The main window of a program that has made itself known; null when that takes too long.
    [[nodiscard]] Accessible AwaitWindow(const Station &station) const;

    std::unique_ptr<tools::RecorderReport> Report;
    std::unique_ptr<ScreenReader> Reader;
};

void TarnvikControl_ScreenReaderTest::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(Title);
    QVERIFY(QDir().mkpath(DriverPath(QString())));
    Reader = std::make_unique<ScreenReader>();
    QCOMPARE(Reader->error(), QString());
}

void TarnvikControl_ScreenReaderTest::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    Report->SetOption("MESSAGE", "ready");
    QSettings(u"Quillane"_s, Title).clear();
}

Accessible TarnvikControl_ScreenReaderTest::AwaitWindow(const Station &station) const
{
    const auto window = [&station] {
        return ScreenReader::program(station.Process.processId()).find(Frame, Title);
    };
    return QTest::qWaitFor([&] { return window().isShowing(); }, tests::Patience) ? window() : Accessible();
}

void TarnvikControl_ScreenReaderTest::theWholeWayIsGoneByWhatAScreenReaderCanDo_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("language");
    QTest::newRow("English") << "C"
                             << "en";
    QTest::newRow("German") << "de_DE.UTF-8"
                            << "de";
}

void TarnvikControl_ScreenReaderTest::theWholeWayIsGoneByWhatAScreenReaderCanDo()
{
    QFETCH(QString, locale);
    QFETCH(QString, language);
    const QString driverFile = DriverPath();
    const QString imported = DesktopPath(u"new.ad"_s);
    QVERIFY(tests::WriteAlignmentFile(driverFile, SdrType::RtlSdr, {{"0x1", Day("2024-01-01")}}));
    QVERIFY(tests::WriteAlignmentFile(imported, SdrType::RtlSdr,
                                      {{"0x1", Day("2024-06-01")}, {"0x4", Day("2024-06-04")}}));
    const QByteArray old = tests::TableBytes(driverFile)["0x1"];
    const QByteArray added = tests::TableBytes(imported)["0x4"];

    Station station;
    QVERIFY(tests::PutTranslationsBeside(station));
    const Texts texts(station.path(u"languages"_s), language);
    QVERIFY(texts.isLoaded());
    station.Process.setProcessEnvironment(tests::SystemIn(locale));
    station.Start();

    const Accessible window = AwaitWindow(station);
    const Accessible program = ScreenReader::program(station.Process.processId());
    // A button of any window, or the one of a dialog.
    const auto press = [&program](const QString &button, const QString &dialog = QString()) {
        const auto found = [&] {
            return (dialog.isEmpty() ? program : program.find(Dialog, dialog)).find(Button, button);
        };
        return QTest::qWaitFor([&] { return found().isShowing(); }) && found().Act();
    };
    QCOMPARE(Nameless(window), QStringList());
    QVERIFY(window.find(MenuItem, QString()).isNull()); // in the closed menus, too
    const Accessible panel = window.find(Text, texts.of("CMainWindow", "Program information"));
    QTRY_VERIFY(panel.text().contains(texts.of("CMainWindow", "Running")));
    QTRY_VERIFY(panel.text().endsWith(u": ready\n"_s));

    QVERIFY(window.find(MenuItem, texts.of("CMainWindow", "Show...")).Act());
    const QString dialogName = texts.of("QDlgAlignmentCfg", "Alignment data for SDR:");
    QTRY_VERIFY(program.find(Dialog, dialogName).isShowing());
    const Accessible dialog = program.find(Dialog, dialogName);
    QCOMPARE(Nameless(dialog), QStringList());
    QVERIFY(dialog.find(TreeItem, u"RTL-SDR"_s).isExpanded());
    QVERIFY(!dialog.find(TreeItem, u"0x1"_s).isExpanded());

    QVERIFY(press(texts.of("QDlgAlignmentCfg", "Import...")));
    const QString importTitle = texts.of("QDlgAlignmentCfg", "Choose alignment file for importing");
    const QString fileField = texts.of("QFileDialog", "File &name:");
    QTRY_VERIFY(program.find(Dialog, importTitle).find(Text, fileField).SetText(imported));
    QVERIFY(press(texts.of("QFileDialog", "&Open"), importTitle));
    QTRY_VERIFY(program.find(Dialog, importTitle).isNull());

    // The file has an update of 0x1, and 0x4 is new. The update is not wanted. Qt's own action to toggle a
    // line meets another one, so this is done with the keyboard, which stands in the tree.
    const auto line = [&](const char *hardwareId, bool isChecked) {
        return dialog.find(TreeItem, LineName(texts, QString::fromLatin1(hardwareId), isChecked));
    };
    QTRY_VERIFY(line("0x1", true).isChecked());
    QVERIFY(line("0x4", true).isChecked());
    // "Home" first: without a current line any key only chooses the first.
    QVERIFY(VirtualDesktop::Press(tests::DialogWindow(), {u"Home"_s, u"End"_s, u"Up"_s}));
    QTRY_COMPARE(dialog.focused().name(), LineName(texts, u"0x1"_s, true));
    Reader->Forget();
    QVERIFY(VirtualDesktop::Press(tests::DialogWindow(), {u"space"_s}));
    QTRY_COMPARE(dialog.focused().name(), LineName(texts, u"0x1"_s, false));
    QTRY_VERIFY(!line("0x1", false).isChecked());
    if (!StateIsTold())
        QTRY_COMPARE(Reader->changedNames(), QStringList{LineName(texts, u"0x1"_s, false)});

    QVERIFY(press(texts.of("QDlgAlignmentCfg", "Save...")));
    const QString saveTitle = texts.of("QDlgAlignmentCfg", "Choose alignment file for exporting");
    const QString yes = texts.of("QPlatformTheme", "&Yes");
    QVERIFY(press(texts.of("QFileDialog", "&Save"), saveTitle));
    QVERIFY(press(yes)); // the driver's own file is replaced
    QTRY_VERIFY(program.find(Dialog, saveTitle).isNull());
    QTRY_COMPARE(tests::TableBytes(driverFile), (QMap<QByteArray, QByteArray>{{"0x1", old}, {"0x4", added}}));
    QVERIFY(press(texts.of("QDlgAlignmentCfg", "Quit")));
    QTRY_VERIFY(!program.find(Dialog, dialogName).isShowing());

    QVERIFY(window.find(MenuItem, texts.of("CMainWindow", "Quit")).Act());
    const QString question = texts.of("CMainWindow", "Do you want also to stop the running record?");
    QTRY_VERIFY(!program.find(u"label"_s, question).isNull());
    QVERIFY(press(yes));
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(ErrorOutput(station), QString());
}

void TarnvikControl_ScreenReaderTest::whatChangesIsTold()
{
    Report->SetOption("INTERVAL_MS", "0");
    Station station;
    station.Start();
    const Accessible panel = AwaitWindow(station).find(Text, u"Program information"_s);
    QTRY_VERIFY(panel.text().contains(u": Running\n"_s));
    quint32 sequenceNr = 1;
    const auto panelShows = [&](const QByteArray &message, const QString &shown) {
        ++sequenceNr;
        return tests::Rewrite(RecorderStatusFile(), tests::StatusText(sequenceNr, message)) &&
               QTest::qWaitFor([&] { return panel.text().endsWith(shown); });
    };
    const QString indent = u'\n' + QString(22, u' ');
    QVERIFY(panelShows("one\\ntwo\\nthree", u"three\n"_s));
    Reader->Forget();
    QVERIFY(panelShows("four\\nfive\\nsix\\nseven",
                       u": four"_s + indent + u"five"_s + indent + u"six"_s + indent + u"seven\n"_s));
    // All of it was told before the panel answered with the new text.
    QCoreApplication::processEvents();
    QVERIFY(!Reader->events().isEmpty());
    QVERIFY2(Reader->events().size() <= 8, qPrintable(Reader->events().join(u' ')));

    QVERIFY(tools::KillProcess(Report->lastProcess(u"started"_s)));
    QTRY_COMPARE(Report->count(u"started"_s), 2);
    if (QLibraryInfo::version() >= QVersionNumber(6, 8))
        QTRY_COMPARE(Reader->announcements(), QStringList{u"TarnvikRecord: Stopped"_s});
    QVERIFY(station.Signal(SIGTERM));
    QVERIFY(station.endedWith(0));
    QCOMPARE(station.errorOutput(), QString()); // nothing that we show makes Qt complain
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_ScreenReaderTest)

#include "TarnvikControl_ScreenReaderTest.moc"
