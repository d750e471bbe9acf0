#!/usr/bin/env python3
"""Scan and convert of mbox stores against grep and cp, peak memory, and growth from half to twice the store.

usage: bench/bench_mbox.py [--size MIB] [--folder DIR] [VELMORA-CONVERT]
"""
import argparse
import os
import shutil
import tempfile

from make_mailbox import make_profile
from measure import peak_mib, ratio, seconds, table

RECORD_BYTES = 3088  # one message record in memory


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
    memory = peak_mib(scan) - messages * RECORD_BYTES / 2**20
    rows.append((f"scan, {name}: memory beyond the records", f"{memory:.0f} MiB", ""))
    for target in ("outlook", "apple-mail"):
        convert = f"'{program}' convert --client thunderbird --to {target} --out '{out}' '{store}'"
        figure, took = ratio(convert, f"cp {box} '{out}/copy'", before=clean)
        rows.append((f"convert to {target}, {name}", f"{figure:.2f} x cp", f"{took:.2f}"))
        seconds(clean)
        rows.append((f"convert to {target}, {name}: memory", f"{peak_mib(convert):.0f} MiB", ""))
    return rows


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
