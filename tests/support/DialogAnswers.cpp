// SPDX-License-Identifier: MIT
#include "tests/support/DialogAnswers.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

namespace tests {

DialogAnswers::DialogAnswers(QMessageBox::StandardButton answer) : Answer(answer)
{
    connect(&Timer, &QTimer::timeout, this, &DialogAnswers::Look);
    Timer.start(5);
}

void DialogAnswers::Look()
{
    auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    if (!box || !box->isVisible())
        return;
    Boxes.append({box->windowTitle(), box->text(), box->icon(), box->standardButtons(), box->parentWidget(),
                  box->isModal(), box->windowFlags()});
    if (QAbstractButton *const button = box->button(AnswersByTitle.value(box->windowTitle(), Answer)))
        button->click();
    else
        QTest::keyClick(box, Qt::Key_Escape);
}

} // namespace tests
