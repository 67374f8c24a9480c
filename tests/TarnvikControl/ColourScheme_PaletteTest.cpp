// SPDX-License-Identifier: MIT
// The colours where the platform has none for a light or a dark scheme.
#include "TarnvikControl/ColourScheme.h"

#include "tests/TarnvikControl/PaletteContrast.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <QStyle>
#include <QTest>
#include <QTextEdit>

using namespace Qt::StringLiterals;

using tests::Contrast;
using tests::RolePair;
using tests::TextPairs;
using tests::TooWeak;

Q_DECLARE_METATYPE(ColourScheme)

class ColourScheme_PaletteTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void lightAndDarkHaveTheirColours_data();
    void lightAndDarkHaveTheirColours();
    void selectedTextLinksAndTooltipsAreReadable_data();
    void selectedTextLinksAndTooltipsAreReadable();
    void disabledTextIsFainterThanTextButNotInvisible_data();
    void disabledTextIsFainterThanTextButNotInvisible();
    void followingTheSystemGivesTheStylesOwnPalette();
    void aWidgetThatExistsIsDrawnInTheNewColours();
};

void ColourScheme_PaletteTest::init()
{
    QVERIFY(QApplication::setStyle(u"Fusion"_s));
    SetColourScheme(ColourScheme::FollowSystem);
}

void ColourScheme_PaletteTest::lightAndDarkHaveTheirColours_data()
{
    QTest::addColumn<ColourScheme>("scheme");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("window");
    QTest::newRow("light") << ColourScheme::Light << QColor(0x000000U) << QColor(0xFFFFFFU)
                           << QColor(0xEFEFEFU);
    QTest::newRow("dark") << ColourScheme::Dark << QColor(0xF2F2F2U) << QColor(0x1E1F20U)
                          << QColor(0x2D2F31U);
}

void ColourScheme_PaletteTest::lightAndDarkHaveTheirColours()
{
    QFETCH(ColourScheme, scheme);
    QFETCH(QColor, text);
    QFETCH(QColor, base);
    QFETCH(QColor, window);
    SetColourScheme(scheme);
    const QPalette palette = QApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        QCOMPARE(palette.color(group, QPalette::Text), text);
        QCOMPARE(palette.color(group, QPalette::WindowText), text);
        QCOMPARE(palette.color(group, QPalette::ButtonText), text);
        QCOMPARE(palette.color(group, QPalette::Base), base);
        QCOMPARE(palette.color(group, QPalette::Window), window);
    }
}

void ColourScheme_PaletteTest::selectedTextLinksAndTooltipsAreReadable_data()
{
    QTest::addColumn<ColourScheme>("scheme");
    QTest::newRow("light") << ColourScheme::Light;
    QTest::newRow("dark") << ColourScheme::Dark;
}

void ColourScheme_PaletteTest::selectedTextLinksAndTooltipsAreReadable()
{
    QFETCH(ColourScheme, scheme);
    SetColourScheme(scheme);
    const QList<RolePair> pairs = {
        {QPalette::HighlightedText, QPalette::Highlight},
        {QPalette::Link, QPalette::Base},
        {QPalette::LinkVisited, QPalette::Base},
        {QPalette::ToolTipText, QPalette::ToolTipBase},
    };
    QCOMPARE(TooWeak(QApplication::palette(), pairs), QString());
}

void ColourScheme_PaletteTest::disabledTextIsFainterThanTextButNotInvisible_data()
{
    selectedTextLinksAndTooltipsAreReadable_data();
}

void ColourScheme_PaletteTest::disabledTextIsFainterThanTextButNotInvisible()
{
    QFETCH(ColourScheme, scheme);
    SetColourScheme(scheme);
    const QPalette palette = QApplication::palette();
    for (const RolePair &pair : TextPairs()) {
        const QColor background = palette.color(QPalette::Disabled, pair.Background);
        const double disabled = Contrast(palette.color(QPalette::Disabled, pair.Text), background);
        QVERIFY2(disabled < Contrast(palette.color(QPalette::Active, pair.Text), background),
                 qPrintable(QString::number(disabled)));
        QVERIFY2(disabled > 2.0, qPrintable(QString::number(disabled)));
    }
    // Selected it does not look like text that can be used either.
    QCOMPARE(palette.color(QPalette::Disabled, QPalette::HighlightedText),
             palette.color(QPalette::Disabled, QPalette::Text));
}

void ColourScheme_PaletteTest::followingTheSystemGivesTheStylesOwnPalette()
{
    SetColourScheme(ColourScheme::Dark);
    SetColourScheme(ColourScheme::FollowSystem);
    const QPalette own = QApplication::style()->standardPalette();
    const QPalette palette = QApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            const auto colorRole = static_cast<QPalette::ColorRole>(role);
            if (colorRole != QPalette::NoRole)
                QCOMPARE(palette.color(group, colorRole), own.color(group, colorRole));
        }
    }
}

void ColourScheme_PaletteTest::aWidgetThatExistsIsDrawnInTheNewColours()
{
    QTextEdit panel;
    panel.resize(200, 100);
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    const auto middle = [&panel] { return panel.grab().toImage().pixelColor(100, 50); };
    SetColourScheme(ColourScheme::Dark);
    QTRY_COMPARE(middle(), QColor(0x1E1F20U));
    SetColourScheme(ColourScheme::Light);
    QTRY_COMPARE(middle(), QColor(0xFFFFFFU));
}

TARNVIK_TEST_MAIN(ColourScheme_PaletteTest, QApplication)

#include "ColourScheme_PaletteTest.moc"
