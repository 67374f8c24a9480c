// SPDX-License-Identifier: MIT
// The alignment dialog with a user who answers what it opens.
#pragma once

#include "tests/TarnvikControl/AlignmentDialogFixture.h"
#include "tests/support/DialogAnswers.h"
#include "tests/support/FileDialogAnswers.h"

#include <QObject>

#include <memory>

namespace tests {

/// Base of test classes: for each test function a dialog over WriteStationWithImports. Questions are answered
/// with Yes and file dialogs are cancelled until a test says otherwise.
class AnsweredDialogFixture : public QObject
{
    Q_OBJECT

protected:
    std::unique_ptr<AlignmentDialogFixture> Shown;
    std::unique_ptr<DialogAnswers> Answers;
    std::unique_ptr<FileDialogAnswers> Files;

protected slots:
    void init();
    void cleanup();
};

} // namespace tests
