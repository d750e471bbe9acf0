#!/usr/bin/env python3
"""Makes stores, converts them with --exact and takes the bundles apart with Python's mailbox and email modules.

usage: tests/exact_copies_check.py VELMORA-CONVERT archive    an .olm file with all that its messages can hold
       tests/exact_copies_check.py VELMORA-CONVERT corpus     each mail of VELMORA_CORPUS in each of the ten stores
"""
import email
import email.policy
import email.utils
import glob
import hashlib
import json
import mailbox
import os
import random
import re
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.join(os.path.dirname(os.path.abspath(__file__)), "..", "samples"))
from make_olm import OlmArchive, message_xml  # noqa: E402

SEPARATOR = b"From ann@example.org Thu Nov  5 14:38:04 2015\n"


def run(program, client, store, out, to=None, status=0):
    """Converts and gives the report and the bytes of each target mailbox by its path; checks that the report adds up."""
    os.makedirs(out)
    done = subprocess.run([program, "convert", "--json", "--exact", "--client", client, "--out", out,
                           *(["--to", to] if to else []), store], capture_output=True)
    assert done.returncode == status, (client, done.returncode, done.stderr.decode())
    report = json.loads(done.stdout)["report"]
    boxes = {path: read(path) for folder in report["folders"] for path in folder["mailboxes"]}
    lines = sum(len(re.findall(rb"(?m)^From ", box)) for box in boxes.values())
    assert report["joined"] == 0 and report["found"] == report["written"] + report["leftOut"], report
    assert lines == report["written"] + report["strays"], (lines, report)
    assert {change["kind"] for change in report["changed"]} <= {"quoted", "emptyParts"}, report["changed"]
    return report, boxes


def read(path):
    with open(path, "rb") as stream:
        return stream.read()


def write(path, data):
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as stream:
        stream.write(data)


def lines_as_lf(data):
    data = data.replace(b"\r\n", b"\n")
    return data if data.endswith(b"\n") else data + b"\n"


def quoted(data):
    return re.sub(rb"(?m)^(>*From )", rb">\1", data)


def unquoted(data):
    return re.sub(rb"(?m)^>(>*From )", rb"\1", data)


def messages_of(box):
    """Each message of a mailbox without its separator and the empty line behind it."""
    parts = re.split(rb"(?m)^From [^\n]*\n", box)
    assert parts[0] == b"" and all(part.endswith(b"\n\n") or part == b"\n\n" for part in parts[1:])
    return [unquoted(part[:-1]) for part in parts[1:]]


# --- archive ---

def hard_mails():
    """Messages by what is hard in them; each file may say where its entry stands: before, behind, nowhere."""
    rng = random.Random(5)
    people = [("eve@example.org", "Eve \"The\" Quick, PhD \\"), ("zoe@example.org", "Zoë Zürcher " * 20), ("", "No Address"),
              ("plain@example.org", ""), ("o'hara+tag@example.org", "日本語の名前 " * 8), ("a b@example.org", "Blank")]
    inner = (b"From: a@example.org\nSubject: inner\nContent-Type: multipart/mixed; boundary=x\n\n--x\n\nFrom here\n"
             b">From there\n--x--\n")
    files = [{"name": "plan.pdf", "type": "application/pdf", "data": rng.randbytes(300000), "at": "behind"},
             {"name": "Übersicht für das zweite Halbjahr – endgültige Fassung (3).txt", "type": "text/plain",
              "data": b"one\r\ntwo", "id": "pic@example.org"},
             {"name": "empty.bin", "type": "application/octet-stream", "data": b"", "at": "behind"},
             {"name": "Contacts.xml", "type": "text/xml", "data": b"<contacts />"},
             {"name": "a \"b\";c\\.txt", "type": "not a type", "data": b"quoted"},
             {"name": "inner.eml", "type": "message/rfc822", "data": inner},
             {"name": "odd", "type": "multipart/mixed", "data": b"--x\n"},
             {"name": "gone.txt", "type": "text/plain", "data": b"gone", "at": "nowhere"}]
    words = " ".join(f"word{i}" for i in range(400))
    return {
        "everything": {"from": [("ann@example.org", "Ann Ärcher")], "to": people, "cc": people[:2] * 30, "bcc": people[:1],
                       "subject": "Grüße 🚂 " + "lange Überschrift " * 40, "sent": "2015-03-04T05:06:07",
                       "received": "2015-03-04T05:06:08", "id": "<1@example.org>", "reply": "<0@example.org>",
                       "references": " ".join(f"<{i}@example.org>" for i in range(60)), "priority": "2", "topic": "x",
                       "body": "<html><body>Grüße &amp; <b>From</b> &lt;\nFrom here\n=20 \n" + "x" * 3000 + "\t\n</body></html>",
                       "files": files},
        "bare ids": {"subject": "  two  blanks ", "received": "2015-03-04T23:06:08-02:00", "id": "2@example.org",
                     "references": "0@example.org  1@example.org", "body": "ask <ann@example.org> or 1 < 2 > 0\nFrom me\n.\n"},
        "nothing": {},
        "words": {"subject": "=?UTF-8?Q?no?= " + words, "from": [("x" * 300 + "@example.org", words)], "body": words},
        "body of some MiB": {"body": "a & b <c é\n\r\n" * 250000 + "<html>"},
        "long word": {"subject": "y" * 5000, "sent": "2016-02-29T00:00:00", "body": "last line\nwithout feed 🙂é"},
        "same name": {"subject": "second", "files": [{"name": "n", "type": "text/plain", "data": b"second", "url": "Local/n"}]},
        "the same": {"subject": "third", "files": [{"name": "n", "type": "text/plain", "data": b"third", "url": "Local/n"}]},
    }


