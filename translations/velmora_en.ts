<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>Problems</name>
    <message numerus="yes">
        <source>... and %n more</source>
        <translation>
            <numerusform>... and %n more</numerusform>
            <numerusform>... and %n more</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>QProgressInfo</name>
    <message numerus="yes">
        <source>about %n minute(s) left</source>
        <translation>
            <numerusform>about %n minute left</numerusform>
            <numerusform>about %n minutes left</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReportDialog</name>
    <message numerus="yes">
        <source>Read again: %n difference(s), see the report.</source>
        <translation>
            <numerusform>Read again: %n difference, see the report.</numerusform>
            <numerusform>Read again: %n differences, see the report.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Read again: %n mailbox(es), all as written.</source>
        <translation>
            <numerusform>Read again: %n mailbox, all as written.</numerusform>
            <numerusform>Read again: %n mailboxes, all as written.</numerusform>
        </translation>
    </message>
</context>
</TS>
