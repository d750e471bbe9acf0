#!/usr/bin/env python3
"""What exact copies, the read-back and a dry run cost: against cp, cat, grep and the plain convert, in pairs.

usage: bench/bench_save.py [--size MIB] [--messages N] [--folder DIR] [--before OLD-VELMORA-CONVERT] [VELMORA-CONVERT]
"""
import argparse
import os
import shutil
import tempfile

from bench_olm import make_archive
from make_file_store import make_file_store
from make_mailbox import make_profile
from measure import peak_mib, ratio, table


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--size", type=int, default=1024, help="MiB of each mailbox store and of the archive")
    arguments.add_argument("--messages", type=int, default=100_000, help="messages of the .emlx store")
    arguments.add_argument("--folder")
    arguments.add_argument("--before", help="the program of an earlier state, to compare the plain convert with")
    arguments.add_argument("program", nargs="?", default="build/release/velmora-convert")
    options = arguments.parse_args()
    root = tempfile.mkdtemp(prefix="velmora-bench-", dir=options.folder)
    try:
        rows = [row for part in (mailboxes, message_files, archive) for row in part(options, root)]
    finally:
        shutil.rmtree(root)
    table(rows, ("Work", "Figure", "Seconds"))


def convert(program, root, store, client, more=""):
    return f"{program} convert --client {client} --to apple-mail --out '{root}/out' {more} '{store}' 2>/dev/null"


def row(root, work, command, against, name):
    figure, took = ratio(command, against, before=f"rm -rf '{root}/out' '{root}/copy'; mkdir '{root}/out'")
    return work, f"{figure:.2f} x {name}", f"{took:.2f}"


def mailboxes(options, root):
    for kind, attachments in (("mixed", 0.1), ("text", 0.0)):
        store = os.path.join(root, kind)
        make_profile(store, options.size << 20, attachments)
        box = f"'{store}/Mail/Local Folders/Box0'"
        plain, copy = convert(options.program, root, store, "thunderbird"), f"cp {box} '{root}/copy'"
        grep = f"grep -c '^From ' {box} >/dev/null; true"

        def saved(more):
            return convert(options.program, root, store, "thunderbird", more)
        yield row(root, f"convert, {kind}", plain, copy, "cp")
        yield row(root, f"exact copies, {kind}", saved("--exact"), copy, "cp")
        yield row(root, f"dry run, {kind}", saved("--dry-run"), plain, "convert")
        # Half a grep more, so that the ratio's goal is one.
        yield row(root, f"convert --check, {kind}", saved("--check"), f"{plain}; sync -f '{root}/out'; {grep}; {grep}",
                  "convert, sync and two greps")
        if options.before:
            old = convert(options.before, root, store, "thunderbird")
            yield row(root, f"convert, {kind}", plain, old, "before")
        shutil.rmtree(store)


def message_files(options, root):
    store = os.path.join(root, "emlx")
    make_file_store("apple-emlx", store, options.messages)
    cat = f"find '{store}' -type f -print0 | xargs -0 cat > '{root}/copy'"

    def saved(more):
        return f"{options.program} convert --client apple-emlx --to outlook --out '{root}/out' {more} '{store}' 2>/dev/null"
    for work, more in (("convert", ""), ("exact copies", "--exact"), ("dry run", "--dry-run")):
        yield row(root, f"{work}, {options.messages} .emlx", saved(more), cat, "cat")
    yield f"exact copies, {options.messages} .emlx: memory", f"{peak_mib(saved('--exact --replace')):.0f} MiB", ""
    shutil.rmtree(store)


def archive(options, root):
    store = os.path.join(root, "archive.olm")
    make_archive(store, 10_000, options.size << 20, os.path.join(root, "share"))
    copy = f"cp '{store}' '{root}/copy'"

    def saved(more):
        return convert(options.program, root, store, "olm", more)
    yield row(root, "convert, .olm", saved(""), copy, "cp")
    yield row(root, "exact copies, .olm", saved("--exact"), copy, "cp")
    yield "exact copies, .olm: memory", f"{peak_mib(saved('--exact --replace')):.0f} MiB", ""
    os.remove(store)


main()
