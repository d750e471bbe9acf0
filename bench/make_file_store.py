"""Makes stores with a file for each message, of made-up mail; the same arguments give the same store."""
import os
import random

WORDS = "harbour ferry timetable invoice project meeting garden window paint summer letter answer".split()
PLIST = ('<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0">\n<dict>\n\t<key>flags</key>\n'
         "\t<integer>%d</integer>\n</dict>\n</plist>\n")


def message(number, source):
    """Some 7 KB on average: trace headers, sender and subject, and a body of plain lines."""
    lines = [" ".join(source.choices(WORDS, k=10)) for _ in range(source.randint(10, 170))]
    trace = "".join(f"Received: from mx{hop}.example.org by in.example.org with ESMTP id {source.getrandbits(40):X}\n"
                    for hop in range(source.randint(2, 5)))
    subject = " ".join(source.choices(WORDS, k=6))
    if number % 5 == 0:
        subject = "=?UTF-8?Q?Gr=C3=BC=C3=9Fe?="
    return (f"{trace}Date: Mon, 4 Jun 2012 08:15:00 +0200\nFrom: Sender {number % 97} <s{number % 97}@example.org>\n"
            f"To: me@example.net\nSubject: {subject}\nMessage-ID: <{number}@example.org>\n\n" + "\n".join(lines) + "\n")


def apple_emlx(number, box, text):
    return f"IMAP-me@example.net/Box {box}.mbox/Messages/{number}.emlx", f"{len(text):<10}\n{text}{PLIST % number}"


def mailmate(number, box, text):
    return f"Messages/IMAP/me@example.net/Box {box}.mailbox/Messages/{number}.eml", "Return-Path: <x>\n" + text


def outspring(number, box, text):
    return f"Box {box}/{number}{'.f' if number % 7 == 0 else ''}.eml", "Return-Path: <x>\n" + text


def opera(number, box, text):
    place = f"X-Opera-Location: Box {box}:{number}\n" if number % 9 else ""
    return (f"mail/store/account{1 + number % 2}/2012/06/{box}/{number}.mbs",
            f"From s@example.org Mon Jun  4 08:15:00 2012\n{place}{text}")


LAYOUTS = {"apple-emlx": apple_emlx, "mailmate": mailmate, "outspring": outspring, "opera": opera}


def make_file_store(client, root, messages, per_box=500, seed=1):
    source = random.Random(seed)
    made = set()
    files = [("mail/accounts.ini", "[account1]\nAccount Name=Work\n\n[account2]\nAccount Name=Home\n")]
    if client != "opera":
        files = []
    for number in range(1, messages + 1):
        files.append(LAYOUTS[client](number, (number - 1) // per_box, message(number, source)))
        for name, text in files:
            path = os.path.join(root, name)
            folder = os.path.dirname(path)
            if folder not in made:
                os.makedirs(folder, exist_ok=True)
                made.add(folder)
            with open(path, "wb") as file:
                file.write(text.encode())
        files.clear()
