"""Row hostile_trees: folders that hold anything a file system can.

Random trees of hostile names, links and special files go through every command that takes a folder;
a second walk, written here, tells what a snapshot must hold. No special file may be opened (inotify
tells), each command ends in time, and a terminal gets no control characters. The commands run as
nobody when this does as root, so that closed folders are closed.
"""

import ctypes
import itertools
import os
import pty
import random
import select
import shutil
import stat
import subprocess
import time

import proof

SECONDS = 20
NAMES = (b"a", b"b", b"A", b"z.txt", b"\xff\xfe", b"\xc2\x9b2J", b"\x1b[2J", b"\x1b]0;t\x07",
         b"a\nb", b"a\r\nb", b"'\"", b"\\", b",", b"a,20260101,7", b" ", b"x" * 255, b"\n" * 255,
         "表ソ.TXT".encode(), "名前〜～ｱア.cbl".encode(), "💣".encode() * 63, "💣".encode(),
         "😀".encode(), b"\x85\x80", b"-", b"--out", b"%s%n",
         b"\x7f\x08\x08", "é".encode(), "e\u0301".encode(), b"con", b"...", b"\t")
COMMANDS = 8  # a tree
IN_OPEN = 0x20
LIBC = ctypes.CDLL(None, use_errno=True)


class Failed(Exception):
    """A folder that the walk must fail at."""


