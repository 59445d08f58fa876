"""Every job of the programs on small inputs, run while a preloaded library (faults.cpp) makes one
of its calls go wrong, and the one check of what it leaves.
"""

import dataclasses
import hashlib
import os
import pathlib
import re
import shutil
import struct
import subprocess
import time

import proof

# What a job runs. A word with "/" in it, but not at its begin, is a path below the case folder.
JOBS = {
    "pair": "ledrixc compare old/A.CBL new/A.CBL --sbn --csv --mrg --marks --out out/",
    "folders": "ledrixc compare old/ new/ --sbn --csv --mrg --set OptNoCngNoOut=1 --out out/",
    "euc": "ledrixc compare old/E.TXT new/E.TXT --charset EUC-JP --csv --out out/",
    "auto": "ledrixc compare old/ new/ --charset auto --sbn --csv --out out/",
    "skip": "ledrixc compare old/C.CBL new/C.CBL --csv --set OptNoCngNoOut=1 --out out/",
    "steps": "ledrixc steps old/A.CBL --out out/A.STP",
    "stepcsv": "ledrixc steps old/ --out out/STEP.CSV",
    "snapshot": "ledrixc snapshot tree1/ --out out/T.ddf",
    "trees": "ledrixc dircomp tree1/ tree2/ --out out/D.TXT",
    "snaps": "ledrixc dircomp snaps/1.ddf snaps/2.ddf --out out/D.TXT",
    "record": "ledrixc compare old/ new/ --charset auto --csv --out out/ --evidence ./R.EVD",
    "judge": "ledrixc judge old/A.CBL old/E.TXT old/U.TXT",
    "batch": "ledrix /old old/A.CBL /new new/A.CBL /out out/L.TXT",
}
SAVES = {
    "settings": "tests/window_driver settings OptBuff 77",
    "pattern": "tests/window_driver pattern 1 PATTERN",
    "log": "tests/window_driver log old/",
    "copy": "tests/window_driver copy old/A.CBL out/A.CBL",
}
SETTINGS, PATTERN, LOG = "ledrix/settings.ini", "LedrixPtn1.ini", "Ledrixr.Log"
CSV = "Ledrix.CSV"
ERROR, STOPPED = "エラー", "中断"
# What the rows of an output end with that tell of a file or pair without a result.
ENDINGS = tuple(end.encode("cp932") for end in (
    f",{ERROR}\r", f",{STOPPED}\r", ",-\r", "STEP COUNT [ 0 ]\r"))
NO_MEMORY = "メモリが足りません"
DAY = 86400


def lines(text, count=24):
    return "".join(f"{i * 100:06}     MOVE {text} TO W-{i:03}.\r\n" for i in range(1, count))


def contents():
    """The inputs: path below the case folder -> bytes."""
    old, new = lines("売上"), lines("売上").replace("W-005", "X-005").replace("W-009", "ｶﾅ")
    found = {"tree1/a.txt": "a", "tree1/sub/b.txt": "bb", "tree1/sub/deep/c.txt": "c",
             "tree2/a.txt": "aa", "tree2/sub/b.txt": "bb", "tree2/sub/new.txt": "n",
             "tree1/gone/d.txt": "d"}
    for side, text in (("old", old), ("new", new)):
        found[f"{side}/A.CBL"] = text
        found[f"{side}/B.CBL"] = found[f"{side}/C.CBL"] = old
        found[f"{side}/E.TXT"] = text.encode("euc_jp")
        found[f"{side}/U.TXT"] = (text + "\u4e02\u9fa5 不明\r\n").encode()
    return {name: text if isinstance(text, bytes) else text.encode("cp932")
            for name, text in found.items()}


SKIP_ON, SKIP_OFF = "OptNoCngNoOut=1", "OptNoCngNoOut=0"


def suspects(left, outputs, goes_on):
    """The names one of which a message must hold after a call on `left.path` has failed."""
    name = re.sub(r"\.[A-Za-z0-9]{6}$", "", os.path.basename(left.path.rstrip("/")))
    names = [name]
    if goes_on or re.match(r"#|\.ledrix|old$|new$|out$|home$|ledrix$", name):
        # More calls than this one, or a file without a name: any file of the job.
        inputs = [*contents(), "1.ddf", "2.ddf", SETTINGS, PATTERN, LOG]
        names += [os.path.basename(path) for path in inputs] + ["/old/:", "/new/:", *outputs]
    return names


