<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de">
<context>
    <name>AboutDialog</name>
    <message>
        <source>Velmora Mail Converter</source>
        <translation>Velmora Mail Converter</translation>
    </message>
    <message>
        <source>Product Information</source>
        <translation>Produkt</translation>
    </message>
    <message>
        <source>Product Name :</source>
        <translation>Produktname:</translation>
    </message>
    <message>
        <source>Product Version :</source>
        <translation>Produktversion:</translation>
    </message>
    <message>
        <source>System Information</source>
        <translation>System</translation>
    </message>
    <message>
        <source>Operating System :</source>
        <translation>Betriebssystem:</translation>
    </message>
    <message>
        <source>Version :</source>
        <translation>Version:</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
</context>
<context>
    <name>AboutDlg</name>
    <message>
        <source>Contact support</source>
        <translation>Support kontaktieren</translation>
    </message>
</context>
<context>
    <name>BrowseWindow</name>
    <message>
        <source>Velmora Mail Converter</source>
        <translation>Velmora Mail Converter</translation>
    </message>
    <message>
        <source>Follow the steps listed below to convert your mailbox:
1. Select the mail client.
2. Select source mailbox database that you wish to convert.
3. Click &apos;Start&apos; button.</source>
        <translation>So wird das Postfach konvertiert:
1. Mailprogramm wählen.
2. Postfach wählen, das konvertiert werden soll.
3. Auf „Start“ klicken.</translation>
    </message>
    <message>
        <source>Choose Mail Client :</source>
        <translation>Mailprogramm:</translation>
    </message>
    <message>
        <source>Select Database File :</source>
        <translation>Ort des Postfachs:</translation>
    </message>
    <message>
        <source>Browse</source>
        <translation>Durchsuchen</translation>
    </message>
    <message>
        <source>Start Scanning</source>
        <translation>Einlesen starten</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Select Mail Client</source>
        <translation>Mailprogramm wählen</translation>
    </message>
</context>
<context>
    <name>BundleChecker</name>
    <message>
        <source>can&apos;t be read again: %1</source>
        <translation>nicht noch einmal zu lesen: %1</translation>
    </message>
    <message>
        <source>%1 bytes were written, %2 stand there: %3</source>
        <translation>%1 Bytes wurden geschrieben, %2 stehen da: %3</translation>
    </message>
    <message>
        <source>%1 lines that start with &quot;From &quot; were written, %2 stand there: %3</source>
        <translation>%1 Zeilen, die mit „From “ beginnen, wurden geschrieben, %2 stehen da: %3</translation>
    </message>
    <message>
        <source>can&apos;t be brought to the disk: %1: %2</source>
        <translation>nicht auf die Platte zu bringen: %1: %2</translation>
    </message>
</context>
<context>
    <name>BundlePlace</name>
    <message>
        <source>can&apos;t be replaced, the store lies in it: %1 (store: %2)</source>
        <translation>kann nicht ersetzt werden, die Mailablage liegt darin: %1 (Ablage: %2)</translation>
    </message>
    <message>
        <source>can&apos;t be replaced, it lies in the store: %1 (store: %2)</source>
        <translation>kann nicht ersetzt werden, es liegt in der Mailablage: %1 (Ablage: %2)</translation>
    </message>
    <message>
        <source>can&apos;t be opened: %1: %2</source>
        <translation>kann nicht geöffnet werden: %1: %2</translation>
    </message>
    <message>
        <source>is no lock file: %1</source>
        <translation>ist keine Sperrdatei: %1</translation>
    </message>
    <message>
        <source>another save writes there: %1</source>
        <translation>eine andere Sicherung schreibt gerade dorthin: %1</translation>
    </message>
    <message>
        <source>already exists: %1</source>
        <translation>gibt es schon: %1</translation>
    </message>
    <message>
        <source>can&apos;t be replaced, its folder takes no file: %1</source>
        <translation>kann nicht ersetzt werden, sein Ordner nimmt keine Datei an: %1</translation>
    </message>
    <message>
        <source>can&apos;t be removed: %1</source>
        <translation>kann nicht gelöscht werden: %1</translation>
    </message>
    <message>
        <source>can&apos;t be moved aside: %1: %2</source>
        <translation>kann nicht beiseite gelegt werden: %1: %2</translation>
    </message>
    <message>
        <source>can&apos;t be brought to the disk: %1: %2</source>
        <translation>kann nicht auf den Datenträger gebracht werden: %1: %2</translation>
    </message>
    <message>
        <source>was taken away or renamed during the save, with what was written to it: %1</source>
        <translation>wurde während der Sicherung entfernt oder umbenannt, mit allem, was darin war: %1</translation>
    </message>
    <message>
        <source>the old bundle stays: %1</source>
        <translation>das alte Bündel bleibt: %1</translation>
    </message>
    <message>
        <source>the old bundle can&apos;t be removed: %1</source>
        <translation>das alte Bündel kann nicht gelöscht werden: %1</translation>
    </message>
