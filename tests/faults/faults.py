#!/usr/bin/env python3
"""Saves that are killed, stopped, run out of space, lose their folder, meet each other or planted files.

usage: faults.py CONVERT [TRIES [KIND...]]

Does harm to TRIES saves of each KIND (default: 3 of each) and looks at what is left each time. Wrong is a try that
leaves neither the old bundle nor a whole new one, a mailbox with bytes of two saves, a success that is none, or
something beside the bundles. Prints the numbers; fails if any is not 0. A full disk needs a small file system,
which only root can mount: it is skipped, and says so, where that is not allowed.
"""
import os
import pathlib
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

SUCCESS = b"File saved successfully"
NAME = "Main Identity.rge"
LISTS = ["VelmoraKestrin" + kind for kind in ("Emlx", "EmlxPart", "Eml", "EmlandfEml", "INI", "Mbs")]


def message(tag, number, size):
    line = f"{tag} line of message {number} with some words to fill it\n"
    return (f"From - Mon Nov 24 12:00:00 2025\nSubject: {tag} {number}\nMessage-ID: <{tag}.{number}@x>\n\n"
            + line * (size // len(line)) + "\n").encode()


def make_profile(folder, tag):
    for box in range(8):
        mailbox = folder / "Mail/Local Folders" / f"Box{box}"
        mailbox.parent.mkdir(parents=True, exist_ok=True)
        mailbox.write_bytes(b"".join(message(tag, box * 1000 + i, 8000) for i in range(200)))


def make_emlx_store(folder):
    for number in range(30):
        text = message("emlx", number, 500).split(b"\n", 1)[1]
        path = folder / "INBOX.mbox" / "Messages" / f"{number}.emlx"
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(b"%d\n" % len(text) + text + b'<?xml version="1.0"?>\n')


def tree(folder):
    """The files below a folder by path, None where it is not there."""
    if not folder.is_dir():
        return None
    return {str(path.relative_to(folder)): path.read_bytes() for path in folder.rglob("*") if path.is_file()}


class Faults:
    def __init__(self, convert, work):
        self.convert = convert
        self.work = work
        self.out = work / "out"
        self.stores = {tag: work / f"store {tag}" for tag in "AB"}
        self.whole = {}
        for tag, store in self.stores.items():
            make_profile(store, tag)
            self.whole[tag] = self.reference("thunderbird", store)
        make_emlx_store(work / "emlx")
        self.whole["emlx"] = self.reference("apple-emlx", work / "emlx")
        self.reference("thunderbird", self.stores["A"])
        self.wrong = []
        self.counts = {}

    def command(self, tag, *options, client="thunderbird", out=None):
        return [self.convert, "convert", "--client", client, *options, "--out", out or self.out,
                self.stores.get(tag, self.work / tag)]

    def start(self, command):
        return subprocess.Popen(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def reference(self, client, store):
        out = self.work / "reference"
        shutil.rmtree(out, ignore_errors=True)
        out.mkdir()
        start = time.monotonic()
        subprocess.run([self.convert, "convert", "--client", client, "--out", out, store], check=True,
                       capture_output=True)
        self.time = time.monotonic() - start
        return tree(out / NAME)

    def begin(self, out=None):
        """An output folder with a whole old bundle (of store B) in it."""
        out = out or self.out
        shutil.rmtree(out, ignore_errors=True)
        out.mkdir(exist_ok=True)
        for path, content in self.whole["B"].items():
            (out / NAME / path).parent.mkdir(parents=True, exist_ok=True)
            (out / NAME / path).write_bytes(content)

    def fail(self, kind, what):
        self.wrong.append(f"{kind}: {what}")
        print("WRONG", self.wrong[-1], flush=True)

    def count(self, what):
        self.counts[what] = self.counts.get(what, 0) + 1

    def look(self, kind, status, output, out=None):
        """What a save of store A over a bundle of store B has left."""
        out = out or self.out
        new, old = tree(out / NAME), tree(out / (NAME + ".old"))
        done = new == self.whole["A"]
        self.count(f"exit {status}")
        if not any(left == self.whole[tag] for left in (new, old) for tag in "AB"):
            self.fail(kind, "neither the old bundle nor a whole new one")
        if new is not None and new != self.whole["B"]:
            for path, content in new.items():
                if not self.whole["A"].get(path, b"").startswith(content.rstrip(b"\n")):
                    self.fail(kind, f"mixed: {path}")
        told = status == 0 or SUCCESS in output
        if told and not (done and old is None):
            self.fail(kind, "a success that is none")
        if status in (0, 3, 4) and not status == told == 0:
            if {path.name for path in out.iterdir()} - {NAME, NAME + ".old"}:
                self.fail(kind, f"left behind: {sorted(path.name for path in out.iterdir())}")
        return done

    def wait(self):
        time.sleep(random.uniform(0, self.time * 1.05))

    def kill(self):
        self.begin()
        for _ in range(random.randint(1, 3)):  # one save after the other may be killed
            process = self.start(self.command("A", "--replace"))
            self.wait()
            process.kill()
            output, _ = process.communicate()
            self.look("kill", process.returncode, output)
        process = subprocess.run(self.command("A", "--replace"), capture_output=True)
        if process.returncode != 0 or not self.look("kill", 0, process.stdout):
            self.fail("kill", f"the save after it: {process.stderr}")

    def stop(self):
        self.begin()
        process = self.start(self.command("A", "--replace"))
        time.sleep(random.uniform(0.02, self.time * 1.05))
        process.send_signal(random.choice([signal.SIGINT, signal.SIGTERM]))
        output, _ = process.communicate()
        if process.returncode not in (0, 3, -signal.SIGINT, -signal.SIGTERM):
            self.fail("stop", f"exit status {process.returncode}")
        self.look("stop", process.returncode, output)

    def full(self):
        disk = self.work / "disk"
        disk.mkdir(exist_ok=True)
        need = sum(len(content) for content in self.whole["B"].values())
        size = int(need * random.uniform(1.02, 2.1)) + 65536
        mount = subprocess.run(["mount", "-t", "tmpfs", "-o", f"size={size}", "none", disk], capture_output=True)
        if mount.returncode != 0:
            self.count("skipped, no small file system can be mounted")
            return
        try:
            self.begin(disk / "out")
            process = subprocess.run(self.command("A", "--replace", out=disk / "out"), capture_output=True)
            if process.returncode not in (0, 4) or (process.returncode == 4) == (process.stderr == b""):
                self.fail("full", f"exit status {process.returncode}: {process.stderr}")
            if process.returncode == 4 and b"would help" not in process.stderr:
                self.count("without a word about the space")
            self.look("full", process.returncode, process.stdout, disk / "out")
        finally:
            subprocess.run(["umount", disk], check=True)

    def away(self):
        self.begin()
        moved = self.work / "moved"
        shutil.rmtree(moved, ignore_errors=True)
        process = self.start(self.command("A", "--replace"))
        time.sleep(random.uniform(self.time * 0.1, self.time))
        os.kill(process.pid, signal.SIGSTOP)
        os.waitid(os.P_PID, process.pid, os.WSTOPPED | os.WEXITED | os.WNOWAIT)
        running = any(path.name.endswith(".lock") for path in self.out.iterdir())
        was_whole = tree(self.out / NAME) == self.whole["A"]
        way = random.choice(["renamed", "removed", "bundle renamed", "another in its place"])
        if way == "bundle renamed":
            if (self.out / NAME).exists():
                (self.out / NAME).rename(moved)
        elif way == "removed":
            shutil.rmtree(self.out)
        else:
            self.out.rename(moved)
        if way == "another in its place":
            self.out.mkdir()
        os.kill(process.pid, signal.SIGCONT)
        output, _ = process.communicate()
        self.count(f"exit {process.returncode}")
        if running and not was_whole and (process.returncode == 0 or SUCCESS in output):
            self.fail("away", f"a success that is none ({way})")
        self.count("during the save" if running else "before or behind it")

    def two(self):
        replace = random.choice([["--replace"], []])
        self.begin()
        if not replace:
            shutil.rmtree(self.out / NAME)
        processes = []
        for tag in "AB":
            processes.append(self.start(self.command(tag, *replace)))
            time.sleep(random.choice([0, 0, random.uniform(0, self.time)]))
        statuses = []
        for process in processes:
            output, _ = process.communicate()
            statuses.append(process.returncode)
            if (process.returncode == 0) != (SUCCESS in output):
                self.fail("two", "a success that is none")
        self.count(f"exits {sorted(statuses)}")
        left = tree(self.out / NAME)
        if 0 not in statuses or left not in (self.whole["A"], self.whole["B"]):
            self.fail("two", f"mixed or not whole, exits {statuses}")
        elif statuses.count(0) == 1 and left != self.whole["AB"[statuses.index(0)]]:
            self.fail("two", "the bundle is not the one of the save that succeeded")
        if os.listdir(self.out) != [NAME]:
            self.fail("two", f"left behind: {os.listdir(self.out)}")

    def plant(self):
        """Links, pipes and folders at the names of the lists that a search makes, which hold the process id."""
        shutil.rmtree(self.out, ignore_errors=True)
        self.out.mkdir()
        precious = self.work / "precious"
        precious.write_bytes(b"kept")
        planted = []
        script = 'import os,sys; input(); os.execv(sys.argv[1], sys.argv[1:])'
        process = subprocess.Popen([sys.executable, "-c", script,
                                    *self.command("emlx", client="apple-emlx")], stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE)
        try:
            for kind in LISTS:
                for end in [f".{process.pid}", *(f".{process.pid}.{number}" for number in range(1, 9))]:
                    path = pathlib.Path("/var/tmp") / (kind + end)
                    planted.append(path)
                    way = random.choice([os.mkfifo, os.mkdir, lambda name: os.symlink(precious, name),
                                         lambda name: path.write_bytes(b"/etc/passwd\n")])
                    way(path)
            output, errors = process.communicate(b"\n", timeout=60)
            self.count(f"exit {process.returncode}")
            if (process.returncode == 0) != (tree(self.out / NAME) == self.whole["emlx"]):
                self.fail("plant", f"exit status {process.returncode}: {errors}")
            if process.returncode != 0 and SUCCESS in output:
                self.fail("plant", "a success that is none")
        except subprocess.TimeoutExpired:
            process.kill()
            process.communicate()
            self.fail("plant", "hangs")
        finally:
            for path in planted:
                if path.is_dir() and not path.is_symlink():
                    shutil.rmtree(path)
                else:
                    path.unlink(missing_ok=True)
        if precious.read_bytes() != b"kept":
            self.fail("plant", "a file behind a link was changed")


def main():
    kinds = ["kill", "stop", "full", "away", "two", "plant"]
    tries = int(sys.argv[2]) if len(sys.argv) > 2 else 3
    seed = random.randrange(1 << 32)
    random.seed(seed)
    print("seed", seed)
    with tempfile.TemporaryDirectory(prefix="faults.") as work:
        faults = Faults(os.path.abspath(sys.argv[1]), pathlib.Path(work))
        for kind in sys.argv[3:] or kinds:
            faults.counts, before = {}, len(faults.wrong)
            for _ in range(tries):
                getattr(faults, kind)()
            print(f"{kind}: {tries} tries, {len(faults.wrong) - before} wrong;",
                  ", ".join(f"{what}: {number}" for what, number in sorted(faults.counts.items())), flush=True)
    return 1 if faults.wrong else 0


if __name__ == "__main__":
    sys.exit(main())
