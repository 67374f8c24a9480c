// SPDX-License-Identifier: MIT
#include "TarnvikControl/ColourScheme.h"

#include "tests/TarnvikControl/PaletteContrast.h"
#include "tests/support/TestMain.h"

#include <QApplication>
#include <QPalette>
#include <QStyle>
#include <QTest>

using namespace Qt::StringLiterals;

using tests::Contrast;
using tests::TextPairs;
using tests::TooWeak;

Q_DECLARE_METATYPE(ColourScheme)

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
};

void ColourSchemeTest::init()
{
    QVERIFY(QApplication::setStyle(u"Fusion"_s));
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
    QCOMPARE(TooWeak(QApplication::palette(), TextPairs()), QString());
}

void ColourSchemeTest::theStyleStaysFusion_data()
{
    textIsReadable_data();
}

void ColourSchemeTest::theStyleStaysFusion()
{
    QFETCH(ColourScheme, scheme);
    SetColourScheme(scheme);
    QCOMPARE(QApplication::style()->name().toLower(), u"fusion"_s);
}

TARNVIK_TEST_MAIN(ColourSchemeTest, QApplication)

#include "ColourSchemeTest.moc"
