// SPDX-License-Identifier: MIT
// The panel in which the main window shows how the recorder is.
#pragma once

#include <QColor>
#include <QCoreApplication>
#include <QPalette>
#include <QString>
#include <QTextEdit>

/// What the panel shows.
struct StatusPanelContent
{
    bool IsStartHidden = false;
    bool IsRunning = false;
    QString LastMessage; ///< without its tags; empty: the panel has no line for it
};

/// A read-only text, rewritten whole with each change, in the language and the colours of that moment. GUI
/// thread only.
class StatusPanel : public QTextEdit
{
    Q_DECLARE_TR_FUNCTIONS(CMainWindow) // the texts are translated with those of the window

public:
    StatusPanel();

    /// Writes the panel anew.
    void Show(const StatusPanelContent &content);

private:
    void ChooseColours();

    QPalette Palette; // the application's at the last writing, and what follows from it
    QColor TextColour;
    QColor StoppedColour;
    QColor RunningColour;
    // Nothing reads the following; they are kept for whoever looks into the running program.
    QColor WarningColour;
    double BasePointSize = 0;
    qint64 LastRefresh = 0; // time of the last writing, seconds since 1970-01-01 UTC
};