</context>
<context>
    <name>HeaderPane</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
</context>
<context>
    <name>ImportMsgDlg</name>
    <message>
        <source>Velmora Mail Converter</source>
        <translation>Velmora Mail Converter</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt;Click to view steps of importing mailbox to :&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-size:12pt;&quot;&gt;So wird das Postfach importiert in:&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Report ...</source>
        <translation>Bericht ...</translation>
    </message>
    <message>
        <source>Open Folder</source>
        <translation>Ordner öffnen</translation>
    </message>
</context>
<context>
    <name>ListFilter</name>
    <message>
        <source>Sender or subject</source>
        <translation>Absender oder Betreff</translation>
    </message>
    <message>
        <source>Show only messages with these words</source>
        <translation>Nur Nachrichten mit diesen Wörtern zeigen</translation>
    </message>
</context>
<context>
    <name>MailView</name>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>Select &amp;All</source>
        <translation>&amp;Alles auswählen</translation>
    </message>
</context>
<context>
    <name>PassedOver</name>
    <message>
        <source>can&apos;t be read</source>
        <translation>nicht zu lesen</translation>
    </message>
    <message>
        <source>its name can&apos;t be carried through</source>
        <translation>der Name lässt sich nicht weitergeben</translation>
    </message>
    <message>
        <source>begins as a mailbox, but has the name of something else</source>
        <translation>beginnt wie ein Postfach, heißt aber anders</translation>
    </message>
    <message>
        <source>lies in no mailbox</source>
        <translation>liegt in keinem Postfach</translation>
    </message>
    <message>
        <source>is compressed</source>
        <translation>ist komprimiert</translation>
    </message>
    <message>
        <source>is a part that belongs to no message</source>
        <translation>ist ein Teil, der zu keiner Nachricht gehört</translation>
    </message>
    <message>
        <source>was not reached</source>
        <translation>wurde nicht erreicht</translation>
    </message>
    <message>
        <source>and %1 more</source>
        <translation>und %1 weitere</translation>
    </message>
</context>
<context>
    <name>PreferencesDialog</name>
    <message>
        <source>No address to ask for updates is set, so it is not known whether there are any. You have version %1.</source>
        <translation>Es ist keine Adresse für Aktualisierungen eingetragen; ob es welche gibt, ist nicht bekannt. Sie haben Version %1.</translation>
    </message>
</context>
<context>
    <name>PreferencesDlg</name>
    <message>
        <source>Preferences[*]</source>
        <translation>Einstellungen[*]</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>Check for updates:</source>
        <translation>Nach Aktualisierungen suchen:</translation>
    </message>
    <message>
        <source>How often to check for updates</source>
        <translation>Wie oft nach Aktualisierungen gesucht wird</translation>
    </message>
    <message>
        <source>Daily</source>
        <translation>Täglich</translation>
    </message>
    <message>
        <source>Weekly</source>
        <translation>Wöchentlich</translation>
    </message>
    <message>
        <source>Monthly</source>
        <translation>Monatlich</translation>
    </message>
    <message>
        <source>Velmora Mail Converter will automatically check for new updates available over internet. Active internet connection is required for this function.</source>
        <translation>Velmora Mail Converter sucht im Internet selbst nach Neuem. Dazu ist eine Internetverbindung nötig.</translation>
    </message>
    <message>
        <source>Check for Updates now</source>
        <translation>Jetzt suchen</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
