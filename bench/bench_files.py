#!/usr/bin/env python3
"""Scan, list and convert of stores with a file for each message against cat, and growth to four times the store.

usage: bench/bench_files.py [--messages N] [--client NAME]... [--pairs N] [--folder DIR] [--make-store PROGRAM]
                            [VELMORA-CONVERT]

--make-store names a program that makes a store: PROGRAM --layout CLIENT --boxes N --messages-per-box 500
--mix 80,20,0 --bytes SIZE OUT. Without it the bench makes its own.
"""
import argparse
import os
import shutil
import subprocess
import sys
import tempfile

from make_file_store import LAYOUTS, make_file_store
from measure import ratio, seconds, table

PER_BOX = 500


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--messages", type=int, default=100000)
    arguments.add_argument("--client", action="append", choices=sorted(LAYOUTS))
    arguments.add_argument("--pairs", type=int, default=5)
    arguments.add_argument("--folder")
    arguments.add_argument("--make-store")
    arguments.add_argument("program", nargs="?", default="build/release/velmora-convert")
    options = arguments.parse_args()
    root = tempfile.mkdtemp(prefix="velmora-bench-", dir=options.folder)
    rows = []
    try:
        for client in options.client or LAYOUTS:
            rows += measure(options, root, client)
    finally:
        shutil.rmtree(root)
    table(rows, ("Work", "Figure", "Seconds"))


def make(options, store, client, messages):
    if not options.make_store:
        make_file_store(client, store, messages, PER_BOX)
        return
    subprocess.run([sys.executable, options.make_store, "--layout", client, "--boxes", str(messages // PER_BOX),
                    "--messages-per-box", str(PER_BOX), "--mix", "80,20,0", "--bytes", "1T", store],
                   check=True, stdout=subprocess.DEVNULL)


def measure(options, root, client):
    quarter, whole = (os.path.join(root, name) for name in ("quarter", "whole"))
    out = os.path.join(root, "out")
    make(options, quarter, client, options.messages // 4)
    make(options, whole, client, options.messages)
    clean = f"rm -rf '{out}' && mkdir '{out}'"
    read = f"find '{whole}' -type f -print0 | xargs -0 cat"
    seconds(f"{read} > /dev/null")
    rows = []
    targets = ("outlook",) if client == "apple-emlx" else ("outlook", "apple-mail")
    for command in ("scan", "list", *(f"convert --to {target} --out '{out}'" for target in targets)):
        name = command.split(" --out")[0]
        run = f"'{options.program}' {command} --client {client} "
        before, base = (clean, f"{read} > '{out}/copy'") if "convert" in name else ("true", f"{read} > /dev/null")
        figure, took = ratio(f"{run} '{whole}' > /dev/null", base, before, options.pairs)
        rows.append((f"{client}, {options.messages} messages: {name}", f"{figure:.2f} x cat", f"{took:.2f}"))
        figure, took = ratio(f"{run} '{whole}' > /dev/null", f"{run} '{quarter}' > /dev/null", before, options.pairs)
        rows.append((f"{client}: {name}, 1 to 4 times the messages", f"{figure:.2f} x", f"{took:.2f}"))
    shutil.rmtree(quarter)
    shutil.rmtree(whole)
    return rows


if __name__ == "__main__":
    main()
