"""Both files of a pair are made again from what a compare wrote."""

import concurrent.futures
import os

import proof


def rebuild(bench, cases):
    """Half of the pairs in each of two programs at a time."""
    tally = proof.Tally()
    workers = os.cpu_count() or 1
    share = -(-cases // workers)
    driver = bench.program("tests/rebuild")

    def run(seed):
        home = bench.folder(f"home{seed}")
        return bench.run([driver, str(share), str(seed)], seconds=3600,
                         env=bench.environment(home))

    with concurrent.futures.ThreadPoolExecutor(workers) as pool:
        lines = 0
        for ended in pool.map(run, range(bench.seed, bench.seed + workers)):
            whole = tally.check(ended.status in (0, 1), f"{driver} ended with {ended.status}")
            if whole:
                lines += int(ended.out.split()[1])
            tally.cases += share
            tally.faults += ended.err.splitlines()
    tally.figures["lines"] = lines
    return tally


ROWS = [proof.Row("rebuild", "both files made again from merge sources and listing", rebuild,
                  100_000, 2_000)]
