// SPDX-License-Identifier: MIT
#include "CommonQt/AppTranslation.h"

#include <QAction>
#include <QActionGroup>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QMenu>
#include <QTranslator>

#include <algorithm>
#include <new>
#include <utility>

using namespace Qt::StringLiterals;

CAppTranslation AppTranslation;

namespace {

/// The codes that the names of translation files for `locale` may carry, best first.
QStringList LanguageCodes(const QLocale &locale)
{
    QStringList tags = locale.uiLanguages();
    tags.append(locale.bcp47Name());
    QStringList codes;
    for (qsizetype i = 0; i < tags.size(); ++i) {
        codes.append(tags[i]);
        if (tags[i].indexOf(u'-') != 2)
            continue;
        // The bare language comes behind all its own tags, which fit better, but before the next language: a
        // user who reads German, then English, gets "de" rather than "en".
        const QString language = tags[i].first(2);
        if (!tags.value(i + 1).startsWith(language + u'-'))
            codes.append(language);
    }
    codes.removeDuplicates();
    return codes;
}

/// Loads exactly the file at `path`. With Qt's default delimiters and suffix the translator would go on to
/// try shorter names.
bool LoadFile(QTranslator &translator, const QString &path)
{
    const QString none = u""_s; // empty but not null, which stands for Qt's defaults
    return translator.load(path, QString(), none, none);
}

} // namespace

CAppTranslation::CAppTranslation() = default;

CAppTranslation::~CAppTranslation()
{
    UnloadTranslators();
}

void CAppTranslation::Init(QCoreApplication *application)
{
    Application = application;
    SearchFolders.clear();
    SecondFolders.clear();
    QStringList parents;
    if (Application)
        parents.append(QCoreApplication::applicationDirPath());
    parents.append(QDir::currentPath());
    for (const QString &parent : std::as_const(parents)) {
        SearchFolders.append(u"%1/languages/"_s.arg(parent));
        SearchFolders.append(u"%1/"_s.arg(parent));
    }
    SearchFolders.removeDuplicates();
    LoadLanguage(QLocale());
}

void CAppTranslation::LoadLanguage(const QLocale &locale)
{
    if (!Application)
        return;
    const QStringList codes = LanguageCodes(locale);
    UnloadTranslators();
    Language = locale.language();
    if (Language == QLocale::C)
        return;
    const QStringList baseNames = QStringList{u"qt"_s, QCoreApplication::applicationName()} + ExtraBaseNames;
    for (const QString &baseName : baseNames) {
        if (!InstallFirstMatch(baseName, codes))
            return;
    }
}

/// Installs the first file for `baseName` that loads. False only when memory is short: the search then ends.
bool CAppTranslation::InstallFirstMatch(const QString &baseName, const QStringList &codes)
{
    for (const QString &code : codes) {
        const QString fileName = u"%1_%2.qm"_s.arg(baseName, code);
        for (const QString &folder : std::as_const(SearchFolders)) {
            const QString path = u"%1/%2"_s.arg(folder, fileName);
            if (!QFile::exists(path))
                continue;
            std::unique_ptr<QTranslator> translator(new (std::nothrow) QTranslator);
            if (!translator)
                return false;
            if (LoadFile(*translator, path) && QCoreApplication::installTranslator(translator.get())) {
                Translators.push_back(std::move(translator));
                return true;
            }
        }
    }
    return true;
}

void CAppTranslation::UnloadTranslators()
{
    if (!Application)
        return;
    for (const auto &translator : Translators)
        QCoreApplication::removeTranslator(translator.get());
    Translators.clear();
    Language = -1;
}

/// The codes of the application's translation files in the search folders, each once.
QStringList CAppTranslation::AvailableCodes() const
{
    QStringList codes;
    if (!Application)
        return codes;
    const QStringList filter(u"%1_*.qm"_s.arg(QCoreApplication::applicationName()));
    for (const QString &folder : SearchFolders) {
        const QStringList fileNames = QDir(folder).entryList(filter, QDir::Files);
        for (const QString &fileName : fileNames) {
            const QString baseAndCode = fileName.left(fileName.lastIndexOf(u'.'));
            codes.append(baseAndCode.mid(baseAndCode.indexOf(u'_') + 1));
        }
    }
    codes.removeDuplicates();
    return codes;
}

int CAppTranslation::CountLanguages() const
{
    return static_cast<int>(AvailableCodes().size());
}

void CAppTranslation::FillLanguageMenu(QMenu *menu)
{
    if (!Application || !menu)
        return;
    auto *group = new QActionGroup(menu);
    group->setExclusive(true);
    connect(group, &QActionGroup::triggered, this, &CAppTranslation::SlotLanguageChanged);
    const auto addEntry = [menu, group](const QString &text, const QString &code, bool checked) {
        QAction *action = menu->addAction(text);
        action->setData(code);
        action->setCheckable(true);
        group->addAction(action);
        action->setChecked(checked); // in the group already, so that no two are checked
    };

    QString currentCode;
    if (Language >= 0)
        currentCode = QLocale(static_cast<QLocale::Language>(Language)).name().section(u'_', 0, -2);
    const QStringList codes = AvailableCodes();
    const bool hasEnglish = std::any_of(codes.begin(), codes.end(), [](const QString &code) {
        return code.startsWith(QLatin1String("EN"), Qt::CaseInsensitive);
    });
    if (!hasEnglish) {
        const QString english = u"en"_s;
        //: The menu's entry for English.
        addEntry(tr("en"), english, Translators.empty() || Language == QLocale(english).language());
    }
    for (const QString &code : codes)
        addEntry(code, code, code == currentCode);
}

void CAppTranslation::SlotLanguageChanged(QAction *action)
{
    if (!Application || !action)
        return;
    const QString code = action->data().toString();
    LoadLanguage(QLocale(code));
    QLocale::setDefault(QLocale(code));
    emit SignalNewTranslation();
}