def make_archive(path, mails):
    with open(path, "wb") as stream:
        archive, behind = OlmArchive(stream), []
        for number, mail in enumerate(mails.values()):
            for index, file in enumerate(mail.get("files", [])):
                file.setdefault("url", f"Local/Attachments/{number}/{index}/{file['name']}")
                place = file.get("at", "before")
                if place == "behind":
                    behind.append(file)
                elif place == "before":
                    archive.entry(file["url"], file["data"])
            xml = message_xml(mail).replace(b"></OPFMessageCopyBody>", b"/>\n  ")
            archive.entry(f"Local/box/Inbox/__message_attachment__{number}.xml", xml)
        # What a strict reader of XML stops at, made by hand.
        broken = message_xml({"subject": "S", "body": "B"})
        broken = broken.replace(b">S<", b">a\x0bb&#11;&#xD800; AT&T&nbsp;\xff&apos;<").replace(
            b">B<", b">&lt;p&gt;\r\nx &foo; &#8364;\xff&#11;&#13;&#11;\n<b>&amp;lt;<!-- > --></b><![CDATA[<c>]]>&#13;<")
        archive.entry("Local/box/Inbox/__message_attachment__98.xml", broken)
        archive.entry("Local/box/Inbox/__message_attachment__99.xml", broken.replace(b"CopyBody ", b'CopyBody a=">" '))
        for file in behind:
            archive.entry(file["url"], file["data"])
        archive.close()


def plain(text):
    """A header's text: folds undone, encoded words decoded."""
    return str(email.header.make_header(email.header.decode_header(re.sub(r"\n(?=[ \t])", "", text or ""))))


def check_mail(name, raw, mail):
    assert max(map(len, raw.split(b"\n"))) <= 998, name
    assert all(len(line) <= 76 for line in raw.split(b"\n") if b"=?UTF-8?" in line), name
    message = email.message_from_bytes(raw, policy=email.policy.compat32)
    modern = email.message_from_bytes(raw, policy=email.policy.default)
    assert not any(part.defects for part in modern.walk()), (name, [part.defects for part in modern.walk()])
    assert plain(message["Subject"]) == mail.get("subject", ""), (name, message["Subject"])
    for field, header in (("from", "From"), ("to", "To"), ("cc", "Cc"), ("bcc", "Bcc")):
        got = [(address, plain(shown)) for shown, address in email.utils.getaddresses(message.get_all(header, []))]
        wanted = [(address.replace("a b", '"a b"'), shown.strip()) for address, shown in mail.get(field, [])]
        assert got == wanted, (name, header, got, wanted)
    for field, header in (("id", "Message-ID"), ("reply", "In-Reply-To"), ("references", "References")):
        ids = [f"<{word.strip('<>')}>" for word in mail.get(field, "").split()]
        assert (message[header] or "").split() == ids, (name, header)
    sent = mail.get("sent") or mail.get("received")
    date = email.utils.parsedate_to_datetime(message["Date"]) if message["Date"] else None
    expected = {None: None, "2015-03-04T23:06:08-02:00": "2015-03-05T01:06:08"}.get(sent, sent)
    assert (date and date.strftime("%Y-%m-%dT%H:%M:%S%z")) == (expected and expected + "+0000"), (name, message["Date"])
    assert message["MIME-Version"] == "1.0", name
    check_parts(name, message, mail)


