"""Runs the rows of the proof and prints the table. Usage: see scripts/prove."""

import argparse
import importlib
import shutil
import sys
import time

import proof

# Each is a module of rows/ with a list ROWS.
MODULES = ("evidence", "faults", "fuzzing", "hostile_texts", "hostile_trees", "many", "no_shell", "rebuild")


def all_rows():
    for name in MODULES:
        yield from importlib.import_module(f"rows.{name}").ROWS


def prove(row, options):
    """Runs one row; returns its tally and prints its line of the table."""
    scratch = proof.scratch_folder()
    begin = time.monotonic()
    try:
        tally = row.run(proof.Bench(options.programs, scratch, options.seed),
                        options.cases or (row.short if options.short else row.floor))
    finally:
        shutil.rmtree(scratch, ignore_errors=True)
    seconds = time.monotonic() - begin
    told = "; ".join(f"{name} {value}" for name, value in tally.figures.items())
    print(f"| {row.name} | {row.what} | `scripts/prove {row.name}` | {tally.cases} | "
          f"{len(tally.faults)} | {seconds:.0f} | {told} |", flush=True)
    for fault in tally.faults[:options.tell]:
        print(f"  fault: {fault}", file=sys.stderr, flush=True)
    return tally


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--programs", required=True, help="the build folder")
    parser.add_argument("--short", action="store_true", help="the short form")
    parser.add_argument("--cases", type=int, help="how many cases instead of the row's own")
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--tell", type=int, default=20, help="how many faults to print a row")
    parser.add_argument("rows", nargs="*")
    options = parser.parse_args()
    rows = {row.name: row for row in all_rows()}
    for name in options.rows:
        if name not in rows:
            parser.error(f"no row {name}; there are: {' '.join(rows)}")
    print("| row | what | command | cases | faults | seconds | figures |\n"
          "| --- | --- | --- | --: | --: | --: | --- |", flush=True)
    tallies = [prove(rows[name], options) for name in options.rows or rows]
    sys.exit(any(tally.faults or not tally.cases for tally in tallies))


if __name__ == "__main__":
    main()
