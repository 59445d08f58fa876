"""Row no_shell: no file name ever becomes a part of a command, and each action hits its file alone.

Every name runs through the window's commands (window_driver, one run a name) and through ledrixc's
jobs. Programs that the window starts write their arguments down; what lies in the folders before
and after is compared as a whole.
"""

import os
import time

import proof

# Each would make a file x in the current folder if a shell read it.
ATTACKS = (
    b'$(touch x);"a\'b.txt', b"\xff`touch x`\n", b"-rf $(touch x)", b"%f%u|touch x&", b" 'a  b\\ ",
    b"`touch x`", b"a\ntouch x\n.txt", b"a;touch x;b.txt", b"a|touch x", b"a&touch x&",
    b"&&touch x", b"'$(touch x)'", b'"$(touch x)"', b"\\$(touch x)\\", b"%f;touch x",
    b"\xff$(touch x).txt", b"\x95\x5c;touch x;.txt", b"-c", b"--help", b"--out=x", b"%f",
    b"%u%F%k%%", b"%", b"a%20b%2Fc", b" a  b ", b"\t", b"a\r\nb.txt", b"\\",
    b"a\\nb\\", b"'", b'"', b"#touch", b"~", b"$HOME", b"*", b"?", b"[a-z]", b"{a,b}",
    b"a,b=\"c\".csv", b"=cmd|'touch x'!A1", b"!!", b"<x", b">x", b"a\x1b]0;x\x07.txt", b"\xe8\xa1",
    b"\xc3", b"...", "表;touch x;ソ.txt".encode(), b"a" * 200 + b";touch x", b"file:", b"http:",
    b"a.desktop", b"$(touch x).desktop", b"NAME=touch x", b"@x", b":", b"COM1", b"a.")

# The Exec lines of launchers, and what the program gets for a file; {} is the recording program.
LAUNCHERS = (
    (b"{} 1 %f", lambda path: [b"1", path]),
    (b"{} 2 %F", lambda path: [b"2", path]),
    (b"{} 3 %u", lambda path: [b"3", address(path)]),
    (b"{} 4", lambda path: [b"4", path]),
    (b'{} "5 $" %f', lambda path: [b"5 $", path]),
    (b"{} 6 --name=%f", lambda path: [b"6", b"--name=" + path]),
    (b"{} 7 '%f;x' %f", lambda path: [b"7", b"%f;x", path]),
    (b"sh -c '\"$0\" 8 \"$1\"' {} %f", lambda path: [b"8", path]),
    (b"{} 9 %c %f", lambda path: [b"9", b"$(touch x)", path]),
)
RECORDER = """#!/bin/sh
printf '%s\\0' "$@" > {told}/$$.new && mv {told}/$$.new {told}/$$
"""
WINDOW_ACTIONS = 7 + len(LAUNCHERS)
CONSOLE_ACTIONS = 8


def address(path):
    """The file's address as launchers give it."""
    plain = b"-._~/abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"
    return b"file://" + b"".join(bytes([c]) if c in plain else b"%%%02X" % c for c in path)


def is_text(name):
    try:
        name.decode()
        return True
    except UnicodeDecodeError:
        return False


def files_below(folder):
    """Path below the folder -> content, of every file."""
    folder = os.fsencode(folder)
    found = {}
    for place, _, names in os.walk(folder):
        for path in (os.path.join(place, name) for name in names):
            with open(path, "rb") as file:
                found[os.path.relpath(path, folder)] = file.read()
    return found


def write(path, content):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)
    os.chmod(path, 0o755 if content.startswith(b"#!") else 0o644)


def desktop(home, exec_line):
    return (b"[Desktop Entry]\nType=Application\nName=$(touch x)\nExec=" +
            exec_line.replace(b"{}", home + b"/record") + b"\n")


def make_home(home):
    """The desktop of one run: a program that records, its launchers and associations."""
    data = home + b"/.local/share"
    os.makedirs(home + b"/told")
    write(home + b"/record", RECORDER.format(told=os.fsdecode(home + b"/told")).encode())
    for number, (exec_line, _) in enumerate(LAUNCHERS):
        write(home + b"/launchers/%d.desktop" % number, desktop(home, exec_line))
    write(data + b"/ledrix/SendTo/a.desktop", desktop(home, b"{} send %f"))
    write(data + b"/applications/a.desktop", desktop(home, b"{} open %f"))
    types = b"text/plain application/octet-stream inode/directory application/x-desktop text/csv"
    write(home + b"/mimeapps.list", b"[Default Applications]\n" + b"".join(
        each + b"=a.desktop\n" for each in types.split()))


def told(home, count):
    """The arguments of each program started, sorted, once `count` are there or ten seconds over."""
    end = time.monotonic() + 10
    folder = home + b"/told"
    while len(os.listdir(folder)) < count and time.monotonic() < end:
        time.sleep(0.005)
    time.sleep(0.01)  # for one too many
    return sorted(content.split(b"\0")[:-1] for content in files_below(folder).values())


