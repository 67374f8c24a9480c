// SPDX-License-Identifier: MIT
// The entries of the menu bar, and which of them are looked up later.
#pragma once

#include <QKeySequence>
#include <QPointer>
#include <QString>

#include <array>
#include <cstddef>

class QAction;
class QMenu;
class QMenuBar;

/// Fills a menu bar and keeps its entries in the order in which they were made. The bar owns the menus, the
/// menus own their entries. GUI thread only.
class MenuTable
{
public:
    /// Entries that are looked up later; the last five in the order of the values of "GuiStyle".
    enum RememberedEntry {
        HideWhenClose,
        StartHidden,
        DefaultStyle,
        LightFusion,
        DarkFusion,
        LightWindows11,
        DarkWindows11,
        RememberedEntryCount
    };
    static constexpr int NotRemembered = -1;

    /// Empties the bar. Its menus are deleted later: one of them may be the sender of the signal that led
    /// here.
    void Clear(QMenuBar &bar);

    /// Adds a menu to the bar; further entries go there.
    void AddMenu(QMenuBar &bar, const QString &title);
    /// The menu that is being filled.
    [[nodiscard]] QMenu &current() const { return *CurrentMenu; }

    /// Adds an entry to the current menu; one that is remembered is checkable.
    QAction *AddEntry(const QString &text, const QString &statusTip, const QKeySequence &shortcut,
                      int remembered);

    /// The remembered entry. If it was not built: the entry at index 0, the first of the File menu. A stored
    /// style without an entry therefore opens the record folder at the start; this is meant so.
    [[nodiscard]] QAction *remembered(int entry) const;

private:
    QMenu *CurrentMenu = nullptr;
    std::array<QPointer<QAction>, 24> Actions;
    std::size_t ActionCount = 0;
    std::array<std::size_t, RememberedEntryCount> RememberedIndices = {}; // 0 until the entry is built
};
