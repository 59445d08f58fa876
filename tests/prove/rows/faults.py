"""Every call of every job goes wrong once: failing calls, no memory, signals, changing inputs."""

import concurrent.futures
import errno
import queue
import random
import signal
import time

import jobs
import proof

WORKERS = 2


def spread(bench, cases, trials):
    """As many trials as there are to be cases, or some more, evenly spread."""
    stride = max(1, len(trials) // cases)
    return trials[bench.seed % stride::stride]


def drive(bench, trials):
    """Runs trials, each a text and a function (Case) -> texts of faults."""
    tally = proof.Tally(len(trials))
    idle = queue.SimpleQueue()
    for number in range(WORKERS):
        idle.put(jobs.Case(bench, f"case{number}"))

    def run(trial):
        case = idle.get()
        faults = [f"{trial[0]}: {fault}" for fault in trial[1](case)]
        idle.put(case)
        return faults

    with concurrent.futures.ThreadPoolExecutor(WORKERS) as pool:
        for faults in pool.map(run, trials):
            tally.faults += faults
    return tally


ALL = jobs.JOBS | jobs.SAVES


def told(name, fault):
    return name + " " + " ".join(f"{key}={value}" for key, value in fault.items())


def faulty(name, fault, names=()):
    """A trial: the job runs with the fault, which must do no harm or be told."""
    def trial(case):
        references = case.references(ALL[name])
        left = case.run(ALL[name], **fault)
        if not left.happened and fault["AT"] > 0 and fault["KIND"] != "alloc":
            yield "the fault did not happen"
        yield from case.damage(left, references)
        yield from case.silence(left, references, [*names] or jobs.suspects(
            left, references[0].outputs, "ON" in fault) + SAVED.get(name, []))
    return told(name, fault), trial


# What the driver of the windows tells without a file's name.
SAVED = {"pattern": ["the pattern cannot be"], "copy": ["A.CBL"], "log": ["window_driver: log"]}
ERRORS = {"open": "EIO EACCES EINTR EMFILE", "read": "EIO EINTR short", "close": "EIO ENOSPC EINTR",
          "write": "EIO ENOSPC EINTR short", "rename": "EIO EACCES", "unlink": "EACCES EIO",
          "link": "EIO EACCES ENOSPC", "stat": "EIO EACCES", "mkdir": "EACCES ENOSPC",
          "opendir": "EACCES EMFILE EIO", "readdir": "EIO", "fsync": "EIO ENOSPC",
          "mkostemp": "EACCES ENOSPC EMFILE", "mode": "EACCES EIO"}


def calls(bench, cases):
    case = jobs.Case(bench, "case9")
    tally = drive(bench, spread(bench, cases, [
        faulty(name, {"KIND": kind, "AT": at, "DO": getattr(errno, error, error)} | on)
        for name, job in ALL.items() for kind, errors in ERRORS.items()
        for error in errors.split() for on in ({}, {"ON": 1})
        for at in range(1, case.references(job)[0].calls[kind] + 1)]))
    for name in ("settings", "pattern", "log"):
        synced = case.references(ALL[name])[0].calls["fsync"]
        tally.check(synced >= 2, f"{name}: {synced} syncs, not those of a file and its folder")
    return tally


MOST_MEMORY, MEMORY_STEP = 3 << 19, 4 << 10  # bytes


def memory(bench, cases):
    case = jobs.Case(bench, "case9")
    names = [jobs.NO_MEMORY]
    trials = [faulty(name, {"KIND": "alloc", "AT": at, "DO": errno.ENOMEM} | on, names)
              for name, job in jobs.JOBS.items() for on in ({}, {"ON": 1})
              for at in range(1, case.references(job)[0].calls["alloc"] + 1)]
    trials += [faulty(name, {"AT": 0, "DO": "limit", "ARG": size}, names)
               for name in jobs.JOBS for size in range(0, MOST_MEMORY, MEMORY_STEP)]
    return drive(bench, spread(bench, cases, trials))


HANDLED = (signal.SIGTERM, signal.SIGINT, signal.SIGHUP)


def signalled(name, number, fault, delay=0):
    """A trial: a signal reaches the job at one of its calls or, without such, after a delay."""
    def trial(case):
        job = ALL[name]
        references = case.references(job)
        case.prepare()
        begin = time.monotonic()
        process = case.start(job, fault)
        if delay:
            time.sleep(max(0, begin + delay - time.monotonic()))
            process.send_signal(number)
        left = case.end(process)
        yield from case.damage(left, references, (0, 1, 2, -number))
        if left.status == 2:
            if not left.is_stopped():
                yield f"a stop that is not told: {left.out} {left.err}"
        elif left.status != -number and not case.is_faultless(left, references):
            yield f"status {left.status}, and not all is there: {left.out} {left.err}"
        elif left.status == -number and number == signal.SIGPIPE:
            yield "ended by a broken pipe"
        yield from next_start(case, job, references)
    return told(f"{name} {number.name} after {delay:.4f}", fault), trial


def next_start(case, job, references):
    """What the next start of a program does not find, or leave, as it should, as texts."""
    fresh, stale = [[case.home / f"{name}.{end}" for name in case.kept]
                    for end in ("abcdef", "ghijkl")]
    for place in fresh + stale:
        place.write_bytes(b"[Option]")
    for place in stale:
        jobs.os.utime(place, (case.now - 2 * jobs.DAY,) * 2)
    case.remove_outputs()
    left = case.end(case.start(job, {"AT": -1}))
    left.strays = []
    yield from (f"next start: {fault}" for fault in case.damage(left, references))
    if not case.is_faultless(left, references):
        yield f"next start: {left.status} {left.out} {left.err}"
    read = {jobs.SETTINGS} | ({jobs.LOG} if job not in UNLOGGED else set())
    read |= {jobs.PATTERN} if "pattern" in job else set()
    for name, young, old in zip(case.kept, fresh, stale):
        if not young.exists():
            yield f"{young.name} was removed, though it is new"
        if old.exists() and name in read and "judge" not in job:
            yield f"{old.name} stays, though it is old"


UNLOGGED = [ALL[name] for name in ("judge", "batch", "settings", "pattern", "copy")]


def signals(bench, cases):
    case = jobs.Case(bench, "case9")
    chance = random.Random(bench.seed)
    trials = []
    for name, job in ALL.items():
        begin = time.monotonic()
        count = case.references(job)[0].calls["any"]
        seconds = time.monotonic() - begin
        for number in (signal.SIGKILL, *HANDLED, signal.SIGPIPE):
            trials += [signalled(name, number, {"KIND": "any", "AT": at, "DO": "signal",
                                                "ARG": number.value})
                       for at in range(1, count + 1, 1 if number == signal.SIGKILL else 4)]
        trials += [signalled(name, chance.choice((signal.SIGKILL, *HANDLED)), {"AT": -1},
                             chance.uniform(0.001, seconds)) for _ in range(20)]
    return drive(bench, spread(bench, cases, trials))


FILE_CHANGES = ("shrink", "grow", "vanish", "replace", "folder")
FOLDERS = {"folders": ["old"], "auto": ["new"], "stepcsv": ["old"],
           "snapshot": ["tree1", "tree1/sub", "tree1/gone", "tree1/sub/deep"],
           "trees": ["tree1", "tree1/sub", "tree1/gone", "tree2/sub"]}


def change(case, name, what, path, at):
    """Runs a job while an input changes at a call; 0 is before the first, -1 after the last."""
    case.write("spare", jobs.lines("交換").encode("cp932"), case.now - 30 * jobs.DAY)
    left = case.run(ALL[name], KIND="any", AT=at, DO=what, PATH=case.root / path,
                    ARG=case.root / "spare")
    case.restore(path)
    return left


def changing(name, what, path, at):
    """A trial: an input changes at a call; either that is told, or nobody could have seen it."""
    def trial(case):
        references = case.references(ALL[name])
        key = (name, what, path)
        if key not in case.faultless:
            case.faultless[key] = [change(case, *key, 0)]
        left = change(case, *key, at)
        left.strays = [stray for stray in left.strays
                       if not f"{stray}/".startswith(f"{case.root}/{path}/")]
        yield from case.damage(left, references + case.faultless[key])
        known = [jobs.os.path.basename(below) for below in (path, *case.inputs)
                 if f"{below}/".startswith(f"{path}/")]
        is_told = left.status == 2 and any(each in left.err for each in known)
        # What an open finds is looked at in the call behind it.
        is_early = (at <= (left.opened + 1 if left.opened else left.looked or at) and
                    case.is_faultless(left, case.faultless[key]))
        is_late = at > left.looked and case.is_faultless(left, references)
        if not (is_told or is_early or is_late):
            yield f"not told: opened at {left.opened}, last look {left.looked}: {left}"
    return told(f"{name} {what} {path}", {"AT": at}), trial


def changes(bench, cases):
    case = jobs.Case(bench, "case9")
    tried = jobs.JOBS | {"copy": jobs.SAVES["copy"]}
    trials = {what: [] for what in (*FILE_CHANGES, "gone")}
    for name, job in tried.items():
        count = case.references(job)[0].calls["any"]
        words = [word for word in job.split() if "/" in word]
        files = [path for path in case.inputs if path.startswith(tuple(words))]
        for what in trials:
            trials[what] += [changing(name, what, path, at) for at in range(1, count + 1)
                             for path in (FOLDERS.get(name, []) if what == "gone" else files)]
    some = [spread(bench, cases // len(trials), each) for each in trials.values()]
    tally = drive(bench, sum(some, []))
    tally.figures = {what: len(each) for what, each in zip(trials, some)}
    return tally


ROWS = [
    proof.Row("calls", "each call on files fails, or does less than it was asked for", calls,
              6000, 250),
    proof.Row("memory", "each allocation fails, or memory is limited", memory, 2500, 60),
    proof.Row("signals", "signals, kill among them, at each call and at any moment", signals,
              500, 40),
    proof.Row("changes", "an input changes, vanishes or is replaced at each call", changes,
              1800, 30),
]
