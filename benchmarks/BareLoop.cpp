// SPDX-License-Identifier: MIT
// The least that keeps a program running: starts it, waits for its end, starts it again. What supervisors are
// measured against; on SIGTERM it hands that on and ends with the program.
//   BareLoop PROGRAM
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

namespace {

constexpr int NotToBeStarted = 127; // as with a shell

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
    struct sigaction action = {};
    action.sa_handler = Terminate;
    sigset_t request;
    if (argc != 2 || sigaction(SIGTERM, &action, nullptr) != 0 || sigemptyset(&request) != 0 ||
        sigaddset(&request, SIGTERM) != 0)
        return 64;
    for (;;) {
        // Until the child's process id is known the request to end must wait.
        (void)sigprocmask(SIG_BLOCK, &request, nullptr);
        if (Ends != 0)
            return 0;
        const pid_t child = fork();
        if (child < 0)
            return 1;
        Child = child;
        (void)sigprocmask(SIG_UNBLOCK, &request, nullptr);
        if (child == 0) {
            (void)execv(argv[1], argv + 1);
            _exit(NotToBeStarted);
        }
        int status = 0;
        while (waitpid(child, &status, 0) < 0) {
            if (errno != EINTR) // the request to end
                return 1;
        }
        Child = 0;
        if (WIFEXITED(status) && WEXITSTATUS(status) == NotToBeStarted)
            return 1;
    }
}
