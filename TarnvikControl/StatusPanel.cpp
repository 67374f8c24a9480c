// SPDX-License-Identifier: MIT
#include "TarnvikControl/StatusPanel.h"

#include <QAccessible>
#include <QApplication>
#include <QDateTime>
#include <QFontInfo>
#include <QScrollBar>
#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// How a stretch of the panel is written.
enum Style : char { Normal, Label, Heading, Running, Stopped };

/// What the panel is to read: the text as a document keeps it, with one unit for each line break, and the
/// style of each of its units.
struct StyledText
{
    QString Text;
    QByteArray Styles;

    void Add(const QString &text, Style style)
    {
        Text += QTextDocument(text).toRawText();
        Styles.resize(Text.size(), style);
    }
};

/// The part of a text that differs from another one; behind NewEnd both go on alike.
struct Difference
{
    qsizetype Begin = 0;
    qsizetype OldEnd = 0;
    qsizetype NewEnd = 0;
};

Difference Compare(const QString &old, const QByteArray &oldStyles, const StyledText &next)
{
    Difference part{0, old.size(), next.Text.size()};
    const auto alike = [&](qsizetype oldPlace, qsizetype newPlace) {
        return old.at(oldPlace) == next.Text.at(newPlace) &&
               oldStyles.at(oldPlace) == next.Styles.at(newPlace);
    };
    while (part.Begin < std::min(part.OldEnd, part.NewEnd) && alike(part.Begin, part.Begin))
        ++part.Begin;
    // A letter of two units must not be torn: the halves would be drawn each for itself.
    if (part.Begin > 0 && old.at(part.Begin - 1).isHighSurrogate())
        --part.Begin;
    while (std::min(part.OldEnd, part.NewEnd) > part.Begin && alike(part.OldEnd - 1, part.NewEnd - 1)) {
        --part.OldEnd;
        --part.NewEnd;
    }
    if (part.OldEnd < old.size() && old.at(part.OldEnd).isLowSurrogate()) {
        ++part.OldEnd;
        ++part.NewEnd;
    }
    return part;
}

/// The end of the stretch in one style that begins there; not beyond the limit.
qsizetype StretchEnd(const QByteArray &styles, qsizetype begin, qsizetype limit)
{
    const auto isOther = [style = styles.at(begin)](char other) { return other != style; };
    return std::find_if(styles.begin() + begin, styles.begin() + limit, isOther) - styles.begin();
}

QFont PanelFont()
{
    QFont font(u"Consolas"_s);
    if (!QFontInfo(font).exactMatch())
        font = QFont(u"monospace"_s);
    font.setFixedPitch(true);
    font.setStyleHint(QFont::Monospace);
    return font;
}

/// Has a screen reader say the text at once, wherever the keyboard is; with a Qt that cannot, nothing.
void Announce([[maybe_unused]] QObject &source, [[maybe_unused]] const QString &text)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 8, 0)
    QAccessibleAnnouncementEvent event(&source, text);
    event.setPoliteness(QAccessible::AnnouncementPoliteness::Assertive);
    QAccessible::updateAccessibility(&event);
#endif
}

} // namespace

