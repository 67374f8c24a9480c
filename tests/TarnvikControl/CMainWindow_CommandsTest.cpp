// SPDX-License-Identifier: MIT
// What the menu entries do. What would be opened for the user is caught by the test.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "Common_Files/TarnvikBasic.h"
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "TarnvikControl/Version.h"
#include "tests/TarnvikControl/AlignmentFiles.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPointer>
#include <QScopeGuard>
#include <QSettings>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <QUrl>

#include <memory>

namespace {

QString ConfigurationFolder()
{
    return QTarnvikBasic::GetRecorderFile(QString());
}

void WriteRecordPath(const QString &path)
{
    QVERIFY(QDir().mkpath(ConfigurationFolder()));
    QSettings location(QTarnvikBasic::GetRecorderFile(QStringLiteral("tarnviklocation.ini")),
                       QSettings::IniFormat);
    location.setValue(QStringLiteral("Record/RecordPath"), path);
}

bool MakeFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly);
}

/// Translates the product's name, as a translation for another guide would.
class ProductTranslator : public QTranslator
{
public:
    [[nodiscard]] bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char * /*comment*/,
                      int /*n*/) const override
    {
        const bool product = qstrcmp(context, "CMainWindow") == 0 && qstrcmp(text, "Tarnvik") == 0;
        return product ? QStringLiteral("Anleitung") : QString();
    }
};

} // namespace

class CMainWindow_CommandsTest : public QObject
{
    Q_OBJECT

public slots:
    void open(const QUrl &url) { Opened.append(url); }

private slots:
    void initTestCase();
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }
    void init();
    void cleanup();

    void theRecordFolderCommandsNeedARecordPath_data();
    void theRecordFolderCommandsNeedARecordPath();
    void theRecordFolderIsOpened();
    void theLinkIsMadeAndTheFolderOpened_data();
    void theLinkIsMadeAndTheFolderOpened();
    void theLinkFailsWhenOneOfThatNameExists();
    void theSettingsFolderIsOpened();
    void aMissingSettingsFolderIsReported();
    void hideHidesTheWindow();
    void theAlignmentDialogShowsTheDriversFilesAndIsDeletedAfterwards();
    void theTraysQuitAsksWhileTheAlignmentDialogIsOpen_data();
    void theTraysQuitAsksWhileTheAlignmentDialogIsOpen();
    void saveAndRestoreWindow();
    void theAboutBoxReads();
    void theGuideIsSearchedInOrder_data();
    void theGuideIsSearchedInOrder();
    void aMissingGuideIsReported();

private:
    void trigger(const QString &text);
    [[nodiscard]] const tests::ShownBox &onlyBox() const { return Answers->boxes().first(); }

    QList<QUrl> Opened;
    std::unique_ptr<CMainWindow> Window;
    std::unique_ptr<tests::DialogAnswers> Answers;
};

void CMainWindow_CommandsTest::initTestCase()
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quillane GmbH"));
    QCoreApplication::setApplicationName(QStringLiteral("TarnvikControl"));
    QCoreApplication::setApplicationVersion(QStringLiteral("2025.12.1.1"));
    PackedVersion = LowestVersion;
    qputenv("TARNVIK_STANDIN_INTERVAL_MS", "0");
    QDesktopServices::setUrlHandler(QStringLiteral("file"), this, "open");
}

void CMainWindow_CommandsTest::init()
{
    QDir(ConfigurationFolder()).removeRecursively();
    const QString desktop = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    QDir(desktop).removeRecursively();
    QVERIFY(QDir().mkpath(desktop));
    Opened.clear();
    Answers = std::make_unique<tests::DialogAnswers>(QMessageBox::Ok);
    Window = std::make_unique<CMainWindow>();
}

void CMainWindow_CommandsTest::cleanup()
{
    Window.reset();
    Answers.reset();
}

void CMainWindow_CommandsTest::trigger(const QString &text)
{
    const QList<QAction *> actions = Window->findChildren<QAction *>();
    for (QAction *action : actions) {
        if (action->text() == text) {
            action->trigger();
            return;
        }
    }
    QFAIL(qPrintable(QStringLiteral("no entry ") + text));
}

