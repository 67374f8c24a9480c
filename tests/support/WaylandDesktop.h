// SPDX-License-Identifier: MIT
// A Wayland desktop of its own for tests of the whole program: compositor, bar with tray, and a user's hands.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

namespace tests {

/// A window that the compositor shows.
struct WaylandWindow
{
    qint64 Id = 0; ///< 0: there is none
    QString Title;
    QString AppId; ///< by which desktops find the icon
    bool HasKeyboard = false;
};

/// Starts the programs of the desktop and points this process and its children to it. The desktop ends with
/// the object.
class WaylandDesktop
{
public:
    WaylandDesktop();
    ~WaylandDesktop();
    Q_DISABLE_COPY_MOVE(WaylandDesktop)

    /// Empty when all runs, else what is missing.
    [[nodiscard]] QString error() const { return Error; }

    /// The windows with this title, the oldest first; hidden ones are none of them.
    [[nodiscard]] static QList<WaylandWindow> windows(const QString &title);
    /// Gives the newest window with the title the keyboard, then presses a key, as in "ctrl+q"; false when
    /// that fails.
    static bool Press(const QString &title, const QString &key);
    /// Closes the newest window with the title as its frame's button does.
    static bool Close(const QString &title);
    /// Saves a picture of the whole desktop.
    static bool SavePicture(const QString &file);

private:
    QProcess Desktop;
    QString Error;
};

/// The only icon in the tray, as the desktop's bar uses it: a StatusNotifierItem on D-Bus, and its menu.
class TrayItem
{
public:
    /// False when there is none, or several.
    [[nodiscard]] static bool isThere();
    [[nodiscard]] static QString title();
    /// Width of its largest picture, in pixels; 0 when it has none.
    [[nodiscard]] static int iconWidth();
    /// A click with the left button.
    static bool Activate();
    /// The texts of its menu, from the top; a separator has none.
    [[nodiscard]] static QStringList menu();
    /// Chooses the entry with the text; false when there is none. What it opens may be open still.
    static bool Choose(const QString &text);
};

} // namespace tests
