"""Row hostile_texts: memory that follows the longest line alone, and texts cut at every byte.

Lines as long as a file must cost at most four times their length and 64 MB a side; under any limit
on memory a command ends as it would without one, or says that memory is short and leaves nothing.
Texts of every code are laid so that each byte of a passage in turn ends a block of reading; the
merge source must be the same text in Shift_JIS.
"""

import itertools
import os
import resource
import shutil
import subprocess
import threading

import proof

MB = 1 << 20
BLOCK = 256 << 10
SIDE = 64 * MB  # that a side may take beside its longest line
TIMES = 4
SECONDS = 120
SHORT_OF_MEMORY = "メモリが足りません"
DEFAULTS = ["--settings", "none"]

# What a line consists of, its code, and the options of the compare with how much they lengthen it.
LINES = (
    ("a", "ascii", (), 1), ("\0", "ascii", (), 1), ("表ソ", "cp932", (), 1), (" ", "ascii", (), 1),
    ("ab", "ascii", ("OptUpperCase=0", "OptSpData=2"), 1), ("a b", "ascii", ("OptSpData=1",), 1),
    ("a\t", "ascii", ("OptTABtoSPACE=1", "OptTABtoKETA=8"), 4),
    ("\t", "ascii", ("OptTABtoSPACE=1", "OptTABtoKETA=16"), 16),
    ("漢字", "utf-8", (), 1), ("ｱ", "utf-8", (), 1), ("漢字", "euc_jp", (), 1),
    ("a漢", "iso2022_jp", (), 1), ("漢a", "utf-16-le", (), 1), ("漢a", "utf-16-be", (), 1),
    ("漢a", "utf-7", (), 1), ("a", "utf-8", ("OptTABtoSPACE=1",), 1),
)
# The names that the program has for these codes.
CHARSETS = {"ascii": "none", "cp932": "none", "utf-8": "UTF-8", "euc_jp": "EUC-JP",
            "iso2022_jp": "ISO-2022-JP", "iso2022_jp_ext": "ISO-2022-JP", "utf-16-le": "UTF-16LE",
            "utf-16-be": "UTF-16BE", "utf-7": "UTF-7"}
PASSAGE = "漢字ｱｲa\r\n表ソb\r\n\r\nﾊﾟ終\r\n"
CUT_CODES = ("cp932", "sjis", "utf-8", "euc_jp", "iso2022_jp_ext", "utf-16-le", "utf-16-be",
             "utf-7")


def measured(command, limit=None, **more):
    """Runs a command, in so many bytes of memory; returns its status, its stderr and its peak."""
    def confine():
        if limit:
            resource.setrlimit(resource.RLIMIT_AS, (limit, limit))
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE, preexec_fn=confine, **more) as process:
        timer = threading.Timer(SECONDS, process.kill)
        timer.start()
        told = process.stderr.read().decode(errors="replace")
        _, status, usage = os.wait4(process.pid, 0)
        timer.cancel()
        process.returncode = os.waitstatus_to_exitcode(status)
    return process.returncode, told, usage.ru_maxrss * 1024


