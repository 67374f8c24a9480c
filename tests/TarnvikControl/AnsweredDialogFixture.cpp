// SPDX-License-Identifier: MIT
#include "tests/TarnvikControl/AnsweredDialogFixture.h"

#include <QTest>

namespace tests {

void AnsweredDialogFixture::init()
{
    QVERIFY(AlignmentDialogFixture::PrepareFolders());
    QVERIFY(WriteStationWithImports());
    Answers = std::make_unique<DialogAnswers>(QMessageBox::Yes);
    Files = std::make_unique<FileDialogAnswers>();
    Shown = std::make_unique<AlignmentDialogFixture>();
}

void AnsweredDialogFixture::cleanup()
{
    Shown.reset();
    Files.reset();
    Answers.reset();
}

} // namespace tests
