// SPDX-License-Identifier: MIT
// The main window's status panel.
#include "TarnvikControl/CMainWindow.h"

#include "TarnvikControl/QAsyncWatchExec.h"

#include <QApplication>
#include <QDateTime>
#include <QFontInfo>
#include <QTextEdit>

using namespace Qt::StringLiterals;

namespace {

/// Writes the panel piece by piece. Normal text is collected and written when the format is about to change.
class PanelWriter
{
public:
    PanelWriter(QTextEdit &view, const QColor &textColour) : View(view), TextColour(textColour)
    {
        View.clear();
        View.setTextColor(TextColour);
    }
    ~PanelWriter() { flush(); }
    Q_DISABLE_COPY_MOVE(PanelWriter)

    void heading(const QString &text)
    {
        flush();
        View.setFontUnderline(true);
        bold(text, TextColour);
        View.setFontUnderline(false);
    }
    void label(const QString &text) { bold(text, TextColour); }
    void bold(const QString &text, const QColor &colour)
    {
        flush();
        View.setFontWeight(QFont::Bold);
        View.setTextColor(colour);
        View.insertPlainText(text);
        View.setFontWeight(QFont::Normal);
        View.setTextColor(TextColour);
    }
    void normal(const QString &text) { Pending += text; }

private:
    void flush()
    {
        if (!Pending.isEmpty())
            View.insertPlainText(Pending);
        Pending.clear();
    }

    QTextEdit &View;
    QColor TextColour;
    QString Pending;
};

} // namespace

void CMainWindow::BuildStatusView()
{
    auto *const view = new QTextEdit;
    QFont font(u"Consolas"_s);
    if (!QFontInfo(font).exactMatch())
        font = QFont(u"monospace"_s);
    font.setFixedPitch(true);
    font.setStyleHint(QFont::Monospace);
    BasePointSize = font.pointSizeF();
    view->setFont(font);
    view->setReadOnly(true);
    view->setAccessibleName(tr("Program information")); // for screen readers
    view->setUndoRedoEnabled(false);                    // it is rewritten for months; nobody undoes it
    setCentralWidget(view);                             // deletes the one before
    StatusView = view;
}

void CMainWindow::chooseColours()
{
    constexpr QRgb rgbMask = 0x00FFFFFF;
    Palette = QApplication::palette();
    TextColour = Palette.color(QPalette::Text);
    const bool lightText = (TextColour.rgb() & rgbMask) != 0;
    WarningColour = lightText ? Qt::yellow : Qt::darkYellow;
    RunningColour = lightText ? Qt::green : Qt::darkGreen;
    StoppedColour = Qt::red;
}

void CMainWindow::RefreshStatusView()
{
    const bool running = Runner->IsProcessRunning();
    chooseColours();
    {
        PanelWriter panel(*StatusView, TextColour);
        panel.heading(tr("Program information"));
        panel.normal(u"\n\n"_s);
        const QString mode = IsStartHidden ? tr("Hide GUI into tray") : tr("With open GUI");
        panel.label(tr("Start"));
        //: The colon stands in column 21: as many blanks as the label "Start" leaves.
        panel.normal(tr("               : %1\n").arg(mode));
        panel.normal(u"\n"_s);
        panel.heading(tr("TarnvikRecord"));
        panel.normal(u"\n\n"_s);
        panel.label(tr("Program status"));
        //: The colon stands in column 21: as many blanks as the label "Program status" leaves.
        panel.normal(tr("      : "));
        panel.bold(running ? tr("Running") : tr("Stopped"), running ? RunningColour : StoppedColour);
        panel.normal(tr("\n"));
        if (!LastMessage.isEmpty()) {
            QString message = LastMessage;
            //: 22 blanks: every line of a message starts under its first letter.
            message.replace(u"\n"_s, tr("\n                      "));
            panel.label(tr("Last message"));
            //: The colon stands in column 21: as many blanks as the label "Last message" leaves.
            panel.normal(tr("        : %1\n").arg(message));
        }
    }
    LastRefresh = QDateTime::currentSecsSinceEpoch();
}

void CMainWindow::Raw_FileChanged(const StructOstrelRecordStatus &status)
{
    LastMessage = status.Message;
    MessageTag = QOstrelRecordStatus::GetMessageTag(LastMessage);
    RefreshStatusView();
}

void CMainWindow::Raw_RunStateChanged(int /*state*/)
{
    RefreshStatusView();
}
