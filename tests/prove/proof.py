"""What the rows of the proof share: the built programs, a folder to work in, and a tally.

A row drives the programs through many cases and counts each. It tells a fault as one line that
says how to make it again.
"""

import dataclasses
import os
import pathlib
import shutil
import subprocess
import tempfile


@dataclasses.dataclass
class Tally:
    """What one row has tried and found."""

    cases: int = 0
    faults: list = dataclasses.field(default_factory=list)
    figures: dict = dataclasses.field(default_factory=dict)  # what else is worth telling: text -> value

    def check(self, holds, fault):
        """Counts nothing; notes `fault`, a text, when `holds` is false. Returns `holds`."""
        if not holds:
            self.faults.append(fault)
        return holds


@dataclasses.dataclass
class Ended:
    """How a program ended. A hang has the status HANG; one ended by signal n has -n."""

    HANG = "hang"
    status: object
    out: str
    err: str


class Bench:
    """The programs under proof and a folder of their own to run in."""

    def __init__(self, programs, scratch, seed=1):
        self.programs = pathlib.Path(programs).absolute()
        self.scratch = pathlib.Path(scratch)
        self.seed = seed

    def program(self, name):
        """The path of a built program or library, by its name or its path below the build folder."""
        return str(self.programs / name)

    def folder(self, name):
        """A new, empty folder; an earlier one of that name goes."""
        path = self.scratch / name
        shutil.rmtree(path, ignore_errors=True)
        path.mkdir(parents=True)
        return path

    def environment(self, home, **more):
        """An environment whose settings, patterns and logs lie in `home` and nowhere else."""
        kept = {name: os.environ[name] for name in ("PATH", "LANG", "LC_ALL") if name in os.environ}
        return kept | {
            "HOME": str(home), "LEDRIX_HOME": str(home), "XDG_CONFIG_HOME": str(home),
            "TZ": "Asia/Tokyo", "QT_QPA_PLATFORM": "offscreen",
        } | {name: str(value) for name, value in more.items()}

    def run(self, command, cwd=None, env=None, seconds=20, stdin=subprocess.DEVNULL, **more):
        """Runs a command to its end; its texts are read as UTF-8, whatever they hold."""
        command = [os.fsencode(part) for part in command]
        try:
            done = subprocess.run(command, cwd=cwd, env=env, stdin=stdin, capture_output=True,
                                  timeout=seconds, check=False, **more)
        except subprocess.TimeoutExpired as hung:
            return Ended(Ended.HANG, str(hung.stdout), str(hung.stderr))
        return Ended(done.returncode, *(text.decode(errors="replace")
                                        for text in (done.stdout, done.stderr)))


@dataclasses.dataclass
class Row:
    """One row of the table."""

    name: str
    what: str  # what is tried, in one clause
    run: object  # (Bench, cases) -> Tally; `cases` is how many to try, at least
    floor: int  # cases of the whole proof
    short: int  # cases of the form that the ordinary tests run


def scratch_folder():
    """A folder for one run of the proof; the caller removes it."""
    return pathlib.Path(tempfile.mkdtemp(prefix="ledrix-prove-"))
