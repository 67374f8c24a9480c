// SPDX-License-Identifier: MIT
// The whole program as a process beside a recorder, and what a user sees of it and does with it.
#pragma once

#include <QByteArray>
#include <QDir>
#include <QProcess>
#include <QProcessEnvironment>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>

namespace tests {

inline const QString Title = QStringLiteral("TarnvikControl");
inline const QString QuitTitle = QStringLiteral("Close indication");

/// The recorder's name on this system.
[[nodiscard]] QString RecorderName();

/// A folder with the program and a recorder, and the process of the program. It is ended with the object, and
/// on Windows with it all that it started.
class Station
{
public:
    /// The stand-in takes the recorder's name; with an empty one there is none. With a folder's name the
    /// program and all that is beside it lie in a folder of that name.
    explicit Station(const QString &recorderName = RecorderName(), const QString &folderName = QString());
    ~Station();
    Q_DISABLE_COPY_MOVE(Station)

    [[nodiscard]] QString path(const QString &name) const { return Place.filePath(name); }
    void Start(const QStringList &arguments = QStringList());
    /// Sends a signal to the program. Windows knows SIGINT only, which is Ctrl-C in the debug console.
    bool Signal(int number);
    /// What the program printed so far, with single line feeds.
    QString output();
    /// Without Qt's remarks on the surroundings of a test.
    QString errorOutput();
    /// Waits for the program's end; false when it crashes, takes too long or ends with another code.
    bool endedWith(int exitCode);

    /// True while there is exactly one window with the title. On Windows it must be the program's; on Linux
    /// nobody else shows windows on the test's desktop.
    [[nodiscard]] bool shows(const QString &title = Title) const;
    /// The main window panel's text, taken as a user takes it: select all and copy. Empty when that fails.
    [[nodiscard]] QString panelText() const;
    /// Asks to quit by the keyboard and answers the question with Yes; false when that fails.
    [[nodiscard]] bool Quit() const;

    QProcess Process;

private:
    /// Lets what the program will start be ended with the object; nothing on Linux.
    void KeepTogether();

    QTemporaryDir Folder;
    QDir Place;
    QByteArray Output;
    QByteArray ErrorOutput;
    std::shared_ptr<void> Started; ///< on Windows the job of the program and of all that it starts
};

/// Copies the built translations into the station's folder; false when there are none or the copying fails.
[[nodiscard]] bool PutTranslationsBeside(const Station &station);

/// The environment of a system with the locale; `languages` are those that the user reads, best first, as in
/// "en:de", and empty for the locale's alone.
[[nodiscard]] QProcessEnvironment SystemIn(const QString &locale, const QString &languages = QString());

} // namespace tests
