#!/usr/bin/env python3
"""Rate the sample files in every character code and write scores.tsv.

A model of the character code judgement that shares nothing with the program,
so that the two can be checked against each other. It writes one line per file:
path, judged name and the six scores in the order of COLUMNS, each with every
digit needed to restore the double. All six scorers are run for every file,
even when an earlier one is certain.
"""

from pathlib import Path

ROOT = Path(__file__).resolve().parents[2]
TABLE = Path(__file__).resolve().parent / "scores.tsv"
COLUMNS = ("JIS", "UNICODE", "UTF8", "UTF7", "SJIS", "EUC")
TIE_ORDER = ("SJIS", "UNICODE", "JIS", "UTF7", "UTF8", "EUC")

EXAMINED = 10000   # bytes rated at most; a sequence may reach past them
CERTAIN = 9999.0   # a signature was found
DESIGNATIONS = (b"\x28\x42", b"\x28\x4A", b"\x28\x49",
                b"\x24\x40", b"\x24\x42", b"\x24\x44")
BASE64 = b"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/"


def rate(points, data):
    """100 for two points per examined byte, 50 for one."""
    return 100 * points / (2 * examined(data))


def examined(data):
    return min(len(data), EXAMINED)


def follows(data, i, count, *ranges):
    """True when `count` bytes after index i exist and lie in one of `ranges`."""
    tail = data[i + 1:i + 1 + count]
    return len(tail) == count and all(
        any(low <= b <= high for low, high in ranges) for b in tail)


def score_jis(data):
    points = 0
    for i in range(examined(data)):
        if data[i] == 0x1B:
            if data[i + 1:i + 3] in DESIGNATIONS:
                return CERTAIN
        elif data[i] <= 0x7F:
            points += 1
    return rate(points, data)


def score_unicode(data):
    points = 0
    for i in range(0, examined(data), 2):
        if data[i:i + 2] == b"\xff\xfe":
            return CERTAIN
        if i + 1 >= len(data):
            break                       # a lone last byte
        high = data[i + 1]
        if 0x34 <= high <= 0x4D or 0xA0 <= high <= 0xD7 or 0xE0 <= high <= 0xF7:
            return 0.0                  # rows no Japanese text uses
        points += 4
    return rate(points, data)


def score_utf8(data):
    points = i = 0
    while i < examined(data):
        b = data[i]
        if data[i:i + 3] == b"\xef\xbb\xbf":
            return CERTAIN
        for length, mask in ((6, 0xFC), (5, 0xF8), (4, 0xF0), (3, 0xE0), (2, 0xC0)):
            if b & mask == mask:        # the first class that matches decides
                if follows(data, i, length - 1, (0x80, 0xBF)):
                    points += 2 * length
                    i += length - 1
                break
        else:
            points += b <= 0x7F
        i += 1
    return rate(points, data)


def score_utf7(data):
    points = count = bits = mask = 0
    in_run = False
    for i in range(examined(data)):
        c = data[i]
        if c == ord("+") and not in_run:
            count, in_run = 1, True
        elif c == ord("-"):
            if count == 0:
                points += 1
            elif count == 1:            # "+-" stands for a plus sign
                points += 4
            elif bits < 6 and count >= 4 and BASE64.index(data[i - 1]) & mask == 0:
                points += 2 * (count + 1)
            count, in_run = 0, False
        elif in_run:
            if c in BASE64:
                bits = 6 * count % 8    # bits left over after whole bytes
                mask = 2 ** bits - 1
                count += 1
            else:
                count, in_run = 0, False
        else:
            points += c <= 0x7F
    return rate(points, data)


def score_sjis(data):
    points = i = 0
    while i < examined(data):
        b = data[i]
        if 0x81 <= b <= 0x9F or 0xE0 <= b <= 0xEF:
            if follows(data, i, 1, (0x40, 0x7E), (0x80, 0xFC)):
                points += 4
                i += 1
        elif 0xA1 <= b <= 0xDF or b <= 0x7F:
            points += 1
        i += 1
    return rate(points, data)


def score_euc(data):
    points = i = 0
    while i < examined(data):
        b = data[i]
        if b == 0x8E:
            if follows(data, i, 1, (0xA1, 0xDF)):
                points += 4
                i += 1
        elif b == 0x8F:
            if follows(data, i, 2, (0xA1, 0xFE)):
                points += 6
                i += 2
        elif 0xA1 <= b <= 0xFE:
            if follows(data, i, 1, (0xA1, 0xFE)):
                points += 4
                i += 1
        elif b <= 0x7F:
            points += 1
        i += 1
    return rate(points, data)


SCORERS = dict(zip(COLUMNS, (score_jis, score_unicode, score_utf8,
                             score_utf7, score_sjis, score_euc)))


def judge(scores):
    for name in ("JIS", "UNICODE", "UTF8"):
        if scores[name] >= CERTAIN:
            return name
    best = max(scores.values())
    return next(name for name in TIE_ORDER if scores[name] >= best)


def sample_files():
    found = [p for pattern in ("examples/codes/*/*/KYUYO01.CBL",
                               "examples/old/KYUYO01.CBL", "examples/new/KYUYO01.CBL",
                               "tests/data/texts/*.*") for p in ROOT.glob(pattern)]
    paths = {p.relative_to(ROOT).as_posix(): p for p in found if p.suffix != ".md"}
    return sorted(paths.items())


def main():
    lines = []
    for name, path in sample_files():
        data = path.read_bytes()
        scores = {column: SCORERS[column](data) for column in COLUMNS}
        lines.append("\t".join([name, judge(scores), *map(repr, scores.values())]))
    TABLE.write_text("\n".join(lines) + "\n", encoding="ascii", newline="\n")


if __name__ == "__main__":
    main()
