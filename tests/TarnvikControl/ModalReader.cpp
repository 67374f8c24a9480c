// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/ModalReader.h"

#include "tests/support/ShownTexts.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QApplication>
#include <QContextMenuEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tests {

ContextMenuTexts ReadContextMenu(QWidget &widget)
{
    ContextMenuTexts found;
    // Some menus run their own event loop, others are only shown: a timer reads both.
    QTimer reader;
    const auto read = [&found] {
        auto *const menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (menu == nullptr)
            return;
        found.Texts += ShownTexts(*menu);
        found.Collisions += MnemonicCollisions(*menu);
        menu->close();
    };
    QObject::connect(&reader, &QTimer::timeout, &widget, read);
    reader.start(1);
    const QPoint middle = widget.rect().center();
    QContextMenuEvent event(QContextMenuEvent::Mouse, middle, widget.mapToGlobal(middle));
    QCoreApplication::sendEvent(&widget, &event);
    (void)QTest::qWaitFor([&found] { return !found.Texts.isEmpty(); });
    return found;
}

ModalReader::ModalReader()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, true);
    connect(&Timer, &QTimer::timeout, this, &ModalReader::Look);
    Timer.start(5);
}

ModalReader::~ModalReader()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false);
}

void ModalReader::Read(QWidget &window)
{
    Titles.append(window.windowTitle());
    Texts += ShownTexts(window);
    Collisions += MnemonicCollisions(window);
    CutOff += CutOffTexts(window);
}

void ModalReader::ReadContextMenus(QFileDialog &dialog)
{
    QList<QWidget *> widgets = {dialog.findChild<QLineEdit *>(u"fileNameEdit"_s)};
    widgets.append(dialog.findChild<QAbstractItemView *>(u"treeView"_s)->viewport());
    for (QWidget *widget : std::as_const(widgets)) {
        const ContextMenuTexts found = ReadContextMenu(*widget);
        Texts += found.Texts;
        Collisions += found.Collisions;
    }
}

void ModalReader::Look()
{
    QWidget *const window = QApplication::activeModalWidget();
    if (window == nullptr || !window->isVisible())
        return;
    if (auto *const box = qobject_cast<QMessageBox *>(window)) {
        Read(*box);
        QAbstractButton *const button = box->button(Accepting ? QMessageBox::No : Answer);
        Accepting = false;
        if (button != nullptr)
            button->click();
        else
            QTest::keyClick(box, Qt::Key_Escape);
        return;
    }
    auto *const dialog = qobject_cast<QFileDialog *>(window);
    if (dialog == nullptr || Accepting)
        return;
    if (AcceptFiles) {
        AcceptFiles = false;
        Accepting = true;
        // From the event loop, because the question that follows runs its own and needs this timer.
        auto *const name = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
        QMetaObject::invokeMethod(
            name, [name] { QTest::keyClick(name, Qt::Key_Return); }, Qt::QueuedConnection);
        return;
    }
    Read(*dialog);
    ReadContextMenus(*dialog);
    QTest::keyClick(dialog, Qt::Key_Escape);
}

} // namespace tests