void CMainWindow_CommandsTest::theRecordFolderCommandsNeedARecordPath_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("text");
    const QString none = QStringLiteral("No 'record path' in configuration file found!");
    const QString missing = QStringLiteral("'record path' does not exists\n</no/such/folder>");
    const QString openFolder = QStringLiteral("Open record file folder");
    const QString link = QStringLiteral("Create record file folder link on Desktop");
    QTest::newRow("open without a record path") << openFolder << QString() << none;
    QTest::newRow("open with a missing folder") << openFolder << "/no/such/folder" << missing;
    QTest::newRow("link without a record path") << link << QString() << none;
    QTest::newRow("link with a missing folder") << link << "/no/such/folder" << missing;
}

void CMainWindow_CommandsTest::theRecordFolderCommandsNeedARecordPath()
{
    QFETCH(QString, entry);
    QFETCH(QString, path);
    QFETCH(QString, text);
    if (!path.isEmpty())
        WriteRecordPath(path);
    trigger(entry);
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, QStringLiteral("Error"));
    QCOMPARE(onlyBox().Text, text);
    QCOMPARE(onlyBox().Icon, QMessageBox::Warning);
    QCOMPARE(onlyBox().Buttons, QMessageBox::Ok);
    QCOMPARE(onlyBox().Parent, Window.get());
    QVERIFY(Opened.isEmpty());
}

void CMainWindow_CommandsTest::theRecordFolderIsOpened()
{
    const QTemporaryDir folder(QDir::tempPath() + QString::fromUtf8("/Aufnähmen # 1 %20 XXXXXX"));
    WriteRecordPath(folder.path());
    trigger(QStringLiteral("Open record file folder"));
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(folder.path())});
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::theLinkIsMadeAndTheFolderOpened_data()
{
    QTest::addColumn<QString>("ending");
    QTest::newRow("a path as usual") << "";
    QTest::newRow("a path that ends in a separator") << "/";
}

void CMainWindow_CommandsTest::theLinkIsMadeAndTheFolderOpened()
{
    QFETCH(QString, ending);
    const QTemporaryDir folder;
    WriteRecordPath(folder.path() + ending);
    trigger(QStringLiteral("Create record file folder link on Desktop"));
    const QString link = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) + u'/' +
                         QFileInfo(folder.path()).fileName() + QStringLiteral(".lnk");
    QCOMPARE(QFile::symLinkTarget(link), folder.path());
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(folder.path() + ending)});
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::theLinkFailsWhenOneOfThatNameExists()
{
    const QTemporaryDir folder;
    WriteRecordPath(folder.path());
    const QString entry = QStringLiteral("Create record file folder link on Desktop");
    trigger(entry);
    Opened.clear();
    trigger(entry);
    const QString link = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) + u'/' +
                         QFileInfo(folder.path()).fileName() + QStringLiteral(".lnk");
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, QStringLiteral("Error"));
    QCOMPARE(onlyBox().Text, QStringLiteral("Failed to create link on desktop!\n") + link);
    QCOMPARE(onlyBox().Icon, QMessageBox::Warning);
    QVERIFY(Opened.isEmpty());
}

void CMainWindow_CommandsTest::theSettingsFolderIsOpened()
{
    QVERIFY(QDir().mkpath(ConfigurationFolder()));
    trigger(QStringLiteral("Open settings folder..."));
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(ConfigurationFolder())});
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::aMissingSettingsFolderIsReported()
{
    trigger(QStringLiteral("Open settings folder..."));
    QVERIFY(Opened.isEmpty());
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, QStringLiteral("Error"));
    QCOMPARE(onlyBox().Text, QStringLiteral("Drawer does not exists!\n") + ConfigurationFolder());
    QCOMPARE(onlyBox().Icon, QMessageBox::Warning);
}

void CMainWindow_CommandsTest::hideHidesTheWindow()
{
    Window->show();
    trigger(QStringLiteral("Hide"));
    QVERIFY(!Window->isVisible());
}

