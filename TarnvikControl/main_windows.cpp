// SPDX-License-Identifier: MIT
// The entry point on Windows: a program with a window and without a console.
#include "TarnvikControl/InstanceMutex.h"
#include "TarnvikControl/StartUp.h"

#include <QString>

#include <windows.h>

#include <shellapi.h>

namespace {

/// The command line as UTF-8, the program's name first; empty when the system cannot split it.
std::vector<std::string> Arguments()
{
    int count = 0;
    wchar_t **const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    std::vector<std::string> arguments;
    if (!wide)
        return arguments;
    for (int i = 0; i < count; ++i)
        arguments.push_back(QString::fromWCharArray(wide[i]).toStdString());
    LocalFree(wide);
    return arguments;
}

} // namespace

int WINAPI wWinMain(HINSTANCE /*instance*/, HINSTANCE /*previousInstance*/, PWSTR /*commandLine*/,
                    int showCommand)
{
    return RunControl(Arguments(), showCommand, InstanceMutex.alreadyExisted());
}