</context>
<context>
    <name>Problem</name>
    <message>
        <source>nothing was done: the system gives no thread to work in</source>
        <translation>nichts wurde getan: das System gibt keinen Thread zum Arbeiten her</translation>
    </message>
    <message>
        <source>can&apos;t be shown: </source>
        <translation>nicht anzuzeigen: </translation>
    </message>
    <message>
        <source>another file than the one that was scanned: </source>
        <translation>eine andere Datei als die eingelesene: </translation>
    </message>
    <message>
        <source>a message can&apos;t be shown whole, it reaches past the end: </source>
        <translation>eine Nachricht ist nicht ganz anzuzeigen, sie reicht über das Ende hinaus: </translation>
    </message>
    <message>
        <source>can&apos;t be shown, a message in it is too large: </source>
        <translation>nicht anzuzeigen, eine Nachricht darin ist zu groß: </translation>
    </message>
    <message>
        <source>not a regular file</source>
        <translation>keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>shorter than the %1 bytes that it had</source>
        <translation>kürzer als die %1 Bytes, die sie hatte</translation>
    </message>
    <message>
        <source>the search failed with status %1, its list at %2 may be cut short</source>
        <translation>die Suche schlug mit Status %1 fehl, ihre Liste in %2 kann unvollständig sein</translation>
    </message>
    <message>
        <source>an attachment that is not in the archive was left out of its message: %1/%2</source>
        <translation>ein Anhang, der nicht im Archiv ist, fehlt in seiner Nachricht: %1/%2</translation>
    </message>
    <message>
        <source>passed over, it can&apos;t be read as a mailbox any more: </source>
        <translation>übergangen, nicht mehr als Postfach zu lesen: </translation>
    </message>
    <message>
        <source>left out: </source>
        <translation>ausgelassen: </translation>
    </message>
    <message>
        <source>a message was left out, it can&apos;t be read: %1 (%2)</source>
        <translation>eine Nachricht wurde ausgelassen, sie ist nicht zu lesen: %1 (%2)</translation>
    </message>
    <message>
        <source>shorter than its own byte count: </source>
        <translation>kürzer als die eigene Byteangabe: </translation>
    </message>
    <message>
        <source>shorter than its first line says: </source>
        <translation>kürzer, als die erste Zeile sagt: </translation>
    </message>
    <message>
        <source>the save ended at a file that can&apos;t be opened: </source>
        <translation>das Speichern endete an einer Datei, die sich nicht öffnen lässt: </translation>
    </message>
    <message>
        <source>can&apos;t be read to its end: </source>
        <translation>nicht bis zum Ende zu lesen: </translation>
    </message>
    <message>
        <source>the account names can&apos;t be searched for: </source>
        <translation>die Kontonamen können nicht gesucht werden: </translation>
    </message>
    <message>
        <source>the parts can&apos;t be searched for: </source>
        <translation>die Teile können nicht gesucht werden: </translation>
    </message>
    <message>
        <source>saved without its parts, it is too large: </source>
        <translation>ohne seine Teile gespeichert, zu groß: </translation>
    </message>
    <message>
        <source>left out, its message has no place for it: </source>
        <translation>ausgelassen, die Nachricht hat keinen Platz dafür: </translation>
    </message>
    <message>
        <source>the messages of this save don&apos;t add up, which is a fault of this program</source>
        <translation>die Nachrichten dieses Speicherns gehen nicht auf, das ist ein Fehler dieses Programms</translation>
    </message>
    <message>
        <source>can&apos;t be written: %1: %2</source>
        <translation>nicht zu schreiben: %1: %2</translation>
    </message>
    <message>
        <source>ends within a message: %1</source>
        <translation>endet mitten in einer Nachricht: %1</translation>
    </message>
    <message>
        <source>there is no message</source>
        <translation>es gibt keine Nachricht</translation>
    </message>
    <message>
        <source>the copy of this mailbox was stopped, it is not whole</source>
        <translation>die Kopie dieses Postfachs wurde angehalten, es ist nicht vollständig</translation>
    </message>
    <message>
        <source>shorter than its records say, %1 message(s) are not whole: %2</source>
        <translation>kürzer, als die Einträge sagen, %1 Nachricht(en) sind nicht vollständig: %2</translation>
    </message>
    <message>
        <source>another file than the one that was scanned, nothing of it was saved: </source>
        <translation>eine andere Datei als die eingelesene, nichts davon wurde gespeichert: </translation>
    </message>
    <message>
        <source>can&apos;t be opened: </source>
        <translation>nicht zu öffnen: </translation>
    </message>
    <message>
        <source>can&apos;t be searched: %1: %2</source>
        <translation>nicht zu durchsuchen: %1: %2</translation>
    </message>
    <message>
        <source>the scan ended at a file that can&apos;t be opened: </source>
        <translation>das Einlesen endete an einer Datei, die sich nicht öffnen lässt: </translation>
    </message>
    <message>
        <source>the scan ended, the search of the store met an error: </source>
        <translation>das Einlesen endete, die Suche im Bestand traf auf einen Fehler: </translation>
    </message>
    <message>
        <source>this file belongs to another client&apos;s store: </source>
        <translation>diese Datei gehört zum Bestand eines anderen Programms: </translation>
    </message>
    <message>
        <source>message file(s) of a maildir</source>
        <translation>Nachrichtendatei(en) eines Maildirs</translation>
    </message>
    <message>
        <source>mailbox file(s) named .mbox</source>
        <translation>Postfachdatei(en) namens .mbox</translation>
    </message>
    <message>
        <source>.emlx file(s)</source>
        <translation>.emlx-Datei(en)</translation>
    </message>
    <message>
        <source>.eml file(s)</source>
        <translation>.eml-Datei(en)</translation>
    </message>
    <message>
        <source>.mbs file(s)</source>
        <translation>.mbs-Datei(en)</translation>
    </message>
    <message>
        <source>.olm file(s)</source>
        <translation>.olm-Datei(en)</translation>
    </message>
    <message>
        <source>file(s) without mail of this client</source>
        <translation>Datei(en) ohne Mail dieses Programms</translation>
    </message>
    <message>
        <source>no mailbox of this client in it, but %1 %2: %3</source>
        <translation>kein Postfach dieses Programms darin, aber %1 %2: %3</translation>
    </message>
    <message>
        <source>there is no file in it: </source>
        <translation>es ist keine Datei darin: </translation>
    </message>
    <message>
        <source>there is a store of %1, choose that client and %2</source>
        <translation>hier liegt ein Bestand von %1, wählen Sie dieses Programm und %2</translation>
    </message>
    <message>
        <source>no such folder: </source>
        <translation>diesen Ordner gibt es nicht: </translation>
    </message>
    <message>
        <source>this is a link, choose the folder that it leads to: </source>
        <translation>das ist eine Verknüpfung, wählen Sie den Ordner, zu dem sie führt: </translation>
    </message>
    <message>
        <source>a folder is wanted, this is a file: </source>
        <translation>gesucht ist ein Ordner, das ist eine Datei: </translation>
    </message>
    <message>
        <source>a folder can&apos;t be read: %1: %2</source>
        <translation>ein Ordner ist nicht zu lesen: %1: %2</translation>
    </message>
    <message>
        <source>there is no message in it: </source>
        <translation>es ist keine Nachricht darin: </translation>
    </message>
    <message>
        <source>cut off, its central directory is missing and messages may be too: </source>
        <translation>abgeschnitten, das Inhaltsverzeichnis fehlt und vielleicht auch Nachrichten: </translation>
    </message>
    <message>
        <source>shorter than at the scan, messages are gone: </source>
        <translation>kürzer als beim Einlesen, Nachrichten sind weg: </translation>
    </message>
    <message>
        <source>a text in it is too long</source>
        <translation>ein Text darin ist zu lang</translation>
    </message>
    <message>
        <source>nested too deep</source>
        <translation>zu tief geschachtelt</translation>
    </message>
