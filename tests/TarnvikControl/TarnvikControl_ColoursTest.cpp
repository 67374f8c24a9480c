// SPDX-License-Identifier: MIT
// The whole program on desktops that have chosen their colours, high-contrast ones among them.
#include "tests/TarnvikControl/Station.h"
#include "tests/support/DesktopTestMain.h"
#include "tests/support/Patience.h"
#include "tools/RecorderReport.h"

#include <QColor>
#include <QImage>
#include <QSettings>
#include <QTemporaryDir>

#include <csignal>

using namespace Qt::StringLiterals;

using tests::OnlyWindow;
using tests::Station;
using tests::VirtualDesktop;

namespace {

/// The program's window as the desktop shows it; empty when there is none.
QImage WindowPicture()
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(u"desktop.png"_s);
    const QRect window = VirtualDesktop::geometry(OnlyWindow(tests::Title));
    return !window.isEmpty() && VirtualDesktop::SavePicture(file) ? QImage(file).copy(window) : QImage();
}

/// True when one of the picture's points has exactly this colour.
bool Contains(const QImage &picture, const QColor &colour)
{
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            if (picture.pixelColor(x, y) == colour)
                return true;
        }
    }
    return false;
}

} // namespace

class TarnvikControl_ColoursTest : public QObject
{
    Q_OBJECT

private slots:
    void theDefaultStyleTakesTheDesktopsColours_data();
    void theDefaultStyleTakesTheDesktopsColours();
};

void TarnvikControl_ColoursTest::theDefaultStyleTakesTheDesktopsColours_data()
{
    QTest::addColumn<int>("style");          // the stored one
    QTest::addColumn<QString>("background"); // the desktop's
    QTest::addColumn<QString>("text");
    QTest::addColumn<QColor>("shown");
    QTest::addColumn<QColor>("running");
    const QColor darkGreen(Qt::darkGreen);
    const QColor green(Qt::green);
    QTest::newRow("white on black") << 0 << "0,0,0"
                                    << "255,255,255" << QColor(Qt::black) << green;
    QTest::newRow("yellow on black") << 0 << "0,0,0"
                                     << "255,255,0" << QColor(Qt::black) << green;
    QTest::newRow("black on pale yellow") << 0 << "255,255,225"
                                          << "0,0,0" << QColor(255, 255, 225) << darkGreen;
    QTest::newRow("light Fusion on a black desktop") << 1 << "0,0,0"
                                                     << "255,255,255" << QColor(Qt::white) << darkGreen;
}

void TarnvikControl_ColoursTest::theDefaultStyleTakesTheDesktopsColours()
{
    QFETCH(int, style);
    QFETCH(QString, background);
    QFETCH(QString, text);
    QFETCH(QColor, shown);
    QFETCH(QColor, running);
    const tools::RecorderReport report;
    const QTemporaryDir desktop;
    QSettings colours(desktop.filePath(u"kdeglobals"_s), QSettings::IniFormat);
    for (const char *area : {"Window", "View", "Button"}) {
        colours.setValue(u"Colors:%1/BackgroundNormal"_s.arg(QLatin1String(area)), background.split(u','));
        colours.setValue(u"Colors:%1/ForegroundNormal"_s.arg(QLatin1String(area)), text.split(u','));
    }
    colours.sync();
    QSettings(u"Quillane"_s, tests::Title).setValue(u"GuiStyle"_s, style);

    Station station;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_CURRENT_DESKTOP"_s, u"KDE"_s);
    environment.insert(u"KDE_SESSION_VERSION"_s, u"5"_s);
    environment.insert(u"XDG_CONFIG_DIRS"_s, desktop.path());
    station.Process.setProcessEnvironment(environment);
    station.Start();
    QImage picture;
    const auto runningShown = [&] {
        picture = WindowPicture();
        return Contains(picture, running);
    };
    QTRY_VERIFY_WITH_TIMEOUT(runningShown(), tests::Patience);
    // Right of the text and below it the panel is empty.
    QCOMPARE(picture.pixelColor(picture.width() - 30, picture.height() - 30), shown);
    QVERIFY(station.Signal(SIGTERM));
    QVERIFY(station.endedWith(0));
}

TARNVIK_DESKTOP_TEST_MAIN(TarnvikControl_ColoursTest)

#include "TarnvikControl_ColoursTest.moc"
