#!/usr/bin/env python3
"""Makes .olm archives: entries stored in a ZIP archive, each with the 20 bytes of ZIP64 sizes as its extra field.

usage: samples/make_olm.py [FILE]     writes the sample archive, samples/outlook-2011/backup.olm unless named
"""
import base64
import struct
import sys
import zlib
from pathlib import Path
from xml.sax.saxutils import escape, quoteattr

TAG_REST = ' xml:space="preserve">'


class OlmArchive:
    """An archive being written to a binary stream."""

    def __init__(self, stream):
        self.stream = stream
        self.central = []

    def entry(self, name, data):
        """A stored entry; empty data make an entry with a zero CRC, as a directory has."""
        name = name.encode()
        crc, size = zlib.crc32(data), len(data)
        extra = struct.pack('<HHQQ', 1, 16, size, size)
        fields = (20, 0, 0, 0, 0x5A21, crc, 0xFFFFFFFF, 0xFFFFFFFF, len(name), len(extra))
        offset = self.stream.tell()
        self.stream.write(b'PK\3\4' + struct.pack('<HHHHHIIIHH', *fields) + name + extra + data)
        self.central.append((name, crc, size, offset))

    def directory(self, name):
        self.stream.write(b'PK\3\4' + struct.pack('<HHHHHIIIHH', 20, 0, 0, 0, 0x5A21, 0, 0, 0, len(name), 0)
                          + name.encode())

    def loose(self, data):
        """Bytes between two entries, no header before them."""
        self.stream.write(data)

    def close(self):
        start = self.stream.tell()
        for name, crc, size, offset in self.central:
            extra = struct.pack('<HHQQQ', 1, 24, size, size, offset)
            self.stream.write(b'PK\1\2' + struct.pack(
                '<HHHHHHIIIHHHHHII', 45, 45, 0, 0, 0, 0x5A21, crc, 0xFFFFFFFF, 0xFFFFFFFF, len(name), len(extra),
                0, 0, 0, 0, 0xFFFFFFFF) + name + extra)
        end = self.stream.tell()
        count = len(self.central)
        self.stream.write(b'PK\6\6' + struct.pack('<QHHIIQQQQ', 44, 45, 45, 0, 0, count, count, end - start, start))
        self.stream.write(b'PK\6\7' + struct.pack('<IQI', 0, end, 1))
        self.stream.write(b'PK\5\6' + struct.pack('<HHHHIIH', 0, 0, min(count, 0xFFFF), min(count, 0xFFFF),
                                                  min(end - start, 0xFFFFFFFF), min(start, 0xFFFFFFFF), 0))


def element(name, value):
    return f'<{name}{TAG_REST}{value}</{name}>'


def addresses(name, people):
    items = ''
    for address, shown in people:
        named = f' OPFContactEmailAddressName={quoteattr(shown)}' if shown else ''
        items += (f'<emailAddress xml:space="preserve" OPFContactEmailAddressAddress={quoteattr(address)}{named}'
                  ' OPFContactEmailAddressType="0"></emailAddress>')
    return element(name, items)


def attachment_list(files):
    items = ''
    for file in files:
        cid = f' OPFAttachmentContentID={quoteattr(file["id"])}' if file.get('id') else ''
        items += (f'<messageAttachment{cid} OPFAttachmentContentType={quoteattr(file["type"])}'
                  f' OPFAttachmentName={quoteattr(file["name"])}'
                  f' OPFAttachmentURL={quoteattr(file["url"])}></messageAttachment>')
    return element('OPFMessageCopyAttachmentList', items)