def check_parts(name, message, mail):
    files = [file for file in mail.get("files", []) if file.get("at") != "nowhere"]
    text, *parts = message.get_payload() if files else [message]
    body = mail.get("body", "")
    shown = text.get_payload(decode=True).decode()
    body = body.replace("\r\n", "\n")
    assert shown == body or (not files and shown == body + "\n" and not body.endswith("\n")), (name, shown[-80:])
    assert text.get_content_type() == ("text/html" if "<html>" in body else "text/plain"), name
    assert len(parts) == len(files), name
    for part, file in zip(parts, files):
        nested = file["type"] == "message/rfc822"
        data = part.get_payload(0).as_bytes(unixfrom=False) if nested else part.get_payload(decode=True)
        assert data == file["data"], (name, file["name"], data)
        assert part.get_filename() and email.utils.collapse_rfc2231_value(part.get_filename()) == file["name"], file["name"]
        types = {"not a type": "application/octet-stream", "multipart/mixed": "application/octet-stream"}
        assert part.get_content_type() == types.get(file["type"], file["type"]), (name, file["name"])
        assert part["Content-ID"] == (f"<{file['id']}>" if "id" in file else None), (name, file["name"])


def archive(program, root):
    mails = hard_mails()
    path = os.path.join(root, "backup.olm")
    make_archive(path, mails)
    os.utime(path, (86400, 86400))
    report, boxes = run(program, "olm", path, os.path.join(root, "out"))
    assert report["written"] == len(mails) + 2, report
    changes = {change["kind"]: (change["messages"], change["count"]) for change in report["changed"]}
    assert changes == {"emptyParts": (1, 1), "quoted": (1, 2)}, changes
    (box,) = boxes.values()
    assert re.findall(rb"(?m)^From (.*)", box)[:3] == [b"ann@example.org Wed Mar  4 05:06:07 2015",
                                                       b"MAILER-DAEMON Thu Mar  5 01:06:08 2015",
                                                       b"MAILER-DAEMON Fri Jan  2 00:00:00 1970"], "separators"
    *whole, broken, other = messages_of(box)
    assert broken == other
    for raw, (name, mail) in zip(whole, mails.items()):
        check_mail(name, raw, mail)
    message = email.message_from_bytes(broken, policy=email.policy.default)
    assert message["Subject"] == "ab AT&T\u00a0\ufffd'", message["Subject"]
    assert message.get_content_type() == "text/html" and message.get_payload(decode=True).decode() == "<p>\nx &foo; €\ufffd\n&lt;<c>\r\n"
    assert len(mailbox.mbox(next(iter(boxes)), create=False)) == len(mails) + 2
    print(f"{len(mails) + 2} messages of an archive read as they were made")


# --- corpus ---

PROPERTIES = b'<?xml version="1.0" encoding="UTF-8"?>\n<plist version="1.0"><dict></dict></plist>\n'
#            client        targets                      file of mail n, or of all the mail
STORES = [("apple-mbox", ("outlook",), "INBOX.mbox/mbox"),
          ("thunderbird", ("outlook", "apple-mail"), "Mail/Local Folders/Inbox"),
          ("postbox", ("outlook", "apple-mail"), "Mail/Local Folders/Inbox"),
          ("eudora", ("outlook", "apple-mail"), "In"),
          ("seamonkey", ("outlook", "apple-mail"), "ImapMail/imap.example.org/INBOX"),
          ("apple-emlx", ("outlook",), "INBOX.mbox/Messages/%d.emlx"),
          ("mailmate", ("outlook", "apple-mail"), "Messages/INBOX.mailbox/Messages/%d.eml"),
          ("outspring", ("outlook", "apple-mail"), "Inbox/%d.eml"),
          ("opera", ("outlook", "apple-mail"), "store/account1/2014/01/01/%d.mbs")]


