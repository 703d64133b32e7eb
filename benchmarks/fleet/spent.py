#!/usr/bin/env python3
# spent.py FILE COMMAND...: runs the command and writes to FILE how many seconds of the processor it and all that it
# left behind took, and how many MB of memory they held at most (each shared page counted in parts). Ends as the command.
import ctypes
import json
import os
import resource
import signal
import subprocess
import sys
import threading

PR_SET_CHILD_SUBREAPER = 36


def tree(root):
    children = {}
    for entry in os.listdir("/proc"):
        if entry.isdigit():
            try:
                with open(f"/proc/{entry}/stat") as file:
                    children.setdefault(int(file.read().rsplit(")", 1)[1].split()[1]), []).append(int(entry))
            except (OSError, IndexError):
                pass
    found = list(children.get(root, []))
    for process in found:
        found += children.get(process, [])
    return found


def held(process):
    try:
        with open(f"/proc/{process}/smaps_rollup") as file:
            return sum(int(line.split()[1]) for line in file if line.startswith("Pss:"))
    except OSError:
        return 0


def watch(ended, most):
    while not ended.wait(1.0):
        most[0] = max(most[0], sum(map(held, tree(os.getpid()))))


# What a child leaves behind becomes a child of this process, and counts.
ctypes.CDLL(None).prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0)
child = subprocess.Popen(sys.argv[2:])
signal.signal(signal.SIGTERM, lambda *_: child.terminate())
ended, most = threading.Event(), [0]
watcher = threading.Thread(target=watch, args=(ended, most))
watcher.start()
code = child.wait()
for process in tree(os.getpid()):
    try:
        os.kill(process, signal.SIGTERM)
    except ProcessLookupError:
        pass
try:
    while True:
        os.wait()
except ChildProcessError:
    pass
ended.set()
watcher.join()
spent = resource.getrusage(resource.RUSAGE_CHILDREN)
with open(sys.argv[1], "w") as file:
    json.dump({"seconds": spent.ru_utime + spent.ru_stime, "mb": most[0] / 1024}, file)
sys.exit(code if code >= 0 else 128 - code)
