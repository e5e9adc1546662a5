// Runs a program and prints what it took, from its start to its end: time, and the peak of its resident memory, pages
// of mapped files included. What it writes to standard output goes nowhere.
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>

#include "arguments.h"

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s PROGRAM ARGUMENT...\n", argv[0]);
        return EXIT_FAILURE;
    }
    const auto start = std::chrono::steady_clock::now();
    const pid_t child = fork();
    if (child < 0) bench::Fail("fork");
    if (child == 0) {
        const int nowhere = open("/dev/null", O_WRONLY);
        if (nowhere >= 0) dup2(nowhere, STDOUT_FILENO);
        execvp(argv[1], argv + 1);
        _exit(127);
    }
    int status = 0;
    struct rusage used;
    if (wait4(child, &status, 0, &used) != child) bench::Fail("wait");
    const double wall = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const auto seconds = [](const timeval& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
    };
    std::printf("wall_seconds %f\ncpu_seconds %f\npeak_kib %ld\n", wall,
                seconds(used.ru_utime) + seconds(used.ru_stime), used.ru_maxrss);
    return WIFEXITED(status) ? WEXITSTATUS(status) : EXIT_FAILURE;
}
