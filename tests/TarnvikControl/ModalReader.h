// SPDX-License-Identifier: MIT
// Reads message boxes and file dialogs and closes them.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QStringList>
#include <QTimer>

class QFileDialog;

namespace tests {

/// While it exists every message box and every file dialog is read when it opens, and then closed: a box with
/// the button set last if it has it, else with the Escape key; a file dialog with the Escape key. File
/// dialogs are Qt's own as long as it lives.
class ModalReader : public QObject
{
    Q_OBJECT

public:
    ModalReader();
    ~ModalReader() override;

    void SetAnswer(QMessageBox::StandardButton answer) { Answer = answer; }
    /// The next file dialog is accepted as it is offered; a question that follows is answered with No.
    void AcceptNextFileDialog() { AcceptFiles = true; }

    /// The titles of all that opened, in order.
    [[nodiscard]] const QStringList &titles() const { return Titles; }
    /// All their texts, see ShownTexts, with those of the menus that their text fields and lists offer.
    [[nodiscard]] const QStringList &texts() const { return Texts; }
    [[nodiscard]] const QStringList &collisions() const { return Collisions; }
    [[nodiscard]] const QStringList &cutOff() const { return CutOff; }

private:
    void Look();
    void Read(QWidget &window);
    void ReadContextMenus(QFileDialog &dialog);

    QMessageBox::StandardButton Answer = QMessageBox::Ok;
    bool AcceptFiles = false;
    bool Accepting = false; // until the question that follows was answered
    QStringList Titles;
    QStringList Texts;
    QStringList Collisions;
    QStringList CutOff;
    QTimer Timer;
};

/// The menu that a right click on the widget opens; it is closed again. The texts and what collides in it.
struct ContextMenuTexts
{
    QStringList Texts;
    QStringList Collisions;
};
[[nodiscard]] ContextMenuTexts ReadContextMenu(QWidget &widget);

} // namespace tests