class Tree:
    """A random tree below `root`, with links to, from and through `outside`."""

    def __init__(self, folder, rng, entries):
        self.rng, self.special, self.closed, self.size = rng, [], set(), 0
        self.root, self.outside = folder + b"/root", folder + b"/outside"
        self.folders, self.files = [self.root, self.outside], []
        for each in self.folders:
            os.makedirs(each)
        makers = (self.file, self.file, self.file, self.folder, self.folder, self.link, self.link,
                  self.node, self.closed_folder)
        for _ in range(entries):
            path = rng.choice(self.folders) + b"/" + rng.choice(NAMES)
            maker = rng.choice(makers)
            if maker == self.closed_folder and rng.random() < .8:  # most trees can be walked
                continue
            if not os.path.lexists(path):
                maker(path)
        self.watch()

    def file(self, path):
        """Every file has a size of its own, by which it is known again."""
        self.size += 1
        with open(path, "wb") as file:
            file.write(b"line\n" * (self.size // 5) + b"x" * (self.size % 5))
        self.files.append(path)

    def folder(self, path):
        if len(path) < 2500:
            os.mkdir(path)
            self.folders.append(path)

    def closed_folder(self, path):
        os.mkdir(path, 0)
        self.closed.add(os.stat(path).st_ino)

    def link(self, path):
        inside = self.rng.choice(self.folders)
        target = self.rng.choice((
            inside, inside, os.path.relpath(inside, os.path.dirname(path)), self.outside, self.root,
            os.path.dirname(self.root), b"..", b".", b"/", b"none", path, os.path.basename(path),
            self.rng.choice(self.files or [b"none"])))
        if target.count(b"/") < 900 and len(target) < 4000:
            os.symlink(target, path)

    def node(self, path):
        kind = self.rng.choice((stat.S_IFIFO, stat.S_IFSOCK, stat.S_IFCHR))
        try:
            os.mknod(path, kind | 0o666, os.makedev(1, 7))
            self.special.append(path)
        except PermissionError:  # devices are the administrator's
            pass

    def watch(self):
        """From now on openings of special files are noted."""
        self.notes = LIBC.inotify_init1(os.O_NONBLOCK)
        for path in self.special:
            LIBC.inotify_add_watch(self.notes, path, IN_OPEN)

    def was_opened(self):
        try:
            return bool(os.read(self.notes, 4096))
        except BlockingIOError:
            return False

    def close(self):
        """Ends the notes and opens what is closed, so that the tree can be removed."""
        os.close(self.notes)
        for path, folders, _ in os.walk(os.path.dirname(self.root)):
            for name in folders:
                if not os.path.islink(os.path.join(path, name)):
                    os.chmod(os.path.join(path, name), 0o755)

    def sizes(self):
        """The sizes of all files that a walk finds, sorted."""
        real_root, reached, found = os.path.realpath(self.root), set(), []

        def visit(folder, behind):
            if os.stat(folder).st_ino in self.closed:
                raise Failed
            for name in sorted(os.listdir(folder)):
                path = os.path.join(folder, name)
                try:
                    status = os.stat(path)
                except OSError:  # a link to nothing
                    continue
                if stat.S_ISREG(status.st_mode):
                    found.append(status.st_size)
                if not stat.S_ISDIR(status.st_mode):
                    continue
                real, linked = os.path.realpath(path), os.path.islink(path)
                if linked and (is_below(real, real_root) or is_below(real_root, real)):
                    continue
                if behind or linked:
                    if status.st_ino in reached:
                        continue
                    reached.add(status.st_ino)
                visit(path, behind or linked)

        visit(self.root, False)
        return sorted(found)


def is_below(path, folder):
    return path == folder or path.startswith(folder.rstrip(b"/") + b"/")


def at_terminal(command, seconds, **more):
    """Runs a command on a terminal; returns its status and what the terminal was sent."""
    master, slave = pty.openpty()
    with subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=slave, stderr=slave,
                          **more) as process:
        os.close(slave)
        sent, end = b"", time.monotonic() + seconds
        while select.select([master], [], [], max(0, end - time.monotonic()))[0]:
            try:
                sent += os.read(master, 65536)
            except OSError:  # its other end is closed
                break
        if time.monotonic() >= end:
            process.kill()
    os.close(master)
    return process.returncode, sent


def obeyed(sent):
    """The bytes that a terminal would take for commands."""
    text = sent.decode(errors="surrogateescape")
    return [c for c in text if c not in "\r\n\t" and (
        c < " " or "\x7f" <= c <= "\x9f" or "\udc80" <= c <= "\udc9f")]


class Commands:
    """Runs commands on one folder after the other and looks at what is true of all."""

    def __init__(self, bench, tally):
        self.bench, self.tally = bench, tally
        os.chmod(bench.scratch, 0o755)
        self.program = shutil.copy(bench.program("ledrixc"), bench.scratch)  # where nobody finds it
        self.user = {"user": "nobody", "group": "nogroup", "extra_groups": []}
        if os.geteuid() != 0:
            self.user = {}
        self.turn = itertools.count()
        self.seconds = SECONDS  # that a command may take

    def folder(self, name):
        path = self.bench.folder(name)
        if self.user:
            shutil.chown(path, "nobody")
        return os.fsencode(path)

    def run(self, again, wanted, out, *arguments, tree=None):
        """Checks the status, and that a failure is told and leaves no output; returns that."""
        command = [self.program, *arguments, "--settings", "none"] + (["--out", out] if out else [])
        more = {"env": self.bench.environment(self.bench.scratch)} | self.user
        again = f"{again}: {arguments}"
        self.tally.cases += 1
        if next(self.turn) % 2:
            status, text = at_terminal(command, self.seconds, **more)
            self.tally.check(not obeyed(text), f"{again}: the terminal gets {obeyed(text)}")
        else:
            ended = self.bench.run(command, seconds=self.seconds, **more)
            status, text = ended.status, ended.err
        self.tally.check(status in wanted, f"{again}: status {status}, not {wanted}: {text}")
        self.tally.check(not (tree and tree.was_opened()), f"{again}: opens a special file")
        there = out is not None and os.path.isfile(out)
        if status == 2:
            self.tally.check(text and not there, f"{again}: failed, output {there}, told {text}")
        if not there:
            return b""
        with open(out, "rb") as file:
            return file.read()

    def all_of(self, again, root, twin, wanted, top, tree=None):
        """Every command on a folder with `top` files in it itself; `wanted` is the status of a
        walk. Returns the snapshot."""
        out = self.folder("out")
        one, listing = out + b"/one.ddf", out + b"/list.txt"
        snapshot = self.run(again, wanted, one, "snapshot", root, tree=tree)
        self.run(again, wanted, listing, "dircomp", root, root, tree=tree)
        if snapshot:
            shutil.copy(one, out + b"/two.ddf")
            for old, new in ((root, one), (one, root), (one, out + b"/two.ddf")):
                self.run(again, (0,), listing, "dircomp", old, new, tree=tree)
        pairs = self.folder("pairs")
        self.run(again, (0, 1, 2), pairs, "compare", root, twin, tree=tree)
        self.run(again, (0, 1, 2), None, "judge", *self.some_files(root), tree=tree)
        steps = self.run(again, (0,) if top else (2,), out + b"/S.CSV", "steps", root, tree=tree)
        rows = max(0, steps.count(b"\n") - 2)  # without two headers
        self.tally.check(rows == top, f"{again}: {rows} rows of steps, not {top}")
        return snapshot

    @staticmethod
    def some_files(root):
        paths = (os.path.join(root, name) for name in sorted(os.listdir(root)))
        return list(itertools.islice(filter(os.path.isfile, paths), 20)) or [b"none"]


def random_tree(bench, commands, number):
    rng = random.Random(bench.seed * 100003 + number)
    tree = Tree(commands.folder("trees"), rng, rng.choice((5, 20, 60)))
    try:
        sizes, wanted = tree.sizes(), (0,)
    except Failed:
        sizes, wanted = None, (2,)
    top = sum(os.path.isfile(os.path.join(tree.root, name)) for name in os.listdir(tree.root))
    again = f"seed {bench.seed}, tree {number}"
    snapshot = commands.all_of(again, tree.root, tree.outside, wanted, top, tree)
    if sizes is not None:
        got = sorted(int(line.rpartition(b",")[2]) for line in snapshot.split(b"\r\n")[1:-1])
        commands.tally.check(got == sizes, f"{again}: sizes {got}, not {sizes}")
    tree.close()


def deep_tree(commands, name, levels, wanted):
    """So many levels of folders, made one in the other: no path is used that is too long."""
    root = commands.folder("trees")
    place = os.open(root, os.O_RDONLY)
    for _ in range(levels):
        os.mkdir(name, dir_fd=place)
        place, above = os.open(name, os.O_RDONLY, dir_fd=place), place
        os.close(above)
    os.close(os.open(b"f", os.O_CREAT | os.O_WRONLY, dir_fd=place))
    os.close(place)
    try:
        commands.all_of(f"{levels} levels of {len(name)} bytes", root, root, wanted, 0)
    finally:  # deeper than shutil goes
        subprocess.run(["rm", "-rf", root], check=True)


def wide_tree(commands, files):
    """So many files in one folder, and another folder with the same files."""
    root, twin = commands.folder("trees"), commands.folder("twin")
    for number in range(files):
        path = b"%s/%06d.txt" % (root, number)
        with open(path, "wb") as file:
            file.write(b"%d\n" % number)
        os.link(path, b"%s/%06d.txt" % (twin, number))
    commands.seconds = SECONDS + files / 1000  # a compare of folders is as many jobs
    snapshot = commands.all_of(f"{files} files", root, twin, (0,), files)
    commands.seconds = SECONDS
    commands.tally.check(snapshot.count(b"\r\n") == files + 1, f"{files} files: not all recorded")


def run(bench, cases):
    tally = proof.Tally()
    commands = Commands(bench, tally)
    deep_tree(commands, b"d" * 250, 20, (2,))
    deep_tree(commands, b"d", 1900, (0,))
    begin = time.monotonic()
    wide_tree(commands, 200000 if cases >= FLOOR else 2000)
    tally.figures["seconds of the widest folder"] = round(time.monotonic() - begin)
    for number in itertools.count():
        if tally.cases >= cases:
            break
        random_tree(bench, commands, number)
    tally.figures["random trees"] = number
    return tally


FLOOR = 2000
ROWS = [proof.Row("hostile_trees", "links, special files, hostile names, depth and width through "
                  "snapshot, dircomp, compare, judge and steps", run, floor=FLOOR, short=80)]