void CMainWindow_CommandsTest::theAlignmentDialogShowsTheDriversFilesAndIsDeletedAfterwards()
{
    QVERIFY(QDir().mkpath(ConfigurationFolder()));
    const QList<tests::FileTable> tables = {{"0x1", 1}, {"0x2", 2}};
    for (const char *name : {"TarnvikDriver_RtlSdr.ad", "Other_RtlSdr.ad"})
        QVERIFY(tests::WriteAlignmentFile(ConfigurationFolder() + u'/' + QLatin1String(name), SdrType::RtlSdr,
                                          tables));
    QVERIFY(
        tests::WriteFileBytes(ConfigurationFolder() + QStringLiteral("/TarnvikDriver_bad.ad"), "rubbish"));
    Window->show();
    QPointer<QDlgAlignmentCfg> shown;
    QList<AlignmentRow> rows;
    bool survivedTheWindow = false;
    QTimer closer;
    connect(&closer, &QTimer::timeout, this, [&] {
        shown = qobject_cast<QDlgAlignmentCfg *>(QApplication::activeModalWidget());
        if (!shown || !shown->isVisible())
            return;
        closer.stop();
        rows = shown->rows();
        Window->hide(); // as the tray can
        survivedTheWindow = !shown->parent() && shown->isVisible();
        shown->reject();
    });
    closer.start(5);
    trigger(QStringLiteral("Show..."));
    QVERIFY(survivedTheWindow);
    QVERIFY(!shown);
    QCOMPARE(rows.size(), 2); // those of the other file are not there
    QCOMPARE(rows.first().filePath, ConfigurationFolder() + QStringLiteral("/TarnvikDriver_RtlSdr.ad"));
    QCOMPARE(rows.first().state, AlignmentRow::Present);
    QVERIFY(Answers->boxes().isEmpty()); // nothing is said about the damaged file
}

void CMainWindow_CommandsTest::theTraysQuitAsksWhileTheAlignmentDialogIsOpen_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("ends");
    QTest::newRow("yes ends the program") << int(QMessageBox::Yes) << true;
    QTest::newRow("abort goes back to the dialog") << int(QMessageBox::Abort) << false;
}

void CMainWindow_CommandsTest::theTraysQuitAsksWhileTheAlignmentDialogIsOpen()
{
    // Where the icon's menu is the system's own, an open dialog does not keep the user from it.
    QFETCH(int, answer);
    QFETCH(bool, ends);
    Answers->setAnswer(static_cast<QMessageBox::StandardButton>(answer));
    Window->show();
    QPointer<QDlgAlignmentCfg> dialog;
    bool dialogStays = false;
    QTimer quitter;
    connect(&quitter, &QTimer::timeout, this, [&] {
        dialog = qobject_cast<QDlgAlignmentCfg *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        quitter.stop();
        Window->findChild<QSystemTrayIcon *>()->contextMenu()->actions().last()->trigger();
        dialogStays = dialog && dialog->isVisible();
        if (!ends) {
            dialog->reject();
            QCoreApplication::exit(7); // the program would go on
        }
    });
    quitter.start(5);
    QTimer tooLate; // the program did not end
    connect(&tooLate, &QTimer::timeout, this, [] { QCoreApplication::exit(8); });
    tooLate.start(20000);
    QTimer::singleShot(0, this, [this] { trigger(QStringLiteral("Show...")); });
    QCOMPARE(QApplication::exec(), ends ? 0 : 7);
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, QStringLiteral("Close indication"));
    QCOMPARE(dialogStays, !ends);
    QVERIFY(!dialog);
    QCOMPARE(Window->isVisible(), !ends);
}

void CMainWindow_CommandsTest::saveAndRestoreWindow()
{
    Window->show();
    Window->setGeometry(50, 70, 300, 200);
    trigger(QStringLiteral("Save Windows"));
    Window->setGeometry(10, 20, 500, 400);
    trigger(QStringLiteral("Restore Windows"));
    QCOMPARE(Window->geometry(), QRect(50, 70, 300, 200));
}

void CMainWindow_CommandsTest::theAboutBoxReads()
{
    trigger(QStringLiteral("About TarnvikControl..."));
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, QStringLiteral("TarnvikControl"));
    QCOMPARE(onlyBox().Text,
             QStringLiteral("TarnvikControl V2025.12.1.1\n<x64 version>\n\n(C) Quillane GmbH"));
    QCOMPARE(onlyBox().Parent, Window.get());
}