</context>
<context>
    <name>Problems</name>
    <message numerus="yes">
        <source>... and %n more</source>
        <translation>
            <numerusform>... und %n weiteres</numerusform>
            <numerusform>... und %n weitere</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ProgressDialog</name>
    <message>
        <source>Dialog</source>
        <translation>Dialog</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
</context>
<context>
    <name>QConverterMainWindow</name>
    <message>
        <source>Only the beginning of this long message is shown. All of it is saved.</source>
        <translation>Von dieser langen Nachricht ist nur der Anfang zu sehen. Gespeichert wird sie ganz.</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Application Running !!
Please halt the current process to Exit.</source>
        <translation>Das Programm arbeitet noch!
Bitte halten Sie den laufenden Vorgang an, bevor Sie es beenden.</translation>
    </message>
    <message>
        <source>
Do you want to close Velmora Mail Converter? </source>
        <translation>
Velmora Mail Converter beenden? </translation>
    </message>
    <message>
        <source>VelmoraMailConverter</source>
        <translation>VelmoraMailConverter</translation>
    </message>
    <message>
        <source>The process ended before it was done.</source>
        <translation>Der Vorgang ist vorzeitig zu Ende gegangen.</translation>
    </message>
    <message>
        <source>Saving Database File ...</source>
        <translation>Postfach wird gespeichert ...</translation>
    </message>
    <message>
        <source>Scanning Database File ...</source>
        <translation>Postfach wird eingelesen ...</translation>
    </message>
    <message>
        <source>
Mailbox scan completed successfully.</source>
        <translation>
Das Postfach ist eingelesen.</translation>
    </message>
    <message>
        <source>
File saved successfully at location </source>
        <translation>
Erfolgreich gespeichert unter </translation>
    </message>
    <message>
        <source>
Selected file is either invalid or empty.</source>
        <translation>
