"""Who takes part in a comparison: works of this project, and programs of others."""
import os
import shutil
import statistics
import subprocess
import time


class Worker:
    """One work of benchmark-worker, in a process that lasts, so that it knows the turn before."""

    def __init__(self, machine, *words):
        self.process = subprocess.Popen([machine.root / "build/release/Benchmarks/benchmark-worker",
                                         *map(str, words)], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        text=True)
        machine.workers.append(self)

    def begin(self):
        self.process.stdin.write("\n")
        self.process.stdin.flush()

    def end(self):
        line = self.process.stdout.readline()
        if not line:
            raise SystemExit("a benchmark failed")
        return {name: float(figure) for name, figure in (word.split("=") for word in line.split())}

    def figures(self):
        self.begin()
        return self.end()

    def __call__(self):
        return self.figures()["seconds"]

    def close(self):
        self.process.stdin.close()
        self.process.wait()


class Command:
    """A program, from its start to its end. None of its output is kept."""

    def __init__(self, *words, files=()):
        # Files come as many at a time as a command line holds.
        files = [str(file) for file in files]
        pieces = [files[first:first + 20_000] for first in range(0, len(files), 20_000)] or [[]]
        self.lines = [[*map(str, words), *piece] for piece in pieces]

    def __call__(self):
        start = time.perf_counter()
        for line in self.lines:
            subprocess.run(line, check=True, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                           stderr=subprocess.DEVNULL)
        return time.perf_counter() - start


class Machine:
    """Where a comparison is made, and how often."""

    def __init__(self, root, folder, rounds):
        self.root, self.base, self.rounds = root, folder, rounds
        self.workers = []
        self.clear()

    def clear(self):
        for worker in self.workers:
            worker.close()
        self.workers = []
        shutil.rmtree(self.base / "work", ignore_errors=True)
        self.folder = self.base / "work"
        self.folder.mkdir()

    def worker(self, *words):
        return Worker(self, *words)

    def turns(self, contenders, rounds=None):
        """The seconds of each by name. Whoever was first is last in the next round."""
        seconds = {name: [] for name in contenders}
        order = list(contenders)
        for contender in contenders.values():
            contender()  # what is only slow the first time counts for nobody
        for _ in range(rounds or self.rounds):
            for name in order:
                seconds[name].append(contenders[name]())
            order.append(order.pop(0))
        return seconds

    def jobs(self, count, name="jobs"):
        folder = self.folder / name
        folder.mkdir()
        for job in range(count):
            label = f"org.example.job{job}"
            (folder / f"{label}.plist").write_text(job_file(label))
        return folder

    def tree(self, folders, files):
        """A hundred folders at a time within one."""
        tree = self.folder / f"tree{folders}"
        for number in range(folders):
            folder = tree / f"group{number // 1000}/section{number // 100}/folder{number}"
            folder.mkdir(parents=True)
            for file in range(files):
                os.close(os.open(folder / f"file{file}", os.O_CREAT | os.O_WRONLY))
        return tree


def job_file(label):
    """About 1 KB, as jobs are."""
    arguments = "".join(f"\t\t<string>/usr/local/libexec/{label}/argument{index}</string>\n" for index in range(10))
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n<dict>\n'
            f"\t<key>Label</key>\n\t<string>{label}</string>\n\t<key>ProgramArguments</key>\n\t<array>\n{arguments}"
            "\t</array>\n\t<key>RunAtLoad</key>\n\t<true/>\n</dict>\n</plist>\n")


def median(figures):
    return statistics.median(figures)
