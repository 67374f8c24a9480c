// SPDX-License-Identifier: MIT
// A desktop of its own for tests of the whole program: display, window manager and tray, and a user's hands.
#pragma once

#include <QPoint>
#include <QProcess>
#include <QRect>
#include <QString>
#include <QStringList>

namespace tests {

/// Starts the programs of a desktop and points this process and its children to it. Make it before the
/// application object. The desktop ends with the object.
class VirtualDesktop
{
public:
    enum class Tray { Present, Absent };

    explicit VirtualDesktop(Tray tray = Tray::Present);
    ~VirtualDesktop();
    Q_DISABLE_COPY_MOVE(VirtualDesktop)

    /// Empty when all runs, else what is missing.
    [[nodiscard]] QString error() const { return Error; }

    /// The windows with exactly this title, hidden ones left out.
    [[nodiscard]] static QStringList windows(const QString &title);
    /// Those of them that are dialogs.
    [[nodiscard]] static QStringList dialogs(const QString &title);
    /// True when the window is minimised.
    [[nodiscard]] static bool isMinimised(const QString &window);
    /// A property of a window as the system's tool prints it.
    [[nodiscard]] static QString property(const QString &window, const QString &name);
    /// Gives a window the keyboard and presses keys, named as in "ctrl+q"; false when that fails.
    static bool Press(const QString &window, const QStringList &keys);
    /// Presses keys where the keyboard is: in an open menu, which is no window of the window manager's.
    static bool Press(const QStringList &keys);
    /// Types a text where the keyboard is.
    static bool Type(const QString &text);
    /// A window's place on the desktop, without its frame; empty when there is no such window.
    [[nodiscard]] static QRect geometry(const QString &window);
    /// The place of an open pop-up menu; empty when there is none. Menus are no windows of the window
    /// manager's.
    [[nodiscard]] static QRect openMenu();
    /// Clicks at a place of the desktop; 1 is the left button, 3 the right one.
    static bool Click(const QPoint &place, int button = 1);
    /// Clicks twice with the left button, as fast as a user does.
    static bool DoubleClick(const QPoint &place);
    /// Begins to drag with the left button from one place of the desktop to another and drops there. Returns
    /// at once; the program that is dragged from may be this one.
    static bool StartDragAndDrop(const QPoint &from, const QPoint &to);
    /// Saves a picture of the whole desktop.
    static bool SavePicture(const QString &file);

private:
    QProcess Desktop;
    QString Error;
};

/// The window with the title when there is exactly one, else empty.
[[nodiscard]] QString OnlyWindow(const QString &title);

} // namespace tests
