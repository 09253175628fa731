/* timeRun PROGRAM...: runs it and prints nanoseconds from start to end, largest resident memory in
 * KiB, exit status. Small itself, as a program that it starts is told to have had the starter's
 * memory at least. */

#define _GNU_SOURCE
#include <fcntl.h>
#include <spawn.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <time.h>

extern char **environ;

static long long now(void)
{
    struct timespec time;
    clock_gettime(CLOCK_MONOTONIC, &time);
    return time.tv_sec * 1000000000LL + time.tv_nsec;
}

int main(int argc, char **argv)
{
    posix_spawn_file_actions_t silent;
    if (argc < 2)
        return 2;
    posix_spawn_file_actions_init(&silent);
    posix_spawn_file_actions_addopen(&silent, 1, "/dev/null", O_WRONLY, 0);
    struct rusage usage;
    pid_t child;
    int status;
    const long long start = now();
    if (posix_spawnp(&child, argv[1], &silent, NULL, argv + 1, environ) != 0)
        return 1;
    if (wait4(child, &status, 0, &usage) != child)
        return 1;
    printf("%lld %ld %d\n", now() - start, usage.ru_maxrss,
           WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    return 0;
}
