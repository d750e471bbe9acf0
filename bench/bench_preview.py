#!/usr/bin/env python3
"""Preview of large messages against reading the file twice with cat, in a mailbox and in a file of its own.

The time of a preview is that of the whole command, its start and the printing of the JSON text included; what it
takes beyond `cat` of the file twice is printed. `list` is what finding the message alone takes.

usage: bench/bench_preview.py [--size MIB] [--pairs N] [--folder DIR] [VELMORA-CONVERT]
"""
import argparse
import base64
import os
import random
import resource
import shutil
import statistics
import tempfile

from measure import seconds, table

HEAD = b"From: Sender <s@example.org>\nTo: me@example.net\nSubject: large\nDate: Mon, 4 Jun 2012 08:15:00 +0200\n"
WORDS = "harbour ferry timetable invoice project meeting garden window paint summer letter answer".split()


def fill(piece, size):
    return piece * (size // len(piece)) + piece[:size % len(piece)]


def lines(source, start="", end=""):
    """Some 1 MiB of lines."""
    return "".join(f"{start}{' '.join(source.choices(WORDS, k=9))}{end}\n" for _ in range(14000)).encode()


def messages(size):
    """Messages of `size` bytes by name."""
    source = random.Random(1)
    html = lines(source, "<p class=\"a\">Gr\u00fc\u00dfe ", "</p>")
    yield "attachment in base64", (
        HEAD + b"Content-Type: multipart/mixed; boundary=\"b\"\n\n--b\nContent-Type: text/plain; charset=utf-8\n\nSee below.\n"
        b"--b\nContent-Type: application/zip; name=\"a.zip\"\nContent-Transfer-Encoding: base64\n"
        b"Content-Disposition: attachment; filename=\"a.zip\"\n\n"
        + fill(base64.encodebytes(source.randbytes(1 << 20)), size) + b"\n--b--\n")
    yield "plain text", HEAD + b"Content-Type: text/plain; charset=utf-8\n\n" + fill(lines(source), size)
    quoted = b"".join(b"=%02X" % byte if byte > 126 or byte == ord("=") else bytes((byte,)) for byte in html)
    yield "HTML, quoted-printable", (
        HEAD + b"Content-Type: text/html; charset=\"utf-8\"\nContent-Transfer-Encoding: quoted-printable\n\n"
        + fill(quoted.replace(b" paint", b"=\n paint"), size))
    yield "HTML, base64", (
        HEAD + b"Content-Type: text/html; charset=\"utf-8\"\nContent-Transfer-Encoding: base64\n\n"
        + fill(base64.encodebytes(html), size))


def make_mailbox(root, message):
    path = os.path.join(root, "mailbox", "Mail", "Local Folders", "Box")
    write(path, b"From - Mon Jun  4 08:15:00 2012\n" + message)
    return "thunderbird", os.path.join(root, "mailbox"), path


def make_file(root, message):
    path = os.path.join(root, "file", "Messages", "IMAP", "me@example.net", "Box.mailbox", "Messages", "1.eml")
    write(path, b"Return-Path: <x>\n" + message)
    return "mailmate", os.path.join(root, "file"), path


def write(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(data)


def processor_seconds():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def measure(options, name, form, client, store, path):
    run = f"'{options.program}' %s --client {client} --json '{store}' > /dev/null"
    times = {"cat": [], "list": [], "preview": [], "processor": []}
    for _ in range(options.pairs):
        times["cat"].append(seconds(f"cat '{path}' '{path}' > /dev/null"))
        times["list"].append(seconds(run % "list"))
        before = processor_seconds()
        times["preview"].append(seconds(run % "preview"))
        times["processor"].append(processor_seconds() - before)
    median = {key: statistics.median(values) for key, values in times.items()}
    beyond = statistics.median(preview - cat for preview, cat in zip(times["preview"], times["cat"]))
    return (name, form, f"{median['preview'] / median['cat']:.1f} x", f"{beyond:.2f}", f"{median['cat']:.3f}",
            f"{median['list']:.2f}", f"{median['preview']:.2f}", f"{median['processor']:.2f}")


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--size", type=int, default=50)
    arguments.add_argument("--pairs", type=int, default=5)
    arguments.add_argument("--folder")
    arguments.add_argument("program", nargs="?", default="build/release/velmora-convert")
    options = arguments.parse_args()
    root = tempfile.mkdtemp(prefix="velmora-bench-", dir=options.folder)
    rows = []
    try:
        for name, message in messages(options.size << 20):
            for form, make in (("mailbox", make_mailbox), ("file", make_file)):
                rows.append(measure(options, name, form, *make(root, message)))
    finally:
        shutil.rmtree(root)
    table(rows, ("Message", "In a", "preview / cat twice", "Seconds beyond cat twice", "cat twice", "list", "preview",
                 "of it processor time"))


if __name__ == "__main__":
    main()
