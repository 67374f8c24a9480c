// SPDX-License-Identifier: MIT
#include "platform/CommandLine.h"

#include <QCoreApplication>

#include <windows.h>

#include <cstdio>
#include <fcntl.h>
#include <io.h>

namespace platform {

void PrepareStandardStreams()
{
    // A console expects the encoding of old DOS programs unless it is told otherwise.
    SetConsoleOutputCP(CP_UTF8);
    for (std::FILE *const stream : {stdin, stdout, stderr})
        (void)_setmode(_fileno(stream), _O_BINARY);
}

QStringList CommandLineArguments(int /*argc*/, char ** /*argv*/)
{
    return QCoreApplication::arguments(); // those of the wide command line
}

} // namespace platform
