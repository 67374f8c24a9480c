// SPDX-License-Identifier: MIT
// The whole program as a process beside a recorder, on a desktop of its own, and what a user sees of it.
#pragma once

#include "tests/support/VirtualDesktop.h"
#include "tools/IsolatedFolders.h"

#include <QApplication>
#include <QByteArray>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QSystemTrayIcon>
#include <QTemporaryDir>
#include <QTest>

namespace tests {

inline const QString Title = QStringLiteral("TarnvikControl");
inline const QString QuitTitle = QStringLiteral("Close indication");

/// A folder with the program and a recorder, and the process of the program. It is ended with the object.
class Station
{
public:
    /// The stand-in takes the recorder's name; with an empty one there is none. With a folder's name the
    /// program and all that is beside it lie in a folder of that name.
    explicit Station(const QString &recorderName = QStringLiteral("TarnvikRecord"),
                     const QString &folderName = QString());
    ~Station();
    Q_DISABLE_COPY_MOVE(Station)

    [[nodiscard]] QString path(const QString &name) const { return Place.filePath(name); }
    void start(const QStringList &arguments = QStringList()) { Process.start(path(Title), arguments); }
    /// Sends a signal to the program.
    bool signal(int number);
    /// What the program printed so far.
    QString output();
    /// Without Qt's remark on a locale that is not installed.
    QString errorOutput();
    /// Waits for the program's end; false when it crashes, takes too long or ends with another code.
    bool endedWith(int exitCode);

    QProcess Process;

private:
    QTemporaryDir Folder;
    QDir Place;
    QByteArray Output;
    QByteArray ErrorOutput;
};

/// Copies the built translations into the station's folder; false when there are none or the copying fails.
[[nodiscard]] bool PutTranslationsBeside(const Station &station);

/// The environment of a system with the locale; `languages` are those that the user reads, best first, as in
/// "en:de", and empty for the locale's alone.
[[nodiscard]] QProcessEnvironment SystemIn(const QString &locale, const QString &languages = QString());

/// True while a recorder waits for the request to quit.
[[nodiscard]] bool RecorderListens();

/// The window with the title when there is exactly one, else empty.
[[nodiscard]] QString OnlyWindow(const QString &title);

/// The main window panel's text, taken as a user takes it: select all and copy. Empty when that fails.
[[nodiscard]] QString PanelText();

} // namespace tests

/// Defines main(): isolated folders, a virtual desktop, an application object on it, then the tests.
#define TARNVIK_DESKTOP_TEST_MAIN(TestClass)                                                                 \
    int main(int argc, char **argv)                                                                          \
    {                                                                                                        \
        const tools::IsolatedFolders isolation;                                                              \
        const tests::VirtualDesktop desktop;                                                                 \
        if (!desktop.error().isEmpty())                                                                      \
            qFatal("no desktop to test on: %s", qUtf8Printable(desktop.error()));                            \
        QApplication application(argc, argv);                                                                \
        if (!QTest::qWaitFor(&QSystemTrayIcon::isSystemTrayAvailable, 20000))                                \
            qFatal("no tray to test with");                                                                  \
        TestClass test;                                                                                      \
        return QTest::qExec(&test, argc, argv);                                                              \
    }
