// SPDX-License-Identifier: MIT
// What the menu entries do. The test catches what would be opened for the user.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "Common_Files/TarnvikBasic.h"
#include "Common_Files/Version.h"
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "TarnvikControl/WindowHiding.h"
#include "tests/TarnvikControl/MainWindowFixture.h"
#include "tests/alignment/AlignmentTestTools.h"
#include "tests/alignment_merge/AlignmentFiles.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/Patience.h"
#include "tests/support/TestMain.h"

#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QPointer>
#include <QScopeGuard>
#include <QStandardPaths>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QTimer>
#include <QTranslator>
#include <QUrl>

#include <memory>

using namespace Qt::StringLiterals;

using tests::Tray;
using tests::WriteRecordPath;

namespace {

QString ConfigurationFolder()
{
    return QTarnvikBasic::GetRecorderFile(QString());
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
        return product ? u"Anleitung"_s : QString();
    }
};

} // namespace

class CMainWindow_CommandsTest : public QObject
{
    Q_OBJECT

public slots:
    void Open(const QUrl &url) { Opened.append(url); }

private slots:
    void initTestCase();
    void cleanupTestCase() { QDesktopServices::unsetUrlHandler(u"file"_s); }
    void init();
    void cleanup();

    void theRecordFolderCommandsNeedARecordPath_data();
    void theRecordFolderCommandsNeedARecordPath();
    void theRecordFolderIsOpened_data();
    void theRecordFolderIsOpened();
    void aRelativeRecordPathIsOpenedAsAnAbsoluteOne();
    void theLinkToARootFolderHasAName();
    void theLinkIsMadeAndTheFolderOpened_data();
    void theLinkIsMadeAndTheFolderOpened();
    void theLinkFailsWhenOneOfThatNameExists();
    void theSettingsFolderIsOpened();
    void aMissingSettingsFolderIsReported();
    void theAlignmentDialogShowsTheDriversFilesAndIsDeletedAfterwards();
    void theTraysQuitAsksWhileTheAlignmentDialogIsOpen_data();
    void theTraysQuitAsksWhileTheAlignmentDialogIsOpen();
    void saveAndRestoreWindow();
    void theStateOfTheWindowIsRestored();
    void theAboutBoxReads();
    void theBoxAboutQtBelongsToTheWindow();
    void theGuideIsSearchedInOrder_data();
    void theGuideIsSearchedInOrder();
    void aMissingGuideIsReported();

private:
    void Trigger(const QString &text);
    [[nodiscard]] const tests::ShownBox &onlyBox() const { return Answers->boxes().first(); }

    QList<QUrl> Opened;
    std::unique_ptr<CMainWindow> Window;
    std::unique_ptr<tests::DialogAnswers> Answers;
};

void CMainWindow_CommandsTest::initTestCase()
{
    QCoreApplication::setOrganizationName(u"Quillane GmbH"_s);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    QCoreApplication::setApplicationVersion(u"2025.12.1.1"_s);
    PackedVersion = LowestVersion;
    HasTray = [] { return true; };
    qputenv("TARNVIK_STANDIN_INTERVAL_MS", "0");
    QDesktopServices::setUrlHandler(u"file"_s, this, "Open");
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

void CMainWindow_CommandsTest::Trigger(const QString &text)
{
    const QList<QAction *> actions = Window->findChildren<QAction *>();
    for (QAction *action : actions) {
        if (action->text() == text) {
            action->trigger();
            return;
        }
    }
    QFAIL(qPrintable(u"no entry "_s + text));
}

void CMainWindow_CommandsTest::theRecordFolderCommandsNeedARecordPath_data()
{
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("text");
    const QString none = u"No 'record path' in configuration file found!"_s;
    const QString missing = u"'record path' does not exists\n</no/such/folder>"_s;
    const QString openFolder = u"Open record file folder"_s;
    const QString link = u"Create record file folder link on Desktop"_s;
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
    Trigger(entry);
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, u"Error"_s);
    QCOMPARE(onlyBox().Text, text);
    QCOMPARE(onlyBox().Icon, QMessageBox::Warning);
    QCOMPARE(onlyBox().Buttons, QMessageBox::Ok);
    QCOMPARE(onlyBox().Parent, Window.get());
    QVERIFY(Opened.isEmpty());
}

void CMainWindow_CommandsTest::theRecordFolderIsOpened_data()
{
    QTest::addColumn<bool>("isFile");
    QTest::newRow("a folder") << false;
    QTest::newRow("a file, whatever opens it") << true;
}

