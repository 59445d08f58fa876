"""Many jobs in one program, and many programs at once."""

import concurrent.futures
import re

import proof

GROWTH = 64 << 10  # bytes of heap that a thousand jobs may hold on to


def long_use(bench, cases):
    """Every kind of job in turn in one process, which must hold nothing of them."""
    tally = proof.Tally(cases)
    home = bench.folder("home")
    ended = bench.run([bench.program("tests/long_use"), str(cases)], seconds=600,
                      env=bench.environment(home))
    numbers = [[int(word) for word in line.split()] for line in ended.out.splitlines()]
    if not tally.check(ended.status == 0 and len(numbers) == 2, f"long_use: {ended}"):
        return tally
    for what, before, after, most in zip(("heap", "descriptors", "files"), *numbers,
                                         (GROWTH, 0, 0)):
        tally.figures[f"{what} grown"] = after - before
        tally.check(after - before <= most, f"long_use {cases}: {what} {before}, then {after}")
    return tally


AT_ONCE = 8
STAMP = re.compile(rb"\d{4}/\d\d/\d\d \d\d:\d\d")


class Crowd:
    """A folder in which several programs work at once."""

    def __init__(self, bench):
        self.bench = bench
        self.folder = bench.folder("crowd")
        self.home = bench.folder("home")
        (self.home / "ledrix").mkdir()
        self.settings = self.home / "ledrix" / "settings.ini"
        text = "".join(f"{number} 日本語の行\n" for number in range(3000))
        for charset in ("euc-jp", "utf-8"):
            place = self.folder / charset
            place.mkdir()
            (place / "old.txt").write_bytes(text.encode(charset))
            (place / "new.txt").write_bytes(text.replace("77", charset).encode(charset))

    def run_all(self, commands):
        """Runs commands at once; returns how they ended, in their order."""
        env = self.bench.environment(self.home)
        with concurrent.futures.ThreadPoolExecutor(len(commands)) as pool:
            return list(pool.map(lambda words: self.bench.run(words, env=env, seconds=60),
                                 commands))

    def compare(self, charset, out=()):
        place = self.folder / charset
        return [self.bench.program("ledrixc"), "compare", place / "old.txt", place / "new.txt",
                "--charset", "auto", "--mrg", "--set", "OptBuff=1000", *out]

    def content(self, path):
        """A listing without its stamps, or a merge source; nothing when it is missing."""
        return STAMP.sub(b"", path.read_bytes()) if path.exists() else b""


def compares(crowd, wanted):
    """Eight compares at once, two a listing: of the same inputs, or of other ones into one listing.
    All write the run log, and those with --out one merge source."""
    log = crowd.home / "Ledrixr.Log"
    log.unlink(missing_ok=True)
    commands, outputs = [], {}
    for number in range(AT_ONCE):
        charset = ("euc-jp", "utf-8")[number // 2 % 2]
        own = crowd.folder / charset / "old_txt_COMP.TXT"
        out = own if number < 4 else crowd.folder / f"out{number % 2}.lst"
        commands.append(crowd.compare(charset, () if number < 4 else ("--out", out)))
        outputs.setdefault(out, []).append(wanted[charset][0])
        outputs.setdefault(out.parent / "old_MRG.txt", []).append(wanted[charset][1])
    for ended, command in zip(crowd.run_all(commands), commands):
        if ended.status != 1 or ended.err:
            yield f"{command}: {ended.status} {ended.err}"
    for path, contents in outputs.items():
        if crowd.content(path) not in contents:
            yield f"{path} is of no compare alone"
        path.unlink(missing_ok=True)
    rows = log.read_bytes().split(b"\r\n")
    folders = {row.rpartition(b",")[0].decode() for row in rows[:-1]}
    asked = {f"{crowd.folder}/", f"{crowd.folder}/euc-jp/", f"{crowd.folder}/utf-8/"}
    if folders != asked or rows[-1] or len(rows) != len(asked) + 1:
        yield f"the run log holds {rows}"


def saves(crowd, driver):
    """Windows that save settings, patterns and the run log at once; a compare reads meanwhile."""
    values = [str(20 + number) for number in range(4)]
    commands = [[driver, "settings", "OptBuff", value] for value in values]
    commands += [[driver, "pattern", "1", f"name{number}"] for number in range(2)]
    commands += [[driver, "log", f"{crowd.folder}/euc-jp/"], crowd.compare("utf-8")]
    for ended, command in zip(crowd.run_all(commands), commands):
        if ended.status != (1 if "compare" in command else 0):
            yield f"{command}: {ended.status} {ended.err}"
    saved = crowd.settings.read_text()
    if not re.search(f"^OptBuff=({'|'.join(values)})$", saved, re.MULTILINE):
        yield f"settings of nobody: {saved[:200]}"
    if saved.count("OptMatch=") != 1:
        yield "the settings are torn"
    pattern = (crowd.home / "LedrixPtn1.ini").read_text(encoding="cp932")
    if not re.search("^Name=name[01]$", pattern, re.MULTILINE) or "OptSimple=" not in pattern:
        yield f"the pattern is torn: {pattern}"
    if f"{crowd.folder}/euc-jp/," not in (crowd.home / "Ledrixr.Log").read_text(encoding="cp932"):
        yield "the run log has lost a folder"
    yield from (f"{left} stays" for left in crowd.home.rglob("*.??????")
                if left.suffix not in (".ini", ".Log"))


def two_programs(bench, cases):
    tally = proof.Tally(cases)
    crowd = Crowd(bench)
    wanted = {}
    for charset in ("euc-jp", "utf-8"):
        crowd.run_all([crowd.compare(charset)])
        wanted[charset] = [crowd.content(crowd.folder / charset / name)
                           for name in ("old_txt_COMP.TXT", "old_MRG.txt")]
        tally.check(all(wanted[charset]), f"{charset}: nothing to compare with")
    for number in range(cases):
        what = (saves(crowd, bench.program("tests/window_driver")) if number % 4 == 3
                else compares(crowd, wanted))
        tally.faults += [f"round {number}: {fault}" for fault in what]
    tally.figures["programs at once"] = AT_ONCE
    return tally


ROWS = [
    proof.Row("two_programs", "programs that compare the same files or save at once", two_programs,
              200, 4),
    proof.Row("long_use", "jobs of all kinds in one process, which grows by nothing", long_use,
              1000, 60),
]
