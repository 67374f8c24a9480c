// SPDX-License-Identifier: MIT
#include "TarnvikControl/MenuTable.h"

#include <QAction>
#include <QMenu>
#include <QMenuBar>

void MenuTable::Clear(QMenuBar &bar)
{
    // Clearing the bar takes the menus out of it but leaves them alive.
    const QList<QAction *> titles = bar.actions();
    for (const QAction *title : titles)
        title->menu()->deleteLater();
    bar.clear();
    *this = MenuTable();
}

void MenuTable::AddMenu(QMenuBar &bar, const QString &title)
{
    CurrentMenu = bar.addMenu(title);
}

QAction *MenuTable::AddEntry(const QString &text, const QString &statusTip, const QKeySequence &shortcut,
                             int remembered)
{
    QAction *const action = CurrentMenu->addAction(text);
    if (!statusTip.isEmpty())
        action->setStatusTip(statusTip);
    if (!shortcut.isEmpty())
        action->setShortcut(shortcut);
    if (remembered != NotRemembered) {
        action->setCheckable(true);
        RememberedIndices.at(static_cast<std::size_t>(remembered)) = ActionCount;
    }
    Actions.at(ActionCount) = action;
    ++ActionCount;
    return action;
}

QAction *MenuTable::remembered(int entry) const
{
    return Actions.at(RememberedIndices.at(static_cast<std::size_t>(entry)));
}