@dataclasses.dataclass
class Left:
    """How one run ended and what it left."""

    status: object
    out: list  # the lines of standard output
    err: str
    outputs: dict  # name -> bytes
    kept: dict  # settings, pattern and log: name -> bytes
    strays: list  # inputs that were touched, and files that are new, but for outputs
    happened: int  # the number of the call, or 0
    path: str  # of that call
    opened: int  # the number of the last call that opened the watched path
    looked: int  # and of the last one that looked at it
    calls: dict  # kind -> how many

    def is_stopped(self):
        return self.status == 2 and any(STOPPED in text for text in (self.err, *self.out))

    def results(self):
        """The results that standard output tells: of two lines each, but for a judgement."""
        is_paired = self.out and self.out[0].startswith("(")
        return [pair for pair in zip(self.out[::2], self.out[1::2]) if pair[1] != "    証跡"] \
            if is_paired else [(line,) for line in self.out]


RECORD = "R.EVD"  # it is synced, so what a close tells does it no harm


def record_faults(path, status):
    """What is wrong with a record, by itself and against the outputs that it names."""
    if not path.exists():
        return ["no record"] if status in (1,) else []
    text = path.read_text()
    faults = [] if hashlib.sha256(text[:-65].encode()).hexdigest() == text[-65:-1] else ["torn"]
    for output, digest in re.findall(r"^(?:結果ﾘｽﾄ|CSV): (.*)\n.*\n.* SHA-256: (.*)$", text, re.M):
        is_there = os.path.exists(output)
        if not is_there or hashlib.sha256(pathlib.Path(output).read_bytes()).hexdigest() != digest:
            faults.append(f"{output} is not what {path} tells")
    return faults


EARLIER = b"of an earlier run\r\n"
KINDS = ("open read write close rename unlink link stat mkdir opendir readdir fsync mkostemp mode "
         "alloc any").split()


def is_count_so_far(result):
    """A directory job that is stopped tells how far it came."""
    wanted = " *UnMatch=" if " DirComp " in result[0] else " *File ?Count ?:"
    return re.match(wanted, result[-1], re.IGNORECASE)


