"""Every reader of the programs under a coverage-guided fuzzer with sanitizers (folder fuzz/)."""

import concurrent.futures
import os
import pathlib
import re
import subprocess

import proof

ROOT = pathlib.Path(__file__).resolve().parents[3]
BUILD = ROOT / "build" / "fuzz"
AT_ONCE = 2
LIMITS = ["-timeout=10", "-rss_limit_mb=2048", "-max_len=2048", "-len_control=10"]


def fuzz(bench, target, seconds):
    """Runs one target; returns how it ended. What it has tried before is tried again first."""
    corpus = BUILD / "corpus" / target
    corpus.mkdir(parents=True, exist_ok=True)
    command = [BUILD / "ledrix_fuzz", target, corpus, ROOT / "fuzz" / "seeds" / target, *LIMITS,
               f"-seed={bench.seed}", f"-max_total_time={seconds}", f"-artifact_prefix={BUILD}/finds-new/{target}-",
               "-print_final_stats=1"]
    return bench.run(command, env=os.environ | {"UBSAN_OPTIONS": "print_stacktrace=1"},
                     seconds=seconds + 300)


def figure(pattern, text):
    """The last number that stands behind a pattern, 0 when there is none."""
    return int(([0] + re.findall(pattern + r"\s*(\d+)", text))[-1])


def fault(target, ended):
    """One line: what a target has found, and how to make it again."""
    kept = re.findall(r"written to (\S+)", ended.err)
    told = re.findall(r"does not hold: .*|Assertion .*|runtime error: .*|ERROR: .*", ended.err)
    again = f"{(BUILD / 'ledrix_fuzz').relative_to(ROOT)} {target} {kept[0] if kept else ''}"
    return f"{target}: {told[0] if told else f'ended with {ended.status}'}; again: {again}"


def run(bench, seconds):
    """Gives every target so many seconds."""
    subprocess.run([ROOT / "scripts" / "build", "fuzz"], check=True)
    (BUILD / "finds-new").mkdir(exist_ok=True)
    targets = bench.run([BUILD / "ledrix_fuzz"]).out.split()
    tally = proof.Tally()
    edges = 0
    with concurrent.futures.ThreadPoolExecutor(AT_ONCE) as pool:
        ends = pool.map(lambda target: fuzz(bench, target, seconds), targets)
        for target, ended in zip(targets, ends):
            tally.cases += figure("number_of_executed_units:", ended.err)
            edges += figure("cov:", ended.err)
            tally.check(ended.status == 0, fault(target, ended))
    tally.figures = {"targets": len(targets), "seconds a target": seconds,
                     "executions": tally.cases, "edges reached": edges,
                     "finds": len(tally.faults)}
    return tally


ROWS = [proof.Row("fuzzing", "inputs that libFuzzer makes for every reader, under sanitizers",
                  run, floor=300, short=10)]
