// SPDX-License-Identifier: MIT
#include "TarnvikControl/StatusPanel.h"

#include <QApplication>
#include <QDateTime>
#include <QFontInfo>

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
    ~PanelWriter() { Flush(); }
    Q_DISABLE_COPY_MOVE(PanelWriter)

    void Heading(const QString &text)
    {
        Flush();
        View.setFontUnderline(true);
        Bold(text, TextColour);
        View.setFontUnderline(false);
    }
    void Label(const QString &text) { Bold(text, TextColour); }
    void Bold(const QString &text, const QColor &colour)
    {
        Flush();
        View.setFontWeight(QFont::Bold);
        View.setTextColor(colour);
        View.insertPlainText(text);
        View.setFontWeight(QFont::Normal);
        View.setTextColor(TextColour);
    }
    void Normal(const QString &text) { Pending += text; }

private:
    void Flush()
    {
        if (!Pending.isEmpty())
            View.insertPlainText(Pending);
        Pending.clear();
    }

    QTextEdit &View;
    QColor TextColour;
    QString Pending;
};

QFont PanelFont()
{
    QFont font(u"Consolas"_s);
    if (!QFontInfo(font).exactMatch())
        font = QFont(u"monospace"_s);
    font.setFixedPitch(true);
    font.setStyleHint(QFont::Monospace);
    return font;
}

} // namespace

StatusPanel::StatusPanel()
{
    const QFont font = PanelFont();
    BasePointSize = font.pointSizeF();
    setFont(font);
    setReadOnly(true);
    setAccessibleName(tr("Program information")); // for screen readers
    setUndoRedoEnabled(false);                    // it is rewritten for months; nobody undoes it
}

void StatusPanel::ChooseColours()
{
    constexpr QRgb rgbMask = 0x00FFFFFF;
    Palette = QApplication::palette();
    TextColour = Palette.color(QPalette::Text);
    const bool lightText = (TextColour.rgb() & rgbMask) != 0;
    WarningColour = lightText ? Qt::yellow : Qt::darkYellow;
    RunningColour = lightText ? Qt::green : Qt::darkGreen;
    StoppedColour = Qt::red;
}

void StatusPanel::Show(const StatusPanelContent &content)
{
    ChooseColours();
    LastRefresh = QDateTime::currentSecsSinceEpoch();
    PanelWriter panel(*this, TextColour);
    panel.Heading(tr("Program information"));
    panel.Normal(u"\n\n"_s);
    const QString mode = content.IsStartHidden ? tr("Hide GUI into tray") : tr("With open GUI");
    panel.Label(tr("Start"));
    //: The colon stands in column 21: as many blanks as the label "Start" leaves.
    panel.Normal(tr("               : %1\n").arg(mode));
    panel.Normal(u"\n"_s);
    panel.Heading(tr("TarnvikRecord"));
    panel.Normal(u"\n\n"_s);
    panel.Label(tr("Program status"));
    //: The colon stands in column 21: as many blanks as the label "Program status" leaves.
    panel.Normal(tr("      : "));
    panel.Bold(content.IsRunning ? tr("Running") : tr("Stopped"),
               content.IsRunning ? RunningColour : StoppedColour);
    panel.Normal(tr("\n"));
    if (content.LastMessage.isEmpty())
        return;
    QString message = content.LastMessage;
    //: 22 blanks: every line of a message starts under its first letter.
    message.replace(u"\n"_s, tr("\n                      "));
    panel.Label(tr("Last message"));
    //: The colon stands in column 21: as many blanks as the label "Last message" leaves.
    panel.Normal(tr("        : %1\n").arg(message));
}
