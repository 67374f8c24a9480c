// SPDX-License-Identifier: MIT
// Where the recorder keeps its configuration and its records, and how it is asked to quit.
#pragma once

#include <QObject>
#include <QString>
#include <QStringList>

/// Finds the recorder's configuration folder, its location file and its record folder. All functions are
/// static and stateless; they read, and never make, files and folders. Paths have "/" as separator, as Qt
/// returns them. The locations rest on the organisation and application name of the application object.
class QTarnvikBasic : public QObject
{
    Q_OBJECT
    Q_CLASSINFO("Author", "Quillane GmbH")
    Q_CLASSINFO("Status", "Development")

public:
    /// This program's configuration folder; it need not exist.
    static QString GetConfigLocation();

    /// The same with the system's answers given: the folder for `applicationName` in the first of `locations`
    /// that is the machine-wide data folder, else in the first below a ".config" folder, else in the root.
    /// `writableLocation` is taken only when organisation and application name are both empty.
    static QString GetConfigLocation(const QStringList &locations, const QString &writableLocation,
                                     const QString &applicationName);

    /// Completes `path` to end in the organisation's and the application's folder.
    static void AddOrgAndAppFolder(QString &path, const QString &applicationName);

    /// The recorder's configuration folder, with "/" and `fileName` behind it when that is not empty. Empty
    /// when there is no folder.
    static QString GetRecorderFile(const QString &fileName);

    /// The folder that the recorder records into, as the location file names it; it need not exist. Empty
    /// when the location file is missing, cannot be parsed or does not name a folder.
    static QString GetRecordPath();

    /// The same from the location file given; an empty path stands for no file.
    static QString GetRecordPath(const QString &locationFile);

    /// Asks a running recorder to quit, once; nothing is reported. It has the shape of the recorder runner's
    /// stop hook and ignores its arguments.
    static void SendRecorderQuit(void *context, QString &program, QString &workingDirectory,
                                 QStringList &arguments);
};
