// SPDX-License-Identifier: MIT
// Answers file dialogs as a user would, and remembers what they offered.
#pragma once

#include <QFileDialog>
#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>

#include <optional>

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

/// While it exists every file dialog is answered: with the files set last, with what it offers itself, or, as
/// long as nothing is set, with the Escape key. File dialogs are Qt's own as long as it lives.
class FileDialogAnswers : public QObject
{
    Q_OBJECT

public:
    FileDialogAnswers();
    ~FileDialogAnswers() override;

    /// Absolute paths to be typed in.
    void SetFiles(const QStringList &files);
    void SetTakeOffer();
    void SetCancel();
    /// Only the next dialog gets the Escape key or takes its offer, those after it get what is set.
    void SetCancelNext() { Next = Kind::Cancel; }
    void SetTakeOfferNext() { Next = Kind::TakeOffer; }
    [[nodiscard]] const QList<OfferedFiles> &offers() const { return Offers; }

private:
    enum class Kind { Cancel, TakeOffer, Files };

    void Look();

    Kind Answer = Kind::Cancel;
    std::optional<Kind> Next; // instead of Answer
    QStringList Files;
    QList<OfferedFiles> Offers;
    QTimer Timer;
};

} // namespace tests
