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
        <translation>Velmora Mail Converter sucht von selbst im Internet nach neuen Aktualisierungen. Dazu ist eine Internetverbindung nötig.</translation>
    </message>
    <message>
        <source>Check for Updates now</source>
        <translation>Jetzt nach Aktualisierungen suchen</translation>
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
</TS>
