// SPDX-License-Identifier: MIT
#include "alignment/AlignResult.h"

#include "tests/support/TestMain.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

#include <limits>

using namespace Qt::StringLiterals;

namespace {

/// Marks every text of the dialog's context, so that a test sees what passed through the translation and
/// where.
class MarkingTranslator : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char *context, const char *sourceText,
                                    const char * /*disambiguation*/, int /*n*/) const override
    {
        if (qstrcmp(context, "QDlgAlignmentCfg") != 0)
            return {};
        return u"[de] "_s + QString::fromLatin1(sourceText);
    }
};

} // namespace

class AlignResultTest : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeHasItsMessage_data();
    void everyCodeHasItsMessage();
    void codeThatIsNoneGivesErrorAndTheNumber_data();
    void codeThatIsNoneGivesErrorAndTheNumber();
    void messagesAreTranslatedInTheDialogsContext();
};

void AlignResultTest::everyCodeHasItsMessage_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    const auto row = [](int code, const char *message) {
        QTest::addRow("code %d", code) << code << QString::fromLatin1(message);
    };
    row(0, "Ok");
    row(1, "Gain out of range");
    row(2, "Frequency out of range");
    row(3, "Sample frequency out of range");
    row(4, "No align table for device");
    row(5, "No data-set for selected path");
    row(6, "Array size to small");
    row(7, "Dataset-Pointer is Null");
    row(8, "DataEntry-Pointer is Null");
    row(9, "File Error");
    row(10, "Parametername Mismatch");
    row(11, "Internal Error");
    row(12, "Sdrtype Missmatched");
    row(13, "Version Missmatched");
    row(14, "File CRC check failed");
    row(15, "Dataset has no Power-Levels");
    row(16, "Dataset has no Noise-Levels");
    row(17, "AlignTable has the wrong DataType");
    row(18, "AlignTable has the wrong SdrType");
    row(19, "Dataset has the wrong DataType");
    row(20, "Dataset has the wrong SdrType");
    row(21, "Cant load CSV-File completly, the CSV-File is to big");
    row(22, "Aligntable-List is emptpy, nothing to save");
}

void AlignResultTest::everyCodeHasItsMessage()
{
    QFETCH(int, code);
    QFETCH(QString, message);
    QCOMPARE(AlignResultText(code), message);
    QCOMPARE(AlignResultText(static_cast<AlignResult>(code)), message);
}

void AlignResultTest::codeThatIsNoneGivesErrorAndTheNumber_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("message");
    QTest::newRow("23 gives Error <23>") << 23 << u"Error <23>"_s;
    QTest::newRow("-1 gives Error <-1>") << -1 << u"Error <-1>"_s;
    QTest::newRow("the greatest number") << std::numeric_limits<int>::max() << u"Error <2147483647>"_s;
    QTest::newRow("the least number") << std::numeric_limits<int>::min() << u"Error <-2147483648>"_s;
}

void AlignResultTest::codeThatIsNoneGivesErrorAndTheNumber()
{
    QFETCH(int, code);
    QFETCH(QString, message);
    QCOMPARE(AlignResultText(code), message);
}

void AlignResultTest::messagesAreTranslatedInTheDialogsContext()
{
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    for (int code = 0; code <= 22; ++code) {
        QVERIFY2(AlignResultText(code).startsWith(u"[de] "_s), qPrintable(AlignResultText(code)));
    }
    QCOMPARE(AlignResultText(23), u"[de] Error <23>"_s);
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    QCOMPARE(AlignResultText(9), u"File Error"_s);
}

TARNVIK_TEST_MAIN(AlignResultTest, QCoreApplication)
#include "AlignResultTest.moc"
