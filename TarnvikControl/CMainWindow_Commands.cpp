// SPDX-License-Identifier: MIT
// What the main window's menu entries do.
#include "TarnvikControl/CMainWindow.h"

#include "CommonQt/AppTranslation.h"
#include "Common_Files/TarnvikBasic.h"
#include "Common_Files/Version.h"
#include "TarnvikControl/QDialog/QDlgAlignmentCfg.h"
#include "TarnvikControl/SettingsKeys.h"
#include "TarnvikControl/WindowHiding.h"

#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QSettings>
#include <QStandardPaths>
#include <QStyleFactory>
#include <QUrl>

#include <memory>
#include <new>

using namespace Qt::StringLiterals;

namespace {

/// A root folder ("/", "D:\") has no name of its own; its link gets this one.
const QString NameOfRoot = u"Records"_s;

/// Below this a version has the major number 0.
constexpr std::uint64_t FirstReleasedVersion = 0x1000000;

} // namespace

void CMainWindow::Warn(const QString &text)
{
    QMessageBox::warning(this, tr("Error"), text, QMessageBox::Ok);
}

/// The record folder, absolute; empty after a warning when there is none.
QString CMainWindow::ExistingRecordPath()
{
    QString path = QTarnvikBasic::GetRecordPath();
    if (path.isEmpty()) {
        Warn(tr("No 'record path' in configuration file found!"));
        return QString();
    }
    if (!QFileInfo::exists(path)) {
        Warn(tr("'record path' does not exists\n<%1>").arg(path));
        return QString();
    }
    // A relative path would be taken from wherever the receiver of the path looks at it.
    return QDir::current().absoluteFilePath(path);
}

