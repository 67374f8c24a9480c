// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/MenuEntries.h"

#include <QMenu>
#include <QMenuBar>

using namespace Qt::StringLiterals;

namespace tests {

QAction *MenuEntry(const QMainWindow &window, const QString &text)
{
    const QList<QAction *> titles = window.menuBar()->actions();
    for (const QAction *title : titles) {
        const QList<QAction *> entries = title->menu()->actions();
        for (QAction *entry : entries) {
            if (entry->text() == text)
                return entry;
        }
    }
    return nullptr;
}

QString CheckedStyles(const QMainWindow &window)
{
    const QString texts[] = {
        u"View in default style"_s,         u"View in light Fusion style"_s,
        u"View in dark Fusion style"_s,     u"View in light Windows 11 style"_s,
        u"View in dark Windows 11 style"_s,
    };
    QString checked;
    for (int style = 0; style < 5; ++style) {
        const QAction *const entry = MenuEntry(window, texts[style]);
        if (entry && entry->isChecked())
            checked += QString::number(style);
    }
    return checked;
}

QSettings StoredSettings()
{
    return QSettings(u"Quillane"_s, u"TarnvikControl"_s);
}

} // namespace tests
