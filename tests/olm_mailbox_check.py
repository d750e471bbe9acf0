#!/usr/bin/env python3
"""Converts an archive made on the spot and reads the mailboxes with Python's mailbox module: number of messages,
subjects, dates, and attachments whose bytes equal the originals.

usage: tests/olm_mailbox_check.py VELMORA-CONVERT
"""
import email.header
import email.utils
import mailbox
import os
import random
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "samples"))
from make_olm import OlmArchive, add_message  # noqa: E402

FOLDERS = ("Inbox", "Inbox/Work", "Sent Items", "Plain")
SIZES = (0, 1, 2, 3, 57, 1000, 196607, 196608, 196609, 400000)


def make(path):
    rng = random.Random(4)
    folders = {folder: [] for folder in FOLDERS}
    with open(path, "wb") as stream:
        archive = OlmArchive(stream)
        for number in range(40):
            folder = FOLDERS[number % len(FOLDERS)]
            # An attachment without bytes has no CRC, so that its entry is one that the reader steps over.
            files = [{"name": f"{number}-{i}.bin", "type": "application/octet-stream", "data": rng.randbytes(size)}
                     for i, size in enumerate(rng.sample(SIZES[1:], number % 3))]
            mail = {"subject": f"Message {number}", "sent": f"2014-11-{1 + number % 28:02}T09:08:04",
                    "received": f"2014-12-{1 + number % 28:02}T09:08:04", "outgoing": str(number % 2),
                    "from": [("ann@example.org", "Ann")], "to": [("bob@example.org", "Bob")],
                    "body": "<html><body>Dear Bob,\n1 &lt; 2 &amp; 3</body></html>", "files": files}
            add_message(archive, folder, number, mail)
            folders[folder].append(mail)
        archive.close()
    return folders


def check(path, mails, sent):
    box = mailbox.mbox(path, create=False)
    assert len(box) == len(mails), (path, len(box), len(mails))
    for message, mail in zip(box, mails):
        subject = email.header.make_header(email.header.decode_header(message["Subject"]))
        assert str(subject) == mail["subject"], (path, subject)
        date = email.utils.parsedate_to_datetime(message["Date"])
        expected = mail["sent" if sent else "received"]
        assert date.timestamp() == email.utils.parsedate_to_datetime(
            f"{expected[8:10]} {'Nov' if sent else 'Dec'} 2014 09:08:04 +0000").timestamp(), (path, date, expected)
        got = [(part.get_filename(), part.get_payload(decode=True)) for part in message.walk() if part.get_filename()]
        assert got == [(file["name"], file["data"]) for file in mail["files"]], (path, mail["subject"])


def main():
    with tempfile.TemporaryDirectory() as root:
        archive = os.path.join(root, "backup.olm")
        folders = make(archive)
        subprocess.run([sys.argv[1], "convert", "--client", "olm", "--out", root, archive], check=True,
                       stdout=subprocess.DEVNULL)
        for folder, mails in folders.items():
            path = os.path.join(root, "Main Identity.mbox", "Mail", folder, os.path.basename(folder) + ".mbox")
            if folder == "Plain":  # each message by its own direction
                mails = [{**mail, "received": mail["sent"] if mail["outgoing"] == "1" else mail["received"]}
                         for mail in mails]
                assert all(mail["outgoing"] == "1" for mail in mails)
            check(path, mails, sent=folder in ("Sent Items", "Plain"))
    print("every mailbox reads as it was written")


if __name__ == "__main__":
    main()