Die gewählte Datei ist ungültig oder leer.</translation>
    </message>
    <message>
        <source>Save Converted File</source>
        <translation>Konvertierte Datei speichern</translation>
    </message>
    <message>
        <source>Open File</source>
        <translation>Datei öffnen</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>Ü&amp;ber</translation>
    </message>
    <message>
        <source>&amp;Preferences...</source>
        <translation>&amp;Einstellungen...</translation>
    </message>
    <message>
        <source>&amp;Help Topics</source>
        <translation>&amp;Hilfethemen</translation>
    </message>
    <message>
        <source>&amp;Email to Velmora Support</source>
        <translation>&amp;E-Mail an den Velmora-Support</translation>
    </message>
    <message>
        <source>&amp;View Support Section</source>
        <translation>&amp;Support-Seiten anzeigen</translation>
    </message>
    <message>
        <source>&amp;View Knowledgebase Articles</source>
        <translation>Artikel der &amp;Wissensdatenbank anzeigen</translation>
    </message>
    <message>
        <source>&amp;Submit Enquiry</source>
        <translation>A&amp;nfrage senden</translation>
    </message>
    <message>
        <source>Open</source>
        <translation>Öffnen</translation>
    </message>
    <message>
        <source>Save</source>
        <translation>Speichern</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>ToolBar</source>
        <translation>Werkzeugleiste</translation>
    </message>
    <message>
        <source>Open &amp; Save File</source>
        <translation>Datei öffnen und speichern</translation>
    </message>
    <message>
        <source>&amp;VelmoraMailConverter</source>
        <translation>&amp;VelmoraMailConverter</translation>
    </message>
    <message>
        <source>&amp;File</source>
        <translation>&amp;Datei</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Mail</source>
        <translation>Mail</translation>
    </message>
    <message>
        <source>Messages</source>
        <translation>Nachrichten</translation>
    </message>
    <message>
        <source>Message headers</source>
        <translation>Kopf der Nachricht</translation>
    </message>
    <message>
        <source>Message text</source>
        <translation>Text der Nachricht</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Velmora Apple Mail to Outlook 2011 Converter</source>
        <translation>Velmora Apple Mail to Outlook 2011 Converter</translation>
    </message>
    <message>
        <source>Select a folder to save.</source>
        <translation>Wählen Sie einen Ordner, der gespeichert werden soll.</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>
%1 already exists at this location. Do you want to replace it?</source>
        <translation>
%1 ist an diesem Ort schon vorhanden. Ersetzen?</translation>
    </message>
    <message>
        <source>
What was saved so far is at location </source>
        <translation>
Das bisher Gesicherte liegt in </translation>
    </message>
    <message>
        <source>The old bundle is kept until the new one is whole, and there may not be the space for both. Removing the old one first would help.</source>
        <translation>Das alte Bündel bleibt, bis das neue vollständig ist, und für beide reicht der Platz vielleicht nicht. Es hülfe, das alte vorher zu löschen.</translation>
    </message>
    <message>
        <source>Current scan information will be discarded if you select another mailbox. Do you want to continue?</source>
        <translation>Wenn Sie ein anderes Postfach wählen, geht das eingelesene verloren. Fortfahren?</translation>
    </message>
    <message>
        <source>not listed, it can&apos;t be opened: </source>
        <translation>nicht aufgeführt, kann nicht geöffnet werden: </translation>
    </message>
    <message>
        <source>Messages: %1, folders: %2.</source>
        <translation>Nachrichten: %1, Ordner: %2.</translation>
    </message>
    <message>
        <source>
Passed over: %1, see the details.</source>
        <translation>
Übergangen: %1, siehe Details.</translation>
    </message>
</context>
<context>
    <name>QImportWindow</name>
    <message>
        <source>Copy Location</source>
        <translation>Ort kopieren</translation>
    </message>
    <message>
        <source>Reading the result again: %1 %</source>
        <translation>Das Ergebnis wird nachgelesen: %1 %</translation>
    </message>
</context>
<context>
    <name>QParseDatabase</name>
    <message>
        <source>VelmoraMailConverter</source>
        <translation>VelmoraMailConverter</translation>
    </message>
    <message>
        <source>
Choose a mail client.</source>
        <translation>
Wählen Sie ein Mailprogramm.</translation>
    </message>
    <message>
        <source>Open Directory</source>
        <translation>Ordner wählen</translation>
    </message>
    <message>
        <source>All Files</source>
        <translation>Alle Dateien</translation>
    </message>
    <message>
        <source>
Select mailbox database for conversion.</source>
        <translation>
Wählen Sie das Postfach, das konvertiert werden soll.</translation>
    </message>
