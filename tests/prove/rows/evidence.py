"""Records of jobs: what they say is so, here and elsewhere, and any change is noticed."""

import hashlib
import random
import re
import shutil

import proof

WORDS = "MOVE 売上 TO W-01. ｶﾅ 〜 ～ abc ABC".split() + [" ", "  ", "\t", "　", "000100"]
CODES = ("cp932", "euc_jp", "utf-8", "utf-16", "iso2022_jp")
OPTIONS = {"OptSTCol": (1, 7), "OptEDCol": (9999, 12), "OptSpData": (0, 1, 2), "OptUpperCase": (0, 1),
           "OptTABtoSPACE": (0, 1), "OptMatch": (1, 3), "OptBuff": (5, 1000), "NoCompList": (0, 1),
           "OptOutLineVar": (0, 1), "OptOutLineCnt": (0, 1), "OptSimple": (0, 1), "LineNoAdd": (0, 1),
           "OptNoCngNoOut": (0, 1), "CsvStatus": (0, 1), "NoPattern": ("", "*2.TXT")}
DIR_JOBS = ("dircomp {old} {new} --out {out}/D.TXT", "snapshot {old} --out {out}/S.ddf")


def text(rng):
    return ["".join(rng.choices(WORDS, k=rng.randrange(6))) for _ in range(rng.randrange(1, 40))]


def changed(rng, lines):
    """The lines with some that differ, or differ in what a rule may pass over."""
    edits = (str.lower, lambda line: line + "  ", lambda line: line.replace("\t", "        "),
             lambda line: line.replace("〜", "～"), lambda line: "*" + line[1:], lambda line: "")
    return [rng.choice(edits)(line) if rng.random() < 0.2 else line for line in lines]


def write(rng, path, lines, code):
    end = rng.choice(("\r\n", "\n"))
    spelt = "".join(line + end for line in lines)
    path.write_bytes(spelt.replace("〜", "～").encode(code, "replace") if code == "cp932"
                     else spelt.encode(code, "replace"))


def make_sides(rng, root):
    for number in range(3):
        lines = text(rng)
        for side in ("old", "new"):
            (root / side).mkdir(parents=True, exist_ok=True)
            write(rng, root / side / f"F{number}.TXT", lines, rng.choice(CODES))
            lines = changed(rng, lines)
    (root / "new" / "単独 100%\n.TXT").write_text("x")
    (root / "out").mkdir()


def command(rng, case, root):
    places = {name: root / name for name in ("old", "new", "out")}
    if case % 5 == 0:
        return rng.choice(DIR_JOBS).format(**places).split()
    chosen = [f"--set={key}={rng.choice(values)}" for key, values in OPTIONS.items()]
    flags = [flag for flag in ("--sbn", "--csv", "--mrg", "--marks") if rng.random() < 0.5]
    return ["compare", str(places["old"]), str(places["new"]), f"--out={places['out']}/", *chosen,
            *flags, "--charset", rng.choice(("none", "auto", "sure"))]


def unescaped(value):
    return re.sub(rb"%(..)", lambda found: bytes([int(found[1], 16)]), value)


def disagreements(record):
    """Where a record and the files that it names differ, by a library of its own."""
    if hashlib.sha256(record[:-65]).hexdigest().encode() != record[-65:-1]:
        yield "the digest at its end"
    for section in record.split(b"\n\n"):
        lines = dict(line.split(b": ", 1) for line in section.split(b"\n") if b": " in line)
        for name, digest in lines.items():
            path = unescaped(lines.get(name.removesuffix(b" SHA-256"), b""))
            if name.endswith(b" SHA-256") and path.startswith(b"/"):
                with open(path, "rb") as file:
                    if hashlib.sha256(file.read()).hexdigest().encode() != digest:
                        yield path


def evidence(bench, cases):
    tally, rng = proof.Tally(), random.Random(bench.seed)
    ledrixc = bench.program("ledrixc")
    home = bench.folder("home")
    environment = bench.environment(home, TMPDIR=bench.folder("tmp"))

    def run(*words):
        return bench.run([ledrixc, *words, "--settings", "none"], env=environment)

    def edited(path, verify, what):
        """A change of one byte of a file must be noticed; the file is put back."""
        content = path.read_bytes()
        at = rng.randrange(len(content))
        path.write_bytes(content[:at] + bytes([content[at] ^ 1 << rng.randrange(8)]) + content[at + 1:])
        ended = run("verify", *verify)
        tally.check(ended.status in (1, 2), f"{what}: byte {at} of {path.name}: {ended}")
        path.write_bytes(content)
        tally.figures["bytes edited"] = tally.figures.get("bytes edited", 0) + 1

    for case in range(cases):
        root = bench.folder("here")
        make_sides(rng, root)
        words = command(rng, case, root)
        made = run(*words, "--evidence", str(root / "R.EVD"), "--sums", str(root / "sums"))
        what = f"seed {bench.seed} case {case}: {' '.join(words)}"
        tally.cases += 1
        if not tally.check(made.status in (0, 1), f"{what}: {made}"):
            continue
        record = (root / "R.EVD").read_bytes()
        tally.faults += [f"{what}: wrong: {place}" for place in disagreements(record)]
        ended = run("verify", str(root / "R.EVD"))
        tally.check(ended.status == 0 and ended.out.count("再現"), f"{what}: verify: {ended}")
        summed = bench.run(["sha256sum", "--quiet", "-c", str(root / "sums")], cwd=root)
        empty = not (root / "sums").stat().st_size
        tally.check(summed.status == 0 or empty, f"{what}: sha256sum: {summed}")
        there = bench.folder("there") / "moved"
        shutil.move(root, there)
        verify = [str(there / "R.EVD"), "--root", f"{root}={there}"]
        ended = run("verify", *verify)
        tally.check(ended.status == 0, f"{what}: moved: {ended}")
        edited(there / "R.EVD", verify, what)
        # A directory job reads no contents; what it wrote stands for it.
        edited(next((there / "out").iterdir()) if case % 5 == 0 else there / "old" / "F0.TXT", verify,
               what)
        tally.check(not any((bench.scratch / "tmp").iterdir()), f"{what}: something was left")
    for at in range(0, len(record), 1 if cases > 100 else 40):
        (there / "E").write_bytes(record[:at] + bytes([record[at] ^ 1]) + record[at + 1:])
        ended = run("verify", str(there / "E"))
        tally.check(ended.status in (1, 2) and "無改変" not in ended.out, f"byte {at}: {ended}")
        tally.figures["bytes edited"] += 1
    return tally


ROWS = [proof.Row("evidence", "records are verified, elsewhere too, and every change is noticed",
                  evidence, 300, 10)]
