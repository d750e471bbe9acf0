#!/usr/bin/env python3
"""Walk and convert of an .olm archive against unzip -l plus grep over the messages' share, and against cp; growth
from half to twice the archive, and archives made to be slow.

usage: bench/bench_olm.py [--size MIB] [--messages N] [--folder DIR] [VELMORA-CONVERT]
"""
import argparse
import os
import random
import shutil
import sys
import tempfile

sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "samples"))
from make_olm import OlmArchive, message_xml  # noqa: E402
from measure import peak_mib, ratio, seconds, table  # noqa: E402


def make_archive(path, messages, total_bytes, share):
    """`messages` messages of a few KiB with one attachment each; their XML also goes to the file `share`."""
    rng = random.Random(7)
    words = " ".join(rng.choices("meeting report invoice & garden <b>project</b> train attached regards".split(), k=4000))
    noise = rng.randbytes(1 << 20)
    size = max(1, total_bytes // messages - 6000)
    with open(path, "wb") as stream, open(share, "wb") as xml_file:
        archive = OlmArchive(stream)
        for number in range(messages):
            folder = f"Inbox/Folder {number % 50}"
            start = rng.randrange(1 << 12)
            at = rng.randrange(1, len(noise) // 2)
            url = f"Local/Attachments/{number:06}"
            data = (noise[at:] + noise[:at] + noise)[:size] if size <= len(noise) else noise * (size // len(noise))
            archive.entry(url, data)
            xml = message_xml({
                "body": "<html><body>" + words[start:start + rng.randint(1000, 8000)] + "</body></html>",
                "files": [{"name": f"file {number}.bin", "type": "application/octet-stream", "url": url}],
                "from": [("bob@example.net", "Bob Baker")], "to": [("ann@example.org", "Ann Archer")] * 3,
                "sent": "2014-11-12T09:08:04", "received": "2014-11-12T09:08:09", "outgoing": "0",
                "subject": f"Message {number}", "id": f"<{number}@example.net>"})
            archive.entry(f"Local/box/{folder}/__message_attachment__{number:06}.xml", xml)
            xml_file.write(xml)
        archive.close()


def measure(program, root, archive, share, messages):
    out = os.path.join(root, "out")
    clean = f"rm -rf '{out}' && mkdir '{out}'"
    seconds(f"cat '{archive}' > /dev/null")
    name = f"{messages} messages in {os.path.getsize(archive) >> 20} MiB"
    scan = f"'{program}' scan --client olm '{archive}'"
    figure, took = ratio(scan, f"unzip -l '{archive}' && grep -c '<email ' '{share}'")
    rows = [(f"walk, {name}", f"{figure:.2f} x unzip -l and grep", f"{took:.2f}"),
            ("walk: memory", f"{peak_mib(scan):.0f} MiB", "")]
    convert = f"'{program}' convert --client olm --out '{out}' '{archive}'"
    figure, took = ratio(convert, f"cp '{archive}' '{out}/copy'", before=clean)
    rows.append((f"convert, {name}", f"{figure:.2f} x cp", f"{took:.2f}"))
    seconds(clean)
    rows.append(("convert: memory", f"{peak_mib(convert):.0f} MiB", ""))
    return rows


def growth(program, root, messages, size):
    archives = []
    for times in (1, 2, 4):
        archives.append(os.path.join(root, f"{times}.olm"))
        make_archive(archives[-1], messages * times, size * times, os.path.join(root, "share"))
    rows = []
    for command in ("scan --client olm", "list --json --client olm", "preview --json --client olm",
                    f"convert --client olm --replace --out '{root}'"):
        runs = [f"'{program}' {command} '{archive}'" for archive in archives]
        for small, large, step in ((0, 1, "1 to 2"), (1, 2, "2 to 4")):
            figure, took = ratio(runs[large], runs[small])
            rows.append((f"{command.split()[0]}, {step} times {size >> 20} MiB", f"{figure:.2f} x", f"{took:.2f}"))
    return rows


def hostile(program, root):
    """Each takes at least 64 MiB; the reader may only look at each byte a few times."""
    rows = []
    pieces = {"nested start tags": b"<emails ", "no tags": b"PK<e", "empty headers": b"PK\3\4" + bytes(26),
              "end tags of messages": b"<emails x" + b"</email>" * 1000 + b"</emails>"}
    archive = os.path.join(root, "hostile.olm")
    for name, piece in pieces.items():
        size = 64 << 20 if name != "end tags of messages" else 4 << 20
        with open(archive, "wb") as stream:
            stream.write(piece * (size // len(piece)))
        scan = f"'{program}' scan --client olm '{archive}' 2> /dev/null || true"
        rows.append((f"walk, {size >> 20} MiB of {name}", f"{peak_mib(scan):.0f} MiB", f"{seconds(scan):.2f}"))
    return rows


def main():
    arguments = argparse.ArgumentParser()
    arguments.add_argument("--size", type=int, default=1024)
    arguments.add_argument("--messages", type=int, default=10000)
    arguments.add_argument("--folder")
    arguments.add_argument("program", nargs="?", default="build/release/velmora-convert")
    options = arguments.parse_args()
    root = tempfile.mkdtemp(prefix="velmora-bench-", dir=options.folder)
    try:
        archive, share = os.path.join(root, "backup.olm"), os.path.join(root, "messages")
        make_archive(archive, options.messages, options.size << 20, share)
        rows = measure(options.program, root, archive, share, options.messages)
        os.remove(archive)
        rows += growth(options.program, root, options.messages // 8, (options.size << 20) // 8)
        rows += hostile(options.program, root)
    finally:
        shutil.rmtree(root)
    table(rows, ("Work", "Figure", "Seconds"))


if __name__ == "__main__":
    main()
