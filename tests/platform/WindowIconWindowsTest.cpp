// SPDX-License-Identifier: MIT
// The icon resource of this very test program.
#include "platform/WindowIcon.h"
#include "tests/support/TestMain.h"

#include <QGuiApplication>
#include <QImage>

class WindowIconWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void itIsThePictureOfTheIconFileInTheDefaultSize();
};

void WindowIconWindowsTest::itIsThePictureOfTheIconFileInTheDefaultSize()
{
    const QIcon icon = platform::LoadWindowIcon();
    QCOMPARE(icon.availableSizes(), QList<QSize>{QSize(32, 32)});
    const QImage loaded = icon.pixmap(32, 32).toImage().convertToFormat(QImage::Format_ARGB32);
    const QIcon file(QStringLiteral(ICON_FILE));
    const QImage expected = file.pixmap(32, 32).toImage().convertToFormat(QImage::Format_ARGB32);
    QCOMPARE(loaded.size(), expected.size());
    // Blending over and back costs a step or two of brightness; where nothing is drawn there is no colour.
    for (int y = 0; y < loaded.height(); ++y) {
        for (int x = 0; x < loaded.width(); ++x) {
            const QColor actual = loaded.pixelColor(x, y);
            const QColor wanted = expected.pixelColor(x, y);
            QVERIFY2(qAbs(actual.alpha() - wanted.alpha()) <= 3, qPrintable(QString::number(y * 32 + x)));
            if (wanted.alpha() == 255)
                QVERIFY2(qAbs(actual.lightness() - wanted.lightness()) <= 3,
                         qPrintable(QString::number(y * 32 + x)));
        }
    }
}

TARNVIK_TEST_MAIN(WindowIconWindowsTest, QGuiApplication)

#include "WindowIconWindowsTest.moc"
