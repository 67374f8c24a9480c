// SPDX-License-Identifier: MIT
// The whole program's alignment dialog with keyboard and mouse, from the menu to the written file; the tray;
// and requests to end while a dialog is open.
#include "tests/TarnvikControl/AlignmentDesktop.h"
#include "tests/TarnvikControl/Station.h"
#include "tests/TarnvikControl/TrayIcon.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tools/RecorderReport.h"

#include <QDir>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QPointer>
#include <QSettings>
#include <QUrl>
#include <QWidget>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

using tests::AirspyFile;
using tests::Day;
using tests::DesktopPath;
using tests::DialogWindow;
using tests::DriverPath;
using tests::ExportTitle;
using tests::FileTable;
using tests::ImportTitle;
using tests::OnlyWindow;
using tests::QuitTitle;
using tests::Station;
using tests::Title;
using tests::TrayIcon;
using tests::VirtualDesktop;

namespace {

/// A file manager's window: what is dragged from it are files.
class FileWindow : public QWidget
{
public:
    explicit FileWindow(const QString &file) : File(file)
    {
        setWindowTitle(u"Files"_s);
        setGeometry(20, 500, 120, 100);
    }
    /// True when the target has taken the files. Only an event loop lets it read their names.
    [[nodiscard]] bool dropped() const { return Dropped && Drag.isNull(); }

protected:
    void mouseMoveEvent(QMouseEvent *event) override
    {
        if (event->buttons() != Qt::LeftButton || Begun)
            return;
        Begun = true;
        auto *const mimeData = new QMimeData; // the drag owns it
        mimeData->setUrls({QUrl::fromLocalFile(File)});
        Drag = new QDrag(this); // deletes itself when the target has finished
        Drag->setMimeData(mimeData);
        Dropped = Drag->exec(Qt::CopyAction) == Qt::CopyAction;
    }

private:
    QString File;
    QPointer<QDrag> Drag;
    bool Begun = false;
    bool Dropped = false;
};

/// Keys for a window, which is awaited: one with this title, or the alignment dialog when it is empty.
struct Step
{
    QString Window;
    QStringList Keys;
};

} // namespace

class TarnvikControl_AlignmentTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup() { Report.reset(); }

    void fromTheMenuToTheWrittenFile();
    void theTrayHidesShowsAndQuits();
    void aRequestToEndIsObeyedWhileADialogIsOpen_data();
    void aRequestToEndIsObeyedWhileADialogIsOpen();

private:
    /// Writes a file for each of two drivers and remembers what is in them.
    bool writeTwoDrivers();

    QByteArray DriverBytes;
    QByteArray OtherDriverBytes;
    std::unique_ptr<tools::RecorderReport> Report;
};

void TarnvikControl_AlignmentTest::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(Title);
    QVERIFY(QDir().mkpath(DriverPath(QString())));
}

void TarnvikControl_AlignmentTest::init()
{
    Report = std::make_unique<tools::RecorderReport>();
    QSettings(u"Quillane"_s, Title).clear();
}

bool TarnvikControl_AlignmentTest::writeTwoDrivers()
{
    const QList<FileTable> tables = {{"0x1", Day("2024-01-01")}};
    const bool written = tests::WriteAlignmentFile(DriverPath(), SdrType::RtlSdr, tables) &&
                         tests::WriteAlignmentFile(DriverPath(AirspyFile), SdrType::AirSpy, tables);
    DriverBytes = tests::FileBytes(DriverPath());
    OtherDriverBytes = tests::FileBytes(DriverPath(AirspyFile));
    return written;
}

void TarnvikControl_AlignmentTest::fromTheMenuToTheWrittenFile()
{
    const QString target = DriverPath();
    const QString first = DesktopPath(u"first.ad"_s);
    const QString second = DesktopPath(u"second.ad"_s);
    const QList<FileTable> present = {
        {"0x1", Day("2024-01-01")}, {"0x2", Day("2024-01-02")}, {"0x3", Day("2024-01-03")}};
    QVERIFY(tests::WriteAlignmentFile(target, SdrType::RtlSdr, present));
    QVERIFY(tests::WriteAlignmentFile(first, SdrType::RtlSdr,
                                      {{"0x1", Day("2024-06-01")}, {"0x4", Day("2024-06-04")}}));
    QVERIFY(tests::WriteAlignmentFile(second, SdrType::RtlSdr, {{"0x2", Day("2024-06-02")}}));
    const QMap<QByteArray, QByteArray> before = tests::TableBytes(target);
    // 0x4 gets unchecked below. What was taken over stands at the end, in the order of the sources.
    const QByteArray expected = tests::HeaderChunk(SdrType::RtlSdr, 3) + before["0x3"] +
                                tests::TableBytes(first)["0x1"] + tests::TableBytes(second)["0x2"];

    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    // The menu "Alignment", entry "Show...".
    QVERIFY(VirtualDesktop::Press(OnlyWindow(Title), {u"Alt_L"_s, u"Right"_s, u"Down"_s, u"Return"_s}));
    QTRY_VERIFY(!DialogWindow().isEmpty());

    QVERIFY(tests::Import(u"first.ad"_s));
    FileWindow files(second);
    files.show();
    QVERIFY(QTest::qWaitForWindowExposed(&files));
    QVERIFY(VirtualDesktop::StartDragAndDrop(files.mapToGlobal(files.rect().center()),
                                             VirtualDesktop::geometry(DialogWindow()).center()));
    QTRY_VERIFY(files.dropped());
    files.hide();

    // The driver's line comes first, 0x4 last.
    QVERIFY(tests::PressIn({}, {u"End"_s, u"space"_s}));
    QVERIFY(tests::BeginToSave());
    QVERIFY(tests::AcceptProposedFile(true));
    QTRY_COMPARE(tests::FileBytes(target), expected);

    QVERIFY(VirtualDesktop::Press(DialogWindow(), {u"Escape"_s}));
    QTRY_VERIFY(DialogWindow().isEmpty());
    QVERIFY(Report->recorderListens());
    QCOMPARE(station.errorOutput(), QString());
}

