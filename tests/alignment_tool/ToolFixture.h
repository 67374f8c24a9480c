// SPDX-License-Identifier: MIT
// Runs the command-line program in a fresh folder.
#pragma once

#include "tests/support/FolderFixture.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tests {

/// What a run of the program gave, with single line feeds.
struct ToolRun
{
    int ExitCode = -1; // -1: it crashed or did not end
    QByteArray Output;
    QByteArray Errors;
};

/// Base of the test classes.
class ToolFixture : public FolderFixture
{
    Q_OBJECT

protected:
    /// Runs the program in the fresh folder. `environment`: variables as "NAME=value".
    [[nodiscard]] ToolRun Run(const QStringList &arguments, const QByteArray &input = {},
                              const QStringList &environment = {}) const;
};

} // namespace tests