</context>
<context>
    <name>QProgressInfo</name>
    <message>
        <source>Press Stop to go on.</source>
        <translation>Drücken Sie Stopp, um fortzufahren.</translation>
    </message>
    <message>
        <source>VelmoraMailConverter</source>
        <translation>VelmoraMailConverter</translation>
    </message>
    <message>
        <source>Process cannot be resumed from the current stage.</source>
        <translation>Der Vorgang kann nicht fortgesetzt werden.</translation>
    </message>
    <message>
        <source>Do you want to abort the current process?</source>
        <translation>Den laufenden Vorgang abbrechen?</translation>
    </message>
    <message>
        <source>
Process aborted. File saved Successfully at location </source>
        <translation>
Vorgang abgebrochen. Erfolgreich gespeichert unter </translation>
    </message>
    <message>
        <source>
Process Aborted.</source>
        <translation>
Vorgang abgebrochen.</translation>
    </message>
    <message>
        <source>, %1 of %2</source>
        <translation>, %1 von %2</translation>
    </message>
    <message>
        <source>less than a minute left</source>
        <translation>weniger als eine Minute übrig</translation>
    </message>
    <message numerus="yes">
        <source>about %n minute(s) left</source>
        <translation>
            <numerusform>noch etwa %n Minute</numerusform>
            <numerusform>noch etwa %n Minuten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>RepairComplete</name>
    <message>
        <source>Velmora Mail Converter</source>
        <translation>Velmora Mail Converter</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
