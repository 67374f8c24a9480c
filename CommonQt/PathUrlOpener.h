// SPDX-License-Identifier: MIT
// Paths in the place of URLs, for the system's opener.
#pragma once

#include <QObject>

class QUrl;

/// Lets QDesktopServices::openUrl() open paths that are given to it as URLs. "C:/Program Files/Guide.pdf"
/// counts as a URL with the scheme "c", and the system would look for a file "c:/Program%20Files/Guide.pdf".
/// While the object exists, such a URL opens the file that the path names; one that reads like its path goes
/// to the system as it is. A path with "%20" in it means a blank, as in any URL. Make one, on the GUI thread,
/// beside the application object.
class PathUrlOpener : public QObject
{
    Q_OBJECT

public:
    PathUrlOpener();
    ~PathUrlOpener() override;
    Q_DISABLE_COPY_MOVE(PathUrlOpener)

public slots:
    /// Called by QDesktopServices.
    void SlotOpen(const QUrl &url);
};
