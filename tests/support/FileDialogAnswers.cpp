// SPDX-License-Identifier: MIT
#include "tests/support/FileDialogAnswers.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>

#include <utility>

using namespace Qt::StringLiterals;

namespace tests {

FileDialogAnswers::FileDialogAnswers()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, true);
    connect(&Timer, &QTimer::timeout, this, &FileDialogAnswers::Look);
    Timer.start(5);
}

FileDialogAnswers::~FileDialogAnswers()
{
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeDialogs, false);
}

void FileDialogAnswers::SetFiles(const QStringList &files)
{
    Answer = Kind::Files;
    Files = files;
}

void FileDialogAnswers::SetTakeOffer()
{
    Answer = Kind::TakeOffer;
}

void FileDialogAnswers::SetCancel()
{
    Answer = Kind::Cancel;
}

void FileDialogAnswers::Look()
{
    auto *const dialog = qobject_cast<QFileDialog *>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible())
        return;
    auto *const name = dialog->findChild<QLineEdit *>(u"fileNameEdit"_s);
    Offers.append({dialog->windowTitle(), dialog->directory().absolutePath(), name->text(),
                   dialog->nameFilters(), dialog->acceptMode(), dialog->fileMode(), dialog->parentWidget()});
    const Kind answer = std::exchange(Next, std::nullopt).value_or(Answer);
    if (answer == Kind::Cancel) {
        QTest::keyClick(dialog, Qt::Key_Escape);
        return;
    }
    if (answer == Kind::Files)
        name->setText(Files.size() == 1 ? Files.first() : u'"' + Files.join(u"\" \""_s) + u'"');
    QTest::keyClick(name, Qt::Key_Return);
}

} // namespace tests