void TarnvikControl_AlignmentTest::theTrayHidesShowsAndQuits()
{
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    QTRY_VERIFY(VirtualDesktop::geometry(OnlyWindow(u"panel"_s)).width() > 10); // with the icon
    QVERIFY(VirtualDesktop::Click(TrayIcon()));
    QTRY_VERIFY(VirtualDesktop::windows(Title).isEmpty());
    QVERIFY(tests::AwaitTrayClicks());
    QVERIFY(VirtualDesktop::Click(TrayIcon()));
    QTRY_VERIFY(station.shows());
    QVERIFY(tests::AwaitTrayClicks());
    QVERIFY(VirtualDesktop::Click(TrayIcon()));
    QTRY_VERIFY(VirtualDesktop::windows(Title).isEmpty());
    QVERIFY(Report->recorderListens());

    // "Quit" is the last entry of the icon's menu. The window is hidden.
    QVERIFY(VirtualDesktop::Click(TrayIcon(), 3));
    QTRY_VERIFY(!VirtualDesktop::openMenu().isEmpty());
    const QRect menu = VirtualDesktop::openMenu();
    QVERIFY(VirtualDesktop::Click({menu.center().x(), menu.bottom() - 10}));
    QTRY_VERIFY(station.shows(QuitTitle));
    QVERIFY(VirtualDesktop::Press(OnlyWindow(QuitTitle), {u"alt+y"_s}));
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"started"_s), 1);
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QCOMPARE(station.errorOutput(), QString());
}

void TarnvikControl_AlignmentTest::aRequestToEndIsObeyedWhileADialogIsOpen_data()
{
    QTest::addColumn<QList<Step>>("steps");
    QTest::addColumn<QString>("title"); // of the window that is open then; empty: the alignment dialog
    const Step show = {Title, {u"ctrl+s"_s}};
    const Step pressSave = {{}, {u"Return"_s}};
    const Step pressImport = {{}, {u"Tab"_s, u"Tab"_s, u"Tab"_s, u"space"_s}};
    const Step chooseDamagedFile = {ImportTitle,
                                    {u"ctrl+a"_s, u"d"_s, u"period"_s, u"a"_s, u"d"_s, u"Return"_s}};
    const QString firstQuestion = u"Update AirSpy alignment."_s;
    const QString secondQuestion = u"Update RTL-SDR alignment."_s;
    QTest::newRow("the alignment dialog") << QList<Step>{show} << QString();
    QTest::newRow("the dialog's file dialog") << QList<Step>{show, pressImport} << ImportTitle;
    QTest::newRow("the warning about a damaged file")
        << QList<Step>{show, pressImport, chooseDamagedFile} << u"Importing alignment data"_s;
    QTest::newRow("the question about saving without changes, for the first of two drivers")
        << QList<Step>{show, pressSave} << firstQuestion;
    QTest::newRow("the file dialog of saving, for the first of two drivers")
        << QList<Step>{show, pressSave, {firstQuestion, {u"alt+y"_s}}} << ExportTitle;
    QTest::newRow("the question about the second driver")
        << QList<Step>{show, pressSave, {firstQuestion, {u"alt+n"_s}}} << secondQuestion;
    QTest::newRow("the question about quitting") << QList<Step>{{Title, {u"ctrl+q"_s}}} << QuitTitle;
}

void TarnvikControl_AlignmentTest::aRequestToEndIsObeyedWhileADialogIsOpen()
{
    QFETCH(QList<Step>, steps);
    QFETCH(QString, title);
    QVERIFY(writeTwoDrivers());
    QVERIFY(tests::WriteFileBytes(DesktopPath(u"d.ad"_s), "rubbish"));
    Station station;
    station.Start();
    QTRY_VERIFY_WITH_TIMEOUT(Report->recorderListens() && station.shows(), tests::Patience);
    for (const Step &step : std::as_const(steps)) {
        QVERIFY2(tests::PressIn(step.Window, step.Keys), qPrintable(step.Window));
    }
    QTRY_VERIFY(!(title.isEmpty() ? DialogWindow() : OnlyWindow(title)).isEmpty());
    QVERIFY(station.Signal(SIGTERM));
    QVERIFY(station.endedWith(0));
    QCOMPARE(Report->count(u"quit-request"_s), 1);
    QCOMPARE(Report->count(u"terminate-request"_s), 0);
    QVERIFY(!tools::IsAlive(Report->lastProcess(u"started"_s)));
    QCOMPARE(station.errorOutput(), QString());
    QCOMPARE(tests::FileBytes(DriverPath()), DriverBytes);
    QCOMPARE(tests::FileBytes(DriverPath(AirspyFile)), OtherDriverBytes);
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_AlignmentTest)
#include "TarnvikControl_AlignmentTest.moc"