void CMainWindow::OpenRecordFolder()
{
    const QString path = ExistingRecordPath();
    if (!path.isEmpty())
        QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void CMainWindow::CreateRecordFolderLink()
{
    const QString path = ExistingRecordPath();
    if (path.isEmpty())
        return;
    const QString target = QDir::cleanPath(path); // what ends in a separator has no last component
    const QString folder = QFileInfo(target).fileName();
    const QString link = u"%1/%2.lnk"_s.arg(QStandardPaths::writableLocation(QStandardPaths::DesktopLocation),
                                            folder.isEmpty() ? NameOfRoot : folder);
    // Windows would write over a link that is there. A shell link counts as existing only while its target
    // does.
    const QFileInfo present(link);
    if (present.exists() || present.isSymLink() || !QFile::link(target, link)) {
        Warn(tr("Failed to create link on desktop!\n%1").arg(link));
        return;
    }
    OpenRecordFolder();
}

void CMainWindow::Raw_Menu_File_OpenDrawer_Record()
{
    OpenRecordFolder();
}

void CMainWindow::Raw_Menu_File_CreateDrawerLink()
{
    CreateRecordFolderLink();
}

void CMainWindow::Raw_Menu_File_OpenDrawer_Settings()
{
    const QString folder = QFileInfo(LocationFile).absolutePath();
    if (QFileInfo::exists(folder))
        QDesktopServices::openUrl(QUrl::fromLocalFile(folder));
    else
        Warn(tr("Drawer does not exists!\n%1").arg(folder));
}

void CMainWindow::Raw_Menu_File_Hide()
{
    HideWindow(*this);
}

void CMainWindow::Raw_Menu_Align_Show()
{
    const std::unique_ptr<QDlgAlignmentCfg> dialog(new (std::nothrow) QDlgAlignmentCfg);
    if (dialog == nullptr)
        return;
    (void)dialog->LoadDriverFiles(); // errors are not shown
    dialog->exec();
}

void CMainWindow::Raw_Menu_View_SaveWindow()
{
    SaveWindow();
}

void CMainWindow::Raw_Menu_View_RestoreWindow()
{
    RestoreWindow();
}

void CMainWindow::Raw_Menu_View_Close2Hide()
{
    ReallyClose = !ReallyClose;
    Settings->setValue(CloseIsMinimizeKey, ReallyClose);
    ApplySettingsMarks();
}

void CMainWindow::Raw_Menu_View_Start2Hide()
{
    IsStartHidden = !IsStartHidden;
    Settings->setValue(StartHiddenKey, IsStartHidden);
    ApplySettingsMarks();
}

void CMainWindow::Raw_Menu_View_AboutQt()
{
    QMessageBox::aboutQt(this, QGuiApplication::applicationDisplayName());
}

void CMainWindow::ShowAbout()
{
    const QString name = QGuiApplication::applicationDisplayName();
    QString text = tr("%1 V%2").arg(name, QCoreApplication::applicationVersion());
    if (PackedVersion < FirstReleasedVersion)
        //: The date of the build and ")" follow.
        text += tr(" (technical preview ") + QStringLiteral(__DATE__) + u")"_s;
    text += u"\n"_s;
    text += tr("<x64 version>\n");
    text += tr("\n(C) %1").arg(QCoreApplication::organizationName());
    QMessageBox::about(this, name, text);
}

void CMainWindow::Raw_Menu_View_AboutPrg()
{
    ShowAbout();
}

void CMainWindow::OpenUserGuide()
{
    const QString folder = QCoreApplication::applicationDirPath() + u"/"_s;
    //: The beginning of the user guide's file name.
    const QString product = tr("Tarnvik");
    const int current = AppTranslation.currentLanguage();
    QString language = u"EN_"_s;
    if (current >= 0)
        language = QLocale(static_cast<QLocale::Language>(current)).name();
    language = language.section(u'_', 0, -2).toUpper(); // empty without "_"
    const QString shared = u"C:/Program Files/"_s;
    const QStringList candidates = {
        u"%1%2_%3.pdf"_s.arg(folder, product, language),
        u"%1%2.pdf"_s.arg(folder, product),
        u"%1%2/%2_%3.pdf"_s.arg(shared, product, language),
        u"%1%2/%2.pdf"_s.arg(shared, product),
        u"%1%2_EN.pdf"_s.arg(folder, product),
        u"%1%2Tarnvik_EN.pdf"_s.arg(folder, product),
        u"%1%2/%2_%3.pdf"_s.arg(shared, product, u"DE"_s),
    };
    for (const QString &candidate : candidates) {
        if (QFile::exists(candidate)) {
            QDesktopServices::openUrl(QUrl(candidate, QUrl::TolerantMode));
            return;
        }
    }
    QMessageBox::critical(this, tr("File Error"), tr("Can not open user guide!"), QMessageBox::Ok);
}

void CMainWindow::Raw_Menu_View_OpenReadMe()
{
    OpenUserGuide();
}

void CMainWindow::SetAndStoreStyle(const QString &name, ColourScheme scheme, int guiStyle)
{
    if (!name.isEmpty())
        QApplication::setStyle(QStyleFactory::create(name));
    SetColourScheme(scheme);
    Settings->setValue(GuiStyleKey, guiStyle);
    UpdateStyleMarks();
    RefreshStatusView();
}

void CMainWindow::ApplyStyleIfAvailable(const QString &name, ColourScheme scheme, int guiStyle)
{
    if (StyleNames().contains(name))
        SetAndStoreStyle(name, scheme, guiStyle);
    else
        RefreshStatusView();
}

void CMainWindow::ApplyDefaultStyle()
{
    const QStringList styles = StyleNames();
    QString name = styles.value(0);
    if (styles.contains(Windows11))
        name = Windows11;
    else if (styles.contains(Fusion))
        name = Fusion;
    SetAndStoreStyle(name, ColourScheme::FollowSystem, 0);
}

void CMainWindow::Raw_Menu_View_WindowStyle()
{
    ApplyDefaultStyle();
}

void CMainWindow::Raw_Menu_View_LightFusionStyle()
{
    ApplyStyleIfAvailable(Fusion, ColourScheme::Light, 1);
}

void CMainWindow::Raw_Menu_View_DarkFusionStyle()
{
    ApplyStyleIfAvailable(Fusion, ColourScheme::Dark, 2);
}

void CMainWindow::Raw_Menu_View_LightWindows11Style()
{
    ApplyStyleIfAvailable(Windows11, ColourScheme::Light, 3);
}

void CMainWindow::Raw_Menu_View_DarkWindows11Style()
{
    ApplyStyleIfAvailable(Windows11, ColourScheme::Dark, 4);
}