</context>
<context>
    <name>Report</name>
    <message>
        <source>Nothing was written, as asked for; the place would be %1 (%2)</source>
        <translation>Wie gewünscht wurde nichts geschrieben; der Ort wäre %1 (%2)</translation>
    </message>
    <message>
        <source>Nothing was written, as asked for; not all could be looked at</source>
        <translation>Wie gewünscht wurde nichts geschrieben; nicht alles konnte angesehen werden</translation>
    </message>
    <message>
        <source>No message was saved; what there is stands at location %1</source>
        <translation>Es wurde keine Nachricht gespeichert; was da ist, liegt unter %1</translation>
    </message>
    <message>
        <source>Nothing was saved: no message was written</source>
        <translation>Nichts wurde gespeichert: keine Nachricht wurde geschrieben</translation>
    </message>
    <message>
        <source>File saved successfully at location %1 (%2)</source>
        <translation>Erfolgreich gespeichert unter %1 (%2)</translation>
    </message>
    <message>
        <source>What was saved so far is at location %1</source>
        <translation>Was bisher gespeichert ist, liegt unter %1</translation>
    </message>
    <message>
        <source>Messages found: %1, written: %2, joined to the one before: %3, left out: %4; bytes: %5 (free before: %6)</source>
        <translation>Nachrichten gefunden: %1, geschrieben: %2, mit der vorigen verbunden: %3, ausgelassen: %4; Bytes: %5 (vorher frei: %6)</translation>
    </message>
    <message>
        <source>, for example %1 at byte %2</source>
        <translation>, zum Beispiel %1 bei Byte %2</translation>
    </message>
    <message>
        <source>, for example %1</source>
        <translation>, zum Beispiel %1</translation>
    </message>
    <message>
        <source>can&apos;t be read whole</source>
        <translation>nicht ganz zu lesen</translation>
    </message>
    <message>
        <source>can&apos;t be written</source>
        <translation>nicht zu schreiben</translation>
    </message>
    <message>
        <source>gone since the scan</source>
        <translation>seit dem Einlesen verschwunden</translation>
    </message>
    <message>
        <source>a part can&apos;t be read</source>
        <translation>ein Teil ist nicht zu lesen</translation>
    </message>
    <message>
        <source>too large to be put together</source>
        <translation>zu groß zum Zusammensetzen</translation>
    </message>
    <message>
        <source>the save was stopped</source>
        <translation>das Speichern wurde angehalten</translation>
    </message>
    <message>
        <source>in a mailbox that begins with a byte order mark</source>
        <translation>in einem Postfach, das mit einer Bytereihenfolge-Marke beginnt</translation>
    </message>
    <message>
        <source>news feeds, which are not taken</source>
        <translation>Newsfeeds, die nicht übernommen werden</translation>
    </message>
    <message>
        <source>the save ended before</source>
        <translation>das Speichern endete vorher</translation>
    </message>
    <message>
        <source>Left out, %1: %2 message(s)</source>
        <translation>Ausgelassen, %1: %2 Nachrichten</translation>
    </message>
    <message>
        <source>, and those of %1 file(s) whose number is not known</source>
        <translation>, und die von %1 Dateien, deren Zahl nicht bekannt ist</translation>
    </message>
    <message>
        <source>%1 character(s) became &quot;?&quot;, which Latin-1 lacks, in %2 message(s)</source>
        <translation>%1 Zeichen, die es in Latin-1 nicht gibt, wurden zu „?“, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 character(s) are one byte of Latin-1 now, in %2 message(s)</source>
        <translation>%1 Zeichen sind jetzt ein Byte in Latin-1, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 first line(s) that are no byte count were dropped, in %2 message(s)</source>
        <translation>%1 erste Zeilen, die keine Bytezahl sind, fielen weg, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 line(s) got &quot;&gt;&quot; before &quot;From &quot;, in %2 message(s)</source>
        <translation>%1 Zeilen bekamen „&gt;“ vor „From “, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 byte(s) at the end were not written, in %2 message(s)</source>
        <translation>%1 Bytes am Ende wurden nicht geschrieben, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 header(s) &quot;Received-Spf:&quot; were dropped, in %2 message(s)</source>
        <translation>%1 Kopfzeilen „Received-Spf:“ fielen weg, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 part(s) did not get their content back, in %2 message(s)</source>
        <translation>%1 Teile bekamen ihren Inhalt nicht zurück, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 message id(s) were replaced by a new one, in %2 message(s)</source>
        <translation>%1 Nachrichten-IDs wurden durch eine neue ersetzt, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 date(s) are the present time, in %2 message(s)</source>
        <translation>%1 Datumsangaben sind die jetzige Zeit, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 header value(s) are too long and were dropped, in %2 message(s)</source>
        <translation>%1 zu lange Kopfzeilen fielen weg, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 attachment(s) were not written, in %2 message(s)</source>
        <translation>%1 Anhänge wurden nicht geschrieben, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 list(s) of recipients are empty, in %2 message(s)</source>
        <translation>%1 Empfängerlisten sind leer, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 attachment(s) stand behind no boundary that is told, in %2 message(s)</source>
        <translation>%1 Anhänge stehen hinter keiner genannten Trennlinie, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>%1 text(s) were cut at an XML declaration, in %2 message(s)</source>
        <translation>%1 Texte wurden an einer XML-Deklaration abgeschnitten, in %2 Nachrichten</translation>
    </message>
    <message>
        <source>Changed: </source>
        <translation>Verändert: </translation>
    </message>
    <message>
        <source>Joined: %1 message(s) have no separator of their own, a reader takes them for a part of the message before</source>
        <translation>Verbunden: %1 Nachrichten haben keine eigene Trennzeile, ein Leser hält sie für einen Teil der vorigen</translation>
    </message>
    <message>
        <source>%1 other line(s) start with &quot;From &quot;, a reader may split a message there</source>
        <translation>%1 andere Zeilen beginnen mit „From “, ein Leser teilt dort vielleicht eine Nachricht</translation>
    </message>
    <message>
        <source>%1 mailbox(es) hold more than one folder</source>
        <translation>%1 Postfächer enthalten mehr als einen Ordner</translation>
    </message>
    <message>
        <source>The look at the bundle was stopped after %1 mailbox(es)</source>
        <translation>Das Nachlesen wurde nach %1 Postfächern angehalten</translation>
    </message>
    <message>
        <source>Read again: %1 mailbox(es), %2 byte(s), %3 line(s) that start with &quot;From &quot;, differences: %4</source>
        <translation>Nachgelesen: %1 Postfächer, %2 Bytes, %3 Zeilen, die mit „From “ beginnen, Abweichungen: %4</translation>
    </message>
    <message>
        <source>%1: found %2, written %3, joined %4, left out %5</source>
        <translation>%1: gefunden %2, geschrieben %3, verbunden %4, ausgelassen %5</translation>
    </message>
    <message>
        <source>unknown</source>
        <translation>unbekannt</translation>
    </message>
    <message>
        <source>others</source>
        <translation>andere</translation>
    </message>
    <message>
        <source>%1, byte %2: %3 message(s), %4</source>
        <translation>%1, Byte %2: %3 Nachrichten, %4</translation>
    </message>
    <message>
        <source>What was saved is no longer at location %1</source>
        <translation>Was gespeichert wurde, liegt nicht mehr unter %1</translation>
    </message>
    <message>
        <source>Passed over: %1 file(s) or folder(s) of the store stand in no folder of the list</source>
        <translation>Übergangen: %1 Datei(en) oder Ordner des Bestands stehen in keinem Ordner der Liste</translation>
    </message>
    <message>
        <source>%1 holds %2</source>
        <translation>%1 enthält %2</translation>
    </message>