void CMainWindow_CommandsTest::theRecordFolderIsOpened()
{
    QFETCH(bool, isFile);
    const QTemporaryDir folder(QDir::tempPath() + QString::fromUtf8("/Aufnähmen # 1 %20 XXXXXX"));
    const QString path = isFile ? folder.filePath(u"records"_s) : folder.path();
    if (isFile)
        QVERIFY(MakeFile(path));
    WriteRecordPath(path);
    Trigger(u"Open record file folder"_s);
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(path)});
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::aRelativeRecordPathIsOpenedAsAnAbsoluteOne()
{
    const QTemporaryDir folder(QDir::currentPath() + u"/records-XXXXXX"_s);
    WriteRecordPath(QFileInfo(folder.path()).fileName());
    Trigger(u"Open record file folder"_s);
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(folder.path())});
    Opened.clear();
    Trigger(u"Create record file folder link on Desktop"_s);
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(folder.path())});
}

void CMainWindow_CommandsTest::theLinkToARootFolderHasAName()
{
    const QString root = QDir::rootPath();
    WriteRecordPath(root);
    Trigger(u"Create record file folder link on Desktop"_s);
    const QString link =
        QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) + u"/Records.lnk"_s;
    QCOMPARE(QFile::symLinkTarget(link), root);
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(root)});
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
    Trigger(u"Create record file folder link on Desktop"_s);
    const QString link = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) + u'/' +
                         QFileInfo(folder.path()).fileName() + u".lnk"_s;
    QCOMPARE(QFile::symLinkTarget(link), folder.path());
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(folder.path() + ending)});
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::theLinkFailsWhenOneOfThatNameExists()
{
    const QTemporaryDir folder;
    WriteRecordPath(folder.path());
    const QString entry = u"Create record file folder link on Desktop"_s;
    Trigger(entry);
    Opened.clear();
    Trigger(entry);
    const QString link = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation) + u'/' +
                         QFileInfo(folder.path()).fileName() + u".lnk"_s;
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, u"Error"_s);
    QCOMPARE(onlyBox().Text, u"Failed to create link on desktop!\n"_s + link);
    QCOMPARE(onlyBox().Icon, QMessageBox::Warning);
    QVERIFY(Opened.isEmpty());
}

void CMainWindow_CommandsTest::theSettingsFolderIsOpened()
{
    QVERIFY(QDir().mkpath(ConfigurationFolder()));
    Trigger(u"Open settings folder..."_s);
    QCOMPARE(Opened, QList<QUrl>{QUrl::fromLocalFile(ConfigurationFolder())});
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::aMissingSettingsFolderIsReported()
{
    Trigger(u"Open settings folder..."_s);
    QVERIFY(Opened.isEmpty());
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, u"Error"_s);
    QCOMPARE(onlyBox().Text, u"Drawer does not exists!\n"_s + ConfigurationFolder());
    QCOMPARE(onlyBox().Icon, QMessageBox::Warning);
}

void CMainWindow_CommandsTest::theAlignmentDialogShowsTheDriversFilesAndIsDeletedAfterwards()
{
    QVERIFY(QDir().mkpath(ConfigurationFolder()));
    const QList<tests::FileTable> tables = {{"0x1", 1}, {"0x2", 2}};
    for (const char *name : {"TarnvikDriver_RtlSdr.ad", "Other_RtlSdr.ad"})
        QVERIFY(tests::WriteAlignmentFile(ConfigurationFolder() + u'/' + QLatin1String(name), SdrType::RtlSdr,
                                          tables));
    QVERIFY(tests::WriteFileBytes(ConfigurationFolder() + u"/TarnvikDriver_bad.ad"_s, "rubbish"));
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
    Trigger(u"Show..."_s);
    QVERIFY(survivedTheWindow);
    QVERIFY(!shown);
    QCOMPARE(rows.size(), 2); // those of the other file are not there
    QCOMPARE(rows.first().filePath, ConfigurationFolder() + u"/TarnvikDriver_RtlSdr.ad"_s);
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
    Answers->SetAnswer(static_cast<QMessageBox::StandardButton>(answer));
    Window->show();
    QPointer<QDlgAlignmentCfg> dialog;
    bool dialogStays = false;
    QTimer quitter;
    connect(&quitter, &QTimer::timeout, this, [&] {
        dialog = qobject_cast<QDlgAlignmentCfg *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        quitter.stop();
        Tray(*Window).contextMenu()->actions().last()->trigger();
        dialogStays = dialog && dialog->isVisible();
        if (!ends) {
            dialog->reject();
            QCoreApplication::exit(7); // the program would go on
        }
    });
    quitter.start(5);
    QTimer tooLate; // the program did not end
    connect(&tooLate, &QTimer::timeout, this, [] { QCoreApplication::exit(8); });
    tooLate.start(tests::Patience);
    QTimer::singleShot(0, this, [this] { Trigger(u"Show..."_s); });
    QCOMPARE(QApplication::exec(), ends ? 0 : 7);
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, u"Close indication"_s);
    QCOMPARE(dialogStays, !ends);
    QVERIFY(!dialog);
    QCOMPARE(Window->isVisible(), !ends);
}