def expected_of(client, mail):
    if client not in ("apple-emlx",) and "%d" in dict((row[0], row[2]) for row in STORES)[client]:
        if mail.startswith(b"From ") and not mail.startswith(b"From :"):
            mail = mail.partition(b"\n")[2]
    return lines_as_lf(mail)


def make_store(root, client, file, mails):
    if "%d" not in file:
        write(os.path.join(root, file), b"".join(SEPARATOR + quoted(lines_as_lf(mail)) + b"\n" for mail in mails))
        return
    for number, mail in enumerate(mails):
        data = b"%d\n" % len(mail) + mail + PROPERTIES if client == "apple-emlx" else mail
        write(os.path.join(root, file % number), data)


def check_archive_of(program, root, mails):
    """Each mail as an attached message: .olm files hold no mail as it came."""
    path = os.path.join(root, "mails.olm")
    made = {str(number): {"subject": f"mail {number}", "files": [{"name": "m.eml", "type": "message/rfc822", "data": mail}]}
            for number, mail in enumerate(mails)}
    with open(path, "wb") as stream:
        olm = OlmArchive(stream)
        for number, mail in enumerate(made.values()):
            (file,) = mail["files"]
            file["url"] = f"Local/{number}.eml"
            olm.entry(file["url"], file["data"])
            olm.entry(f"Local/box/Inbox/__message_attachment__{number:05}.xml", message_xml(mail))
        olm.close()
    _, boxes = run(program, "olm", path, os.path.join(root, "olm-out"))
    (box,) = boxes.values()
    got = messages_of(box)
    for raw, mail in zip(got, mails):
        boundary = re.search(rb'boundary="([^"]*)"', raw).group(1)
        part = raw.split(b"\n--" + boundary)[2].partition(b"\n\n")[2]
        assert part == mail.replace(b"\r\n", b"\n"), mail[:200]
    return len(got)


def check_parts_back(program, root, corpus):
    """The parts that Apple Mail took out of its messages, equal by checksum."""
    wanted = {hashlib.sha256(read(path)).hexdigest()
              for path in glob.glob(corpus + "/emlx/attachments/INBOX.mbox/Attachments/*/*/*")}
    for store in ("attachments", "partial-emlx-derived-parts"):
        report, boxes = run(program, "apple-emlx", f"{corpus}/emlx/{store}", os.path.join(root, store))
        got = {hashlib.sha256(part.get_payload(decode=True) or b"").hexdigest()
               for path in boxes for message in mailbox.mbox(path, create=False) for part in message.walk()}
        back = len(wanted & got)
        assert not report["changed"] and (back == len(wanted) or store != "attachments"), (store, back, report["changed"])
        print(f"{store}: {back} of {len(wanted)} parts equal by checksum")


def corpus(program, root):
    folder = os.environ.get("VELMORA_CORPUS", "")
    if not os.path.isdir(folder):
        print("skipped: VELMORA_CORPUS names no folder")
        return
    mails = [read(path) for path in sorted(glob.glob(folder + "/rfc822/*/*.eml"))]
    for client, targets, file in STORES:
        store = os.path.join(root, client)
        make_store(store, client, file, mails)
        for target in targets:
            report, boxes = run(program, client, store, os.path.join(root, client + target), target)
            got = [message for box in boxes.values() for message in messages_of(box)]
            assert sorted(got) == sorted(expected_of(client, mail) for mail in mails), (client, target)
            count = sum(len(mailbox.mbox(path, create=False)) for path in boxes)
            assert count == len(mails) == report["written"], (client, target, count)
            print(f"{client} to {target}: {count} mails arrive equal")
    print(f"olm to apple-mail: {check_archive_of(program, root, mails)} mails arrive equal")
    for number, path in enumerate(sorted(glob.glob(folder + "/mbox/*/*"))):
        name = f"box {number}"  # not the file's: a path with ".eml" in it holds no mailbox
        write(os.path.join(root, name, "Mail", "Local Folders", "Box"), read(path))
        _, boxes = run(program, "thunderbird", os.path.join(root, name), os.path.join(root, name + "-out"))
        assert list(boxes.values()) == [lines_as_lf(read(path))], path
    check_parts_back(program, root, folder)


if __name__ == "__main__":
    with tempfile.TemporaryDirectory() as place:
        {"archive": archive, "corpus": corpus}[sys.argv[2]](os.path.abspath(sys.argv[1]), place)
