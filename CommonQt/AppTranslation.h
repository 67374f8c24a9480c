// SPDX-License-Identifier: MIT
// The language of the user interface: which translation files are installed, and the menu to choose among
// them.
#pragma once

#include <QList>
#include <QLocale>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

class QAction;
class QCoreApplication;
class QMenu;
class QTranslator;

/// Installs the translation files ("<base name>_<language code>.qm") that fit a language best and switches
/// them at run time. The object outlives the application object on both sides: before Init and after the
/// application object has gone every function does nothing. GUI thread only.
class CAppTranslation : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    CAppTranslation();
    ~CAppTranslation() override;

    /// Searches the program's and the current folder from now on and installs the default locale's language.
    /// The application's name must be set. `application` is not owned.
    void Init(QCoreApplication *application);

    /// Replaces the installed translations by those for `locale`. Files that are missing or do not load are
    /// passed over; nothing is reported.
    void LoadLanguage(const QLocale &locale);

    /// Removes all installed translations; currentLanguage is negative then.
    void UnloadTranslators();

    /// The number of languages that the application has a translation file for.
    int CountLanguages() const;

    /// Adds one entry per available language, and English in any case, to `menu`, which owns the entries.
    void FillLanguageMenu(QMenu *menu);

    /// The QLocale::Language loaded last; negative when none is.
    int currentLanguage() const { return Language; }

signals:
    /// The user chose a language and its translations are installed.
    void SignalNewTranslation();

public slots:
    /// Switches to the language whose code is the action's data.
    void SlotLanguageChanged(QAction *action);

private:
    QStringList AvailableCodes() const;
    bool InstallFirstMatch(const QString &baseName, const QStringList &codes);

    std::vector<std::unique_ptr<QTranslator>> Translators; ///< In the order of their installation.
    QPointer<QCoreApplication> Application;
    QStringList
        ExtraBaseNames; ///< Tried after Qt's own and the application's translations; nothing fills it.
    QStringList SearchFolders;
    QStringList SecondFolders; ///< Emptied by Init; not searched.
    int Language = -1;         ///< An int because QLocale::Language has no value for "none".
};

/// The one instance of the program.
extern CAppTranslation AppTranslation;
