#!/usr/bin/env python3
"""Write the sample pair in six other character codes.

Reads examples/old/KYUYO01.CBL and examples/new/KYUYO01.CBL (Shift_JIS) and
writes examples/codes/CODE/old/KYUYO01.CBL and .../new/KYUYO01.CBL for every
CODE in ENCODERS. Line ends stay CR LF. Running it again changes nothing.
"""

import base64
import re
from pathlib import Path

HERE = Path(__file__).resolve().parent
ESCAPES = {"ascii": b"\x1b(B", "kana": b"\x1b(I", "kanji": b"\x1b$B"}


def jis_pair(lead, trail):
    """The two 7-bit JIS X 0208 bytes of a Shift_JIS double-byte character."""
    row = 2 * (lead - (0x81 if lead < 0xA0 else 0xC1)) + 0x21
    if trail >= 0x9F:
        return bytes((row + 1, trail - 0x7E))
    return bytes((row, trail - 0x1F - (trail >= 0x80)))


def jis_units(text):
    """Yield (set, bytes) per character: ASCII, half-width katakana or kanji."""
    for char in text:
        raw = char.encode("cp932")
        if len(raw) == 2:
            yield "kanji", jis_pair(*raw)
        elif raw[0] < 0x80:
            yield "ascii", raw
        else:
            yield "kana", bytes((raw[0] - 0x80,))


def to_euc(text):
    out = bytearray()
    for charset, raw in jis_units(text):
        if charset == "kana":
            out.append(0x8E)
        out += raw if charset == "ascii" else bytes(b | 0x80 for b in raw)
    return bytes(out)


def to_jis(text):
    """ISO-2022-JP. Line ends are ASCII, so every line starts and ends there."""
    out, current = bytearray(), "ascii"
    for charset, raw in jis_units(text):
        if charset != current:
            out += ESCAPES[charset]
            current = charset
        out += raw
    return bytes(out + (ESCAPES["ascii"] if current != "ascii" else b""))


def to_utf7(text):
    """UTF-7 with every encoded run closed by "-"."""
    def run(match):
        if match.group() == "+":
            return "+-"
        coded = base64.b64encode(match.group().encode("utf-16-be"))
        return "+" + coded.decode("ascii").rstrip("=") + "-"
    return re.sub(r"\+|[^\t\r\n\x20-\x7E]+", run, text).encode("ascii")


ENCODERS = {
    "euc-jp": to_euc,
    "iso-2022-jp": to_jis,
    "utf-8": lambda text: text.encode("utf-8"),
    "utf-8-bom": lambda text: b"\xef\xbb\xbf" + text.encode("utf-8"),
    "utf-16le": lambda text: b"\xff\xfe" + text.encode("utf-16-le"),
    "utf-7": to_utf7,
}

if __name__ == "__main__":
    for side in ("old", "new"):
        source = (HERE / side / "KYUYO01.CBL").read_bytes().decode("cp932")
        for code, encode in ENCODERS.items():
            target = HERE / "codes" / code / side / "KYUYO01.CBL"
            target.parent.mkdir(parents=True, exist_ok=True)
            target.write_bytes(encode(source))
