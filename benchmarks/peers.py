#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""The program beside those that people trust today, all measured in one run: supervisors, tray programs, and the least that
does the job. scripts/bench calls it; prints the tables of docs/performance.md in which there are others.

    benchmarks/peers.py BUILD_FOLDER

Times are medians, with the least and the most; the steady clock is the same for all processes of the machine. A first
round does not count: what is measured are warm starts.
"""
import os
import pathlib
import pwd
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


def ended(process):
    """The moment at which the process ends. Waiting with a time limit would only look now and then."""
    descriptor = os.pidfd_open(process.pid)
    watch = select.poll()
    watch.register(descriptor, select.POLLIN)
    told = watch.poll(1000 * PATIENCE)
    now = steady()
    os.close(descriptor)
    if not told:
        sys.exit(f"error: {process.args[0]} does not end")
    process.wait()
    return now


def median(values, digits=0):
    """The median of seconds in milliseconds, with the least and the most."""
    texts = [f"{1000 * value:.{digits}f}" for value in (statistics.median(values), min(values), max(values))]
    return "{} ({}–{})".format(*texts)


class Bench:
    """A folder for everything that runs, and the stand-in recorder's report. What still runs at the end is killed."""

    def __init__(self, build, folder):
        self.build, self.folder = build, folder
        self.report = folder / "recorder.txt"
        (folder / "program").mkdir()
        for program in ("bin/TarnvikControl", "standin/TarnvikRecord"):
            shutil.copy(build / program, folder / "program")
        shutil.copytree(build / "bin/languages", folder / "program/languages")
        self.recorder = folder / "program" / "TarnvikRecord"
        self.processes = []
        for name in ("home", "run", "tmp"):
            (folder / name).mkdir(mode=0o700)
        self.environment = {
            "PATH": os.environ["PATH"],
            "LANG": "en_US.UTF-8",
            "LC_CTYPE": "C.UTF-8",  # is there everywhere
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

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in self.processes:
            if process.poll() is None:
                process.kill()
                process.wait()
        for _, recorder in self.events("started"):
            if pathlib.Path(f"/proc/{recorder}/exe").exists() and os.path.samefile(f"/proc/{recorder}/exe", self.recorder):
                os.kill(recorder, signal.SIGKILL)

    def start(self, command, **environment):
        process = subprocess.Popen(
            [str(part) for part in command],
            env={**self.environment, **environment},
            stdin=subprocess.DEVNULL,
            stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL,
        )
        self.processes.append(process)
        return process

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
    (folder / "run").symlink_to(bench.recorder)  # a shell would be measured, too
    return folder


def supervisors(bench):
    """Name and command of each."""
    configuration = bench.folder / "supervisord.conf"
    configuration.write_text(
        f"[supervisord]\nnodaemon=true\nlogfile=/dev/null\nlogfile_maxbytes=0\npidfile={bench.folder}/supervisord.pid\n"
        f"user={pwd.getpwuid(os.getuid()).pw_name}\n"
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
    end = ended(process)
    if not bench.events("closed"):
        sys.exit(f"error: {command[0]} did not let the recorder close its file")
    return restarted - killed, end - asked


def compare_supervisors(bench):
    commands = supervisors(bench)
    times = {name: [] for name in commands}
    for run in range(-1, RUNS):
        for name, command in commands.items():  # in turn: what disturbs one run disturbs all
            result = measure_supervisor(bench, command)
            if run >= 0:
                times[name].append(result)
    print("| | death to successor's start, ms | more than the loop, ms | relative to the loop | SIGTERM to both ends, ms |")
    print("|---|---:|---:|---:|---:|")
    limit = statistics.median(restart for restart, _ in times["bare fork/exec loop"])
    for name, results in times.items():
        restarts, ends = zip(*results)
        restart = statistics.median(restarts)
        print(
            f"| {name} | {median(restarts, 1)} | {1000 * (restart - limit):.1f} | {restart / limit:.2f} |"
            f" {median(ends, 1)} |"
        )


# --- Idle


def windows():
    """All windows of the display, also those that nobody sees."""
    listed = subprocess.run(["xwininfo", "-root", "-tree"], capture_output=True, text=True, check=True).stdout
    return set(re.findall(r"^ *(0x[0-9a-f]+)", listed, re.MULTILINE))


def resident(process):
    """MiB of this process alone, with the pages of libraries that it shares with others."""
    rollup = pathlib.Path(f"/proc/{process.pid}/smaps_rollup").read_text()  # exact, which VmRSS is not
    return int(re.search(r"\nRss:\s+(\d+)", rollup)[1]) / 1024


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
    """Resident MiB and wake-ups a second of a program that is left alone."""
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
    ended(process)
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
    print("| | resident, MiB | relative to the empty window | wake-ups a second |")
    print("|---|---:|---:|---:|")
    for name, (mebibytes, rate) in results.items():
        print(f"| {name} | {mebibytes:.1f} | {mebibytes / least:.2f} | {rate:.2f} |")


# --- Start-up


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
    ended(process)
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
    print("| | start to window, ms | relative to the empty window |")
    print("|---|---:|---:|")
    for name, values in times.items():
        print(f"| {name} | {median(values)} | {statistics.median(values) / empty:.2f} |")


def main(build):
    with tempfile.TemporaryDirectory(prefix="tarnvik-bench-") as folder:
        with Bench(build, pathlib.Path(folder)) as bench:
            for compare in (compare_supervisors, compare_rest, compare_start):
                compare(bench)
                print(flush=True)


if __name__ == "__main__":
    main(pathlib.Path(sys.argv[1]).resolve())
