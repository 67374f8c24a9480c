#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The program beside those that people trust today, all measured in one run: supervisors, tray programs, and the least that
does the job. scripts/bench calls it; prints the tables of docs/performance.md.

    benchmarks/peers.py BUILD_FOLDER

Times are medians; the steady clock is the same for all processes of the machine.
"""
import os
import pathlib
import re
import select
import shutil
import signal
import statistics
import subprocess
import sys
import tempfile
import time

RUNS = 15
SETTLED = 2.0  # seconds a recorder runs before it is killed: some supervisors wait when it was less than one
PATIENCE = 30.0
IDLE = 30.0  # seconds over which wake-ups are counted
TITLE = "TarnvikControl"
LINE = "TarnvikRecord: Running"  # whoever shows text needs fonts, which an empty window never loads


def steady():
    return time.clock_gettime(time.CLOCK_MONOTONIC)


def wait_for(what, condition):
    end = steady() + PATIENCE
    while not (found := condition()):
        if steady() > end:
            sys.exit(f"error: waited in vain for {what}")
        time.sleep(0.002)
    return found


class Bench:
    """A folder for everything that runs, and the stand-in recorder's report."""

    def __init__(self, build, folder):
        self.build, self.folder = build, folder
        self.report = folder / "recorder.txt"
        (folder / "program").mkdir()
        for program in ("bin/TarnvikControl", "standin/TarnvikRecord"):
            shutil.copy(build / program, folder / "program")
        self.recorder = folder / "program" / "TarnvikRecord"
        for name in ("home", "run", "tmp"):
            (folder / name).mkdir(mode=0o700)
        self.environment = {
            "PATH": os.environ["PATH"],
            "LC_ALL": "C.UTF-8",
            "HOME": str(folder / "home"),
            "XDG_CONFIG_HOME": str(folder / "home/.config"),
            "XDG_RUNTIME_DIR": str(folder / "run"),
            "TMPDIR": str(folder / "tmp"),
            "DISPLAY": os.environ["DISPLAY"],
            "DBUS_SESSION_BUS_ADDRESS": os.environ["DBUS_SESSION_BUS_ADDRESS"],
            "QT_QPA_PLATFORM": "xcb",
            "TARNVIK_STANDIN_REPORT": str(self.report),
            "TARNVIK_STANDIN_INTERVAL_MS": "0",
        }

    def start(self, command, **environment):
        return subprocess.Popen(
            [str(part) for part in command],
            env={**self.environment, **environment},
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )

    def events(self, name):
        """Time and process of each event of this name."""
        if not self.report.exists():
            return []
        lines = [line.split() for line in self.report.read_text().splitlines()]
        return [(int(line[0]) / 1e6, int(line[1])) for line in lines if line[2] == name]


# --- Keeping a program running


def service_folder(bench, name):
    folder = bench.folder / name
    folder.mkdir()
    (folder / "run").write_text(f"#!/bin/sh\nexec '{bench.recorder}'\n")
    (folder / "run").chmod(0o755)
    return folder


def supervisors(bench):
    """Name and command of each."""
    configuration = bench.folder / "supervisord.conf"
    configuration.write_text(
        f"[supervisord]\nnodaemon=true\nlogfile=/dev/null\nlogfile_maxbytes=0\npidfile={bench.folder}/supervisord.pid\n"
        f"user={os.environ.get('USER', 'root')}\n"
        f"[program:recorder]\ncommand={bench.recorder}\nautorestart=true\nstopsignal=TERM\n"
    )
    return {
        "bare fork/exec loop": [bench.build / "bin/BareLoop", bench.recorder],
        "TarnvikControl": [bench.folder / "program/TarnvikControl"],
        "runsv": ["runsv", service_folder(bench, "runsv")],
        "s6-supervise": ["s6-supervise", service_folder(bench, "s6")],
        "supervisord": ["supervisord", "-c", configuration],
    }


def measure_supervisor(bench, command):
    """Seconds from the recorder's death to its successor's start, and from SIGTERM to the end of both."""
    bench.report.unlink(missing_ok=True)
    process = bench.start(command)
    wait_for("the recorder", lambda: bench.events("ready"))
    time.sleep(SETTLED)
    recorder = bench.events("started")[0][1]
    killed = steady()
    os.kill(recorder, signal.SIGKILL)
    restarted = wait_for("the successor", lambda: bench.events("ready")[1:] and bench.events("started")[1:])[0][0]
    time.sleep(SETTLED)
    asked = steady()
    process.terminate()
    process.wait(PATIENCE)
    ended = steady()
    if not bench.events("closed"):
        sys.exit(f"error: {command[0]} did not let the recorder close its file")
    return restarted - killed, ended - asked


def compare_supervisors(bench):
    commands = supervisors(bench)
    times = {name: [] for name in commands}
    for run in range(-1, RUNS):
        for name, command in commands.items():  # in turn: what disturbs one run disturbs all
            result = measure_supervisor(bench, command)
            if run >= 0:
                times[name].append(result)
    print("| | death to successor's start, ms | to the loop's | asked to the end of both, ms |")
    print("|---|---:|---:|---:|")
    limit = statistics.median(restart for restart, _ in times["bare fork/exec loop"])
    for name, results in times.items():
        restart, end = (statistics.median(values) for values in zip(*results))
        print(f"| {name} | {1000 * restart:.1f} | {restart / limit:.2f} | {1000 * end:.0f} |")


