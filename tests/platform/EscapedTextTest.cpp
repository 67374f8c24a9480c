// SPDX-License-Identifier: MIT
// Bytes as texts and back, without loss.
#include "platform/EscapedText.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QObject>

#include <random>
#include <string>

class EscapedTextTest : public QObject
{
    Q_OBJECT

private slots:
    void bytesBecomeTextsAndComeBack_data();
    void bytesBecomeTextsAndComeBack();
    void anyBytesComeBack();
    void aLetterIsNoEscapedByte();
};

void EscapedTextTest::bytesBecomeTextsAndComeBack_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("letters") << QByteArray("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x93\xA1")
                             << QString::fromUtf16(u"a\u00FC\u20AC\U0001F4E1");
    QTest::newRow("a byte of no letter") << QByteArray("a\xFFz") << QString::fromUtf16(u"a\xDCFFz");
    QTest::newRow("the beginning of a letter")
        << QByteArray("\xE2\x82") << QString::fromUtf16(u"\xDCE2\xDC82");
    QTest::newRow("a letter written too long")
        << QByteArray("\xC0\x80") << QString::fromUtf16(u"\xDCC0\xDC80");
    QTest::newRow("half a surrogate pair")
        << QByteArray("\xED\xB3\xBF") << QString::fromUtf16(u"\xDCED\xDCB3\xDCBF");
    QTest::newRow("the mark of the byte order first") << QByteArray("\xEF\xBB\xBF"
                                                                    "a")
                                                      << QString(QChar(0xFEFF)) + u'a';
    QTest::newRow("the same behind a byte of no letter") << QByteArray("\xFF\xEF\xBB\xBF"
                                                                       "a")
                                                         << QString::fromUtf16(u"\xDCFF\xFEFF"
                                                                               u"a");
    QTest::newRow("what replaces bytes elsewhere") << QByteArray("\xEF\xBF\xBD") << QString(QChar(0xFFFD));
}

void EscapedTextTest::bytesBecomeTextsAndComeBack()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    QCOMPARE(platform::BytesText(bytes.toStdString()), text);
    QCOMPARE(platform::TextBytes(text), bytes);
}

void EscapedTextTest::anyBytesComeBack()
{
    std::mt19937 generator(14); // the same bytes each time
    for (int round = 0; round < 20'000; ++round) {
        std::string bytes(generator() % 12, '\0');
        for (char &byte : bytes) {
            // Those of which long letters and marks are made come often.
            constexpr std::string_view often = "\xEF\xBB\xBF\xED\xA0\xF0\x9F\x80\xC3";
            const std::mt19937::result_type number = generator();
            byte = number % 2 == 0 ? often[number / 2 % often.size()] : static_cast<char>(number >> 8);
        }
        const QByteArray back = platform::TextBytes(platform::BytesText(bytes));
        QVERIFY2(back == QByteArray::fromStdString(bytes),
                 QByteArray::fromStdString(bytes).toHex().constData());
    }
}

void EscapedTextTest::aLetterIsNoEscapedByte()
{
    const QString text =
        platform::BytesText("\xFF\xF0\xA0\xB2\x80"); // the second half of the letter is U+DC80
    QCOMPARE(text.size(), 3);
    QCOMPARE(text[2], QChar(0xDC80));
    QVERIFY(platform::IsEscapedByte(text, 0));
    QVERIFY(!platform::IsEscapedByte(text, 1));
    QVERIFY(!platform::IsEscapedByte(text, 2));
    // ASCII is never escaped: a half letter must not become a slash.
    const QString half = QString::fromUtf16(u"\xDC2F\xDC7F");
    QVERIFY(!platform::IsEscapedByte(half, 0));
    QVERIFY(!platform::IsEscapedByte(half, 1));
}

TARNVIK_TEST_MAIN(EscapedTextTest, QCoreApplication)

#include "EscapedTextTest.moc"
