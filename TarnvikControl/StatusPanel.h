// SPDX-License-Identifier: MIT
// The panel in which the main window shows how the recorder is.
#pragma once

#include <QByteArray>
#include <QColor>
#include <QCoreApplication>
#include <QPalette>
#include <QString>
#include <QTextCharFormat>
#include <QTextEdit>

/// What the panel shows.
struct StatusPanelContent
{
    bool IsStartHidden = false;
    bool IsRunning = false;
    QString LastMessage; ///< without its tags; empty: the panel has no line for it
};

/// A read-only text in the language of the moment in which it is written and the colours of the application,
/// which it follows at once. What a reader does meanwhile is not disturbed: only what differs from the text
/// before is written, the text stays where it was scrolled to, the caret stays in its place, and a selection
/// stays unless the selected text itself changes. Screen readers are told when the recorder has stopped. GUI
/// thread only.
class StatusPanel : public QTextEdit
{
    Q_DECLARE_TR_FUNCTIONS(CMainWindow) // the texts are translated with those of the window

public:
    StatusPanel();

    /// Writes the panel anew.
    void Show(const StatusPanelContent &content);

protected:
    void changeEvent(QEvent *event) override;

private:
    void ChooseColours();
    [[nodiscard]] QTextCharFormat format(char style) const;
    void Write(const QString &text, const QByteArray &styles);
    void FollowColours();

    bool ShowsRunning = false;
    QString Text;      // as the panel wrote it last
    QByteArray Styles; // of each of its units
    QPalette Palette;  // the application's at the last writing, and what follows from it
    QColor TextColour;
    QColor StoppedColour;
    QColor RunningColour;
    // Nothing reads the following; they are kept for whoever looks into the running program.
    QColor WarningColour;
    double BasePointSize = 0;
    qint64 LastRefresh = 0; // time of the last writing, seconds since 1970-01-01 UTC
};