</context>
<context>
    <name>ReportDialog</name>
    <message>
        <source>Report</source>
        <translation>Bericht</translation>
    </message>
    <message>
        <source>&amp;Copy</source>
        <translation>&amp;Kopieren</translation>
    </message>
    <message>
        <source>&amp;Save as Text ...</source>
        <translation>Als &amp;Text speichern ...</translation>
    </message>
    <message>
        <source>&amp;Open Folder</source>
        <translation>&amp;Ordner öffnen</translation>
    </message>
    <message>
        <source>Save as Text</source>
        <translation>Als Text speichern</translation>
    </message>
    <message>
        <source>Folders</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Ordner</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>Written</source>
        <translation>Geschrieben</translation>
    </message>
    <message>
        <source>Joined</source>
        <translation>Verbunden</translation>
    </message>
    <message>
        <source>Left out</source>
        <translation>Ausgelassen</translation>
    </message>
    <message>
        <source>Changed</source>
        <translation>Verändert</translation>
    </message>
    <message>
        <source>All folders</source>
        <translation>Alle Ordner</translation>
    </message>
    <message>
        <source>Reasons</source>
        <translation>Gründe</translation>
    </message>
    <message>
        <source>Whole: %1</source>
        <translation>Ganz: %1</translation>
    </message>
    <message>
        <source>Not whole: %1</source>
        <translation>Nicht ganz: %1</translation>
    </message>
    <message>
        <source>The report can&apos;t be saved: %1: %2</source>
        <translation>Der Bericht kann nicht gespeichert werden: %1: %2</translation>
    </message>
    <message>
        <source>Messages: %1 found, %2 written</source>
        <translation>Nachrichten: %1 gefunden, %2 geschrieben</translation>
    </message>
    <message>
        <source>, %1 joined to the one before</source>
        <translation>, %1 mit der vorigen verbunden</translation>
    </message>
    <message>
        <source>, %1 left out</source>
        <translation>, %1 ausgelassen</translation>
    </message>
    <message>
        <source>The report tells which mailboxes are whole.</source>
        <translation>Welche Postfächer ganz sind, sagt der Bericht.</translation>
    </message>
    <message>
        <source>Changed: %1, see the report.</source>
        <translation>Verändert: %1, siehe Bericht.</translation>
    </message>
    <message>
        <source>Changed: %1. Exact copies keep them as they are.</source>
        <translation>Verändert: %1. Genaue Kopien lassen sie, wie sie sind.</translation>
    </message>
    <message>
        <source>The result was not read to its end again.</source>
        <translation>Das Ergebnis wurde nicht bis zum Ende nachgelesen.</translation>
    </message>
    <message numerus="yes">
        <source>Read again: %n difference(s), see the report.</source>
        <translation>
            <numerusform>Nachgelesen: %n Abweichung, siehe Bericht.</numerusform>
            <numerusform>Nachgelesen: %n Abweichungen, siehe Bericht.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Read again: %n mailbox(es), all as written.</source>
        <translation>
            <numerusform>Nachgelesen: %n Postfach, wie geschrieben.</numerusform>
            <numerusform>Nachgelesen: %n Postfächer, alle wie geschrieben.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SaveAsDlg</name>
    <message>
        <source>Velmora Mail Converter</source>
        <translation>Velmora Mail Converter</translation>
    </message>
    <message>
        <source>Apple Mail</source>
        <translation>Apple Mail</translation>
    </message>
    <message>
        <source>Outlook 2011</source>
        <translation>Outlook 2011</translation>
    </message>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>RadioButton</source>
        <translation>RadioButton</translation>
    </message>
    <message>
        <source>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-size:13pt;&quot;&gt;Select mail client that you will be using after mailbox conversion.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</source>
        <translation>&lt;html&gt;&lt;head/&gt;&lt;body&gt;&lt;p&gt;&lt;span style=&quot; font-size:13pt;&quot;&gt;Wählen Sie das Mailprogramm, das Sie danach benutzen.&lt;/span&gt;&lt;/p&gt;&lt;/body&gt;&lt;/html&gt;</translation>
    </message>
    <message>
        <source>Exact copies</source>
        <translation>Genaue Kopien</translation>
    </message>
    <message>
        <source>Keeps every byte of every message: accents, dates, attachments and first lines too. Without it, the mail is written in the fixed form, which changes some of them.</source>
        <translation>Behält jedes Byte jeder Nachricht, auch Umlaute, Datum, Anhänge und erste Zeilen. Sonst werden die Nachrichten in der festen Form geschrieben, die manches davon verändert.</translation>
    </message>
</context>
</TS>
