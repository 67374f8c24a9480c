// SPDX-License-Identifier: MIT
#include "platform/CommandLine.h"

#include "platform/FilePath.h"

#include <csignal>

namespace platform {

void PrepareStandardStreams()
{
    (void)std::signal(SIGPIPE, SIG_IGN);
    (void)std::signal(SIGXFSZ, SIG_IGN);
}

QStringList CommandLineArguments(int argc, char **argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(PathText(argv[i]));
    return arguments;
}

} // namespace platform
