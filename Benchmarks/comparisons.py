"""What is compared, and what must hold."""
import ctypes
import json
import os
import plistlib
import random
import re
import shutil
import subprocess
import time

from contenders import Command, median
from windows import Display, FirstWindow

event_wait = 0.51 + 0.3  # a burst of events is looked at together, and a notification may be replaced

tools, tool_size = 16, 16 << 20


def contents(kind):
    """The bytes of one tool: they differ from tool to tool where they can."""
    if kind == "zeros":
        return bytes(tool_size)
    if kind == "programs":
        return (b"\xcf\xfa\xed\xfe" + os.urandom(tool_size))[:tool_size]
    if kind == "random":
        return os.urandom(tool_size)
    if kind == "text":
        line = f"{random.random()} is a line of some text, as logs have it.\n"
        return (line * (tool_size // len(line) + 1)).encode()[:tool_size]
    start = '<?xml version="1.0"?><plist version="1.0"><dict><key>List</key><array>'
    entry = f"<string>{random.random()} and on</string>\n"
    return (start + entry * (tool_size // len(entry))).encode()[:tool_size]


def passes_over_tools(machine, report):
    jobs = machine.jobs(1000)
    folder = machine.folder / "tools"
    for kind, words in (("programs", "that begin as programs do"), ("random", "of random bytes"), ("text", "of text"),
                        ("endless XML", "of an XML list that never ends"), ("zeros", "of zeros")):
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        for tool in range(tools):
            (folder / f"tool{tool}").write_bytes(contents(kind))
        files = [*jobs.iterdir(), *folder.iterdir()]
        seconds = machine.turns({"pass": machine.worker("pass", "unchanged", jobs, folder),
                                 "the first pass": machine.worker("pass", "new", jobs, folder),
                                 "openssl dgst -sha256": Command("openssl", "dgst", "-sha256", files=files),
                                 "sha256sum": Command("sha256sum", files=files)})
        report.compare(f"1,000 jobs, 256 MB {words}", seconds, {"openssl dgst -sha256": 0.58})


def passes_over_small_jobs(machine, report):
    jobs = machine.jobs(10_000)
    rules = machine.folder / "aide.conf"
    rules.write_text(f"database_in=file:{machine.folder}/aide.db\ndatabase_out=file:{machine.folder}/aide.db\n"
                     f"gzip_dbout=no\nreport_url=file:{machine.folder}/aide.report\n{jobs} sha256\n")
    Command("aide", "--init", "-c", rules)()
    files = list(jobs.iterdir())
    seconds = machine.turns({"pass": machine.worker("pass", "unchanged", jobs),
                             "openssl dgst -sha256": Command("openssl", "dgst", "-sha256", files=files),
                             "sha256sum": Command("sha256sum", files=files),
                             "aide --check": Command("aide", "--check", "-c", rules)})
    report.compare("10,000 jobs of 1 KB", seconds, {"openssl dgst -sha256": 0.50, "aide --check": 0.06})


def passes_that_grow(machine, report):
    few, many = machine.jobs(10_000, "few"), machine.jobs(100_000, "many")
    for history in ("unchanged", "renamed", "modified", "deleted"):
        seconds = machine.turns({"100,000": machine.worker("pass", history, many),
                                 "10,000": machine.worker("pass", history, few)})
        report.compare(f"100,000 jobs against 10,000, all {history}", seconds, {"10,000": 11})


def events(machine, report):
    """Several agents side by side: each waits nearly all of the time."""
    agents = [machine.worker("event") for _ in range(8)]
    delays = []
    for _ in range(26):
        for agent in agents:
            agent.begin()
            time.sleep(0.02)  # or they would all wake at once
        delays.append([agent.end()["seconds"] for agent in agents])
    delays = [delay for round_ in delays[1:] for delay in round_]
    report.bound(f"Event to notification, median of {len(delays)}", median(delays) * 1e3, (event_wait + 0.003) * 1e3, "ms")
    report.bound(f"Event to notification, the worst of {len(delays)}", max(delays) * 1e3, (event_wait + 0.020) * 1e3, "ms")


def storms(machine, report):
    storm = machine.worker("storm", 100_000)
    turns = [storm.figures() for _ in range(machine.rounds)]
    lasted = median([turn["seconds"] for turn in turns])
    report.bound(f"Storm of 100,000 events in {lasted:.2f} s: processor time", median([turn["processor"] for turn in turns]),
                 0.5, "s")
    report.bound("Storm of 100,000 events: passes, at most", max(turn["passes"] for turn in turns), 2)


def rest(machine, report):
    few, many = (machine.worker("rest", 1, jobs) for jobs in (100, 20_100))
    known = [after.figures()["private"] - before.figures()["private"]
             for before, after in [(few, many)] * 3]
    report.bound("Private memory for each known job, at rest after a pass", median(known) / 20_000, 250, "B")
    figures = machine.worker("rest", 20, 0).figures()
    report.bound("Rest: wake-ups in 20 s", figures["wakeUps"], 0)
    report.bound("Rest: resident", figures["resident"] / 2**20, 12, "MB")
    report.bound("Rest: private and written", figures["private"] / 2**20, 2, "MB")


def launches(machine, report):
    launch = machine.worker("launch", 1000)
    launch()
    seconds = [launch() for _ in range(3 * machine.rounds)]  # short ones, and much else goes on in the system
    report.bound(f"Launch to watching, 1,000 jobs, median of {len(seconds)}", median(seconds) * 1e3, 20, "ms")


class Inotifywait:
    def __init__(self, tree):
        self.tree = tree

    def __call__(self):
        start = time.perf_counter()
        with subprocess.Popen(["inotifywait", "-m", "-r", self.tree], stderr=subprocess.PIPE, stdout=subprocess.DEVNULL,
                              text=True) as process:
            for line in process.stderr:
                if line.startswith("Watches established"):
                    break
            seconds = time.perf_counter() - start
            process.kill()
        return seconds


class Fswatch:
    """It does not say when it watches: that is when a change is printed for the first time."""

    def __init__(self, tree):
        self.tree = tree

    def __call__(self):
        start = time.perf_counter()
        with subprocess.Popen(["fswatch", "-r", "-l", "0.1", self.tree], stdout=subprocess.PIPE) as process:
            os.set_blocking(process.stdout.fileno(), False)
            while not process.stdout.read():
                (self.tree / "poke").touch()
                time.sleep(0.01)
            seconds = time.perf_counter() - start
            process.kill()
        (self.tree / "poke").unlink()
        return seconds


class Watchman:
    def __init__(self, machine, tree):
        socket = machine.base / "watchman"
        self.tree = tree
        self.client = ["watchman", "--no-spawn", f"--sockname={socket}"]
        self.server = subprocess.Popen(["watchman", "--foreground", f"--sockname={socket}", f"--logfile={socket}.log",
                                        f"--statefile={socket}.state"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        while subprocess.run([*self.client, "version"], capture_output=True, check=False).returncode != 0:
            time.sleep(0.05)

    def ask(self, *words):
        return json.loads(subprocess.run([*self.client, *words], capture_output=True, check=True).stdout)

    def __call__(self):
        start = time.perf_counter()
        self.ask("watch", self.tree)
        self.ask("clock", self.tree)  # comes when all of it has been looked at
        seconds = time.perf_counter() - start
        self.ask("watch-del", self.tree)
        return seconds

    def close(self):
        self.ask("shutdown-server")
        self.server.wait()


def trees(machine, report):
    tree = machine.tree(20_000, 10)
    watchman = Watchman(machine, tree)
    seconds = machine.turns({"a monitor's start": machine.worker("tree", tree),
                             "find -type d": Command("find", tree, "-type", "d"),
                             "inotifywait -r": Inotifywait(tree),
                             "watchman watch": watchman,
                             "fswatch -r": Fswatch(tree)})
    watchman.close()
    report.compare("Tree of 20,000 folders, ten files in each", seconds, {"find -type d": 0.95, "inotifywait -r": 0.35})


class Libplist:
    """The library itself: its program would be counted with its start and its writing."""

    def __init__(self, content, reader):
        self.library = ctypes.CDLL("libplist-2.0.so.3")
        self.read = getattr(self.library, reader)
        self.content = content

    def __call__(self):
        plist = ctypes.c_void_p()
        start = time.perf_counter()
        self.read(self.content, ctypes.c_uint32(len(self.content)), ctypes.byref(plist))
        seconds = time.perf_counter() - start
        if not plist:
            raise SystemExit("libplist read nothing")
        self.library.plist_free(plist)
        return seconds


class Plistlib:
    def __init__(self, content):
        self.content = content

    def __call__(self):
        start = time.perf_counter()
        plistlib.loads(self.content)
        return time.perf_counter() - start


def property_lists(machine, report):
    for form, reader, items in ((plistlib.FMT_BINARY, "plist_from_bin", 64_000), (plistlib.FMT_XML, "plist_from_xml", 30_000)):
        entries = [{"Label": f"org.example.job{item}", "Program": f"/usr/local/libexec/tool{item}", "Nice": item,
                    "RunAtLoad": item % 2 == 0, "Share": item / 7, "Name": f"{'Żółw' if item % 10 == 0 else 'Turtle'} {item}"}
                   for item in range(items)]
        content = plistlib.dumps({"Items": entries}, fmt=form)
        file = machine.folder / "list"
        file.write_bytes(content)
        name = "Binary" if form == plistlib.FMT_BINARY else "XML"
        seconds = machine.turns({"into values": machine.worker("property-list", file),
                                 "libplist": Libplist(content, reader),
                                 "plistutil": Command("plistutil", "-i", file, "-o", "/dev/null"),
                                 "Python's plistlib": Plistlib(content)})
        report.compare(f"{name} property list of {len(content) / 1e6:.0f} MB", seconds, {"libplist": 0.8})


def texts(machine, report):
    source, target = machine.folder / "source", machine.folder / "target"
    source.write_bytes(("x" * 79 + "\n").encode() * 1_250_000)
    seconds = machine.turns({"to Windows": machine.worker("line-endings", source, target),
                             "unix2dos": Command("unix2dos", "-q", "-n", source, target)})
    report.compare("Line endings of 100 MB", seconds, {})
    source.write_bytes("漢字".encode() * 16_000_000)
    seconds = machine.turns({"guess": machine.worker("encoding", source),
                             "iconv -f UTF-8 -t UTF-8": Command("iconv", "-f", "UTF-8", "-t", "UTF-8", source)})
    report.compare("Encoding of 96 MB of Japanese", seconds, {})
    report.leave_out("themes, which are property lists of a few KB and have no peer")


def first_windows(machine, report):
    program, bare = machine.root / "build/release/vesper-job-link", machine.root / "build/release/Benchmarks/bare-window"
    if not (program.exists() and bare.exists()):
        report.leave_out("the first window of `vesper-job-link`, which is built only with the windows")
        return
    display = Display(machine.folder)
    seconds = machine.turns({"vesper-job-link": FirstWindow(display, program), "a bare window": FirstWindow(display, bare)})
    display.close()
    report.compare("First window", seconds, {"a bare window": 1.3})


def lists(machine, report):
    program = machine.root / "build/release/Benchmarks/list-benchmark"
    if not program.exists():
        report.leave_out("the list of `vesper-job-link`, which is built only with the windows")
        return
    row = re.compile(r"^(.*?) +([\d.]+) (\S*) +at most +([\d.]+)", re.MULTILINE)
    turns = [row.findall(subprocess.run([program], stdout=subprocess.PIPE, text=True).stdout)
             for _ in range(machine.rounds)]
    if not all(turns):
        raise SystemExit("the list of jobs was not measured")
    for rows in zip(*turns, strict=True):
        title, _, unit, limit = rows[0]
        report.bound(title, median([float(figure) for _, figure, _, _ in rows]), float(limit), unit)


comparisons = [passes_over_tools, passes_over_small_jobs, passes_that_grow, events, storms, rest, launches, trees,
               property_lists, texts, first_windows, lists]
