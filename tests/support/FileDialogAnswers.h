// SPDX-License-Identifier: MIT
// Answers file dialogs as a user would, and remembers what they offered.
#pragma once

#include <QFileDialog>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

namespace tests {

/// What a file dialog offered.
struct OfferedFiles
{
    QString Title;
    QString Folder; // absolute
    QString File;   // preselected name, empty when there is none
    QStringList Filters;
    QFileDialog::AcceptMode AcceptMode = QFileDialog::AcceptOpen;
    QFileDialog::FileMode FileMode = QFileDialog::AnyFile;
    QWidget *Parent = nullptr;
};

/// While it exists every file dialog is answered: with the files set last, with what it offers itself when
/// there are none, or with the Escape key. File dialogs are Qt's own as long as it lives.
class FileDialogAnswers : public QObject
{
    Q_OBJECT

public:
    FileDialogAnswers();
    ~FileDialogAnswers() override;

    /// Absolute paths to be typed in.
    void setFiles(const QStringList &files);
    void setTakeOffer();
    void setCancel();
    [[nodiscard]] const QList<OfferedFiles> &offers() const { return Offers; }

private:
    void look();

    bool Cancel = true;
    QStringList Files;
    QList<OfferedFiles> Offers;
    QTimer Timer;
};

} // namespace tests
