"""Writes Thunderbird profiles of made-up mail, the same for the same seed."""
import base64
import math
import os
import random

WORDS = ("the of and to in we is that for it on with as this was be are by at from report meeting schedule invoice "
         "project release server update please find attached regards thanks team customer order budget review draft "
         "contract question answer tomorrow monday friday quarter shipping address number account payment confirm "
         "holiday photos weekend family train ticket hotel booking flight dinner garden music Grüße für größer").split()
DAYS = "Mon Tue Wed Thu Fri Sat Sun".split()
MONTHS = "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec".split()


class Maker:
    def __init__(self, seed, attachments):
        self.random = random.Random(seed)
        self.attachments = attachments  # share of messages that carry one
        self.lines = [self._line() for _ in range(24000)]
        self.base64 = base64.encodebytes(self.random.randbytes(4 << 20))  # 77 bytes a line
        self.number = 0

    def _line(self):
        kind = self.random.random()
        if kind < 0.14:
            return b""
        if kind < 0.143:
            return b"From the harbour to the lighthouse it is a mile"
        words = " ".join(self.random.choices(WORDS, k=self.random.randint(6, 13))).encode()
        return b"> " + words if kind < 0.3 else words

    def _text(self):
        want, size, out = self.random.randint(1 << 10, 8 << 10), 0, []
        at = self.random.randrange(len(self.lines))
        while size < want:
            line = self.lines[at % len(self.lines)]
            out.append(line)
            size += len(line) + 1
            at += 1
        return b"\n".join(out) + b"\n"

    def _attachment(self):
        lines = int(math.exp(self.random.uniform(math.log(50 << 10), math.log(800 << 10)))) // 77
        start = self.random.randrange(len(self.base64) // 77 - lines)
        return self.base64[start * 77:(start + lines) * 77]

    def message(self):
        r = self.random
        self.number += 1
        day = "%s %s %2d %02d:%02d:%02d %d" % (r.choice(DAYS), r.choice(MONTHS), r.randint(1, 28), r.randint(0, 23),
                                               r.randint(0, 59), r.randint(0, 59), r.randint(2001, 2020))
        subject = " ".join(r.choices(WORDS, k=r.randint(2, 8)))
        if r.random() < 0.2:
            subject = "=?UTF-8?B?%s?=" % base64.b64encode(subject.encode()).decode()
        head = ("From - %s\nX-Mozilla-Status: 0001\nReceived: from mx%d.example.org by mail.example.org;\n\t%s\n"
                "From: Sender %d <s%d@example.org>\nTo: me@example.net\nSubject: %s\nDate: %s\nMessage-ID: <%d@example.org>\n"
                % (day, r.randint(1, 9), day, r.randint(1, 999), r.randint(1, 999), subject, day, self.number)).encode()
        if r.random() >= self.attachments:
            return head + b"Content-Type: text/plain; charset=utf-8\n\n" + self._text() + b"\n"
        mark = b"--=_%d" % self.number
        return (head + b"Content-Type: multipart/mixed; boundary=\"=_%d\"\n\n" % self.number + mark +
                b"\nContent-Type: text/plain; charset=utf-8\n\n" + self._text() + mark +
                b"\nContent-Type: application/octet-stream; name=\"a.bin\"\nContent-Transfer-Encoding: base64\n\n" +
                self._attachment() + mark + b"--\n\n")


def make_profile(folder, size, attachments, boxes=1, seed=1):
    """A profile of `size` bytes in `boxes` mailboxes; gives the number of messages."""
    maker = Maker(seed, attachments)
    base = os.path.join(folder, "Mail", "Local Folders")
    os.makedirs(base)
    for box in range(boxes):
        with open(os.path.join(base, "Box%d" % box), "wb") as out:
            written = 0
            while written < size // boxes:
                message = maker.message()
                out.write(message)
                written += len(message)
    return maker.number
