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


def told(name, fault):
    return name + " " + " ".join(f"{key}={value}" for key, value in fault.items())


def faulty(job, fault, names=None):
    """A trial: the job runs with the fault, which must do no harm or be told."""
    def trial(case):
        references = case.references(job)
        left = case.run(job, **fault)
        if not left.happened:
            yield "the fault did not happen"
        yield from case.damage(left, references)
        yield from case.silence(left, references, names or jobs.suspects(left, "ON" in fault))
    return trial


ERRORS = {"open": "EIO EACCES EINTR EMFILE", "read": "EIO EINTR short", "close": "EIO ENOSPC EINTR",
          "write": "EIO ENOSPC EINTR short", "rename": "EIO EACCES", "unlink": "EACCES EIO",
          "link": "EIO EACCES ENOSPC", "stat": "EIO EACCES", "mkdir": "EACCES ENOSPC",
          "opendir": "EACCES EMFILE EIO", "readdir": "EIO", "fsync": "EIO ENOSPC",
          "mkostemp": "EACCES ENOSPC EMFILE", "mode": "EACCES EIO"}


def calls(bench, cases):
    case = jobs.Case(bench, "counted")
    trials = []
    for name, job in (jobs.JOBS | jobs.SAVES).items():
        for kind, errors in ERRORS.items():
            for error, at, on in itertools.product(
                    errors.split(), range(1, case.references(job)[0].calls[kind] + 1), (0, 1)):
                fault = {"KIND": kind, "AT": at, "DO": getattr(errno, error, error)}
                fault |= {"ON": 1} if on else {}
                trials.append((told(name, fault), faulty(job, fault)))
    return drive(bench, cases, trials)


ROWS = [
    proof.Row("calls", "each call on files fails, or does less than it was asked for", calls,
              6000, 250),
]