void CMainWindow_CommandsTest::theGuideIsSearchedInOrder_data()
{
    QTest::addColumn<QString>("language"); // empty: no translation
    QTest::addColumn<bool>("translatedProduct");
    QTest::addColumn<QStringList>("candidates"); // without a folder: the program's
    QTest::newRow("with no translation English comes first")
        << "" << false
        << QStringList{QStringLiteral("Tarnvik_EN.pdf"),
                       QStringLiteral("Tarnvik.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik_EN.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik.pdf"),
                       QStringLiteral("Tarnvik_EN.pdf"),
                       QStringLiteral("TarnvikTarnvik_EN.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik_DE.pdf")};
    QTest::newRow("with German the German one comes first, then the English one")
        << "de" << false
        << QStringList{QStringLiteral("Tarnvik_DE.pdf"),
                       QStringLiteral("Tarnvik.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik_DE.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik.pdf"),
                       QStringLiteral("Tarnvik_EN.pdf"),
                       QStringLiteral("TarnvikTarnvik_EN.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik_DE.pdf")};
    QTest::newRow("with French and a translated product")
        << "fr" << true
        << QStringList{QStringLiteral("Anleitung_FR.pdf"),
                       QStringLiteral("Anleitung.pdf"),
                       QStringLiteral("C:/Program Files/Anleitung/Anleitung_FR.pdf"),
                       QStringLiteral("C:/Program Files/Anleitung/Anleitung.pdf"),
                       QStringLiteral("Anleitung_EN.pdf"),
                       QStringLiteral("AnleitungTarnvik_EN.pdf"),
                       QStringLiteral("C:/Program Files/Anleitung/Anleitung_DE.pdf")};
    QTest::newRow("with the language C, whose name has no country, none is named")
        << "C" << false
        << QStringList{QStringLiteral("Tarnvik_.pdf"),
                       QStringLiteral("Tarnvik.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik_.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik.pdf"),
                       QStringLiteral("Tarnvik_EN.pdf"),
                       QStringLiteral("TarnvikTarnvik_EN.pdf"),
                       QStringLiteral("C:/Program Files/Tarnvik/Tarnvik_DE.pdf")};
}

void CMainWindow_CommandsTest::theGuideIsSearchedInOrder()
{
    QFETCH(QString, language);
    QFETCH(bool, translatedProduct);
    QFETCH(QStringList, candidates);
    // Where there are no drives, C: is a folder in the current one. Where there are, it is the machine's own
    // program folder, which a test must not touch: these candidates are left out.
    candidates.removeIf([](const QString &candidate) { return QDir::isAbsolutePath(candidate); });
    const QTemporaryDir current;
    QVERIFY(QDir::setCurrent(current.path()));
    const auto goBack = qScopeGuard([] { QDir::setCurrent(QCoreApplication::applicationDirPath()); });
    for (QString &candidate : candidates) {
        if (candidate.startsWith(QStringLiteral("C:")))
            QVERIFY(QDir().mkpath(QFileInfo(candidate).path()));
        else
            candidate.prepend(QCoreApplication::applicationDirPath() + u'/');
    }
    AppTranslation.Init(qApp);
    if (language.isEmpty())
        AppTranslation.UnloadTranslators();
    else
        AppTranslation.LoadLanguage(QLocale(language));
    ProductTranslator translator;
    if (translatedProduct)
        QCoreApplication::installTranslator(&translator);
    const auto removeGuides = qScopeGuard([&] {
        for (const QString &candidate : std::as_const(candidates))
            QFile::remove(candidate);
    });
    for (qsizetype first = 0; first < candidates.size(); ++first) {
        // This one and all behind it exist; a name that stands twice counts where it stands first.
        if (candidates.indexOf(candidates[first]) < first)
            continue;
        for (qsizetype i = first; i < candidates.size(); ++i) {
            if (candidates.indexOf(candidates[i]) >= first)
                QVERIFY2(MakeFile(candidates[i]), qPrintable(candidates[i]));
        }
        Opened.clear();
        // The path is opened as it stands; what is before its first colon, if anything, counts as scheme.
        const QUrl url(candidates[first], QUrl::TolerantMode);
        QDesktopServices::setUrlHandler(url.scheme(), this, "open");
        trigger(QStringLiteral("Open User Guide"));
        QDesktopServices::unsetUrlHandler(url.scheme());
        QCOMPARE(Opened, QList<QUrl>{url});
        QVERIFY(QFile::remove(candidates[first]));
    }
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::aMissingGuideIsReported()
{
    trigger(QStringLiteral("Open User Guide"));
    QVERIFY(Opened.isEmpty());
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, QStringLiteral("File Error"));
    QCOMPARE(onlyBox().Text, QStringLiteral("Can not open user guide!"));
    QCOMPARE(onlyBox().Icon, QMessageBox::Critical);
    QCOMPARE(onlyBox().Buttons, QMessageBox::Ok);
}

TARNVIK_TEST_MAIN(CMainWindow_CommandsTest, QApplication)

#include "CMainWindow_CommandsTest.moc"
