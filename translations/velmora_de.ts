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
    <name>PreferencesDialog</name>
    <message>
        <source>No updates available. Your software has latest updates installed.</source>
        <translation>Es sind keine Aktualisierungen verfügbar. Die neuesten Aktualisierungen sind installiert.</translation>
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
        <translation>&amp;Anfrage senden</translation>
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
The old bundle can&apos;t be removed: </source>
        <translation>
Das alte Bündel kann nicht entfernt werden: </translation>
    </message>
    <message>
        <source>Current scan information will be discarded if you select another mailbox. Do you want to continue?</source>
        <translation>Wenn Sie ein anderes Postfach wählen, geht das eingelesene verloren. Fortfahren?</translation>
    </message>
    <message>
        <source>not listed, it can&apos;t be opened: </source>
        <translation>nicht aufgeführt, kann nicht geöffnet werden: </translation>
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
Vorgang abgebrochen. Erfolgreich gesichert unter </translation>
    </message>
    <message>
        <source>
Process Aborted.</source>
        <translation>
Vorgang abgebrochen.</translation>
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
</context>
</TS>