class Case:
    """A folder with inputs for every job, a home, and a folder for outputs."""

    def __init__(self, bench, name):
        self.bench = bench
        self.root = bench.folder(name)
        self.home = self.root / "home"
        self.report = str(self.root) + ".report"
        self.now = int(time.time()) // 60 * 60
        self.inputs = contents()
        for path in self.inputs:
            self.write_input(path)
        for tree in "12":
            (self.root / "snaps").mkdir(exist_ok=True)
            bench.run([bench.program("ledrixc"), "snapshot", self.root / f"tree{tree}", "--out",
                       self.root / f"snaps/{tree}.ddf", "--settings", "none"])
        date = time.strftime("%Y/%m/%d %H:%M:%S", time.localtime(self.now - DAY))
        log = "".join(f"{self.root}/{name}/,{date}\r\n" for name in ("home", "snaps"))
        self.kept = {SETTINGS: b"[Option]\nOptMatch=2\nOptNoCngNoOut=0\n", LOG: log.encode(),
                     PATTERN: "[Pattern]\r\nName=前\r\n[Option]\r\nOptBuff=55\r\n".encode("cp932")}
        for tree in "12":  # inputs as well
            path = f"snaps/{tree}.ddf"
            self.inputs[path] = (self.root / path).read_bytes()
            self.write_input(path)
        (self.root / "out").mkdir()
        self.environment = bench.environment(
            self.home, LD_PRELOAD=bench.program("tests/libledrix_faults.so"),
            FAULT_UNDER=self.root, FAULT_OUT=self.root / "out",
            FAULT_UNTIL=self.home / LOG, FAULT_REPORT=self.report,
            FAULT_CLOCK=self.now, TMPDIR=bench.scratch)
        self.found = self.look()
        self.faultless = {}

    def write(self, path, content, stamp):
        place = self.root / path
        place.parent.mkdir(parents=True, exist_ok=True)
        if place.is_dir():
            shutil.rmtree(place)
        place.unlink(missing_ok=True)
        place.write_bytes(content)
        os.utime(place, (stamp, stamp))

    def write_input(self, path):
        """The sides of C.CBL have one time; every other input has a time of its own."""
        number = 0 if path.endswith("C.CBL") else list(self.inputs).index(path)
        self.write(path, self.inputs[path], self.now - 40 * DAY + number)

    def look(self):
        """What tells that an input was touched: path -> its status."""
        found, waiting = {}, [str(self.root / part) for part in
                              ("old", "new", "tree1", "tree2", "snaps")]
        waiting = [folder for folder in waiting if os.path.isdir(folder)]
        while waiting:
            with os.scandir(waiting.pop()) as entries:
                for entry in entries:
                    info = entry.stat(follow_symlinks=False)
                    found[entry.path] = (info.st_ino, info.st_mode, info.st_size) + (
                        () if entry.is_dir() else (info.st_mtime_ns, info.st_ctime_ns))
                    if entry.is_dir():
                        waiting.append(entry.path)
        return found

    def restore(self, path):
        """Gives a changed input, or folder of inputs, its content and time again."""
        for name in self.inputs:
            if f"{name}/".startswith(f"{path}/"):
                self.write_input(name)
        self.found = self.look()

    def words(self, job):
        program, *words = job.split()
        return [self.bench.program(program)] + [
            f"{self.root}/{word}" if "/" in word[1:] and word[0] != "/" else word for word in words]

    def remove_outputs(self):
        for left in os.scandir(self.root / "out"):
            os.unlink(left.path)
        (self.root / RECORD).unlink(missing_ok=True)

    def prepare(self):
        """Empties the output folder and puts back what the programs keep."""
        self.remove_outputs()
        for name, content in self.kept.items():
            place = self.home / name
            if not place.exists() or place.read_bytes() != content:
                self.write(f"home/{name}", content, self.now - DAY)
        for path in self.strange():
            path.unlink()

    def strange(self):
        """Files at home that no program keeps there."""
        return [path for folder in (self.home, self.home / "ledrix")
                for path in folder.iterdir() if path.is_file() and
                str(path.relative_to(self.home)) not in (*self.kept, "ledrixc.log")]

    def start(self, job, fault):
        """Starts a job; `fault` holds the library's variables without "FAULT_"."""
        return subprocess.Popen(
            self.words(job), stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
            stderr=subprocess.PIPE, cwd=self.root,
            env=self.environment | {f"FAULT_{name}": str(value) for name, value in fault.items()})

    def run(self, job, **fault):
        """Runs a job. Where memory fails the outputs of an earlier run may lie about."""
        self.prepare()
        if fault.get("KIND") == "alloc" and fault["AT"] % 2 and job in self.faultless:
            for name in self.faultless[job][0].outputs:
                self.write(f"out/{name}", EARLIER, self.now - DAY)
        return self.end(self.start(job, {"AT": -1} | fault))

    def end(self, process, seconds=20):
        """Waits for a job and tells what it left."""
        try:
            out, err = process.communicate(timeout=seconds)
            status = process.returncode
        except subprocess.TimeoutExpired:
            process.kill()
            out, err, status = *process.communicate(), proof.Ended.HANG
        report = pathlib.Path(self.report).read_bytes().ljust(76, b"\0")
        numbers = struct.unpack("19i", report[:76])
        now = self.look()
        return Left(
            status, out.decode(errors="replace").splitlines(), err.decode(errors="replace"),
            {left.name: pathlib.Path(left.path).read_bytes()
             for left in os.scandir(self.root / "out")},
            {name: (self.home / name).read_bytes() for name in self.kept
             if (self.home / name).exists()},
            sorted(path for path in now.keys() | self.found.keys()
                   if now.get(path) != self.found.get(path)) +
            [str(path) for path in self.strange() if status >= 0] +  # what is killed may leave one
            record_faults(self.root / RECORD, RECORD in process.args[-1] and status),
            numbers[0], report[76:].partition(b"\0")[0].decode(errors="replace"), *numbers[1:3],
            dict(zip(KINDS, numbers[3:])))

    def references(self, job):
        """The runs of a job without a fault. A file that cannot be looked at, and then can, is
        compared where the skip rule would leave it out: that run is as right."""
        if job not in self.faultless:
            runs = [self.run(job)]
            if SKIP_ON in job:
                runs.append(self.run(job.replace(SKIP_ON, SKIP_OFF)))
            for left in runs:
                if left.status not in (0, 1) or left.strays:
                    raise RuntimeError(f"{job}: {left}")
            self.faultless[job] = runs
        return self.faultless[job]

    # What a run has left is right or told:

    def is_log_whole(self, log):
        """Whether each line of the run log is whole, and no folder of the old one is lost."""
        rows = log.split(b"\r\n")
        return rows[-1] == b"" and all(
            re.fullmatch(rb"/[^,]*/,\d{4}/\d\d/\d\d \d\d:\d\d:\d\d", row) for row in rows[:-1]
        ) and {row.partition(b",")[0] for row in self.kept[LOG].split(b"\r\n")} <= {
            row.partition(b",")[0] for row in rows}

    def is_kept_whole(self, name, content, references):
        """Whether settings and patterns are the old ones, or hold all that the new ones hold."""
        if name == LOG or content == self.kept[name]:
            return name != LOG or self.is_log_whole(content)
        return any(re.sub(rb"=.*", b"", content) == re.sub(rb"=.*", b"", left.kept[name])
                   for left in references)

    def is_output_right(self, name, left, references):
        """Whether an output is a faultless one, but for rows that tell of a failure. Beside one
        that cannot be made the others are empty; a stopped job leaves what it has written. What an
        earlier run left does not pass for the listing of a pair that failed."""
        content = left.outputs[name]
        if content == EARLIER:
            return left.status not in (0, 1) and not any(
                result[0].endswith(f"/{name}") and result[-1].endswith((ERROR, STOPPED))
                for result in left.results())
        right = [left.outputs[name] for left in references if name in left.outputs]
        rows = content.split(b"\n")
        goods = [whole.split(b"\n") for whole in right]
        if right and not content and (left.status == 2 or name == "L.TXT"):
            return True  # the batch line's is empty before it begins
        if left.is_stopped() and right and content.endswith(b"\r\n"):
            known = {row for good in goods for row in good}
            return all(row in known or row.endswith(ENDINGS + (b",0\r",)) for row in rows)
        return content in right or right and len(rows) == len(goods[0]) and all(
            row in good or row.endswith(ENDINGS) and
            row.partition(b",")[0].startswith(good[0].partition(b",")[0][:10])
            for row, *good in zip(rows, *goods))

    def damage(self, left, references, endings=(0, 1, 2)):
        """What must not be after any run, faulty or not, as texts."""
        if left.status not in endings:
            yield f"status {left.status}: {left.err[-200:]}"
        if left.strays:
            yield f"touched or left: {left.strays}"
        for name in self.kept:
            if not self.is_kept_whole(name, left.kept.get(name, b""), references):
                yield f"{name} is torn: {left.kept.get(name)}"
        for name, content in left.outputs.items():
            if not self.is_output_right(name, left, references):
                yield f"{name} is wrong: {content[-200:]}"
        known = {result for reference in references for result in reference.results()}
        for result in left.results():
            if result not in known and not result[-1].endswith(
                    (ERROR, STOPPED, "LINE COUNT :  0")) and not (
                    left.is_stopped() and is_count_so_far(result)):
                yield f"result that is wrong: {result}"

    def is_faultless(self, left, references):
        """Whether everything is as after a run without a fault."""
        known = {result for reference in references for result in reference.results()}
        return (left.status == references[0].status and
                all(left.outputs.get(name) in [other.outputs.get(name) for other in references]
                    for name in references[0].outputs.keys() | left.outputs.keys()) and
                len(left.out) == len(references[0].out) and known.issuperset(left.results()) and
                all(re.sub(rb"EndPath.*", b"", left.kept.get(name, b"")) ==
                    re.sub(rb"EndPath.*", b"", references[0].kept[name])
                    for name in (SETTINGS, PATTERN)))

    def silence(self, left, references, names):
        """What is not as in the faultless run and not told, as texts."""
        status = references[0].status
        if left.status == 2:
            if not any(name in left.err for name in names):
                yield f"status 2, but none of {names[:3]} is told: {left.err!r}"
        elif not self.is_faultless(left, references):
            yield f"status {left.status}, not {status} with all as it should be: {left.out}"
