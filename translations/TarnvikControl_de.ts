<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de" sourcelanguage="en">
<context>
    <name>CAppTranslation</name>
    <message>
        <source>en</source>
        <extracomment>The menu&apos;s entry for English.</extracomment>
        <translation>English</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Close indication</source>
        <extracomment>Title of the question before the program ends.</extracomment>
        <translation>Programm beenden</translation>
    </message>
    <message>
        <source>Do you want also to stop the running record?</source>
        <translation>Soll auch die laufende Aufzeichnung beendet werden?</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Fehler</translation>
    </message>
    <message>
        <source>No &apos;record path&apos; in configuration file found!</source>
        <translation>Kein Aufzeichnungspfad in der Konfigurationsdatei gefunden!</translation>
    </message>
    <message>
        <source>&apos;record path&apos; does not exists
&lt;%1&gt;</source>
        <translation>Der Aufzeichnungspfad existiert nicht
&lt;%1&gt;</translation>
    </message>
    <message>
        <source>Failed to create link on desktop!
%1</source>
        <translation>Die Verknüpfung auf dem Desktop konnte nicht erstellt werden!
%1</translation>
    </message>
    <message>
        <source>Drawer does not exists!
%1</source>
        <translation>Der Ordner existiert nicht!
%1</translation>
    </message>
    <message>
        <source>%1 V%2</source>
        <translation>%1 V%2</translation>
    </message>
    <message>
        <source> (technical preview </source>
        <extracomment>The date of the build and &quot;)&quot; follow.</extracomment>
        <translation> (technische Vorschau </translation>
    </message>
    <message>
        <source>&lt;x64 version&gt;
</source>
        <translation>&lt;x64-Version&gt;
</translation>
    </message>
    <message>
        <source>
(C) %1</source>
        <translation>
(C) %1</translation>
    </message>
    <message>
        <source>Tarnvik</source>
        <extracomment>The beginning of the user guide&apos;s file name.</extracomment>
        <translation>Tarnvik</translation>
    </message>
    <message>
        <source>File Error</source>
        <translation>Dateifehler</translation>
    </message>
    <message>
        <source>Can not open user guide!</source>
        <translation>Das Benutzerhandbuch kann nicht geöffnet werden!</translation>
    </message>
    <message>
        <source>File</source>
        <translation>Datei</translation>
    </message>
    <message>
        <source>Open record file folder</source>
        <translation>Aufzeichnungsordner öffnen</translation>
    </message>
    <message>
        <source>Open drawer with record files</source>
        <translation>Ordner mit den Aufzeichnungsdateien öffnen</translation>
    </message>
    <message>
        <source>Create record file folder link on Desktop</source>
        <translation>Desktop-Verknüpfung zum Aufzeichnungsordner erstellen</translation>
    </message>
    <message>
        <source>Create symblic link on desktop to record files drawer</source>
        <translation>Auf dem Desktop eine Verknüpfung zum Ordner mit den Aufzeichnungsdateien erstellen</translation>
    </message>
    <message>
        <source>Open settings folder...</source>
        <translation>Einstellungsordner öffnen...</translation>
    </message>
    <message>
        <source>Open drawer with settings</source>
        <translation>Ordner mit den Einstellungen öffnen</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Ausblenden</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Beenden</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>Abgleich</translation>
    </message>
    <message>
        <source>Show...</source>
        <translation>Anzeigen...</translation>
    </message>
    <message>
        <source>Show alignement table for SDRs</source>
        <translation>Abgleichtabellen der SDR-Empfänger anzeigen</translation>
    </message>
    <message>
        <source>View</source>
        <translation>Ansicht</translation>
    </message>
    <message>
        <source>Save Windows</source>
        <translation>Fensteranordnung speichern</translation>
    </message>
    <message>
        <source>Save size and state of windows</source>
        <translation>Größe und Zustand der Fenster speichern</translation>
    </message>
    <message>
        <source>Restore Windows</source>
        <translation>Fensteranordnung wiederherstellen</translation>
    </message>
    <message>
        <source>Restore size and state of windows</source>
        <translation>Größe und Zustand der Fenster wiederherstellen</translation>
    </message>
    <message>
        <source>Hide when close</source>
        <extracomment>Checked: the close button hides the window in the tray.</extracomment>
        <translation>Beim Schließen ausblenden</translation>
    </message>
    <message>
        <source>Close button minimized into tray</source>
        <translation>Die Schaltfläche zum Schließen minimiert in den Infobereich</translation>
    </message>
    <message>
        <source>Start with hidden GUI</source>
        <translation>Ausgeblendet starten</translation>
    </message>
    <message>
        <source>Start minimized into tray</source>
        <translation>Minimiert im Infobereich starten</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Sprache</translation>
    </message>
    <message>
        <source>Open User Guide</source>
        <translation>Benutzerhandbuch öffnen</translation>
    </message>
    <message>
        <source>About Qt...</source>
        <translation>Über Qt...</translation>
    </message>
    <message>
        <source>About %1...</source>
        <translation>Über %1...</translation>
    </message>
    <message>
        <source>About...</source>
        <translation>Über...</translation>
    </message>
    <message>
        <source>View in default style</source>
        <translation>Ansicht im Standardstil</translation>
    </message>
    <message>
        <source>Default windows style for GUI</source>
        <translation>Standardstil des Systems für die Oberfläche</translation>
    </message>
    <message>
        <source>View in light Fusion style</source>
        <translation>Ansicht im hellen Fusion-Stil</translation>
    </message>
    <message>
        <source>Light Fusion style for GUI</source>
        <translation>Heller Fusion-Stil für die Oberfläche</translation>
    </message>
    <message>
        <source>View in dark Fusion style</source>
        <translation>Ansicht im dunklen Fusion-Stil</translation>
    </message>
    <message>
        <source>Dark Fusion style for GUI</source>
        <translation>Dunkler Fusion-Stil für die Oberfläche</translation>
    </message>
    <message>
        <source>View in light Windows 11 style</source>
        <translation>Ansicht im hellen Windows-11-Stil</translation>
    </message>
    <message>
        <source>Light Windows 11 style for GUI</source>
        <translation>Heller Windows-11-Stil für die Oberfläche</translation>
    </message>
    <message>
        <source>View in dark Windows 11 style</source>
        <translation>Ansicht im dunklen Windows-11-Stil</translation>
    </message>
    <message>
        <source>Dark Windows 11 style for GUI</source>
        <translation>Dunkler Windows-11-Stil für die Oberfläche</translation>
    </message>
    <message>
        <source>Program information</source>
        <translation>Programminformationen</translation>
    </message>
    <message>
        <source>Hide GUI into tray</source>
        <translation>Ausgeblendet im Infobereich</translation>
    </message>
    <message>
        <source>With open GUI</source>
        <translation>Mit geöffnetem Fenster</translation>
    </message>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>               : %1
</source>
        <extracomment>The colon stands in column 21: as many blanks as the label &quot;Start&quot; leaves.</extracomment>
        <translation>               : %1
</translation>
    </message>
    <message>
        <source>TarnvikRecord</source>
        <translation>TarnvikRecord</translation>
    </message>
    <message>
        <source>Program status</source>
        <translation>Programmstatus</translation>
    </message>
    <message>
        <source>      : </source>
        <extracomment>The colon stands in column 21: as many blanks as the label &quot;Program status&quot; leaves.</extracomment>
        <translation>      : </translation>
    </message>
    <message>
        <source>Running</source>
        <translation>Läuft</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Gestoppt</translation>
    </message>
    <message>
        <source>
</source>
        <translation>
</translation>
    </message>
    <message>
        <source>
                      </source>
        <extracomment>22 blanks: every line of a message starts under its first letter.</extracomment>
        <translation>
                      </translation>
    </message>
    <message>
        <source>Last message</source>
        <translation>Letzte Meldung</translation>
    </message>
    <message>
        <source>        : %1
</source>
        <extracomment>The colon stands in column 21: as many blanks as the label &quot;Last message&quot; leaves.</extracomment>
        <translation>      : %1
</translation>
    </message>
    <message>
        <source>Mi&amp;nimize</source>
        <translation>Mi&amp;nimieren</translation>
    </message>
    <message>
        <source>Ma&amp;ximize</source>
        <translation>Ma&amp;ximieren</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
</context>
<context>
    <name>QDlgAlignmentCfg</name>
    <message>
        <source>Ok</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Gain out of range</source>
        <translation>Verstärkung außerhalb des gültigen Bereichs</translation>
    </message>
    <message>
        <source>Frequency out of range</source>
        <translation>Frequenz außerhalb des gültigen Bereichs</translation>
    </message>
    <message>
        <source>Sample frequency out of range</source>
        <translation>Abtastfrequenz außerhalb des gültigen Bereichs</translation>
    </message>
    <message>
        <source>No align table for device</source>
        <translation>Keine Abgleichtabelle für das Gerät</translation>
    </message>
    <message>
        <source>No data-set for selected path</source>
        <extracomment>A receive path of the device, not of a file.</extracomment>
        <translation>Kein Datensatz für den gewählten Empfangspfad</translation>
    </message>
    <message>
        <source>Array size to small</source>
        <translation>Feldgröße zu klein</translation>
    </message>
    <message>
        <source>Dataset-Pointer is Null</source>
        <translation>Zeiger auf den Datensatz ist null</translation>
    </message>
    <message>
        <source>DataEntry-Pointer is Null</source>
        <translation>Zeiger auf den Dateneintrag ist null</translation>
    </message>
    <message>
        <source>File Error</source>
        <translation>Dateifehler</translation>
    </message>
    <message>
        <source>Parametername Mismatch</source>
        <translation>Parametername stimmt nicht überein</translation>
    </message>
    <message>
        <source>Internal Error</source>
        <translation>Interner Fehler</translation>
    </message>
    <message>
        <source>Sdrtype Missmatched</source>
        <translation>SDR-Typ stimmt nicht überein</translation>
    </message>
    <message>
        <source>Version Missmatched</source>
        <translation>Version stimmt nicht überein</translation>
    </message>
    <message>
        <source>File CRC check failed</source>
        <translation>CRC-Prüfung der Datei fehlgeschlagen</translation>
    </message>
    <message>
        <source>Dataset has no Power-Levels</source>
        <translation>Datensatz enthält keine Leistungspegel</translation>
    </message>
    <message>
        <source>Dataset has no Noise-Levels</source>
        <translation>Datensatz enthält keine Rauschpegel</translation>
    </message>
    <message>
        <source>AlignTable has the wrong DataType</source>
        <translation>Abgleichtabelle hat den falschen Datentyp</translation>
    </message>
    <message>
        <source>AlignTable has the wrong SdrType</source>
        <translation>Abgleichtabelle hat den falschen SDR-Typ</translation>
    </message>
    <message>
        <source>Dataset has the wrong DataType</source>
        <translation>Datensatz hat den falschen Datentyp</translation>
    </message>
    <message>
        <source>Dataset has the wrong SdrType</source>
        <translation>Datensatz hat den falschen SDR-Typ</translation>
    </message>
    <message>
        <source>Cant load CSV-File completly, the CSV-File is to big</source>
        <translation>CSV-Datei kann nicht vollständig geladen werden, sie ist zu groß</translation>
    </message>
    <message>
        <source>Aligntable-List is emptpy, nothing to save</source>
        <translation>Liste der Abgleichtabellen ist leer, es gibt nichts zu speichern</translation>
    </message>
    <message>
        <source>Error &lt;%1&gt;</source>
        <translation>Fehler &lt;%1&gt;</translation>
    </message>
    <message>
        <source>Aligned at: %1 (New in data-base)</source>
        <translation>Abgeglichen am: %1 (neu in der Datenbank)</translation>
    </message>
    <message>
        <source>Aligned at: %1</source>
        <translation>Abgeglichen am: %1</translation>
    </message>
    <message>
        <source>Aligned at: %1 (Old data from %2 present)</source>
        <extracomment>The second date is that of an imported, older version.</extracomment>
        <translation>Abgeglichen am: %1 (ältere Daten vom %2 vorhanden)</translation>
    </message>
    <message>
        <source>Aligned at: %1 (Update from %2 present)</source>
        <translation>Abgeglichen am: %1 (Aktualisierung vom %2 vorhanden)</translation>
    </message>
    <message>
        <source>Out of memory</source>
        <translation>Nicht genügend Arbeitsspeicher</translation>
    </message>
    <message>
        <source>Alignment data for SDR:</source>
        <translation>Abgleichdaten der SDR-Empfänger:</translation>
    </message>
    <message>
        <source>SDR</source>
        <translation>SDR</translation>
    </message>
    <message>
        <source>Date of alignment</source>
        <translation>Abgleichdatum</translation>
    </message>
    <message>
        <source>Reset</source>
        <extracomment>Back to what the drivers&apos; files hold.</extracomment>
        <translation>Zurücksetzen</translation>
    </message>
    <message>
        <source>Loads default</source>
        <translation>Lädt den Ausgangszustand</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Clear full list</source>
        <translation>Leert die gesamte Liste</translation>
    </message>
    <message>
        <source>Import...</source>
        <translation>Importieren...</translation>
    </message>
    <message>
        <source>Imports data</source>
        <translation>Importiert Daten</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Speichern...</translation>
    </message>
    <message>
        <source>Saves data</source>
        <translation>Speichert Daten</translation>
    </message>
    <message>
        <source>Quit</source>
        <extracomment>Closes the dialog, not the program.</extracomment>
        <translation>Schließen</translation>
    </message>
    <message>
        <source>Closes the dialog box</source>
        <translation>Schließt das Dialogfenster</translation>
    </message>
    <message>
        <source>Choose alignment file for importing</source>
        <translation>Abgleichdatei importieren</translation>
    </message>
    <message>
        <source>AlignFile (*.ad);;All (*.*)</source>
        <translation>Abgleichdateien (*.ad);;Alle (*.*)</translation>
    </message>
    <message>
        <source>Importing alignment data</source>
        <translation>Abgleichdaten importieren</translation>
    </message>
    <message>
        <source>Error while loding:
%1</source>
        <translation>Fehler beim Laden:
%1</translation>
    </message>
    <message>
        <source>Export alignment data</source>
        <translation>Abgleichdaten exportieren</translation>
    </message>
    <message>
        <source>Error while exporting:
%1</source>
        <translation>Fehler beim Exportieren:
%1</translation>
    </message>
    <message>
        <source>Update %1 alignment.</source>
        <translation>%1-Abgleich aktualisieren.</translation>
    </message>
    <message>
        <source>No changes for the %1 driver.
Do you still want to save?</source>
        <translation>Keine Änderungen für den Treiber %1.
Trotzdem speichern?</translation>
    </message>
    <message>
        <source>Choose alignment file for exporting</source>
        <translation>Abgleichdatei exportieren</translation>
    </message>
    <message>
        <source>The table of %1 %2 has changed since the list was read.
Choose Reset and pick again.</source>
        <extracomment>The driver, and the hardware id of a device.</extracomment>
        <translation>Die Tabelle von %1 %2 hat sich geändert, seit die Liste gelesen wurde.
Wählen Sie Zurücksetzen und treffen Sie die Auswahl neu.</translation>
    </message>
    <message>
        <source>The folder can not be made:
%1</source>
        <translation>Der Ordner kann nicht angelegt werden:
%1</translation>
    </message>
    <message>
        <source>%1, checked</source>
        <extracomment>Spoken by screen readers: a table&apos;s hardware id and its check mark.</extracomment>
        <translation>%1, angehakt</translation>
    </message>
    <message>
        <source>%1, not checked</source>
        <translation>%1, nicht angehakt</translation>
    </message>
</context>
<context>
    <name>TarnvikAlign</name>
    <message>
        <source>Usage: %1 COMMAND [options] ...</source>
        <translation>Aufruf: %1 BEFEHL [Optionen] ...</translation>
    </message>
    <message>
        <source>More on a command: %1 COMMAND --help</source>
        <translation>Mehr zu einem Befehl: %1 BEFEHL --help</translation>
    </message>
    <message>
        <source>Example: %1 %2</source>
        <translation>Beispiel: %1 %2</translation>
    </message>
    <message>
        <source>see &quot;%1 %2--help&quot;</source>
        <translation>siehe „%1 %2--help“</translation>
    </message>
    <message>
        <source>Shows this help.</source>
        <translation>Zeigt diese Hilfe.</translation>
    </message>
    <message>
        <source>which command?</source>
        <translation>welcher Befehl?</translation>
    </message>
    <message>
        <source>there is no command &quot;%1&quot;</source>
        <translation>es gibt keinen Befehl „%1“</translation>
    </message>
    <message>
        <source>Prints JSON.</source>
        <translation>Gibt JSON aus.</translation>
    </message>
    <message>
        <source>A folder stands for the drivers&apos; files in it; without argument: the recorder&apos;s folder; &quot;-&quot;: standard input.</source>
        <translation>Ein Ordner steht für die Dateien der Treiber darin; ohne Angabe: der Ordner des Rekorders; „-“: Standardeingabe.</translation>
    </message>
    <message>
        <source>Lists the tables of alignment files.</source>
        <translation>Listet die Tabellen von Abgleichdateien auf.</translation>
    </message>
    <message>
        <source>standard output cannot be written; is the disk full, or the reader gone?</source>
        <translation>die Standardausgabe lässt sich nicht schreiben; ist der Datenträger voll oder der Leser fort?</translation>
    </message>
    <message>
        <source>this is no alignment file of version 5, or it is damaged</source>
        <translation>dies ist keine Abgleichdatei der Version 5, oder sie ist beschädigt</translation>
    </message>
    <message>
        <source>the file ends too early; take it from its source again</source>
        <translation>die Datei endet zu früh; besorgen Sie sie erneut aus ihrer Quelle</translation>
    </message>
    <message>
        <source>a length or a count is beyond what a table holds; take the file from its source again</source>
        <translation>eine Länge oder Anzahl ist größer, als eine Tabelle fasst; besorgen Sie die Datei erneut aus ihrer Quelle</translation>
    </message>
    <message>
        <source>the file is damaged; take it from its source again</source>
        <translation>die Datei ist beschädigt; besorgen Sie sie erneut aus ihrer Quelle</translation>
    </message>
    <message>
        <source>there is no such file; check the name</source>
        <translation>eine solche Datei gibt es nicht; prüfen Sie den Namen</translation>
    </message>
    <message>
        <source>the file cannot be opened; check that you may read it</source>
        <translation>die Datei lässt sich nicht öffnen; prüfen Sie, ob Sie sie lesen dürfen</translation>
    </message>
    <message>
        <source>header, byte 0</source>
        <translation>Kopf, Byte 0</translation>
    </message>
    <message>
        <source>table %1, byte %2</source>
        <translation>Tabelle %1, Byte %2</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>Standardeingabe</translation>
    </message>
    <message>
        <source>its inner version is %1</source>
        <translation>ihre innere Version ist %1</translation>
    </message>
    <message>
        <source>it states room for %1 data sets, its receiver type has %2</source>
        <translation>sie gibt Platz für %1 Datensätze an, ihr Empfängertyp hat %2</translation>
    </message>
    <message>
        <source>its receiver type, %1, is unknown</source>
        <translation>ihr Empfängertyp, %1, ist unbekannt</translation>
    </message>
    <message>
        <source>the hardware id of table %1 is the beginning of that of table %2</source>
        <translation>die Hardware-Kennung von Tabelle %1 ist der Anfang der von Tabelle %2</translation>
    </message>
    <message>
        <source>bytes behind the last table: %1</source>
        <translation>Bytes hinter der letzten Tabelle: %1</translation>
    </message>
    <message>
        <source>table %1: %2</source>
        <translation>Tabelle %1: %2</translation>
    </message>
    <message>
        <source>%1: warning: %2</source>
        <translation>%1: Warnung: %2</translation>
    </message>
    <message>
        <source>warnings: %1</source>
        <translation>Warnungen: %1</translation>
    </message>
    <message>
        <source>Reads alignment files to the end and says what is wrong with them.</source>
        <translation>Liest Abgleichdateien bis zum Ende und sagt, was an ihnen nicht stimmt.</translation>
    </message>
    <message>
        <source>An alignment file; &quot;-&quot;: standard input.</source>
        <translation>Eine Abgleichdatei; „-“: Standardeingabe.</translation>
    </message>
    <message>
        <source>one file is wanted; see &quot;--help&quot;</source>
        <translation>es fehlt die eine Datei; siehe „--help“</translation>
    </message>
    <message>
        <source>Prints all that an alignment file holds, as JSON.</source>
        <translation>Gibt alles, was eine Abgleichdatei enthält, als JSON aus.</translation>
    </message>
    <message>
        <source>Only the table of this whole hardware id; may stand several times.</source>
        <translation>Nur die Tabelle mit genau dieser Hardware-Kennung; darf mehrmals stehen.</translation>
    </message>
    <message>
        <source>%1: there is no table &quot;%2&quot;; &quot;list&quot; shows the ids</source>
        <translation>%1: es gibt keine Tabelle „%2“; „list“ zeigt die Kennungen</translation>
    </message>
    <message>
        <source>A document as &quot;export&quot; prints it; &quot;-&quot;: standard input.</source>
        <translation>Ein Dokument, wie „export“ es ausgibt; „-“: Standardeingabe.</translation>
    </message>
    <message>
        <source>the file cannot be read; check name and rights</source>
        <translation>die Datei lässt sich nicht lesen; prüfen Sie Namen und Rechte</translation>
    </message>
    <message>
        <source>sdrType: another one than in the documents before; a file has one type</source>
        <translation>sdrType: ein anderer als in den Dokumenten davor; eine Datei hat nur einen Typ</translation>
    </message>
    <message>
        <source>documents and --output are wanted; see &quot;--help&quot;</source>
        <translation>es fehlen Dokumente oder --output; siehe „--help“</translation>
    </message>
    <message>
        <source>Makes an alignment file of JSON.</source>
        <translation>Macht aus JSON eine Abgleichdatei.</translation>
    </message>
    <message>
        <source>a list is wanted</source>
        <translation>hier gehört eine Liste hin</translation>
    </message>
    <message>
        <source>more than %1 %2</source>
        <translation>mehr als %1 %2</translation>
    </message>
    <message>
        <source>a list of %1 is wanted</source>
        <translation>hier gehört eine Liste von %1 hin</translation>
    </message>
    <message>
        <source>hexadecimal digits are wanted, two for each byte</source>
        <translation>hier gehören hexadezimale Ziffern hin, zwei für jedes Byte</translation>
    </message>
    <message>
        <source>more than %1 bytes</source>
        <translation>mehr als %1 Bytes</translation>
    </message>
    <message>
        <source>a text is wanted</source>
        <translation>hier gehört ein Text hin</translation>
    </message>
    <message>
        <source>a number from 0 to %1 in quotes is wanted</source>
        <translation>hier gehört eine Zahl von 0 bis %1 in Anführungszeichen hin</translation>
    </message>
    <message>
        <source>a number from 0 to %1 is wanted</source>
        <translation>hier gehört eine Zahl von 0 bis %1 hin</translation>
    </message>
    <message>
        <source>an object is wanted</source>
        <translation>hier gehört ein Objekt hin</translation>
    </message>
    <message>
        <source>there is no such member</source>
        <translation>ein solches Feld gibt es nicht</translation>
    </message>
    <message>
        <source>the file cannot be replaced</source>
        <translation>die Datei lässt sich nicht ersetzen</translation>
    </message>
    <message>
        <source>no temporary file can be made beside it</source>
        <translation>daneben lässt sich keine vorläufige Datei anlegen</translation>
    </message>
    <message>
        <source>the temporary file beside it cannot be written</source>
        <translation>die vorläufige Datei daneben lässt sich nicht schreiben</translation>
    </message>
    <message>
        <source>the temporary file does not reach the disk</source>
        <translation>die vorläufige Datei kommt nicht auf den Datenträger</translation>
    </message>
    <message>
        <source>the temporary file cannot take its place</source>
        <translation>die vorläufige Datei kann nicht an ihre Stelle treten</translation>
    </message>
    <message>
        <source>it is written, but its folder does not reach the disk</source>
        <translation>sie ist geschrieben, aber ihr Ordner kommt nicht auf den Datenträger</translation>
    </message>
    <message>
        <source>Writes this file; &quot;-&quot;: standard output.</source>
        <translation>Schreibt diese Datei; „-“: Standardausgabe.</translation>
    </message>
    <message>
        <source>sample rate %1 (attribute %2), gain entries: %3</source>
        <translation>Abtastrate %1 (Attribut %2), Verstärkungseinträge: %3</translation>
    </message>
    <message>
        <source>frequency %1 (attribute %2)</source>
        <translation>Frequenz %1 (Attribut %2)</translation>
    </message>
    <message>
        <source>data set %1: attributes %2 %3 %4 %5, words %6 %7, frequencies: %8</source>
        <translation>Datensatz %1: Attribute %2 %3 %4 %5, Wörter %6 %7, Frequenzen: %8</translation>
    </message>
    <message>
        <source>%1, aligned at %2, data sets: %3 of %4</source>
        <translation>%1, abgeglichen am %2, Datensätze: %3 von %4</translation>
    </message>
    <message>
        <source>Shows the whole contents of an alignment file.</source>
        <translation>Zeigt den ganzen Inhalt einer Abgleichdatei.</translation>
    </message>
    <message>
        <source>no JSON, at byte %1: %2</source>
        <translation>kein JSON, bei Byte %1: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is wanted</source>
        <translation>hier gehört „%1“ hin</translation>
    </message>
    <message>
        <source>this program knows version %1</source>
        <translation>dieses Programm kennt Version %1</translation>
    </message>
    <message>
        <source>gain entries</source>
        <translation>Verstärkungseinträge</translation>
    </message>
    <message>
        <source>sample-rate points</source>
        <translation>Abtastratenpunkte</translation>
    </message>
    <message>
        <source>frequency points</source>
        <translation>Frequenzpunkte</translation>
    </message>
    <message>
        <source>data sets</source>
        <translation>Datensätze</translation>
    </message>
    <message>
        <source>tables</source>
        <translation>Tabellen</translation>
    </message>
    <message>
        <source>it holds no table; the window refuses to read it</source>
        <translation>sie enthält keine Tabelle; das Fenster weigert sich, sie zu lesen</translation>
    </message>
    <message>
        <source>A file; a folder stands for the drivers&apos; files in it.</source>
        <translation>Eine Datei; ein Ordner steht für die Dateien der Treiber darin.</translation>
    </message>
    <message>
        <source>same date, other content: %1 (%2)</source>
        <translation>gleiches Datum, anderer Inhalt: %1 (%2)</translation>
    </message>
    <message>
        <source>only in %1: %2 (%3)</source>
        <translation>nur in %1: %2 (%3)</translation>
    </message>
    <message>
        <source>newer in %1: %2 (%3; %4)</source>
        <translation>neuer in %1: %2 (%3; %4)</translation>
    </message>
    <message>
        <source>two files are wanted; see &quot;--help&quot;</source>
        <translation>zwei Dateien werden gebraucht; siehe „--help“</translation>
    </message>
    <message>
        <source>Says in which tables two files differ.</source>
        <translation>Sagt, in welchen Tabellen sich zwei Dateien unterscheiden.</translation>
    </message>
    <message>
        <source>Takes older versions of tables, too.</source>
        <translation>Übernimmt auch ältere Fassungen von Tabellen.</translation>
    </message>
    <message>
        <source>Takes newer versions of tables only, no tables that TARGET lacks.</source>
        <translation>Übernimmt nur neuere Fassungen von Tabellen, keine Tabellen, die TARGET fehlen.</translation>
    </message>
    <message>
        <source>Says what would be done, and writes nothing.</source>
        <translation>Sagt, was geschähe, und schreibt nichts.</translation>
    </message>
    <message>
        <source>The file that takes the tables; made when it is not there.</source>
        <translation>Die Datei, die die Tabellen übernimmt; sie wird angelegt, wenn es sie nicht gibt.</translation>
    </message>
    <message>
        <source>The files that the tables come from.</source>
        <translation>Die Dateien, aus denen die Tabellen kommen.</translation>
    </message>
    <message>
        <source>a target and sources are wanted; see &quot;--help&quot;</source>
        <translation>ein Ziel und Quellen werden gebraucht; siehe „--help“</translation>
    </message>
    <message>
        <source>files of a merge are read more than once; name files, not &quot;-&quot;</source>
        <translation>Dateien werden hier mehr als einmal gelesen; nennen Sie Dateien, nicht „-“</translation>
    </message>
    <message>
        <source>%1: this source is the target itself</source>
        <translation>%1: diese Quelle ist das Ziel selbst</translation>
    </message>
    <message>
        <source>%1: there is no such folder; check the name</source>
        <translation>%1: einen solchen Ordner gibt es nicht; prüfen Sie den Namen</translation>
    </message>
    <message>
        <source>%1: its tables are for %2, those of %3 for %4; a file has one receiver type</source>
        <translation>%1: seine Tabellen sind für %2, die von %3 für %4; eine Datei hat einen Empfängertyp</translation>
    </message>
    <message>
        <source>not chosen by --id</source>
        <translation>nicht mit --id gewählt</translation>
    </message>
    <message>
        <source>taken</source>
        <translation>übernommen</translation>
    </message>
    <message>
        <source>not taken</source>
        <translation>bleibt</translation>
    </message>
    <message>
        <source>new: %1, of %2</source>
        <translation>neu: %1, aus %2</translation>
    </message>
    <message>
        <source>newer: %1, of %2; was %3</source>
        <translation>neuer: %1, aus %2; war %3</translation>
    </message>
    <message>
        <source>older: %1, of %2; was %3</source>
        <translation>älter: %1, aus %2; war %3</translation>
    </message>
    <message>
        <source>no source has another date</source>
        <translation>keine Quelle hat ein anderes Datum</translation>
    </message>
    <message>
        <source>tables taken: %1</source>
        <translation>übernommene Tabellen: %1</translation>
    </message>
    <message>
        <source>nothing is written</source>
        <translation>nichts wird geschrieben</translation>
    </message>
    <message>
        <source>--all and --newer exclude each other</source>
        <translation>--all und --newer schließen einander aus</translation>
    </message>
    <message>
        <source>Takes new and newer tables of other files over into a file.</source>
        <translation>Übernimmt neue und neuere Tabellen anderer Dateien in eine Datei.</translation>
    </message>
    <message>
        <source>%1: this file is read; name another --output</source>
        <translation>%1: diese Datei wird gelesen; nennen Sie ein anderes --output</translation>
    </message>
    <message>
        <source>An alignment file.</source>
        <translation>Eine Abgleichdatei.</translation>
    </message>
    <message>
        <source>%1: no table would be left, and a file holds one at least; delete the file instead</source>
        <translation>%1: keine Tabelle bliebe übrig, und eine Datei enthält mindestens eine; löschen Sie stattdessen die Datei</translation>
    </message>
    <message>
        <source>one file, and --id, are wanted; see &quot;--help&quot;</source>
        <translation>eine Datei und --id werden gebraucht; siehe „--help“</translation>
    </message>
    <message>
        <source>Takes tables out of a file.</source>
        <translation>Nimmt Tabellen aus einer Datei heraus.</translation>
    </message>
    <message>
        <source>no file %1 is in this folder; name files</source>
        <translation>in diesem Ordner liegt keine Datei %1; nennen Sie Dateien</translation>
    </message>
    <message>
        <source>ok, 1 table</source>
        <translation>in Ordnung, 1 Tabelle</translation>
    </message>
    <message>
        <source>ok, %1 tables</source>
        <translation>in Ordnung, %1 Tabellen</translation>
    </message>
    <message>
        <source>table %1 has another inner version than 5; only tables of version 5 are exported</source>
        <translation>Tabelle %1 hat eine andere innere Version als 5; nur Tabellen der Version 5 werden exportiert</translation>
    </message>
    <message>
        <source>this is no text of UTF-8 without NUL; the member %1 takes all bytes</source>
        <translation>dies ist kein Text in UTF-8 ohne NUL; das Element %1 nimmt alle Bytes auf</translation>
    </message>
    <message>
        <source>--output wants a file</source>
        <translation>--output braucht eine Datei</translation>
    </message>
    <message>
        <source>%1: %2; nothing is written; &quot;verify&quot; tells more of the files</source>
        <translation>%1: %2; nichts wird geschrieben; „verify“ sagt mehr über die Dateien</translation>
    </message>
    <message>
        <source>somebody else is writing the file; try again</source>
        <translation>jemand anderes schreibt die Datei gerade; versuchen Sie es erneut</translation>
    </message>
    <message>
        <source>another one than the document&apos;s; a file has one type</source>
        <translation>ein anderer als der des Dokuments; eine Datei hat einen Typ</translation>
    </message>
    <message>
        <source>bytes follow the end of its hardware id</source>
        <translation>hinter dem Ende ihrer Hardware-Kennung folgen Bytes</translation>
    </message>
    <message>
        <source>tables %1 and %2 have the same hardware id</source>
        <translation>die Tabellen %1 und %2 haben dieselbe Hardware-Kennung</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Error an instance is already running...</source>
        <translation>Fehler: Das Programm läuft bereits...</translation>
    </message>
    <message>
        <source>Error...</source>
        <translation>Fehler...</translation>
    </message>
    <message>
        <source>Error %1</source>
        <translation>Fehler %1</translation>
    </message>
</context>
</TS>
