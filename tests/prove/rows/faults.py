"""Every call of every job goes wrong once: failing calls, no memory, signals, changing inputs."""

import errno
import itertools
import queue
import random
import signal
import threading
import time

import jobs
import proof

WORKERS = 2


def drive(bench, cases, trials):
    """Runs functions (Case) -> texts of faults, each in a case folder of its own; `cases` of them
    at least, evenly spread, when there are more."""
    tally = proof.Tally()
    stride = max(1, len(trials) // cases)
    waiting = queue.SimpleQueue()
    for trial in trials[bench.seed % stride::stride]:
        waiting.put(trial)
        tally.cases += 1

    def work(case):
        while True:
            try:
                told, trial = waiting.get_nowait()
            except queue.Empty:
                return
            for fault in trial(case):
                tally.faults.append(f"{told}: {fault}")

    workers = [threading.Thread(target=work, args=(jobs.Case(bench, f"case{i}"),))
               for i in range(WORKERS)]
    for worker in workers:
        worker.start()
    for worker in workers:
        worker.join()
    return tally


ALL = jobs.JOBS | jobs.SAVES


def told(name, fault):
    return name + " " + " ".join(f"{key}={value}" for key, value in fault.items())


def faulty(name, fault, names=()):
    """A trial: the job runs with the fault, which must do no harm or be told."""
    def trial(case):
        references = case.references(ALL[name])
        left = case.run(ALL[name], **fault)
        if not left.happened and fault["AT"] > 0:
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
    case = jobs.Case(bench, "counted")
    return drive(bench, cases, [
        faulty(name, {"KIND": kind, "AT": at, "DO": getattr(errno, error, error)} | on)
        for name, job in ALL.items() for kind, errors in ERRORS.items()
        for error in errors.split() for on in ({}, {"ON": 1})
        for at in range(1, case.references(job)[0].calls[kind] + 1)])


MOST_MEMORY, MEMORY_STEP = 3 << 20, 6 << 10  # bytes


def memory(bench, cases):
    case = jobs.Case(bench, "counted")
    names = [jobs.NO_MEMORY]
    trials = [faulty(name, {"KIND": "alloc", "AT": at, "DO": errno.ENOMEM} | on, names)
              for name, job in jobs.JOBS.items() for on in ({}, {"ON": 1})
              for at in range(1, case.references(job)[0].calls["alloc"] + 1)]
    trials += [faulty(name, {"AT": 0, "DO": "limit", "ARG": size}, names)
               for name in jobs.JOBS for size in range(0, MOST_MEMORY, MEMORY_STEP)]
    return drive(bench, cases, trials)


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
            if not any(jobs.STOPPED in text for text in (left.err, *left.out)):
                yield f"a stop that is not told: {left.out} {left.err}"
        elif left.status != -number and not case.is_faultless(left, references):
            yield f"status {left.status}, and not all is there: {left.out} {left.err}"
        elif left.status == -number and number == signal.SIGPIPE:
            yield "ended by a broken pipe"
        yield from next_start(case, job, references)
    return told(f"{name} {number.name} after {delay:.4f}", fault), trial


def next_start(case, job, references):
    """What the next start of a program does not find, or leave, as it should, as texts."""
    fresh, stale = [[case.home() / f"{name}.{end}" for name in case.kept]
                    for end in ("abcdef", "ghijkl")]
    for place in fresh + stale:
        place.write_bytes(b"[Option]")
    for place in stale:
        jobs.os.utime(place, (case.now - 2 * jobs.DAY,) * 2)
    left = case.end(case.start(job, {"AT": -1}))
    yield from (f"next start: {fault}" for fault in case.damage(left, references))
    if not case.is_faultless(left, references):
        yield f"next start: {left.status} {left.out} {left.err}"
    read = {jobs.SETTINGS} | ({jobs.LOG} if job not in UNLOGGED else set())
    read |= {jobs.PATTERN} if "pattern" in job else set()
    for name, young, old in zip(case.kept, fresh, stale):
        if not young.exists():
            yield f"{young.name} was removed, though it is new"
        if old.exists() and name in read:
            yield f"{old.name} stays, though it is old"


UNLOGGED = [ALL[name] for name in ("judge", "batch", "settings", "pattern", "copy")]


def signals(bench, cases):
    case = jobs.Case(bench, "counted")
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
    return drive(bench, cases, trials)


ROWS = [
    proof.Row("calls", "each call on files fails, or does less than it was asked for", calls,
              6000, 250),
    proof.Row("memory", "each allocation fails, or memory is limited", memory, 2500, 60),
    proof.Row("signals", "signals, kill among them, at each call and at any moment", signals,
              500, 40),
]
