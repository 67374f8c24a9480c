// SPDX-License-Identifier: MIT
// A tiny program for tests of the runner. Each argument is a step, done in order:
//   out:TEXT  err:TEXT   print TEXT in one write, with \r, \n and \h, half a letter, written as two
//   characters each many:N:TEXT          print TEXT N times in one write folder               print the
//   working folder exit:N               end with code N crash                end by a crash wait wait until
//   somebody asks the process to terminate, or ends it
// At the end of the arguments it ends with code 0.
#include "tests/support/Termination.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace {

std::string Unescaped(const std::string &text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char escaped = text[i] == '\\' && i + 1 < text.size() ? text[i + 1] : '\0';
        if (escaped == 'r' || escaped == 'n')
            result += escaped == 'r' ? '\r' : '\n';
        else if (escaped == 'h')
            result += "\xE4\xBD"; // of three bytes
        else {
            result += text[i];
            continue;
        }
        ++i;
    }
    return result;
}

void Print(const std::string &text, std::FILE *stream)
{
    const std::string bytes = Unescaped(text);
    std::fwrite(bytes.data(), 1, bytes.size(), stream);
    std::fflush(stream);
}

/// `countAndText` is "N:TEXT".
void PrintMany(const std::string &countAndText)
{
    const std::size_t colon = countAndText.find(':');
    const std::string text = countAndText.substr(colon + 1);
    std::string all;
    for (int i = std::atoi(countAndText.c_str()); i > 0; --i)
        all += text;
    Print(all, stdout);
}

} // namespace

int main(int argc, char **argv)
{
    tests::ReceiveTermination();
    for (int i = 1; i < argc; ++i) {
        const std::string step = argv[i];
        if (step.rfind("out:", 0) == 0)
            Print(step.substr(4), stdout);
        else if (step.rfind("err:", 0) == 0)
            Print(step.substr(4), stderr);
        else if (step.rfind("many:", 0) == 0)
            PrintMany(step.substr(5));
        else if (step == "folder")
            Print(std::filesystem::current_path().generic_string(), stdout);
        else if (step.rfind("exit:", 0) == 0)
            return std::atoi(step.c_str() + 5);
        else if (step == "crash")
            std::abort();
        else if (step == "wait")
            tests::WaitUntilTerminated();
        else
            return 99;
    }
    return 0;
}
