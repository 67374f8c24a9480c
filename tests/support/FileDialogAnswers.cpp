// SPDX-License-Identifier: MIT
#include "tests/support/FileDialogAnswers.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

namespace tests {

FileDialogAnswers::FileDialogAnswers()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, true);
    connect(&Timer, &QTimer::timeout, this, &FileDialogAnswers::look);
    Timer.start(5);
}

FileDialogAnswers::~FileDialogAnswers()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false);
}

void FileDialogAnswers::setFiles(const QStringList &files)
{
    Cancel = false;
    Files = files;
}

void FileDialogAnswers::setTakeOffer()
{
    setFiles({});
}

void FileDialogAnswers::setCancel()
{
    Cancel = true;
}

void FileDialogAnswers::look()
{
    auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible())
        return;
    auto *const name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
    Offers.append({dialog->windowTitle(), dialog->directory().absolutePath(), name->text(),
                   dialog->nameFilters(), dialog->acceptMode(), dialog->fileMode(), dialog->parentWidget()});
    if (Cancel) {
        QTest::keyClick(dialog, Qt::Key_Escape);
        return;
    }
    if (Files.size() == 1)
        name->setText(Files.first());
    else if (!Files.isEmpty())
        name->setText(u'"' + Files.join(QStringLiteral("\" \"")) + u'"');
    QTest::keyClick(name, Qt::Key_Return);
}

} // namespace tests