class Texts:
    """Long texts in a folder, and commands on them."""

    def __init__(self, bench, tally):
        self.bench, self.tally, self.worst = bench, tally, 0
        self.folder = os.fsencode(bench.folder("texts"))
        self.old, self.new = self.folder + b"/old.txt", self.folder + b"/new.txt"
        self.env = bench.environment(bench.folder("home"))

    def write(self, line, code, size, last):
        """Two files of one line; `last` tells whether they differ at its end or at its start."""
        piece = line.encode(code)
        piece *= max(1, MB // len(piece))
        with open(self.old, "wb") as file:
            for _ in range(size // len(piece)):
                file.write(piece)
        shutil.copy(self.old, self.new)
        with open(self.new, "r+b") as file:
            file.seek(0 if last else 0, os.SEEK_END if last else os.SEEK_SET)
            file.write("Z".encode(code))
        return os.path.getsize(self.new)

    def run(self, again, wanted, most, arguments, limit=None):
        """Checks status and peak, and what a lack of memory leaves."""
        out = self.folder + b"/out/"
        shutil.rmtree(out, ignore_errors=True)
        os.mkdir(out)
        before = set(os.listdir(self.folder))
        status, told, peak = measured([self.bench.program("ledrixc"), *arguments, *DEFAULTS], limit,
                                      cwd=out, env=self.env)
        self.tally.cases += 1
        again = f"{again}: {arguments}, limit {limit and limit // MB} MB"
        if limit and status == 2:
            left = os.listdir(out) + sorted(set(os.listdir(self.folder)) - before)
            self.tally.check(SHORT_OF_MEMORY in told and not left,
                             f"{again}: left {left}, told {told}")
            return
        self.tally.check(status == wanted, f"{again}: status {status}, not {wanted}: {told}")
        if not limit:
            self.worst = max(self.worst, peak / most)
            self.tally.check(peak <= most, f"{again}: {peak // MB} MB, not {most // MB}")

    def compare(self, *options, charset="none", more=()):
        sets = [part for option in options for part in ("--set", option)]
        return ["compare", self.old, self.new, "--charset", charset, *sets, *more, "--out", "./"]

    def long_line(self, case, size, limits):
        """A line of so many bytes when prepared, compared, and compared again in little memory."""
        line, code, options, growth = case
        size //= growth
        for last in (True, False):
            length = self.write(line, code, size, last)
            most = 2 * (TIMES * growth * length + SIDE)
            again = f"{size // MB} MB of {line!r} in {code}, other {'end' if last else 'start'}"
            # What lies behind column 9999 is not compared.
            command = self.compare(*options, charset=CHARSETS[code])
            self.run(again, 0 if last else 1, most, command)
            if not last:
                wide = self.compare(*options, "NTypeNextLine=1", charset=CHARSETS[code],
                                    more=("--sbn", "--mrg", "--csv"))
                self.run(again, 1, most, wide)
                for limit in limits:
                    self.run(again, 1, 0, command, limit)
        for job in (["steps", self.old, "--out", "S.TXT"], ["judge", self.old]):
            self.run(again, 0, most // 2, job)

    def nothing_but_nul(self, size):
        """A file that takes no room on the disk."""
        for path, end in ((self.old, size), (self.new, size + 1)):
            with open(path, "wb") as file:
                file.truncate(end)
        for charset in ("none", "UTF-8", "auto"):
            self.run(f"{size // MB} MB of NUL in a sparse file", 0, 2 * (TIMES * size + SIDE),
                     self.compare(charset=charset))

    def empty_lines(self, count):
        for path, lines in ((self.old, count), (self.new, count + 1)):
            with open(path, "wb") as file:
                for _ in range(count // 1000):
                    file.write(b"\n" * 1000)
                file.write(b"\n" * (lines - count))
        for options in ((), ("OptBuff=4000", "OptMatch=99"), ("OptOutLineCnt=1",)):
            self.run(f"{count} empty lines", 1, 2 * SIDE, self.compare(*options))

    def cut_text(self, case):
        """A passage again and again, of which byte `cut` is the first of the second block."""
        code, cut, one_line = case
        encode = "cp932" if code == "sjis" else code
        head = "漢字かな交じりの文章です。表題と本文。\r\n" * 40
        unit = len("a".encode(encode))
        room = (BLOCK - cut - len(head.encode(encode))) // unit
        filler = "a" * (room - 2) + "\r\n"
        if not one_line:
            filler = (("a" * 98 + "\r\n") * (room // 100 + 1))[-room:]
            filler = filler.replace("\n", "a", 1) if filler[0] == "\n" else filler
        text = head + filler + PASSAGE * 9000
        for path, more in ((self.old, ""), (self.new, "追加\r\n")):
            with open(path, "wb") as file:
                file.write((text + more).encode(encode))
        charset = "SJIS" if code == "sjis" else CHARSETS[code]
        self.run(f"cut {case}", 1, 2 * SIDE, self.compare(charset=charset, more=("--mrg",)))
        merged = [name for name in os.listdir(self.folder + b"/out") if b"_MRG" in name.upper()]
        made = b""
        for name in merged:
            with open(self.folder + b"/out/" + name, "rb") as file:
                made += file.read()
        whole = (text + "追加\r\n").encode("cp932")
        self.tally.check(made == whole, f"cut {case}: the text is lost")


def cuts():
    """Every byte of the passage in every code, after lines and after one long line."""
    for code in CUT_CODES:
        encoded = PASSAGE.encode("cp932" if code == "sjis" else code)
        for cut, one_line in itertools.product(range(len(encoded) + 2), (False, True)):
            yield code, cut, one_line


def run(bench, cases):
    tally = proof.Tally()
    whole = cases >= FLOOR
    texts = Texts(bench, tally)
    texts.nothing_but_nul((1024 if whole else 64) * MB)
    texts.empty_lines(1000000)
    for case, size in [(case, 500) for case in LINES] if whole else ((LINES[6], 50), (LINES[8], 5)):
        texts.long_line(case, size * MB, [(16 + size * part // 2) * MB for part in (1, 2, 3, 5)])
    # In little memory, however much that is.
    for case in LINES if whole else LINES[:1]:
        texts.write(case[0], case[1], 10 * MB, False)
        for limit in range(16, 100, 4 if whole else 16):
            texts.run(f"10 MB of {case}", 1, 0, texts.compare(*case[2], charset=CHARSETS[case[1]]),
                      limit * MB)
    for case in list(cuts())[::1 if whole else max(1, 3000 // cases)]:
        texts.cut_text(case)
    tally.figures = {"most memory of what is promised": f"{texts.worst:.0%}"}
    return tally


FLOOR = 1000
ROWS = [proof.Row("hostile_texts", "lines as long as the file under limits on memory, texts cut at "
                  "every byte of a passage", run, floor=FLOOR, short=30)]
