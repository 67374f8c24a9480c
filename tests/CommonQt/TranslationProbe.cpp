// SPDX-License-Identifier: MIT
// Prints what the translation service finds from where this program lies. The arguments take effect in their
// order.
#include "CommonQt/AppTranslation.h"

#include <QAction>
#include <QApplication>
#include <QLocale>
#include <QMenu>
#include <QTextStream>

using namespace Qt::StringLiterals;

namespace {

void PrintState(QTextStream &out)
{
    out << "count=" << AppTranslation.CountLanguages() << '\n';
    out << "language=" << AppTranslation.currentLanguage() << '\n';
    out << "text=" << QCoreApplication::translate("Sample", "language") << '\n';
    QMenu menu;
    AppTranslation.FillLanguageMenu(&menu);
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        out << "entry=" << action->text() << '|' << action->data().toString() << '|'
            << (action->isChecked() ? "checked" : "-") << '\n';
    }
}

} // namespace

/// Arguments: no-application (end at once), locale=CODE (the default locale), init, print, unload.
int main(int argc, char **argv)
{
    if (argc == 2 && qstrcmp(argv[1], "no-application") == 0)
        return 0;
    QTextStream out(stdout);
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationName(u"TarnvikControl"_s);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    for (const QString &argument : arguments) {
        if (argument.startsWith(QLatin1String("locale=")))
            QLocale::setDefault(QLocale(argument.section(u'=', 1)));
        else if (argument == QLatin1String("init"))
            AppTranslation.Init(QCoreApplication::instance());
        else if (argument == QLatin1String("print"))
            PrintState(out);
        else if (argument == QLatin1String("unload"))
            AppTranslation.UnloadTranslators();
        else
            return 2;
    }
    return 0;
}