def window_case(bench, tally, name):
    root = os.fsencode(bench.folder("window"))
    home, old, new = (root + part for part in (b"/home", b"/old", b"/new"))
    make_home(home)
    file, folder = old + b"/" + name, old + b"/d/" + name
    write(file, b"text of the file\n")
    write(old + b"/trash/" + name, b"to the trash\n")
    for each in (folder, new, root + b"/copy"):
        os.makedirs(each)
    steps = ["open", file, "menu", file, new, "MenuPopAPStart", "menu", file, new, "MenuPopSendAP0",
             "folder", folder, "copy", file, root + b"/copy/" + name,
             "menu", file, new, "MenuPOPFileCopy"]
    expected = [[b"open", file]] * 2 + [[b"send", file], [b"open", folder]]
    for number, (_, arguments) in enumerate(LAUNCHERS):
        steps += ["sendto", file, home + b"/launchers/%d.desktop" % number]
        expected.append(arguments(file))
    before = files_below(root)
    steps += ["delete", old + b"/trash/" + name]
    ended = bench.run([bench.program("tests/window_driver"), *steps], cwd=old,
                      env=bench.environment(os.fsdecode(home)))
    tally.cases += WINDOW_ACTIONS
    again = f"name {name!r}: window_driver"
    goes = is_text(name)  # the trash takes no other name
    tally.check(ended.status == (0 if goes else 2), f"{again}: status {ended.status}: {ended.err}")
    got = told(home, len(expected))
    tally.check(got == sorted(expected), f"{again}: programs got {got}")
    trash = b"home/.local/share/Trash/"
    after = {path: content for path, content in files_below(root).items()
             if not path.startswith((b"home/told/", trash + b"info/"))}
    wanted = before | dict.fromkeys((b"copy/" + name, b"new/" + name), b"text of the file\n")
    if goes:
        del wanted[b"old/trash/" + name]
        wanted[trash + b"files/" + name] = b"to the trash\n"
    tally.check(after == wanted, f"{again}: files {set(after.items()) ^ set(wanted.items())}")


def console_case(bench, tally, name):
    """ledrixc's jobs with the name as input, as folder and as output."""
    root = os.fsencode(bench.folder("console"))
    for side, line in ((b"old", b"old line\n"), (b"new", b"new line\n")):
        write(root + b"/%s/d/" % side + name, line)
        write(root + b"/%s/tree/" % side + name + b"/a.txt", line)
    os.makedirs(root + b"/out")
    old, new, out = (root + part for part in (b"/old", b"/new", b"/out/"))
    plain = ["--settings", "none"]
    jobs = (
        ("compare", [*plain, "--csv", "--sbn", "--mrg", "--out", out, "--", b"./old/d/" + name,
                     new + b"/d/" + name], 1, 4),
        ("compare", [*plain, "--csv", "--out", out, "--", old + b"/d", new + b"/d"], 1, 2),
        ("compare", [*plain, "--", old + b"/tree/" + name, new + b"/tree/" + name], 1, 1),
        ("compare", [*plain, "--csv", "--out", out + name, "--", old + b"/d/" + name,
                     new + b"/d/" + name], 1, 2),
        ("steps", [*plain, "--out", out + name, "--", old + b"/d/" + name], 0, 1),
        ("steps", [*plain, "--out", out + b"S.CSV", "--", old + b"/tree/" + name], 0, 1),
        ("snapshot", [*plain, "--out", out + name + b".ddf", "--", old + b"/tree"], 0, 1),
        ("dircomp", [*plain, "--out", out + b"L.TXT", "--", old + b"/tree/" + name, new + b"/d"],
         1, 1),
    )
    inputs = files_below(root)
    for job, arguments, status, outputs in jobs:
        command = [bench.program("ledrixc"), job, *arguments]
        ended = bench.run(command, cwd=root, env=bench.environment(os.fsdecode(root)))
        tally.cases += 1
        after = files_below(root)
        made = {path: content for path, content in after.items() if path not in inputs}
        again = f"name {name!r}: {job} {arguments}"
        tally.check(ended.status == status, f"{again}: status {ended.status}: {ended.err}")
        tally.check(inputs.items() <= after.items(), f"{again}: inputs changed")
        tally.check(len(made) == outputs and all(made.values()), f"{again}: made {list(made)}")
        rows = [content.count(b"\n") for path, content in made.items()
                if path.endswith(b"Ledrix.CSV")]
        tally.check(rows in ([], [2]), f"{again}: rows of CSV {rows}")
        tally.check(not any(os.path.basename(path) == b"x" for path in made), f"{again}: made x")
        for path in made:
            os.unlink(os.path.join(root, path))


def run(bench, cases):
    tally = proof.Tally()
    windows = os.path.exists(bench.program("tests/window_driver"))
    actions = CONSOLE_ACTIONS + (WINDOW_ACTIONS if windows else 0)
    for name in ATTACKS[:-(-cases // (WINDOW_ACTIONS + CONSOLE_ACTIONS))]:
        console_case(bench, tally, name)
        if windows:
            window_case(bench, tally, name)
    tally.figures = {"names": tally.cases // actions, "actions": actions}
    return tally


ACTIONS = WINDOW_ACTIONS + CONSOLE_ACTIONS
ROWS = [proof.Row("no_shell", "hostile names through every command that takes a file", run,
                  floor=len(ATTACKS) * ACTIONS, short=5 * ACTIONS)]
