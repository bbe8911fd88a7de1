# SPDX-License-Identifier: MIT
"""Measures what bench/run has built and prints the table "what, ours, floor, ratio, target".

measure.py BUILD [--quick] [WORD ...]; docs/benchmarks.md tells how to read the table.
"""

import json
import os
import re
import statistics
import subprocess
import sys
import tempfile
import time

START_COLOUR = "#3a7d44"
SCROLLED_COLOUR = "#b5438a"
SETS = {"200": (200, 600), "5k": (5_000, 15_000), "50k": (50_000, 150_000), "1M": (1_000_000, 1_000_000)}


class Starts:
    """Starts of programs on a virtual screen. A start of the floor goes with each of the viewer's."""

    def __init__(self, build, work, count):
        self.build, self.work, self.count = build, work, count
        self.environment = dict(os.environ, XDG_CONFIG_HOME=work + "/config", XDG_RUNTIME_DIR=work, HOME=work,
                                LC_ALL="C.UTF-8")
        self.environment.pop("QT_QPA_PLATFORM", None)
        self.known = {}

    def __enter__(self):
        reading, writing = os.pipe()
        self.server = subprocess.Popen(
            ["Xvfb", "-displayfd", str(writing), "-screen", "0", "1024x768x24", "-fbdir", self.work, "-nolisten", "tcp", "-noreset"],
            pass_fds=[writing], stderr=subprocess.DEVNULL)
        os.close(writing)
        with os.fdopen(reading) as numbers:
            self.environment["DISPLAY"] = ":" + numbers.readline().strip()
        return self

    def __exit__(self, *_):
        self.server.terminate()
        self.server.wait()

    def make_set(self, name):
        directory = f"{self.work}/set-{name}"
        if not os.path.exists(directory):
            subprocess.run([self.build + "/bench/makeset", directory, *map(str, SETS[name])], check=True)
        return directory

    def once(self, program, scrolled):
        output = subprocess.run(
            [self.build + "/bench/startwatch", self.work + "/Xvfb_screen0", START_COLOUR,
             SCROLLED_COLOUR if scrolled else "-", *program],
            env=self.environment, capture_output=True, text=True, timeout=120, check=False).stdout
        return json.loads(output)

    def measure(self, name, scrolled=False):
        """Medians of the viewer's and the floor's starts on the same set."""
        if (name, scrolled) not in self.known:
            directory = self.make_set(name)
            programs = {"ours": [self.build + "/bin/quenda", directory + "/bench.cnt"],
                        "floor": [self.build + "/bench/floor", directory + "/topics/0/topic0.html"]}
            runs = {key: [] for key in programs}
            count = max(3, self.count // 3) if name == "1M" else self.count
            for i in range(count + 1):
                for key, program in programs.items():
                    run = self.once(program, scrolled)
                    if i > 0:
                        runs[key].append(run)
            self.known[name, scrolled] = {
                key: {what: statistics.median(run[what] for run in list_) for what in list_[0]}
                for key, list_ in runs.items()}
        return self.known[name, scrolled]

    def value(self, name, what, scrolled=False, floor_what=None):
        measured = self.measure(name, scrolled)
        return measured["ours"][what], measured["floor"][floor_what or what]

    def kind(self, file, what):
        """Starts with the 5,000 pages in another kind, the floor being the viewer with the native set."""
        directory = self.make_set("5k")
        runs = {"bench.cnt": [], file: []}
        for i in range(self.count + 1):
            for name, list_ in runs.items():
                run = self.once([self.build + "/bin/quenda", f"{directory}/{name}"], False)
                if i > 0:
                    list_.append(run[what])
        return statistics.median(runs[file]), statistics.median(runs["bench.cnt"])

    def memory(self, name):
        ours, floor = self.value(name, "peak")
        return ours / 1024, floor / 1024

    def request(self):
        """The viewer's request against a program that links the same libraries and does nothing."""
        programs = [[self.build + "/bin/quenda", "--isinstall", self.make_set("200") + "/bench.cnt"],
                    [self.build + "/bench/nothing"]]
        times = [[], []]
        for _ in range(self.count * 10):
            for program, list_ in zip(programs, times):
                start = time.perf_counter()
                child = os.posix_spawn(program[0], program, self.environment,
                                       file_actions=[(os.POSIX_SPAWN_OPEN, 1, "/dev/null", os.O_WRONLY, 0)])
                os.waitpid(child, 0)
                list_.append((time.perf_counter() - start) * 1000)
        return tuple(statistics.median(list_) for list_ in times)


class Searches:
    """The full-text search on a help set of running text, 50,000 pages of 3 KB, which is made when first needed."""

    PAGES = 50_000

    def __init__(self, build, work):
        self.build, self.work = build, work
        self.directory, self.cache = work + "/text", work + "/cache"
        self.environment = dict(os.environ, XDG_CACHE_HOME=self.cache, LC_ALL="C.UTF-8",
                                QUENDA_TEXT_SET=self.directory + "/text.cnt")
        self.first = None

    def run(self):
        """Wall time in ms and peak memory in MB of bringing the index up to date."""
        start = time.perf_counter()
        child = subprocess.Popen([self.build + "/bin/quenda", "--index", self.directory + "/text.cnt"],
                                 env=self.environment)
        _, status, usage = os.wait4(child.pid, 0)
        child.returncode = os.waitstatus_to_exitcode(status)
        assert child.returncode == 0
        return (time.perf_counter() - start) * 1000, usage.ru_maxrss / 1024

    def indexing(self):
        if self.first is None:
            if not os.path.exists(self.directory):
                subprocess.run([self.build + "/bench/maketextset", self.directory, str(self.PAGES)], check=True)
            self.first = self.run()
        return self.first

    def again(self):
        self.indexing()
        return statistics.median(self.run()[0] for _ in range(5)), None

    def size(self):
        """The index, in percent of what there is to read in the pages."""
        self.indexing()
        step = 50
        text = 0
        for number in range(0, self.PAGES, step):
            with open(f"{self.directory}/{number // 1000}/page{number}.html", encoding="utf-8") as page:
                text += len(re.sub("<[^>]*>", "", page.read().partition("<h1>")[2])) * step
        index = sum(entry.stat().st_size for entry in os.scandir(self.cache + "/Orvanel/Quenda/search"))
        return index / text * 100, None

    def query(self, cases, group):
        self.indexing()
        return cases.value(group, self.environment)


class Cases:
    """Processor times of the Google Benchmark cases "GROUP/ours" and "GROUP/floor", by group."""

    def __init__(self, build, quick):
        self.command = [build + "/bench/cases", "--benchmark_format=json",
                        "--benchmark_min_time=" + ("0.05" if quick else "0.5"),
                        "--benchmark_repetitions=" + ("1" if quick else "3")]

    def value(self, group, environment=None):
        output = subprocess.run([*self.command, f"--benchmark_filter=^{group}/"], capture_output=True, text=True,
                                check=True, env=environment).stdout
        to_ms = {"ns": 1e-6, "us": 1e-3, "ms": 1}
        times = {"ours": [], "floor": []}
        for run in json.loads(output)["benchmarks"]:
            if run["run_type"] == "iteration":
                times[run["name"].split("/")[1]].append(run["cpu_time"] * to_ms[run["time_unit"]])
        return tuple(statistics.median(list_) if list_ else None for list_ in times.values())


def rows(starts, cases, searches):
    """What is measured: text, unit, how, how it is judged ("x": ratio, "+": difference, "": by itself), target."""
    return [
        ("start to first page, 200 pages", "ms", lambda: starts.value("200", "shown"), "x", 1.25),
        ("start to first page, 5,000 pages", "ms", lambda: starts.value("5k", "shown"), "x", 1.3),
        ("start to first page, 50,000 pages", "ms", lambda: starts.value("50k", "shown"), "x", 1.6),
        ("start to scrolled by the wheel, 50,000 pages", "ms", lambda: starts.value("50k", "scrolled", True), "x", 1.6),
        ("start to all complete, 50,000 pages", "ms", lambda: starts.value("50k", "rest", False, "shown"), "x", 3),
        ("start to all complete, 1M topics, 1M keywords", "ms", lambda: starts.value("1M", "rest", False, "shown"), "", 3000),
        ("look-up, 1M keywords", "ms", lambda: cases.value("look-up"), "", 5),
        ("look-up without a match, 1M keywords", "ms", lambda: cases.value("look-up without a match"), "", 5),
        ("a key in the index, 150,000 keywords", "ms", lambda: cases.value("index key"), "", 16),
        ("the same, the first letter", "ms", lambda: cases.value("index key, first"), "", 16),
        ("the same, found within keywords", "ms", lambda: cases.value("index key, within"), "", 16),
        ("the same, found nowhere", "ms", lambda: cases.value("index key, nowhere"), "", 16),
        ("the same, back to all keywords", "ms", lambda: cases.value("index key, back"), "", 16),
        ("the tree's step to a page's row, 50,000 rows", "ms", lambda: cases.value("tree step"), "", 16),
        ("jump: a key, 50,000 rows, 150,000 keywords", "ms", lambda: cases.value("jump"), "", 16),
        ("jump: a key, 150,000 rows, 1M keywords", "ms", lambda: cases.value("jump among a million"), "", 60),
        ("Enter on a keyword", "ms", lambda: cases.value("enter"), "+", 3),
        ("preparing a page (floor: rich text, as written)", "ms", lambda: cases.value("preparation"), "x", 0.35),
        ("first screen of a page of 1 MB", "ms", lambda: cases.value("first screen"), "x", 1.3),
        ("reading a contents file, 200,000 topics", "ms", lambda: cases.value("contents file"), "x", 2.5),
        ("reading an index file, 200,000 keywords", "ms", lambda: cases.value("index file"), "x", 2.5),
        ("grouping and ordering, 1M keywords", "ms", lambda: cases.value("grouping"), "x", 2.5),
        ("getPage, 1M rows (floor: 1,000 rows)", "ms", lambda: cases.value("getPage"), "x", 2),
        ("removing one of ten sets of 100,000", "ms", lambda: cases.value("removal"), "", 50),
        ("peak memory, 50,000 pages", "MB", lambda: starts.memory("50k"), "+", 60),
        ("peak memory, 1M topics, 1M keywords", "MB", lambda: starts.memory("1M"), "", 700),
        ("first page, Qt help of 5,000 pages (floor: native)", "ms", lambda: starts.kind("set.qch", "shown"), "x", 1.3),
        ("all, Qt help of 5,000 pages (floor: native)", "ms", lambda: starts.kind("set.qch", "rest"), "x", 1.3),
        ("first page, Devhelp of 5,000 pages (floor: native)", "ms", lambda: starts.kind("set.devhelp2", "shown"), "x", 1.3),
        ("all, Devhelp of 5,000 pages (floor: native)", "ms", lambda: starts.kind("set.devhelp2", "rest"), "x", 1.3),
        ("page out of a package (floor: out of a file)", "ms", lambda: cases.value("packed page"), "+", 2),
        ("tree of a folder of 5,000 pages", "ms", lambda: cases.value("folder"), "", 1000),
        ("what is on a machine with 500 help sets", "ms", lambda: cases.value("machine"), "", 1000),
        ("--isinstall", "ms", starts.request, "x", 1.3),
        ("search: what is needed of 50,000 topics", "ms", lambda: cases.value("search source"), "", 30),
        ("search: indexing 50,000 pages of 3 KB", "ms", lambda: (searches.indexing()[0], None), "", 6000),
        ("search: peak memory of indexing", "MB", lambda: (searches.indexing()[1], None), "", 200),
        ("search: index on disk, of the text's size", "%", searches.size, "", 60),
        ("search: nothing has changed", "ms", searches.again, "", 400),
        ("search: a rare word", "ms", lambda: searches.query(cases, "rare word"), "", 10),
        ("search: a word on a tenth of the pages", "ms", lambda: searches.query(cases, "tenth word"), "", 30),
        ("search: a word on every page", "ms", lambda: searches.query(cases, "every word"), "", 60),
    ]


def number(value):
    return "" if value is None else f"{value:.4f}" if value < 0.1 else f"{value:.2f}" if value < 10 else f"{value:.0f}"


def print_row(what, unit, measured, judged, target):
    ours, floor = measured
    # Where there is nothing to compare with, or nothing is compared, ours itself is judged.
    result = {"x": lambda: ours / floor, "+": lambda: ours - floor, "": lambda: ours}[judged]()
    relation = {"x": f"{result:.2f} x", "+": f"{result:+.1f} {unit}", "": ""}[judged]
    aim = {"x": f"{target} x", "+": f"+{target} {unit}", "": f"{target} {unit}"}[judged]
    print(f"{what:<48}{number(ours):>9}{number(floor):>9} {unit:<3}{relation:>10}{aim:>10}  "
          f"{'met' if result <= target else 'MISSED'}", flush=True)


def main():
    build, *arguments = sys.argv[1:]
    quick = "--quick" in arguments
    words = [argument for argument in arguments if argument != "--quick"]
    print(f"{'what':<48}{'ours':>9}{'floor':>9}    {'ratio':>10}{'target':>10}")
    with tempfile.TemporaryDirectory() as work, Starts(build, work, 3 if quick else 15) as starts:
        for what, unit, measure, judged, target in rows(starts, Cases(build, quick), Searches(build, work)):
            if not words or any(word in what for word in words):
                print_row(what, unit, measure(), judged, target)


if __name__ == "__main__":
    main()
