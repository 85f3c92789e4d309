"""How the cost grows with what there is."""
from contenders import median

turns = 3


def points(machine, work, sizes):
    """The figures of a work for each size, each the median of some turns. Memory is that of the first, which nothing was
    freed before."""
    found = []
    for size in sizes:
        worker = machine.worker(*work(size))
        first = worker.figures()
        figures = [worker.figures() for _ in range(turns)]
        found.append((size, {name: first[name] if name == "bytes" else median([each[name] for each in figures])
                             for name in first}))
        worker.close()
        machine.workers.remove(worker)
    return found


def line(found, name, factor=1.0):
    return [(size, figures[name] * factor) for size, figures in found]


def growth_of_jobs(machine, report):
    sizes = (100, 1000, 10_000, 100_000)
    folders = {size: machine.jobs(size, f"jobs{size}") for size in sizes}
    report.curve("A pass over more jobs", "jobs of 1 KB", "ms", {
        history: line(points(machine, lambda size: ("pass", history, folders[size]), sizes), "seconds", 1e3)
        for history in ("unchanged", "renamed", "modified", "new")})


def growth_of_bytes(machine, report):
    sizes = (10**6, 10**7, 10**8, 10**9, 10**10)
    for size in sizes:
        folder = machine.folder / str(size)
        folder.mkdir()
        with open(folder / "tool", "wb") as tool:
            tool.truncate(size)
    report.curve("A pass over one larger file (a hole, read as zeros)", "bytes", "ms", {
        "unchanged": line(points(machine, lambda size: ("pass", "unchanged", machine.folder / str(size)), sizes),
                          "seconds", 1e3)})


def growth_of_changes(machine, report):
    sizes = (1, 10, 100, 1000, 10_000, 100_000)
    found = points(machine, lambda size: ("changes", size), sizes)
    report.curve("New jobs at once, each notified", "jobs", "ms", {
        "until the last is notified": line(found, "seconds", 1e3), "processor time of the agent": line(found, "processor", 1e3)})


def growth_of_events(machine, report):
    sizes = (2, 10, 100, 1000, 10_000, 100_000)
    found = points(machine, lambda size: ("storm", size), sizes)
    report.curve("The agent, amid more events of a folder", "events", "ms", {
        "processor time of the agent": line(found, "processor", 1e3), "making the events": line(found, "seconds", 1e3)})


def growth_of_folders(machine, report):
    sizes = (10, 100, 1000, 10_000, 100_000)
    trees = {size: machine.tree(size, 0) for size in sizes}
    found = points(machine, lambda size: ("tree", trees[size]), sizes)
    report.curve("A monitor of a larger tree (empty folders)", "folders", "", {
        "start, ms": line(found, "seconds", 1e3), "private memory, KB": line(found, "bytes", 1 / 1024)})


def growth_of_user_data(machine, report):
    found = points(machine, lambda size: ("user-data", size), (100, 1000, 10_000, 100_000, 1_000_000))
    report.curve("Saved user data", "items", "ms", {"save": line(found, "save", 1e3), "load": line(found, "load", 1e3)})


curves = [growth_of_jobs, growth_of_bytes, growth_of_changes, growth_of_events, growth_of_folders, growth_of_user_data]
