"""The table of a run, and its plots."""
import os
import platform
import re

import plots
from contenders import median


def machine_name():
    processor = re.search(r"model name\s*: (.*)", open("/proc/cpuinfo").read())
    memory = int(re.search(r"MemTotal:\s*(\d+)", open("/proc/meminfo").read())[1]) / 2**20
    name = re.search(r'PRETTY_NAME="(.*)"', open("/etc/os-release").read())[1]
    return (f"{processor[1] if processor else platform.machine()}, {os.cpu_count()} processors, {memory:.0f} GB, "
            f"Linux {platform.release().split('-')[0]}, {name}")


def duration(seconds):
    return f"{seconds * 1e3:.1f} ms" if seconds < 10 else f"{seconds:.1f} s"


def verdict(figure, limit):
    if limit is None:
        return "", ""
    return f"{limit:g}", "holds" if figure <= limit else "**does not hold**"


class Report:
    def __init__(self):
        self.times, self.bounds, self.left_out, self.curves = [], [], [], []
        self.load = os.getloadavg()[0]

    def compare(self, title, seconds, limits):
        """`limits`: for some of the peers, what the ratio to them may be. Our own come first."""
        own, *peers = seconds
        self.times.append((title, seconds))
        for peer in peers:
            limit = limits.get(peer)
            if limit is not None:
                self.bound(f"{title}, of `{peer}`", median(seconds[own]) / median(seconds[peer]), limit)

    def bound(self, title, figure, limit, unit=""):
        self.bounds.append((title, figure, limit, unit))

    def leave_out(self, what):
        self.left_out.append(what)

    def curve(self, title, across, up, lines):
        """`lines`: points by name."""
        self.curves.append((title, across, up, lines))

    def text(self):
        lines = [f"Machine: {machine_name()}; load when it began: {self.load:.1f}.", "",
                 "| what | figure | at most | |", "|---|---:|---:|---|"]
        for title, figure, limit, unit in self.bounds:
            shown, holds = verdict(figure, limit)
            lines.append(f"| {title} | {figure:.4g} {unit} | {shown} | {holds} |".replace("  |", " |"))
        lines += ["", "| work | by | median | spread | ratio |", "|---|---|---:|---:|---:|"]
        for title, seconds in self.times:
            own = median(next(iter(seconds.values())))
            for index, (name, times) in enumerate(seconds.items()):
                ratio = "" if index == 0 else f"{own / median(times):.2f}"
                lines.append(f"| {title if index == 0 else ''} | {name} | {duration(median(times))} | "
                             f"{duration(min(times))} to {duration(max(times))} | {ratio} |")
        for title, across, up, curves in self.curves:
            places = sorted({place for points in curves.values() for place, _ in points})
            lines += ["", f"{title}:", "", f"| {across} | " + " | ".join(f"{name}, {up}" if up else name for name in curves) + " |",
                      "|---:" * (1 + len(curves)) + "|"]
            for place in places:
                figures = [dict(points).get(place) for points in curves.values()]
                lines.append(f"| {place:,} | " + " | ".join("" if each is None else f"{each:.4g}" for each in figures) + " |")
        if self.left_out:
            lines += ["", *(f"Left out: {each}." for each in self.left_out)]
        return "\n".join(lines) + "\n"

    def write(self, folder):
        (folder / "comparison.md").write_text(self.text())
        if self.times:
            (folder / "comparison.svg").write_text(plots.bars(
                [(title, {name: median(times) for name, times in seconds.items()}) for title, seconds in self.times
                 if " against " not in title]))  # what is compared with itself is in the other plot
        if self.curves:
            (folder / "growth.svg").write_text(plots.panels(self.curves))

    def document(self, file):
        """Between two marks, so that what is said about the figures stays."""
        begin, end = "<!-- Benchmarks/compare begins -->\n", "<!-- Benchmarks/compare ends -->"
        before, _, rest = file.read_text().partition(begin)
        file.write_text(before + begin + "\n" + self.text() + "\n" + end + rest.partition(end)[2])