StatusPanel::StatusPanel()
{
    const QFont font = PanelFont();
    BasePointSize = font.pointSizeF();
    setFont(font);
    setReadOnly(true);
    // Who reads with a screen reader goes through the text with the arrow keys.
    setTextInteractionFlags(textInteractionFlags() | Qt::TextSelectableByKeyboard);
    setAccessibleName(tr("Program information"));
    setUndoRedoEnabled(false); // it is rewritten for months; nobody undoes it
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

QTextCharFormat StatusPanel::format(char style) const
{
    QTextCharFormat format;
    format.setFontWeight(style == Normal ? QFont::Normal : QFont::Bold);
    format.setFontUnderline(style == Heading);
    format.setForeground(style == Running ? RunningColour : style == Stopped ? StoppedColour : TextColour);
    return format;
}

void StatusPanel::Show(const StatusPanelContent &content)
{
    LastRefresh = QDateTime::currentSecsSinceEpoch();
    StyledText text;
    text.Add(tr("Program information"), Heading);
    text.Add(u"\n\n"_s, Normal);
    text.Add(tr("Start"), Label);
    const QString mode = content.IsStartHidden ? tr("Hide GUI into tray") : tr("With open GUI");
    //: The colon stands in column 21: as many blanks as the label "Start" leaves.
    text.Add(tr("               : %1\n").arg(mode), Normal);
    text.Add(u"\n"_s, Normal);
    text.Add(tr("TarnvikRecord"), Heading);
    text.Add(u"\n\n"_s, Normal);
    text.Add(tr("Program status"), Label);
    //: The colon stands in column 21: as many blanks as the label "Program status" leaves.
    text.Add(tr("      : "), Normal);
    text.Add(content.IsRunning ? tr("Running") : tr("Stopped"), content.IsRunning ? Running : Stopped);
    text.Add(tr("\n"), Normal);
    if (!content.LastMessage.isEmpty()) {
        QString message = content.LastMessage;
        //: 22 blanks: every line of a message starts under its first letter.
        message.replace(u"\n"_s, tr("\n                      "));
        text.Add(tr("Last message"), Label);
        //: The colon stands in column 21: as many blanks as the label "Last message" leaves.
        text.Add(tr("        : %1\n").arg(message), Normal);
    }
    FollowColours();
    Write(text.Text, text.Styles);
    if (ShowsRunning && !content.IsRunning)
        Announce(*this, tr("TarnvikRecord") + u": "_s + tr("Stopped"));
    ShowsRunning = content.IsRunning;
}

void StatusPanel::changeEvent(QEvent *event)
{
    QTextEdit::changeEvent(event);
    if (event->type() == QEvent::PaletteChange)
        FollowColours();
}

void StatusPanel::Write(const QString &text, const QByteArray &styles)
{
    const QString shown = document()->toRawText();
    // Read-only is what the keyboard and the mouse are told; assistive technology can write all the same.
    const Difference part =
        shown == Text ? Compare(Text, Styles, {text, styles}) : Difference{0, shown.size(), text.size()};
    Text = text;
    Styles = styles;
    if (part.Begin == part.OldEnd && part.Begin == part.NewEnd)
        return;
    const int anchor = textCursor().anchor();
    const int position = textCursor().position();
    const int scrolledTo = verticalScrollBar()->value();

    QTextCursor writer(document());
    writer.beginEditBlock();
    writer.setPosition(static_cast<int>(part.Begin));
    writer.setPosition(static_cast<int>(part.OldEnd), QTextCursor::KeepAnchor);
    writer.removeSelectedText();
    for (qsizetype begin = part.Begin, end = 0; begin < part.NewEnd; begin = end) {
        end = StretchEnd(styles, begin, part.NewEnd);
        writer.insertText(text.sliced(begin, end - begin), format(styles.at(begin)));
    }
    writer.endEditBlock();

    // The document moves its cursors with the text, but stretches a selection over what is put in at its end
    // and takes one that only reads to the end of what is new.
    const bool isBefore = std::max(anchor, position) <= part.Begin;
    const bool isBehind = !isBefore && std::min(anchor, position) >= part.OldEnd;
    const int shift = isBehind ? static_cast<int>(part.NewEnd - part.OldEnd) : 0;
    QTextCursor reader = textCursor();
    if (isBefore || isBehind) {
        reader.setPosition(anchor + shift);
        reader.setPosition(position + shift, QTextCursor::KeepAnchor);
    } else {
        reader.setPosition(std::min(position, static_cast<int>(part.NewEnd)));
    }
    setTextCursor(reader); // scrolls to it
    verticalScrollBar()->setValue(scrolledTo);
}

void StatusPanel::FollowColours()
{
    const QColor before = TextColour;
    ChooseColours();
    if (TextColour == before) // the others follow it
        return;
    QTextCursor writer(document());
    writer.beginEditBlock();
    for (qsizetype begin = 0, end = 0; begin < Styles.size(); begin = end) {
        end = StretchEnd(Styles, begin, Styles.size());
        writer.setPosition(static_cast<int>(begin));
        writer.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
        writer.setCharFormat(format(Styles.at(begin)));
    }
    writer.endEditBlock();
}
