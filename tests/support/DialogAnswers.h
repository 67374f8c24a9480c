// SPDX-License-Identifier: MIT
// Answers message boxes as a user would, and remembers what they said.
#pragma once

#include <QHash>
#include <QList>
#include <QMessageBox>
#include <QObject>
#include <QString>
#include <QTimer>

namespace tests {

/// What a message box showed.
struct ShownBox
{
    QString Title;
    QString Text;
    QMessageBox::Icon Icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons Buttons;
    QWidget *Parent = nullptr;
    bool Modal = false;
    Qt::WindowFlags Flags;
};

/// While it exists every message box is answered: with the button set for its title if there is one, else
/// with the button set last. NoButton stands for the Escape key.
class DialogAnswers : public QObject
{
    Q_OBJECT

public:
    explicit DialogAnswers(QMessageBox::StandardButton answer);

    void SetAnswer(QMessageBox::StandardButton answer) { Answer = answer; }
    void SetAnswerTo(const QString &title, QMessageBox::StandardButton answer)
    {
        AnswersByTitle.insert(title, answer);
    }
    [[nodiscard]] const QList<ShownBox> &boxes() const { return Boxes; }

private:
    void Look();

    QMessageBox::StandardButton Answer;
    QHash<QString, QMessageBox::StandardButton> AnswersByTitle;
    QList<ShownBox> Boxes;
    QTimer Timer;
};

} // namespace tests