void CMainWindow_CommandsTest::saveAndRestoreWindow()
{
    Window->show();
    Window->setGeometry(50, 70, 300, 200);
    Trigger(u"Save Windows"_s);
    Window->setGeometry(10, 20, 500, 400);
    Trigger(u"Restore Windows"_s);
    QCOMPARE(Window->geometry(), QRect(50, 70, 300, 200));
}

void CMainWindow_CommandsTest::theStateOfTheWindowIsRestored()
{
    // The window has no parts of its own to move; what is seen by its corners is the whole state.
    Window->setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
    Trigger(u"Save Windows"_s);
    Window->setCorner(Qt::BottomLeftCorner, Qt::BottomDockWidgetArea);
    Trigger(u"Restore Windows"_s);
    QCOMPARE(Window->corner(Qt::BottomLeftCorner), Qt::LeftDockWidgetArea);
}

void CMainWindow_CommandsTest::theBoxAboutQtBelongsToTheWindow()
{
    Trigger(u"About Qt..."_s);
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, u"TarnvikControl"_s);
    QCOMPARE(onlyBox().Parent, Window.get());
}

void CMainWindow_CommandsTest::theAboutBoxReads()
{
    Trigger(u"About TarnvikControl..."_s);
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, u"TarnvikControl"_s);
    QCOMPARE(onlyBox().Text, u"TarnvikControl V2025.12.1.1\n<x64 version>\n\n(C) Quillane GmbH"_s);
    QCOMPARE(onlyBox().Parent, Window.get());
}

void CMainWindow_CommandsTest::theGuideIsSearchedInOrder_data()
{
    QTest::addColumn<QString>("language"); // empty: no translation
    QTest::addColumn<bool>("translatedProduct");
    QTest::addColumn<QStringList>("candidates"); // without a folder: the program's
    QTest::newRow("with no translation English comes first")
        << "" << false
        << QStringList{u"Tarnvik_EN.pdf"_s,
                       u"Tarnvik.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik_EN.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik.pdf"_s,
                       u"Tarnvik_EN.pdf"_s,
                       u"TarnvikTarnvik_EN.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik_DE.pdf"_s};
    QTest::newRow("with German the German one comes first, then the English one")
        << "de" << false
        << QStringList{u"Tarnvik_DE.pdf"_s,
                       u"Tarnvik.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik_DE.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik.pdf"_s,
                       u"Tarnvik_EN.pdf"_s,
                       u"TarnvikTarnvik_EN.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik_DE.pdf"_s};
    QTest::newRow("with French and a translated product")
        << "fr" << true
        << QStringList{u"Anleitung_FR.pdf"_s,
                       u"Anleitung.pdf"_s,
                       u"C:/Program Files/Anleitung/Anleitung_FR.pdf"_s,
                       u"C:/Program Files/Anleitung/Anleitung.pdf"_s,
                       u"Anleitung_EN.pdf"_s,
                       u"AnleitungTarnvik_EN.pdf"_s,
                       u"C:/Program Files/Anleitung/Anleitung_DE.pdf"_s};
    QTest::newRow("with the language C, whose name has no country, none is named")
        << "C" << false
        << QStringList{u"Tarnvik_.pdf"_s,
                       u"Tarnvik.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik_.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik.pdf"_s,
                       u"Tarnvik_EN.pdf"_s,
                       u"TarnvikTarnvik_EN.pdf"_s,
                       u"C:/Program Files/Tarnvik/Tarnvik_DE.pdf"_s};
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
        if (candidate.startsWith(u"C:"_s))
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
        QDesktopServices::setUrlHandler(url.scheme(), this, "Open");
        Trigger(u"Open User Guide"_s);
        QDesktopServices::unsetUrlHandler(url.scheme());
        QCOMPARE(Opened, QList<QUrl>{url});
        QVERIFY(QFile::remove(candidates[first]));
    }
    QVERIFY(Answers->boxes().isEmpty());
}

void CMainWindow_CommandsTest::aMissingGuideIsReported()
{
    Trigger(u"Open User Guide"_s);
    QVERIFY(Opened.isEmpty());
    QCOMPARE(Answers->boxes().size(), 1);
    QCOMPARE(onlyBox().Title, u"File Error"_s);
    QCOMPARE(onlyBox().Text, u"Can not open user guide!"_s);
    QCOMPARE(onlyBox().Icon, QMessageBox::Critical);
    QCOMPARE(onlyBox().Buttons, QMessageBox::Ok);
}

TARNVIK_TEST_MAIN(CMainWindow_CommandsTest, QApplication)

#include "CMainWindow_CommandsTest.moc"
