#!/usr/bin/env python3
"""Scan and convert of mbox stores against grep and cp, peak memory, odd files, and growth from half to twice the store.

usage: bench/bench_mbox.py [--size MIB] [--folder DIR] [VELMORA-CONVERT]
"""
import argparse
import os
import shutil
import tempfile

from make_mailbox import make_profile
from measure import peak_mib, ratio, seconds, table

SEPARATOR = b"From x Mon y\n"


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--size", type=int, default=1024)
    arguments.add_argument("--folder")
    arguments.add_argument("program", nargs="?", default="build/release/velmora-convert")
    options = arguments.parse_args()
    root = tempfile.mkdtemp(prefix="velmora-bench-", dir=options.folder)
    rows = []
    try:
        for name, attachments in (("mixed", 0.1), ("text", 0.0)):
            store = os.path.join(root, name)
            messages = make_profile(store, options.size << 20, attachments)
            rows += measure(options.program, root, name, store, messages)
            shutil.rmtree(store)
        rows += odd_files(options.program, root)
        rows += growth(options.program, root, options.size // 4)
    finally:
        shutil.rmtree(root)
    table(rows, ("Work", "Figure", "Seconds"))


def measure(program, root, name, store, messages):
    box = f"'{store}/Mail/Local Folders/Box0'"
    out = os.path.join(root, "out")
    clean = f"rm -rf '{out}' && mkdir '{out}'"
    seconds(f"cat {box} > /dev/null")
    scan = f"'{program}' scan --client thunderbird '{store}'"
    figure, took = ratio(scan, f"grep -c '^From ' {box}")
    rows = [(f"scan, {name}, {messages} messages", f"{figure:.2f} x grep", f"{took:.2f}")]
    rows.append((f"scan, {name}: memory", f"{peak_mib(scan):.0f} MiB", ""))
    for target in ("outlook", "apple-mail"):
        convert = f"'{program}' convert --client thunderbird --to {target} --out '{out}' '{store}'"
        figure, took = ratio(convert, f"cp {box} '{out}/copy'", before=clean)
        rows.append((f"convert to {target}, {name}", f"{figure:.2f} x cp", f"{took:.2f}"))
        seconds(clean)
        rows.append((f"convert to {target}, {name}: memory", f"{peak_mib(convert):.0f} MiB", ""))
    return rows


def odd_files(program, root):
    """Files that would take much memory if they were kept as they come, each beside a mailbox of one message."""
    odd = {
        "800,000 separators": lambda out: out.write(SEPARATOR * 800000),
        "3 GiB of zeros": lambda out: out.truncate(3 << 30),
        "50 MB of folds": lambda out: out.write(SEPARATOR + b"Subject: a\n" + (b" " + b"f" * 70 + b"\n") * 700000),
        "1 GiB in one Subject line": lambda out: one_line(out, SEPARATOR + b"Subject: "),
        "1 GiB in one separator line": lambda out: one_line(out, SEPARATOR + b"From "),
    }
    rows = []
    for name, write in odd.items():
        store = os.path.join(root, "odd")
        folder = os.path.join(store, "Mail", "Local Folders")
        os.makedirs(folder)
        with open(os.path.join(folder, "Inbox"), "wb") as out:
            out.write(SEPARATOR + b"Subject: a\n")
        box = os.path.join(folder, "Odd")
        with open(box, "wb") as out:
            write(out)
        scan = f"'{program}' scan --client thunderbird '{store}'"
        # grep tells "no line" as a failure
        figure, took = ratio(scan, f"grep -c '^From ' '{box}' || true")
        goal = 1.5 * took / figure + 0.5
        rows.append((f"scan, {name}", f"{peak_mib(scan):.0f} MiB", f"{took:.2f}, goal {goal:.2f}"))
        shutil.rmtree(store)
    return rows


def one_line(out, start):
    out.write(start)
    for _ in range(1024):
        out.write(b"some text " * 104857 + b"behind")  # 1 MiB
    out.write(b" Mon end\n")


def growth(program, root, mib):
    rows = []
    stores = [os.path.join(root, str(times)) for times in (1, 2, 4)]
    for store, times in zip(stores, (1, 2, 4)):
        make_profile(store, (mib * times) << 20, 0.1, boxes=10 * times)
    out = os.path.join(root, "out")
    clean = f"rm -rf '{out}' && mkdir '{out}'"
    for command in ("scan --client thunderbird", f"convert --client thunderbird --out '{out}'"):
        runs = [f"'{program}' {command} '{store}'" for store in stores]
        for small, large, step in ((0, 1, "1 to 2"), (1, 2, "2 to 4")):
            figure, took = ratio(runs[large], runs[small], clean)
            rows.append((f"{command.split()[0]}, {step} times {mib} MiB", f"{figure:.2f} x", f"{took:.2f}"))
    return rows


if __name__ == "__main__":
    main()
