// SPDX-License-Identifier: MIT
// A desktop of its own for tests of the whole program: display, window manager and tray, and a user's hands.
#pragma once

#include <QProcess>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace tests {

/// Starts the programs of a desktop and points this process and its children to it. Make it before the
/// application object. The desktop ends with the object.
class VirtualDesktop
{
public:
    VirtualDesktop();
    ~VirtualDesktop();
    Q_DISABLE_COPY_MOVE(VirtualDesktop)

    /// Empty when all runs, else what is missing.
    [[nodiscard]] QString error() const { return Error; }

    /// The windows with exactly this title, hidden ones left out.
    [[nodiscard]] static QStringList windows(const QString &title);
    /// A property of a window as the system's tool prints it.
    [[nodiscard]] static QString property(const QString &window, const QString &name);
    /// Gives a window the keyboard and presses keys, named as in "ctrl+q"; false when that fails.
    static bool press(const QString &window, const QStringList &keys);
    /// Clicks with the left button, from the window's upper left corner.
    static bool click(const QString &window, int x, int y);
    /// Saves a picture of the whole desktop.
    static bool savePicture(const QString &file);

private:
    bool startDisplay();
    bool startProgram(const QString &program, const QStringList &arguments);

    std::vector<std::unique_ptr<QProcess>> Programs;
    QString Error;
};

} // namespace tests