# --- Being there


def windows():
    """The windows that the window manager knows, or that are in the tray."""
    listed = subprocess.run(["xwininfo", "-root", "-tree"], capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"^ *(0x[0-9a-f]+)", listed, re.MULTILINE))


def resident(process):
    status = pathlib.Path(f"/proc/{process.pid}/status").read_text()
    return int(re.search(r"VmRSS:\s+(\d+)", status)[1]) / 1024


def waits(process):
    """How often each of its threads has waited for something so far."""
    return {
        task.name: int(re.search(r"\nvoluntary_ctxt_switches:\s+(\d+)", (task / "status").read_text())[1])
        for task in pathlib.Path(f"/proc/{process.pid}/task").iterdir()
    }


def wake_ups(before, after):
    """How often threads went on after waiting; one that has ended meanwhile is left out."""
    return sum(count - before.get(thread, 0) for thread, count in after.items())


def rest(bench, command, **environment):
    """Resident MB and wake-ups a second of a program that is left alone."""
    known = windows()
    process = bench.start(command, **environment)
    wait_for(f"a window of {command[0]}", lambda: windows() - known)
    time.sleep(10)
    begin, before = steady(), waits(process)
    time.sleep(IDLE)
    if process.poll() is not None:
        sys.exit(f"error: {command[0]} has ended")
    result = resident(process), wake_ups(before, waits(process)) / (steady() - begin)
    process.terminate()
    process.wait(PATIENCE)
    return result


def compare_rest(bench):
    control = [bench.folder / "program/TarnvikControl"]
    empty = [bench.build / "tools/EmptyWindow"]
    results = {
        "empty Qt window": rest(bench, empty),
        "Qt window with a line of text": rest(bench, [*empty, LINE]),
        "TarnvikControl, silent recorder": rest(bench, control),
        "TarnvikControl, a status a second": rest(bench, control, TARNVIK_STANDIN_INTERVAL_MS="1000"),
        "nm-tray": rest(bench, ["nm-tray"]),
        "syncthingtray": rest(bench, ["syncthingtray", "qt-widgets-gui", "--single-instance", "--wait"]),
    }
    least = results["empty Qt window"][0]
    print("| | resident, MB | to the empty window's | wake-ups a second |")
    print("|---|---:|---:|---:|")
    for name, (megabytes, rate) in results.items():
        print(f"| {name} | {megabytes:.1f} | {megabytes / least:.2f} | {rate:.2f} |")


# --- Coming up


def has_window(title):
    return subprocess.run(["xdotool", "search", "--name", f"^{title}$"], capture_output=True).stdout


def listed_windows(spy):
    """The windows in what the spy says next of the window manager's list."""
    if not select.select([spy.stdout], [], [], PATIENCE)[0]:
        sys.exit("error: waited in vain for a window")
    if not (told := os.read(spy.stdout.fileno(), 65536)):
        sys.exit("error: the spy on the windows has ended")
    return set(re.findall(rb"0x[0-9a-f]+", told))


def start_to_window(bench, command, title):
    """Seconds from the start to the moment at which the window manager has the window."""
    wait_for("the end of the window before", lambda: not has_window(title))
    spy = subprocess.Popen(["xprop", "-root", "-spy", "_NET_CLIENT_LIST"], stdout=subprocess.PIPE, bufsize=0)
    known = listed_windows(spy)
    begin = steady()
    process = bench.start(command)
    while not listed_windows(spy) - known:
        pass
    taken = steady() - begin
    spy.kill()
    spy.wait()
    wait_for(title, lambda: has_window(title))
    process.terminate()
    process.wait(PATIENCE)
    return taken


def compare_start(bench):
    programs = {
        "empty Qt window": ([bench.build / "tools/EmptyWindow"], "EmptyWindow"),
        "Qt window with a line of text": ([bench.build / "tools/EmptyWindow", LINE], "EmptyWindow"),
        "TarnvikControl": ([bench.folder / "program/TarnvikControl"], TITLE),
    }
    times = {name: [] for name in programs}
    for run in range(-1, RUNS):
        for name, (command, title) in programs.items():
            taken = start_to_window(bench, command, title)
            if run >= 0:
                times[name].append(taken)
    empty = statistics.median(times["empty Qt window"])
    print("| | start to window, ms | to the empty window's |")
    print("|---|---:|---:|")
    for name, values in times.items():
        print(f"| {name} | {1000 * statistics.median(values):.0f} | {statistics.median(values) / empty:.2f} |")


def main(build):
    with tempfile.TemporaryDirectory(prefix="tarnvik-bench-") as folder:
        bench = Bench(build, pathlib.Path(folder))
        for compare in (compare_supervisors, compare_rest, compare_start):
            compare(bench)
            print(flush=True)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]).resolve())
