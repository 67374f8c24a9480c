// SPDX-License-Identifier: MIT
// Windows has colours of its own for a light and a dark scheme.
#include "TarnvikControl/ColourScheme.h"

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPalette>
#include <QStyleHints>
#include <QTest>

using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(ColourScheme)

class ColourSchemeWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void thePlatformTakesTheScheme_data();
    void thePlatformTakesTheScheme();
};

void ColourSchemeWindowsTest::init()
{
    QVERIFY(QApplication::setStyle(u"Fusion"_s));
    SetColourScheme(ColourScheme::FollowSystem);
}

void ColourSchemeWindowsTest::thePlatformTakesTheScheme_data()
{
    QTest::addColumn<ColourScheme>("scheme");
    QTest::addColumn<Qt::ColorScheme>("taken");
    QTest::newRow("light") << ColourScheme::Light << Qt::ColorScheme::Light;
    QTest::newRow("dark") << ColourScheme::Dark << Qt::ColorScheme::Dark;
}

void ColourSchemeWindowsTest::thePlatformTakesTheScheme()
{
    QFETCH(ColourScheme, scheme);
    QFETCH(Qt::ColorScheme, taken);
    SetColourScheme(scheme);
    QCOMPARE(QGuiApplication::styleHints()->colorScheme(), taken);
    QCOMPARE(QApplication::palette().resolveMask(), QPalette::ResolveMask(0)); // it needs no palette of ours
}

TARNVIK_TEST_MAIN(ColourSchemeWindowsTest, QApplication)

#include "ColourSchemeWindowsTest.moc"
