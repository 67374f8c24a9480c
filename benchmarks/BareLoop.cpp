// SPDX-License-Identifier: MIT
// The least that keeps a program running: starts it, waits for its end, starts it again. What supervisors are
// measured against; on SIGTERM it hands that on and ends with the program.
//   BareLoop PROGRAM
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>

namespace {

volatile std::sig_atomic_t Child = 0;
volatile std::sig_atomic_t Ends = 0;

void Terminate(int signal)
{
    Ends = 1;
    if (Child > 0)
        (void)kill(Child, signal);
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2 || std::signal(SIGTERM, Terminate) == SIG_ERR)
        return 64;
    while (Ends == 0) {
        const pid_t child = fork();
        if (child < 0)
            return 1;
        if (child == 0) {
            (void)execv(argv[1], argv + 1);
            _exit(127);
        }
        Child = child;
        while (waitpid(child, nullptr, 0) < 0) { // interrupted by the request to end
        }
        Child = 0;
    }
    return 0;
}