def message_xml(mail):
    """The XML of one message from a dictionary: from, to, cc, bcc, sent, received, subject, body, files ..."""
    parts = []
    if 'body' in mail:
        parts.append(element('OPFMessageCopyBody', escape(mail['body'])))
    if mail.get('files'):
        parts.append(attachment_list(mail['files']))
    for key, name in (('from', 'From'), ('to', 'To')):
        if mail.get(key):
            parts.append(addresses(f'OPFMessageCopy{name}Addresses', mail[key]))
    for key, name in (('sent', 'CopySentTime'), ('subject', 'CopySubject'), ('topic', 'CopyThreadTopic'),
                      ('id', 'CopyMessageID'), ('references', 'CopyReferences'), ('reply', 'CopyInReplyTo')):
        if key in mail:
            parts.append(element('OPFMessage' + name, escape(mail[key])))
    for key, name in (('cc', 'CC'), ('bcc', 'BCC')):
        if mail.get(key):
            parts.append(addresses(f'OPFMessageCopy{name}Addresses', mail[key]))
    for key, name in (('received', 'CopyReceivedTime'), ('outgoing', 'IsOutgoing'), ('priority', 'GetPriority')):
        if key in mail:
            parts.append(element('OPFMessage' + name, mail[key]))
    return ('<?xml version="1.0" encoding="UTF-8"?>\n<emails elementCount="1"><email xml:space="preserve">'
            + ''.join(parts) + '</email></emails>').encode()


def add_message(archive, folder, number, mail):
    """A message entry below "Local", its attachments' entries before it."""
    for index, file in enumerate(mail.get('files', [])):
        file['url'] = f'Local/Attachments/{number:05}-{index}-{file["name"]}'
        archive.entry(file['url'], file['data'])
    archive.entry(f'Local/On My Computer/{folder}/__message_attachment__{number:05}.xml', message_xml(mail))


PICTURE = base64.b64decode('iVBORw0KGgoAAAANSUhEUgAAAAEAAAABCAYAAAAfFcSJAAAADUlEQVR4nGNgYPjfAAACgwGAe4zjhAAAAABJRU5ErkJggg==')
ANN, BOB = ('ann@example.org', 'Ann Archer'), ('bob@example.net', 'Bob Baker')
SAMPLE = [
    ('Inbox', {'from': [BOB], 'to': [ANN], 'subject': 'Minutes of the meeting', 'sent': '2014-11-12T09:08:04',
               'received': '2014-11-12T09:08:09', 'outgoing': '0', 'priority': '3', 'topic': 'Minutes',
               'id': '<1001@example.net>', 'body': '<html><body><p>Dear Ann,<br>the minutes are attached.</p></body></html>',
               'files': [{'name': 'minutes.txt', 'type': 'text/plain', 'data': b'1. Welcome\n2. Accounts\n3. Any other business\n'},
                         {'name': 'seal.png', 'type': 'image/png', 'id': 'seal@example.net', 'data': PICTURE}]}),
    ('Inbox', {'from': [('carla@example.com', '')], 'to': [ANN, BOB, ('dora@example.com', '')], 'cc': [BOB],
               'subject': 'Zürich trip', 'sent': '2014-11-13T17:30:00', 'received': '2014-11-13T17:31:12',
               'outgoing': '0', 'body': 'Train at nine.\nPlatform 4 & bring an umbrella.\n'}),
    ('Inbox/Clients', {'from': [BOB], 'to': [ANN], 'subject': 'Offer', 'sent': '2015-01-05T08:00:00',
                       'received': '2015-01-05T08:00:10', 'outgoing': '0', 'priority': '2',
                       'body': '<html><body>Our offer: 5 &lt; 6.</body></html>'}),
    ('Sent Items', {'from': [ANN], 'to': [BOB], 'bcc': [('eve@example.org', 'Eve')], 'subject': 'Re: Offer',
                    'sent': '2015-01-05T10:15:30', 'outgoing': '1', 'id': '<1002@example.org>',
                    'body': '<html><body>We accept.</body></html>'}),
    ('Drafts', {'from': [ANN], 'sent': '2015-01-06T12:00:00', 'outgoing': '1', 'subject': 'Not yet written'}),
]


def write_sample(stream):
    archive = OlmArchive(stream)
    for folder in ('Local/', 'Local/Attachments/', 'Local/On My Computer/'):
        archive.directory(folder)
    archive.entry('Categories.xml', b'<categories />')
    for number, (folder, mail) in enumerate(SAMPLE, 1):
        add_message(archive, folder, number, mail)
    archive.entry('Local/Address Book/Contacts.xml', b'<contacts elementCount="0"></contacts>')
    archive.loose(b'<notes elementCount="1"><note>Buy <emails </note></notes>')
    archive.close()


def main():
    path = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent / 'outlook-2011' / 'backup.olm'
    path.parent.mkdir(parents=True, exist_ok=True)
    with open(path, 'wb') as stream:
        write_sample(stream)


if __name__ == '__main__':
    main()
