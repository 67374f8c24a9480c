<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>CAppTranslation</name>
    <message>
        <source>en</source>
        <extracomment>The menu&apos;s entry for English.</extracomment>
        <translation>en</translation>
    </message>
</context>
<context>
    <name>CMainWindow</name>
    <message>
        <source>Close indication</source>
        <extracomment>Title of the question before the program ends.</extracomment>
        <translation>Close indication</translation>
    </message>
    <message>
        <source>Do you want also to stop the running record?</source>
        <translation>Do you want also to stop the running record?</translation>
    </message>
    <message>
        <source>Error</source>
        <translation>Error</translation>
    </message>
    <message>
        <source>No &apos;record path&apos; in configuration file found!</source>
        <translation>No &apos;record path&apos; in configuration file found!</translation>
    </message>
    <message>
        <source>&apos;record path&apos; does not exists
&lt;%1&gt;</source>
        <translation>&apos;record path&apos; does not exists
&lt;%1&gt;</translation>
    </message>
    <message>
        <source>Failed to create link on desktop!
%1</source>
        <translation>Failed to create link on desktop!
%1</translation>
    </message>
    <message>
        <source>Drawer does not exists!
%1</source>
        <translation>Drawer does not exists!
%1</translation>
    </message>
    <message>
        <source>%1 V%2</source>
        <translation>%1 V%2</translation>
    </message>
    <message>
        <source> (technical preview </source>
        <extracomment>The date of the build and &quot;)&quot; follow.</extracomment>
        <translation> (technical preview </translation>
    </message>
    <message>
        <source>&lt;x64 version&gt;
</source>
        <translation>&lt;x64 version&gt;
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
        <translation>File Error</translation>
    </message>
    <message>
        <source>Can not open user guide!</source>
        <translation>Can not open user guide!</translation>
    </message>
    <message>
        <source>File</source>
        <translation>File</translation>
    </message>
    <message>
        <source>Open record file folder</source>
        <translation>Open record file folder</translation>
    </message>
    <message>
        <source>Open drawer with record files</source>
        <translation>Open drawer with record files</translation>
    </message>
    <message>
        <source>Create record file folder link on Desktop</source>
        <translation>Create record file folder link on Desktop</translation>
    </message>
    <message>
        <source>Create symblic link on desktop to record files drawer</source>
        <translation>Create symblic link on desktop to record files drawer</translation>
    </message>
    <message>
        <source>Open settings folder...</source>
        <translation>Open settings folder...</translation>
    </message>
    <message>
        <source>Open drawer with settings</source>
        <translation>Open drawer with settings</translation>
    </message>
    <message>
        <source>Hide</source>
        <translation>Hide</translation>
    </message>
    <message>
        <source>Quit</source>
        <translation>Quit</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>Alignment</translation>
    </message>
    <message>
        <source>Show...</source>
        <translation>Show...</translation>
    </message>
    <message>
        <source>Show alignement table for SDRs</source>
        <translation>Show alignement table for SDRs</translation>
    </message>
    <message>
        <source>View</source>
        <translation>View</translation>
    </message>
    <message>
        <source>Save Windows</source>
        <translation>Save Windows</translation>
    </message>
    <message>
        <source>Save size and state of windows</source>
        <translation>Save size and state of windows</translation>
    </message>
    <message>
        <source>Restore Windows</source>
        <translation>Restore Windows</translation>
    </message>
    <message>
        <source>Restore size and state of windows</source>
        <translation>Restore size and state of windows</translation>
    </message>
    <message>
        <source>Hide when close</source>
        <extracomment>Checked: the close button hides the window in the tray.</extracomment>
        <translation>Hide when close</translation>
    </message>
    <message>
        <source>Close button minimized into tray</source>
        <translation>Close button minimized into tray</translation>
    </message>
    <message>
        <source>Start with hidden GUI</source>
        <translation>Start with hidden GUI</translation>
    </message>
    <message>
        <source>Start minimized into tray</source>
        <translation>Start minimized into tray</translation>
    </message>
    <message>
        <source>Language</source>
        <translation>Language</translation>
    </message>
    <message>
        <source>Open User Guide</source>
        <translation>Open User Guide</translation>
    </message>
    <message>
        <source>About Qt...</source>
        <translation>About Qt...</translation>
    </message>
    <message>
        <source>About %1...</source>
        <translation>About %1...</translation>
    </message>
    <message>
        <source>About...</source>
        <translation>About...</translation>
    </message>
    <message>
        <source>View in default style</source>
        <translation>View in default style</translation>
    </message>
    <message>
        <source>Default windows style for GUI</source>
        <translation>Default windows style for GUI</translation>
    </message>
    <message>
        <source>View in light Fusion style</source>
        <translation>View in light Fusion style</translation>
    </message>
    <message>
        <source>Light Fusion style for GUI</source>
        <translation>Light Fusion style for GUI</translation>
    </message>
    <message>
        <source>View in dark Fusion style</source>
        <translation>View in dark Fusion style</translation>
    </message>
    <message>
        <source>Dark Fusion style for GUI</source>
        <translation>Dark Fusion style for GUI</translation>
    </message>
    <message>
        <source>View in light Windows 11 style</source>
        <translation>View in light Windows 11 style</translation>
    </message>
    <message>
        <source>Light Windows 11 style for GUI</source>
        <translation>Light Windows 11 style for GUI</translation>
    </message>
    <message>
        <source>View in dark Windows 11 style</source>
        <translation>View in dark Windows 11 style</translation>
    </message>
    <message>
        <source>Dark Windows 11 style for GUI</source>
        <translation>Dark Windows 11 style for GUI</translation>
    </message>
    <message>
        <source>Program information</source>
        <translation>Program information</translation>
    </message>
    <message>
        <source>Hide GUI into tray</source>
        <translation>Hide GUI into tray</translation>
    </message>
    <message>
        <source>With open GUI</source>
        <translation>With open GUI</translation>
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
        <translation>Program status</translation>
    </message>
    <message>
        <source>      : </source>
        <extracomment>The colon stands in column 21: as many blanks as the label &quot;Program status&quot; leaves.</extracomment>
        <translation>      : </translation>
    </message>
    <message>
        <source>Running</source>
        <translation>Running</translation>
    </message>
    <message>
        <source>Stopped</source>
        <translation>Stopped</translation>
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
        <translation>Last message</translation>
    </message>
    <message>
        <source>        : %1
</source>
        <extracomment>The colon stands in column 21: as many blanks as the label &quot;Last message&quot; leaves.</extracomment>
        <translation>        : %1
</translation>
    </message>
    <message>
        <source>Mi&amp;nimize</source>
        <translation>Mi&amp;nimize</translation>
    </message>
    <message>
        <source>Ma&amp;ximize</source>
        <translation>Ma&amp;ximize</translation>
    </message>
    <message>
        <source>&amp;Restore</source>
        <translation>&amp;Restore</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Quit</translation>
    </message>
</context>
<context>
    <name>QDlgAlignmentCfg</name>
    <message>
        <source>Ok</source>
        <translation>Ok</translation>
    </message>
    <message>
        <source>Gain out of range</source>
        <translation>Gain out of range</translation>
    </message>
    <message>
        <source>Frequency out of range</source>
        <translation>Frequency out of range</translation>
    </message>
    <message>
        <source>Sample frequency out of range</source>
        <translation>Sample frequency out of range</translation>
    </message>
    <message>
        <source>No align table for device</source>
        <translation>No align table for device</translation>
    </message>
    <message>
        <source>No data-set for selected path</source>
        <extracomment>A receive path of the device, not of a file.</extracomment>
        <translation>No data-set for selected path</translation>
    </message>
    <message>
        <source>Array size to small</source>
        <translation>Array size to small</translation>
    </message>
    <message>
        <source>Dataset-Pointer is Null</source>
        <translation>Dataset-Pointer is Null</translation>
    </message>
    <message>
        <source>DataEntry-Pointer is Null</source>
        <translation>DataEntry-Pointer is Null</translation>
    </message>
    <message>
        <source>File Error</source>
        <translation>File Error</translation>
    </message>
    <message>
        <source>Parametername Mismatch</source>
        <translation>Parametername Mismatch</translation>
    </message>
    <message>
        <source>Internal Error</source>
        <translation>Internal Error</translation>
    </message>
    <message>
        <source>Sdrtype Missmatched</source>
        <translation>Sdrtype Missmatched</translation>
    </message>
    <message>
        <source>Version Missmatched</source>
        <translation>Version Missmatched</translation>
    </message>
    <message>
        <source>File CRC check failed</source>
        <translation>File CRC check failed</translation>
    </message>
    <message>
        <source>Dataset has no Power-Levels</source>
        <translation>Dataset has no Power-Levels</translation>
    </message>
    <message>
        <source>Dataset has no Noise-Levels</source>
        <translation>Dataset has no Noise-Levels</translation>
    </message>
    <message>
        <source>AlignTable has the wrong DataType</source>
        <translation>AlignTable has the wrong DataType</translation>
    </message>
    <message>
        <source>AlignTable has the wrong SdrType</source>
        <translation>AlignTable has the wrong SdrType</translation>
    </message>
    <message>
        <source>Dataset has the wrong DataType</source>
        <translation>Dataset has the wrong DataType</translation>
    </message>
    <message>
        <source>Dataset has the wrong SdrType</source>
        <translation>Dataset has the wrong SdrType</translation>
    </message>
    <message>
        <source>Cant load CSV-File completly, the CSV-File is to big</source>
        <translation>Cant load CSV-File completly, the CSV-File is to big</translation>
    </message>
    <message>
        <source>Aligntable-List is emptpy, nothing to save</source>
        <translation>Aligntable-List is emptpy, nothing to save</translation>
    </message>
    <message>
        <source>Error &lt;%1&gt;</source>
        <translation>Error &lt;%1&gt;</translation>
    </message>
    <message>
        <source>Aligned at: %1 (New in data-base)</source>
        <translation>Aligned at: %1 (New in data-base)</translation>
    </message>
    <message>
        <source>Aligned at: %1</source>
        <translation>Aligned at: %1</translation>
    </message>
    <message>
        <source>Aligned at: %1 (Old data from %2 present)</source>
        <extracomment>The second date is that of an imported, older version.</extracomment>
        <translation>Aligned at: %1 (Old data from %2 present)</translation>
    </message>
    <message>
        <source>Aligned at: %1 (Update from %2 present)</source>
        <translation>Aligned at: %1 (Update from %2 present)</translation>
    </message>
    <message>
        <source>Out of memory</source>
        <translation>Out of memory</translation>
    </message>
    <message>
        <source>Alignment data for SDR:</source>
        <translation>Alignment data for SDR:</translation>
    </message>
    <message>
        <source>SDR</source>
        <translation>SDR</translation>
    </message>
    <message>
        <source>Date of alignment</source>
        <translation>Date of alignment</translation>
    </message>
    <message>
        <source>Reset</source>
        <extracomment>Back to what the drivers&apos; files hold.</extracomment>
        <translation>Reset</translation>
    </message>
    <message>
        <source>Loads default</source>
        <translation>Loads default</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Clear full list</source>
        <translation>Clear full list</translation>
    </message>
    <message>
        <source>Import...</source>
        <translation>Import...</translation>
    </message>
    <message>
        <source>Imports data</source>
        <translation>Imports data</translation>
    </message>
    <message>
        <source>Save...</source>
        <translation>Save...</translation>
    </message>
    <message>
        <source>Saves data</source>
        <translation>Saves data</translation>
    </message>
    <message>
        <source>Quit</source>
        <extracomment>Closes the dialog, not the program.</extracomment>
        <translation>Quit</translation>
    </message>
    <message>
        <source>Closes the dialog box</source>
        <translation>Closes the dialog box</translation>
    </message>
    <message>
        <source>Choose alignment file for importing</source>
        <translation>Choose alignment file for importing</translation>
    </message>
    <message>
        <source>AlignFile (*.ad);;All (*.*)</source>
        <translation>AlignFile (*.ad);;All (*.*)</translation>
    </message>
    <message>
        <source>Importing alignment data</source>
        <translation>Importing alignment data</translation>
    </message>
    <message>
        <source>Error while loding:
%1</source>
        <translation>Error while loding:
%1</translation>
    </message>
    <message>
        <source>Export alignment data</source>
        <translation>Export alignment data</translation>
    </message>
    <message>
        <source>Error while exporting:
%1</source>
        <translation>Error while exporting:
%1</translation>
    </message>
    <message>
        <source>Update %1 alignment.</source>
        <translation>Update %1 alignment.</translation>
    </message>
    <message>
        <source>No changes for the %1 driver.
Do you still want to save?</source>
        <translation>No changes for the %1 driver.
Do you still want to save?</translation>
    </message>
    <message>
        <source>Choose alignment file for exporting</source>
        <translation>Choose alignment file for exporting</translation>
    </message>
    <message>
        <source>The table of %1 %2 has changed since the list was read.
Choose Reset and pick again.</source>
        <extracomment>The driver, and the hardware id of a device.</extracomment>
        <translation>The table of %1 %2 has changed since the list was read.
Choose Reset and pick again.</translation>
    </message>
    <message>
        <source>The folder can not be made:
%1</source>
        <translation>The folder can not be made:
%1</translation>
    </message>
    <message>
        <source>%1, checked</source>
        <extracomment>Spoken by screen readers: a table&apos;s hardware id and its check mark.</extracomment>
        <translation>%1, checked</translation>
    </message>
    <message>
        <source>%1, not checked</source>
        <translation>%1, not checked</translation>
    </message>
</context>
<context>
    <name>TarnvikAlign</name>
    <message>
        <source>Usage: %1 COMMAND [options] ...</source>
        <translation>Usage: %1 COMMAND [options] ...</translation>
    </message>
    <message>
        <source>More on a command: %1 COMMAND --help</source>
        <translation>More on a command: %1 COMMAND --help</translation>
    </message>
    <message>
        <source>Example: %1 %2</source>
        <translation>Example: %1 %2</translation>
    </message>
    <message>
        <source>see &quot;%1 %2--help&quot;</source>
        <translation>see &quot;%1 %2--help&quot;</translation>
    </message>
    <message>
        <source>Shows this help.</source>
        <translation>Shows this help.</translation>
    </message>
    <message>
        <source>which command?</source>
        <translation>which command?</translation>
    </message>
    <message>
        <source>there is no command &quot;%1&quot;</source>
        <translation>there is no command &quot;%1&quot;</translation>
    </message>
    <message>
        <source>Prints JSON.</source>
        <translation>Prints JSON.</translation>
    </message>
    <message>
        <source>A folder stands for the drivers&apos; files in it; without argument: the recorder&apos;s folder; &quot;-&quot;: standard input.</source>
        <translation>A folder stands for the drivers&apos; files in it; without argument: the recorder&apos;s folder; &quot;-&quot;: standard input.</translation>
    </message>
    <message>
        <source>Lists the tables of alignment files.</source>
        <translation>Lists the tables of alignment files.</translation>
    </message>
    <message>
        <source>standard output cannot be written; is the disk full, or the reader gone?</source>
        <translation>standard output cannot be written; is the disk full, or the reader gone?</translation>
    </message>
    <message>
        <source>this is no alignment file of version 5, or it is damaged</source>
        <translation>this is no alignment file of version 5, or it is damaged</translation>
    </message>
    <message>
        <source>the file ends too early; take it from its source again</source>
        <translation>the file ends too early; take it from its source again</translation>
    </message>
    <message>
        <source>a length or a count is beyond what a table holds; take the file from its source again</source>
        <translation>a length or a count is beyond what a table holds; take the file from its source again</translation>
    </message>
    <message>
        <source>the file is damaged; take it from its source again</source>
        <translation>the file is damaged; take it from its source again</translation>
    </message>
    <message>
        <source>there is no such file; check the name</source>
        <translation>there is no such file; check the name</translation>
    </message>
    <message>
        <source>the file cannot be opened; check that you may read it</source>
        <translation>the file cannot be opened; check that you may read it</translation>
    </message>
    <message>
        <source>header, byte 0</source>
        <translation>header, byte 0</translation>
    </message>
    <message>
        <source>table %1, byte %2</source>
        <translation>table %1, byte %2</translation>
    </message>
    <message>
        <source>standard input</source>
        <translation>standard input</translation>
    </message>
    <message>
        <source>its inner version is %1</source>
        <translation>its inner version is %1</translation>
    </message>
    <message>
        <source>it states room for %1 data sets, its receiver type has %2</source>
        <translation>it states room for %1 data sets, its receiver type has %2</translation>
    </message>
    <message>
        <source>its receiver type, %1, is unknown</source>
        <translation>its receiver type, %1, is unknown</translation>
    </message>
    <message>
        <source>the hardware id of table %1 is the beginning of that of table %2</source>
        <translation>the hardware id of table %1 is the beginning of that of table %2</translation>
    </message>
    <message>
        <source>bytes behind the last table: %1</source>
        <translation>bytes behind the last table: %1</translation>
    </message>
    <message>
        <source>table %1: %2</source>
        <translation>table %1: %2</translation>
    </message>
    <message>
        <source>%1: warning: %2</source>
        <translation>%1: warning: %2</translation>
    </message>
    <message>
        <source>warnings: %1</source>
        <translation>warnings: %1</translation>
    </message>
    <message>
        <source>Reads alignment files to the end and says what is wrong with them.</source>
        <translation>Reads alignment files to the end and says what is wrong with them.</translation>
    </message>
    <message>
        <source>An alignment file; &quot;-&quot;: standard input.</source>
        <translation>An alignment file; &quot;-&quot;: standard input.</translation>
    </message>
    <message>
        <source>one file is wanted; see &quot;--help&quot;</source>
        <translation>one file is wanted; see &quot;--help&quot;</translation>
    </message>
    <message>
        <source>Prints all that an alignment file holds, as JSON.</source>
        <translation>Prints all that an alignment file holds, as JSON.</translation>
    </message>
    <message>
        <source>Only the table of this whole hardware id; may stand several times.</source>
        <translation>Only the table of this whole hardware id; may stand several times.</translation>
    </message>
    <message>
        <source>%1: there is no table &quot;%2&quot;; &quot;list&quot; shows the ids</source>
        <translation>%1: there is no table &quot;%2&quot;; &quot;list&quot; shows the ids</translation>
    </message>
    <message>
        <source>A document as &quot;export&quot; prints it; &quot;-&quot;: standard input.</source>
        <translation>A document as &quot;export&quot; prints it; &quot;-&quot;: standard input.</translation>
    </message>
    <message>
        <source>the file cannot be read; check name and rights</source>
        <translation>the file cannot be read; check name and rights</translation>
    </message>
    <message>
        <source>sdrType: another one than in the documents before; a file has one type</source>
        <translation>sdrType: another one than in the documents before; a file has one type</translation>
    </message>
    <message>
        <source>documents and --output are wanted; see &quot;--help&quot;</source>
        <translation>documents and --output are wanted; see &quot;--help&quot;</translation>
    </message>
    <message>
        <source>Makes an alignment file of JSON.</source>
        <translation>Makes an alignment file of JSON.</translation>
    </message>
    <message>
        <source>a list is wanted</source>
        <translation>a list is wanted</translation>
    </message>
    <message>
        <source>more than %1 %2</source>
        <translation>more than %1 %2</translation>
    </message>
    <message>
        <source>a list of %1 is wanted</source>
        <translation>a list of %1 is wanted</translation>
    </message>
    <message>
        <source>hexadecimal digits are wanted, two for each byte</source>
        <translation>hexadecimal digits are wanted, two for each byte</translation>
    </message>
    <message>
        <source>more than %1 bytes</source>
        <translation>more than %1 bytes</translation>
    </message>
    <message>
        <source>a text is wanted</source>
        <translation>a text is wanted</translation>
    </message>
    <message>
        <source>a number from 0 to %1 in quotes is wanted</source>
        <translation>a number from 0 to %1 in quotes is wanted</translation>
    </message>
    <message>
        <source>a number from 0 to %1 is wanted</source>
        <translation>a number from 0 to %1 is wanted</translation>
    </message>
    <message>
        <source>an object is wanted</source>
        <translation>an object is wanted</translation>
    </message>
    <message>
        <source>there is no such member</source>
        <translation>there is no such member</translation>
    </message>
    <message>
        <source>the file cannot be replaced</source>
        <translation>the file cannot be replaced</translation>
    </message>
    <message>
        <source>no temporary file can be made beside it</source>
        <translation>no temporary file can be made beside it</translation>
    </message>
    <message>
        <source>the temporary file beside it cannot be written</source>
        <translation>the temporary file beside it cannot be written</translation>
    </message>
    <message>
        <source>the temporary file does not reach the disk</source>
        <translation>the temporary file does not reach the disk</translation>
    </message>
    <message>
        <source>the temporary file cannot take its place</source>
        <translation>the temporary file cannot take its place</translation>
    </message>
    <message>
        <source>it is written, but its folder does not reach the disk</source>
        <translation>it is written, but its folder does not reach the disk</translation>
    </message>
    <message>
        <source>Writes this file; &quot;-&quot;: standard output.</source>
        <translation>Writes this file; &quot;-&quot;: standard output.</translation>
    </message>
    <message>
        <source>sample rate %1 (attribute %2), gain entries: %3</source>
        <translation>sample rate %1 (attribute %2), gain entries: %3</translation>
    </message>
    <message>
        <source>frequency %1 (attribute %2)</source>
        <translation>frequency %1 (attribute %2)</translation>
    </message>
    <message>
        <source>data set %1: attributes %2 %3 %4 %5, words %6 %7, frequencies: %8</source>
        <translation>data set %1: attributes %2 %3 %4 %5, words %6 %7, frequencies: %8</translation>
    </message>
    <message>
        <source>%1, aligned at %2, data sets: %3 of %4</source>
        <translation>%1, aligned at %2, data sets: %3 of %4</translation>
    </message>
    <message>
        <source>Shows the whole contents of an alignment file.</source>
        <translation>Shows the whole contents of an alignment file.</translation>
    </message>
    <message>
        <source>no JSON, at byte %1: %2</source>
        <translation>no JSON, at byte %1: %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is wanted</source>
        <translation>&quot;%1&quot; is wanted</translation>
    </message>
    <message>
        <source>this program knows version %1</source>
        <translation>this program knows version %1</translation>
    </message>
    <message>
        <source>gain entries</source>
        <translation>gain entries</translation>
    </message>
    <message>
        <source>sample-rate points</source>
        <translation>sample-rate points</translation>
    </message>
    <message>
        <source>frequency points</source>
        <translation>frequency points</translation>
    </message>
    <message>
        <source>data sets</source>
        <translation>data sets</translation>
    </message>
    <message>
        <source>tables</source>
        <translation>tables</translation>
    </message>
    <message>
        <source>it holds no table; the window refuses to read it</source>
        <translation>it holds no table; the window refuses to read it</translation>
    </message>
    <message>
        <source>A file; a folder stands for the drivers&apos; files in it.</source>
        <translation>A file; a folder stands for the drivers&apos; files in it.</translation>
    </message>
    <message>
        <source>same date, other content: %1 (%2)</source>
        <translation>same date, other content: %1 (%2)</translation>
    </message>
    <message>
        <source>only in %1: %2 (%3)</source>
        <translation>only in %1: %2 (%3)</translation>
    </message>
    <message>
        <source>newer in %1: %2 (%3; %4)</source>
        <translation>newer in %1: %2 (%3; %4)</translation>
    </message>
    <message>
        <source>two files are wanted; see &quot;--help&quot;</source>
        <translation>two files are wanted; see &quot;--help&quot;</translation>
    </message>
    <message>
        <source>Says in which tables two files differ.</source>
        <translation>Says in which tables two files differ.</translation>
    </message>
    <message>
        <source>Takes older versions of tables, too.</source>
        <translation>Takes older versions of tables, too.</translation>
    </message>
    <message>
        <source>Takes newer versions of tables only, no tables that TARGET lacks.</source>
        <translation>Takes newer versions of tables only, no tables that TARGET lacks.</translation>
    </message>
    <message>
        <source>Says what would be done, and writes nothing.</source>
        <translation>Says what would be done, and writes nothing.</translation>
    </message>
    <message>
        <source>The file that takes the tables; made when it is not there.</source>
        <translation>The file that takes the tables; made when it is not there.</translation>
    </message>
    <message>
        <source>The files that the tables come from.</source>
        <translation>The files that the tables come from.</translation>
    </message>
    <message>
        <source>a target and sources are wanted; see &quot;--help&quot;</source>
        <translation>a target and sources are wanted; see &quot;--help&quot;</translation>
    </message>
    <message>
        <source>files of a merge are read more than once; name files, not &quot;-&quot;</source>
        <translation>files of a merge are read more than once; name files, not &quot;-&quot;</translation>
    </message>
    <message>
        <source>%1: this source is the target itself</source>
        <translation>%1: this source is the target itself</translation>
    </message>
    <message>
        <source>%1: there is no such folder; check the name</source>
        <translation>%1: there is no such folder; check the name</translation>
    </message>
    <message>
        <source>%1: its tables are for %2, those of %3 for %4; a file has one receiver type</source>
        <translation>%1: its tables are for %2, those of %3 for %4; a file has one receiver type</translation>
    </message>
    <message>
        <source>not chosen by --id</source>
        <translation>not chosen by --id</translation>
    </message>
    <message>
        <source>taken</source>
        <translation>taken</translation>
    </message>
    <message>
        <source>not taken</source>
        <translation>not taken</translation>
    </message>
    <message>
        <source>new: %1, of %2</source>
        <translation>new: %1, of %2</translation>
    </message>
    <message>
        <source>newer: %1, of %2; was %3</source>
        <translation>newer: %1, of %2; was %3</translation>
    </message>
    <message>
        <source>older: %1, of %2; was %3</source>
        <translation>older: %1, of %2; was %3</translation>
    </message>
    <message>
        <source>no source has another date</source>
        <translation>no source has another date</translation>
    </message>
    <message>
        <source>tables taken: %1</source>
        <translation>tables taken: %1</translation>
    </message>
    <message>
        <source>nothing is written</source>
        <translation>nothing is written</translation>
    </message>
    <message>
        <source>--all and --newer exclude each other</source>
        <translation>--all and --newer exclude each other</translation>
    </message>
    <message>
        <source>Takes new and newer tables of other files over into a file.</source>
        <translation>Takes new and newer tables of other files over into a file.</translation>
    </message>
    <message>
        <source>%1: this file is read; name another --output</source>
        <translation>%1: this file is read; name another --output</translation>
    </message>
    <message>
        <source>An alignment file.</source>
        <translation>An alignment file.</translation>
    </message>
    <message>
        <source>%1: no table would be left, and a file holds one at least; delete the file instead</source>
        <translation>%1: no table would be left, and a file holds one at least; delete the file instead</translation>
    </message>
    <message>
        <source>one file, and --id, are wanted; see &quot;--help&quot;</source>
        <translation>one file, and --id, are wanted; see &quot;--help&quot;</translation>
    </message>
    <message>
        <source>Takes tables out of a file.</source>
        <translation>Takes tables out of a file.</translation>
    </message>
    <message>
        <source>no file %1 is in this folder; name files</source>
        <translation>no file %1 is in this folder; name files</translation>
    </message>
    <message>
        <source>ok, 1 table</source>
        <translation>ok, 1 table</translation>
    </message>
    <message>
        <source>ok, %1 tables</source>
        <translation>ok, %1 tables</translation>
    </message>
    <message>
        <source>table %1 has another inner version than 5; only tables of version 5 are exported</source>
        <translation>table %1 has another inner version than 5; only tables of version 5 are exported</translation>
    </message>
    <message>
        <source>this is no text of UTF-8 without NUL; the member %1 takes all bytes</source>
        <translation>this is no text of UTF-8 without NUL; the member %1 takes all bytes</translation>
    </message>
    <message>
        <source>--output wants a file</source>
        <translation>--output wants a file</translation>
    </message>
    <message>
        <source>%1: %2; nothing is written; &quot;verify&quot; tells more of the files</source>
        <translation>%1: %2; nothing is written; &quot;verify&quot; tells more of the files</translation>
    </message>
    <message>
        <source>somebody else is writing the file; try again</source>
        <translation>somebody else is writing the file; try again</translation>
    </message>
    <message>
        <source>another one than the document&apos;s; a file has one type</source>
        <translation>another one than the document&apos;s; a file has one type</translation>
    </message>
    <message>
        <source>bytes follow the end of its hardware id</source>
        <translation>bytes follow the end of its hardware id</translation>
    </message>
    <message>
        <source>tables %1 and %2 have the same hardware id</source>
        <translation>tables %1 and %2 have the same hardware id</translation>
    </message>
</context>
<context>
    <name>main</name>
    <message>
        <source>Error an instance is already running...</source>
        <translation>Error an instance is already running...</translation>
    </message>
    <message>
        <source>Error...</source>
        <translation>Error...</translation>
    </message>
    <message>
        <source>Error %1</source>
        <translation>Error %1</translation>
    </message>
</context>
</TS>
