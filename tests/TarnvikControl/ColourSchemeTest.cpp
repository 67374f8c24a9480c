// SPDX-License-Identifier: MIT
#include "TarnvikControl/ColourScheme.h"

#include "tests/support/TestMain.h"

#include <QApplication>
#include <QImage>
#include <QPalette>
#include <QStyle>
#include <QStyleHints>
#include <QTest>
#include <QTextEdit>

#include <algorithm>
#include <cmath>

Q_DECLARE_METATYPE(ColourScheme)

namespace {

constexpr double LowestContrast = 7.0; // WCAG 2, level AAA

/// Relative luminance of WCAG 2 for sRGB colours: 0 for black, 1 for white.
double RelativeLuminance(const QColor &colour)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

/// Contrast ratio of WCAG 2: 1 for equal colours to 21 for black on white.
double Contrast(const QColor &one, const QColor &other)
{
    const double a = RelativeLuminance(one);
    const double b = RelativeLuminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

struct RolePair
{
    QPalette::ColorRole Text;
    QPalette::ColorRole Background;
};

/// The first pair whose contrast is too low; nothing when there is none.
QString TooWeak(const QPalette &palette, const QList<RolePair> &pairs)
{
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        for (const RolePair &pair : pairs) {
            const QColor text = palette.color(group, pair.Text);
            const QColor background = palette.color(group, pair.Background);
            if (Contrast(text, background) < LowestContrast)
                return QStringLiteral("role %1 on role %2: %3 on %4 has %5")
                    .arg(pair.Text)
                    .arg(pair.Background)
                    .arg(text.name(), background.name())
                    .arg(Contrast(text, background));
        }
    }
    return QString();
}

const QList<RolePair> TextPairs = {
    {QPalette::WindowText, QPalette::Window},
    {QPalette::Text, QPalette::Base},
    {QPalette::Text, QPalette::AlternateBase},
    {QPalette::ButtonText, QPalette::Button},
};

} // namespace

class ColourSchemeTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theContrastFormulaKnowsItsReferenceValues();
    void textIsReadable_data();
    void textIsReadable();
    void theStyleStaysFusion_data();
    void theStyleStaysFusion();
#ifdef Q_OS_WIN // there the colours are the platform's and the style's own
    void thePlatformTakesTheScheme_data();
    void thePlatformTakesTheScheme();
#else
    void lightAndDarkHaveTheirColours_data();
    void lightAndDarkHaveTheirColours();
    void selectedTextLinksAndTooltipsAreReadable_data();
    void selectedTextLinksAndTooltipsAreReadable();
    void disabledTextIsFainterThanTextButNotInvisible_data();
    void disabledTextIsFainterThanTextButNotInvisible();
    void followingTheSystemGivesTheStylesOwnPalette();
    void aWidgetThatExistsIsDrawnInTheNewColours();
#endif
};

void ColourSchemeTest::init()
{
    QVERIFY(QApplication::setStyle(QStringLiteral("Fusion")));
    SetColourScheme(ColourScheme::FollowSystem);
}

void ColourSchemeTest::theContrastFormulaKnowsItsReferenceValues()
{
    QCOMPARE(Contrast(Qt::white, Qt::black), 21.0);
    QCOMPARE(Contrast(Qt::red, Qt::red), 1.0);
    // The lightest grey that has 4.5:1 on white is #767676.
    QVERIFY(Contrast(QColor(0x767676U), Qt::white) >= 4.5);
    QVERIFY(Contrast(QColor(0x777777U), Qt::white) < 4.5);
}

void ColourSchemeTest::textIsReadable_data()
{
    QTest::addColumn<ColourScheme>("scheme");
    QTest::newRow("follow the system") << ColourScheme::FollowSystem;
    QTest::newRow("light") << ColourScheme::Light;
    QTest::newRow("dark") << ColourScheme::Dark;
}

void ColourSchemeTest::textIsReadable()
{
    QFETCH(ColourScheme, scheme);
    SetColourScheme(scheme);
    QCOMPARE(TooWeak(QApplication::palette(), TextPairs), QString());
}

void ColourSchemeTest::theStyleStaysFusion_data()
{
    textIsReadable_data();
}

void ColourSchemeTest::theStyleStaysFusion()
{
    QFETCH(ColourScheme, scheme);
    SetColourScheme(scheme);
    QCOMPARE(QApplication::style()->name().toLower(), QStringLiteral("fusion"));
}

#ifdef Q_OS_WIN

void ColourSchemeTest::thePlatformTakesTheScheme_data()
{
    QTest::addColumn<ColourScheme>("scheme");
    QTest::addColumn<Qt::ColorScheme>("taken");
    QTest::newRow("light") << ColourScheme::Light << Qt::ColorScheme::Light;
    QTest::newRow("dark") << ColourScheme::Dark << Qt::ColorScheme::Dark;
}

void ColourSchemeTest::thePlatformTakesTheScheme()
{
    QFETCH(ColourScheme, scheme);
    QFETCH(Qt::ColorScheme, taken);
    SetColourScheme(scheme);
    QCOMPARE(QGuiApplication::styleHints()->colorScheme(), taken);
    QCOMPARE(QApplication::palette().resolveMask(), QPalette::ResolveMask(0)); // it needs no palette of ours
}

#else

void ColourSchemeTest::lightAndDarkHaveTheirColours_data()
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

void ColourSchemeTest::lightAndDarkHaveTheirColours()
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

void ColourSchemeTest::selectedTextLinksAndTooltipsAreReadable_data()
{
    QTest::addColumn<ColourScheme>("scheme");
    QTest::newRow("light") << ColourScheme::Light;
    QTest::newRow("dark") << ColourScheme::Dark;
}

void ColourSchemeTest::selectedTextLinksAndTooltipsAreReadable()
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

void ColourSchemeTest::disabledTextIsFainterThanTextButNotInvisible_data()
{
    selectedTextLinksAndTooltipsAreReadable_data();
}

void ColourSchemeTest::disabledTextIsFainterThanTextButNotInvisible()
{
    QFETCH(ColourScheme, scheme);
    SetColourScheme(scheme);
    const QPalette palette = QApplication::palette();
    for (const RolePair &pair : TextPairs) {
        const QColor background = palette.color(QPalette::Disabled, pair.Background);
        const double disabled = Contrast(palette.color(QPalette::Disabled, pair.Text), background);
        QVERIFY2(disabled < Contrast(palette.color(QPalette::Active, pair.Text), background),
                 qPrintable(QString::number(disabled)));
        QVERIFY2(disabled > 2.0, qPrintable(QString::number(disabled)));
    }
}

void ColourSchemeTest::followingTheSystemGivesTheStylesOwnPalette()
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

void ColourSchemeTest::aWidgetThatExistsIsDrawnInTheNewColours()
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

#endif

TARNVIK_TEST_MAIN(ColourSchemeTest, QApplication)

#include "ColourSchemeTest.moc"
