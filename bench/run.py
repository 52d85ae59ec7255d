#!/usr/bin/python3
"""Runs a command and prints what it cost.

usage: run.py COMMAND...

Prints lines "NAME VALUE" as krnqb_bench does: wall and CPU seconds (user and system), peak memory in bytes, page faults.
The command's output goes to standard error. The exit status is the command's.
"""

import os
import sys
import time


def main():
    output = [(os.POSIX_SPAWN_DUP2, 2, 1)]
    begun = time.perf_counter()
    child = os.posix_spawnp(sys.argv[1], sys.argv[1:], os.environ, file_actions=output)
    _, status, used = os.wait4(child, 0)
    wall = time.perf_counter() - begun
    print(f"wall {wall:.5f}\ncpu {used.ru_utime + used.ru_stime:.5f}")
    print(f"peak {used.ru_maxrss * 1024}\nfaults {used.ru_minflt + used.ru_majflt}")
    return os.waitstatus_to_exitcode(status)


if __name__ == "__main__":
    sys.exit(main())
