#!/usr/bin/python3
"""Runs a command and prints what it cost.

usage: run.py [--times N] COMMAND...

Prints lines "NAME VALUE" as krnqb_bench does: wall and CPU seconds (user and system), peak memory in bytes, page faults.
With --times, N runs follow one another and each prints its lines, so that the start of this program disturbs none of them.
The command's output goes to standard error. The exit status is that of the last run.
"""

import os
import sys
import time


def run(command):
    output = [(os.POSIX_SPAWN_DUP2, 2, 1)]
    begun = time.perf_counter()
    child = os.posix_spawnp(command[0], command, os.environ, file_actions=output)
    _, status, used = os.wait4(child, 0)
    wall = time.perf_counter() - begun
    print(f"wall {wall:.5f}\ncpu {used.ru_utime + used.ru_stime:.5f}")
    print(f"peak {used.ru_maxrss * 1024}\nfaults {used.ru_minflt + used.ru_majflt}", flush=True)
    return os.waitstatus_to_exitcode(status)


def main():
    command, times = sys.argv[1:], 1
    if command[0] == "--times":
        command, times = command[2:], int(command[1])
    return [run(command) for _ in range(times)][-1]


if __name__ == "__main__":
    sys.exit(main())
