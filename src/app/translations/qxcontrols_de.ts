<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="de_DE" sourcelanguage="en">
<context>
    <name>Application</name>
    <message>
        <source>Something unexpected went wrong, and the last action was not completed. The document is still open; save it under another name before you go on.</source>
        <translation>Ein unerwarteter Fehler ist aufgetreten; die letzte Aktion wurde nicht abgeschlossen. Das Dokument ist noch geöffnet; speichern Sie es unter einem anderen Namen, bevor Sie weiterarbeiten.</translation>
    </message>
</context>
<context>
    <name>BackupsPage</name>
    <message>
        <source>&amp;Restore to keyboard…</source>
        <translation>In Tastatur &amp;zurückspielen …</translation>
    </message>
    <message>
        <source>Open as do&amp;cument</source>
        <translation>Als Dokument ö&amp;ffnen</translation>
    </message>
    <message>
        <source>Before each write, the keyboard&apos;s contents are saved here. Each backup is kept for at least %1 days.</source>
        <translation>Vor jedem Schreiben wird hier der gesamte Inhalt der Tastatur gesichert. Jede Sicherung bleibt mindestens %1 Tage erhalten.</translation>
    </message>
    <message>
        <source>Backups</source>
        <translation>Sicherungen</translation>
    </message>
    <message>
        <source>Time</source>
        <translation>Zeit</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>The backups could not be listed.</source>
        <translation>Die Sicherungen konnten nicht aufgelistet werden.</translation>
    </message>
    <message>
        <source>Unit</source>
        <translation>Einheit</translation>
    </message>
    <message>
        <source>In the document</source>
        <translation>Im Dokument</translation>
    </message>
    <message>
        <source>In the backup</source>
        <translation>In der Sicherung</translation>
    </message>
    <message>
        <source>The document that was written next</source>
        <translation>Das Dokument, das danach geschrieben wurde</translation>
    </message>
    <message>
        <source>How many settings of the backup differ from the document</source>
        <translation>Wie viele Einstellungen der Sicherung vom Dokument abweichen</translation>
    </message>
    <message>
        <source>damaged</source>
        <translation>beschädigt</translation>
    </message>
    <message>
        <source>Choose a backup to see its changes.</source>
        <translation>Wählen Sie eine Sicherung, um ihre Änderungen zu sehen.</translation>
    </message>
    <message>
        <source>The backup has the same settings as the document.</source>
        <translation>Die Sicherung hat dieselben Einstellungen wie das Dokument.</translation>
    </message>
    <message numerus="yes">
        <source>%n setting(s) of the backup differ from the document.</source>
        <translation>
            <numerusform>%n Einstellung der Sicherung weicht vom Dokument ab.</numerusform>
            <numerusform>%n Einstellungen der Sicherung weichen vom Dokument ab.</numerusform>
        </translation>
    </message>
    <message>
        <source>The backup cannot be compared.</source>
        <translation>Die Sicherung lässt sich nicht vergleichen.</translation>
    </message>
    <message>
        <source>Then written</source>
        <translation>Danach geschrieben</translation>
    </message>
    <message>
        <source>Differences</source>
        <translation>Unterschiede</translation>
    </message>
</context>
<context>
    <name>BarcodeEditor</name>
    <message>
        <source>Codes</source>
        <translation>Codes</translation>
    </message>
</context>
<context>
    <name>BarcodeFace</name>
    <message>
        <source>Codes and readers</source>
        <translation>Codes und Leser</translation>
    </message>
    <message>
        <source>Keys sent before and after each code of %1</source>
        <translation>Tasten vor und nach jedem Code von %1</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten …</translation>
    </message>
    <message>
        <source>Edit this sequence of keys</source>
        <translation>Diese Tastenfolge bearbeiten</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove this sequence of keys</source>
        <translation>Diese Tastenfolge entfernen</translation>
    </message>
    <message>
        <source>%1 (not kept by the keyboard)</source>
        <translation>%1 (wird nicht in der Tastatur gespeichert)</translation>
    </message>
    <message numerus="yes">
        <source>Reads %n kind(s) of code</source>
        <translation>
            <numerusform>Liest eine Codeart</numerusform>
            <numerusform>Liest %n Codearten</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BarcodeTable</name>
    <message>
        <source>Code</source>
        <translation>Code</translation>
    </message>
    <message>
        <source>Options</source>
        <translation>Optionen</translation>
    </message>
</context>
<context>
    <name>BlockActions</name>
    <message>
        <source>Join</source>
        <translation>Verbinden</translation>
    </message>
    <message>
        <source>Split</source>
        <translation>Trennen</translation>
    </message>
    <message>
        <source>Select block</source>
        <translation>Block auswählen</translation>
    </message>
    <message>
        <source>Make the selected keys one block, which sends one sequence</source>
        <translation>Die ausgewählten Tasten zu einem Block verbinden, der eine Tastenfolge sendet</translation>
    </message>
    <message>
        <source>Take the selected keys out of their blocks</source>
        <translation>Die ausgewählten Tasten aus ihren Blöcken lösen</translation>
    </message>
    <message>
        <source>Select all keys of the blocks</source>
        <translation>Alle Tasten der Blöcke auswählen</translation>
    </message>
    <message>
        <source>%1 is in block %2, other keys are in block %3: split one of them off first. Nothing has been changed.</source>
        <translation>%1 gehört zu Block %2, andere Tasten gehören zu Block %3: Trennen Sie zuerst eine davon ab. Es wurde nichts geändert.</translation>
    </message>
    <message numerus="yes">
        <source>%n keys joined.</source>
        <translation>
            <numerusform>%n Taste verbunden.</numerusform>
            <numerusform>%n Tasten verbunden.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n key(s) split off.</source>
        <translation>
            <numerusform>%n Taste abgetrennt.</numerusform>
            <numerusform>%n Tasten abgetrennt.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Block(s) %1 removed with the sequence.</source>
        <translation>
            <numerusform>Block %1 und seine Folge wurden entfernt.</numerusform>
            <numerusform>Die Blöcke %1 und ihre Folgen wurden entfernt.</numerusform>
        </translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Choose the colour of the blocks</source>
        <translation>Die Farbe der Blöcke wählen</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Farbe %1</translation>
    </message>
</context>
<context>
    <name>ChipRow</name>
    <message>
        <source>%1, item %2 of %3</source>
        <translation>%1, Eintrag %2 von %3</translation>
    </message>
    <message>
        <source>Remove %1</source>
        <translation>%1 entfernen</translation>
    </message>
    <message>
        <source>Keys of the sequence</source>
        <translation>Tasten der Folge</translation>
    </message>
</context>
<context>
    <name>ColourButton</name>
    <message>
        <source>Use the default colour</source>
        <translation>Standardfarbe verwenden</translation>
    </message>
    <message>
        <source>System colour</source>
        <translation>Systemfarbe</translation>
    </message>
</context>
<context>
    <name>CommonKeyboardFace</name>
    <message>
        <source>Output delay: %1</source>
        <translation>Ausgabeverzögerung: %1</translation>
    </message>
</context>
<context>
    <name>DifferenceTree</name>
    <message>
        <source>Changes</source>
        <translation>Änderungen</translation>
    </message>
    <message>
        <source>Setting</source>
        <translation>Einstellung</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Show this change on its page</source>
        <translation>Diese Änderung auf ihrer Seite anzeigen</translation>
    </message>
</context>
<context>
    <name>Discard</name>
    <message>
        <source>Discard the changes?</source>
        <translation>Änderungen verwerfen?</translation>
    </message>
    <message>
        <source>&amp;Discard</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>&amp;Keep editing</source>
        <translation>&amp;Weiter bearbeiten</translation>
    </message>
</context>
<context>
    <name>DocumentMenu</name>
    <message>
        <source>Keyboard documents (*.json);;All files (*)</source>
        <translation>Tastaturdokumente (*.json);;Alle Dateien (*)</translation>
    </message>
    <message>
        <source>Unsaved changes</source>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>Not saved</source>
        <translation>Nicht gespeichert</translation>
    </message>
    <message>
        <source>Save &amp;as…</source>
        <translation>Speichern &amp;unter …</translation>
    </message>
    <message>
        <source>Unsaved work</source>
        <translation>Ungespeicherte Änderungen</translation>
    </message>
    <message>
        <source>&amp;Open it</source>
        <translation>Ö&amp;ffnen</translation>
    </message>
    <message>
        <source>&amp;Discard it</source>
        <translation>&amp;Verwerfen</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>Open document</source>
        <translation>Dokument öffnen</translation>
    </message>
    <message>
        <source>Save document</source>
        <translation>Dokument speichern</translation>
    </message>
    <message>
        <source>&amp;New</source>
        <translation>&amp;Neu</translation>
    </message>
    <message>
        <source>&amp;Open…</source>
        <translation>Ö&amp;ffnen …</translation>
    </message>
    <message>
        <source>Open &amp;recent</source>
        <translation>&amp;Zuletzt geöffnet</translation>
    </message>
    <message>
        <source>&amp;Save</source>
        <translation>&amp;Speichern</translation>
    </message>
    <message>
        <source>untitled</source>
        <translation>unbenannt</translation>
    </message>
    <message>
        <source>No copy of the unsaved changes can be kept: a crash would lose them.</source>
        <translation>Von den ungespeicherten Änderungen kann keine Kopie gespeichert werden: Bei einem Absturz gingen sie verloren.</translation>
    </message>
    <message>
        <source>%1 could not be opened.</source>
        <translation>%1 konnte nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>Opened %1.</source>
        <translation>%1 wurde geöffnet.</translation>
    </message>
    <message>
        <source>This keyboard has no module for: %1. The document keeps these settings; writing leaves them out.</source>
        <translation>Diese Tastatur hat kein Modul für: %1. Das Dokument behält diese Einstellungen; beim Schreiben werden sie ausgelassen.</translation>
    </message>
    <message>
        <source>Opened as an untitled document: %1.</source>
        <translation>Als unbenanntes Dokument geöffnet: %1.</translation>
    </message>
    <message>
        <source>an untitled document</source>
        <translation>einem unbenannten Dokument</translation>
    </message>
    <message>
        <source>The program ended before the changes to %1 were saved (%2). Open them as an untitled document?</source>
        <translation>Das Programm wurde beendet, bevor die Änderungen an %1 gespeichert waren (%2). Sollen sie als unbenanntes Dokument geöffnet werden?</translation>
    </message>
    <message>
        <source>Opened the unsaved changes to %1; they are not saved yet.</source>
        <translation>Die ungespeicherten Änderungen an %1 sind geöffnet; sie sind noch nicht gespeichert.</translation>
    </message>
    <message>
        <source>Unsaved work could not be opened.</source>
        <translation>Die ungespeicherten Änderungen konnten nicht geöffnet werden.</translation>
    </message>
    <message>
        <source>keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Saved %1.</source>
        <translation>%1 wurde gespeichert.</translation>
    </message>
    <message>
        <source>%1 could not be saved.</source>
        <translation>%1 konnte nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>%1 could not be saved automatically. Save it under another name.</source>
        <translation>%1 konnte nicht automatisch gespeichert werden. Speichern Sie es unter einem anderen Namen.</translation>
    </message>
    <message>
        <source>No documents yet</source>
        <translation>Noch keine Dokumente</translation>
    </message>
    <message>
        <source>“%1” is about to be closed. Save its changes first?</source>
        <translation>„%1“ wird geschlossen. Vorher die Änderungen speichern?</translation>
    </message>
    <message>
        <source>It was made for %1, but the connected keyboard is %2.</source>
        <translation>Es wurde für %1 erstellt, angeschlossen ist aber %2.</translation>
    </message>
</context>
<context>
    <name>EditRequests</name>
    <message>
        <source>Remove block %1 and the sequence that its keys send?</source>
        <translation>Block %1 und die Folge, die seine Tasten senden, entfernen?</translation>
    </message>
    <message>
        <source>Remove all POS blocks?</source>
        <translation>Alle POS-Blöcke entfernen?</translation>
    </message>
    <message>
        <source>Click a free key to start a block, then click keys to add or remove them. All keys of a block send its sequence. A key is in at most one block.</source>
        <translation>Klicken Sie auf eine freie Taste, um einen Block zu beginnen, dann auf weitere Tasten, um sie aufzunehmen oder herauszunehmen. Alle Tasten eines Blocks senden dessen Folge. Eine Taste gehört zu höchstens einem Block.</translation>
    </message>
    <message>
        <source>Connect a keyboard first, or the simulated one: the editor works with its keys.</source>
        <translation>Verbinden Sie zuerst eine Tastatur oder die simulierte: Der Editor arbeitet mit deren Tasten.</translation>
    </message>
    <message>
        <source>The keyboard reported a failure to the editor.</source>
        <translation>Die Tastatur hat dem Editor einen Fehler gemeldet.</translation>
    </message>
    <message>
        <source>These codes were left out, because no keyboard can store them: %1</source>
        <translation>Diese Codes wurden ausgelassen, weil keine Tastatur sie speichern kann: %1</translation>
    </message>
    <message>
        <source>Click keys on the screen or press them on the keyboard: each is added to the sequence. A click records the key and its release; Shift, Ctrl and Alt are held for the next click. Text to type becomes the keys that type it. The cross on a key of the sequence removes it, and dragging moves it. Or type the sequence as text, such as Ctrl+C Enter ^Enter, and apply it.</source>
        <translation>Klicken Sie Tasten auf dem Bildschirm an oder drücken Sie sie auf der Tastatur: Jede wird an die Folge angefügt. Ein Klick nimmt das Drücken und das Loslassen auf; Umschalt, Strg und Alt werden bis zum nächsten Klick gehalten. Aus getipptem Text werden die Tasten, die ihn tippen. Das Kreuz an einer Taste der Folge entfernt sie, durch Ziehen wird sie verschoben. Oder geben Sie die Folge als Text ein, zum Beispiel Ctrl+C Enter ^Enter, und übernehmen Sie sie.</translation>
    </message>
</context>
<context>
    <name>EditorTexts</name>
    <message>
        <source>OK</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Remove last</source>
        <translation>Letzten Code entfernen</translation>
    </message>
    <message>
        <source>Remove the last key code</source>
        <translation>Den letzten Tastencode entfernen</translation>
    </message>
    <message>
        <source>Remove all</source>
        <translation>Alle entfernen</translation>
    </message>
    <message>
        <source>Remove all key codes</source>
        <translation>Alle Tastencodes entfernen</translation>
    </message>
    <message>
        <source>Edit a sequence of keys</source>
        <translation>Eine Tastenfolge bearbeiten</translation>
    </message>
    <message>
        <source>The sequence is full.</source>
        <translation>Die Folge ist voll.</translation>
    </message>
    <message>
        <source>New block</source>
        <translation>Neuer Block</translation>
    </message>
    <message>
        <source>The next free key that you click begins it</source>
        <translation>Die nächste freie Taste, die Sie anklicken, beginnt ihn</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten …</translation>
    </message>
    <message>
        <source>Edit the sequence of this block</source>
        <translation>Die Folge dieses Blocks bearbeiten</translation>
    </message>
    <message>
        <source>Remove block</source>
        <translation>Block entfernen</translation>
    </message>
    <message>
        <source>Remove this block and its sequence</source>
        <translation>Diesen Block und seine Folge entfernen</translation>
    </message>
    <message>
        <source>Remove all blocks and their sequences</source>
        <translation>Alle Blöcke und ihre Folgen entfernen</translation>
    </message>
    <message>
        <source>POS blocks</source>
        <translation>POS-Blöcke</translation>
    </message>
    <message>
        <source>Blocks:</source>
        <translation>Blöcke:</translation>
    </message>
    <message>
        <source>Sequence:</source>
        <translation>Folge:</translation>
    </message>
    <message>
        <source>Number:</source>
        <translation>Nummer:</translation>
    </message>
    <message>
        <source>Keys:</source>
        <translation>Tasten:</translation>
    </message>
    <message>
        <source>Colour:</source>
        <translation>Farbe:</translation>
    </message>
    <message>
        <source>Each key sends:</source>
        <translation>Jede Taste sendet:</translation>
    </message>
    <message>
        <source>Remove all…</source>
        <translation>Alle entfernen …</translation>
    </message>
</context>
<context>
    <name>EndSignals</name>
    <message>
        <source>Settings are being transferred.</source>
        <translation>Gerade werden Einstellungen übertragen.</translation>
    </message>
</context>
<context>
    <name>Errors</name>
    <message>
        <source> or </source>
        <translation> oder </translation>
    </message>
    <message>
        <source>parameter memory</source>
        <translation>Der Parameterspeicher</translation>
    </message>
    <message numerus="yes">
        <source>%1 (and %n more)</source>
        <translation>
            <numerusform>%1 (und ein weiterer)</numerusform>
            <numerusform>%1 (und %n weitere)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The keyboard does not hold what was written (%n byte(s)).</source>
        <translation>
            <numerusform>Der Inhalt der Tastatur weicht vom Geschriebenen ab (ein Byte).</numerusform>
            <numerusform>Der Inhalt der Tastatur weicht vom Geschriebenen ab (%n Bytes).</numerusform>
        </translation>
    </message>
    <message>
        <source>This could not be done.</source>
        <translation>Das war nicht möglich.</translation>
    </message>
    <message>
        <source>%1 is not a simulated keyboard and accepts no keyboard file or model.</source>
        <translation>%1 ist keine simulierte Tastatur; eine Tastaturdatei oder ein Modell lässt sich dafür nicht angeben.</translation>
    </message>
    <message>
        <source>%1 holds a keyboard of the model %2, not %3.</source>
        <translation>%1 enthält eine Tastatur des Modells %2, nicht %3.</translation>
    </message>
    <message>
        <source>%1: the name of a key sheet must end with %2.</source>
        <translation>%1: Der Name einer Tastenübersicht muss auf %2 enden.</translation>
    </message>
    <message>
        <source>No keyboard is connected.</source>
        <translation>Es ist keine Tastatur verbunden.</translation>
    </message>
    <message>
        <source>The keyboard could not be opened.</source>
        <translation>Die Verbindung zur Tastatur ließ sich nicht herstellen.</translation>
    </message>
    <message>
        <source>The keyboard has no configuration directory.</source>
        <translation>Die Tastatur hat kein Konfigurationsverzeichnis.</translation>
    </message>
    <message>
        <source>The driver library cannot be used.</source>
        <translation>Die Treiberbibliothek ist nicht verwendbar.</translation>
    </message>
    <message>
        <source>The driver library %1 cannot be used.</source>
        <translation>Die Treiberbibliothek %1 ist nicht verwendbar.</translation>
    </message>
    <message>
        <source>There is no keyboard in %1.</source>
        <translation>In %1 ist keine Tastatur.</translation>
    </message>
    <message>
        <source>The keyboard file %1 cannot be used.</source>
        <translation>Die Tastaturdatei %1 ist nicht verwendbar.</translation>
    </message>
    <message>
        <source>The model of the simulated keyboard cannot be used.</source>
        <translation>Das Modell der simulierten Tastatur ist nicht verwendbar.</translation>
    </message>
    <message>
        <source>The keyboard layout cannot be used.</source>
        <translation>Die Tastaturbelegung ist nicht verwendbar.</translation>
    </message>
    <message>
        <source>There is no keyboard layout %1 in %2.</source>
        <translation>In %2 gibt es keine Tastaturbelegung %1.</translation>
    </message>
    <message>
        <source>Reading from the keyboard failed.</source>
        <translation>Das Lesen aus der Tastatur ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>Writing to the keyboard failed.</source>
        <translation>Das Schreiben in die Tastatur ist fehlgeschlagen.</translation>
    </message>
    <message>
        <source>The written data could not be read back.</source>
        <translation>Das Geschriebene ließ sich nicht zurücklesen.</translation>
    </message>
    <message>
        <source>The %1 could not be saved in %2.</source>
        <translation>%1 konnte nicht in %2 gespeichert werden.</translation>
    </message>
    <message>
        <source>The %1 could not be loaded from %2.</source>
        <translation>%1 konnte nicht aus %2 geladen werden.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s code page could not be read.</source>
        <translation>Die Codepage der Tastatur konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>The keyboard does not report which keys are pressed.</source>
        <translation>Die Tastatur meldet nicht, welche Tasten gedrückt werden.</translation>
    </message>
    <message>
        <source>Reading from the keyboard failed: the driver reported success but moved no data.</source>
        <translation>Das Lesen aus der Tastatur ist fehlgeschlagen: Der Treiber meldete Erfolg, übertrug aber keine Daten.</translation>
    </message>
    <message>
        <source>The driver reported success but wrote nothing; %1 is unchanged.</source>
        <translation>Der Treiber meldete Erfolg, schrieb aber nichts; %1 ist unverändert.</translation>
    </message>
    <message>
        <source>A setting has no place in the keyboard&apos;s memory.</source>
        <translation>Eine Einstellung hat im Speicher der Tastatur keinen Platz.</translation>
    </message>
    <message>
        <source>It is not known whether the keyboard has this module: %1.</source>
        <translation>Es ist nicht bekannt, ob die Tastatur dieses Modul hat: %1.</translation>
    </message>
    <message>
        <source>It could not be determined which keyboard this is.</source>
        <translation>Es ließ sich nicht feststellen, welche Tastatur dies ist.</translation>
    </message>
    <message>
        <source>Entries of the keyboard&apos;s configuration directory could not be read: %1, the first of them entry %2.</source>
        <translation>Einträge im Konfigurationsverzeichnis der Tastatur waren nicht lesbar: %1, als erster der Eintrag %2.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s configuration directory has %1 at %2, which is not an address.</source>
        <translation>Im Konfigurationsverzeichnis der Tastatur steht für %1 der Wert %2; das ist keine Adresse.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s names could not be read.</source>
        <translation>Die Namen der Tastatur waren nicht lesbar.</translation>
    </message>
    <message>
        <source>A file could not be read or written.</source>
        <translation>Eine Datei ließ sich nicht lesen oder schreiben.</translation>
    </message>
    <message>
        <source>The record %1 cannot be used.</source>
        <translation>Die Aufzeichnung %1 ist nicht verwendbar.</translation>
    </message>
    <message>
        <source>The record of a write is damaged; it may be of an interrupted write to this keyboard.</source>
        <translation>Die Aufzeichnung eines Schreibvorgangs ist beschädigt; möglicherweise gehört sie zu einem unterbrochenen Schreibvorgang in diese Tastatur.</translation>
    </message>
    <message>
        <source>The keyboard was written, read back and verified, but the write could not be recorded.</source>
        <translation>Die Einstellungen wurden geschrieben und durch Zurücklesen bestätigt; der Schreibvorgang konnte aber nicht aufgezeichnet werden.</translation>
    </message>
    <message>
        <source>The file was loaded into the keyboard, but that could not be recorded.</source>
        <translation>Die Datei wurde in die Tastatur geladen, der Vorgang konnte aber nicht aufgezeichnet werden.</translation>
    </message>
    <message>
        <source>The record of the interrupted write could not be removed.</source>
        <translation>Die Aufzeichnung des unterbrochenen Schreibvorgangs konnte nicht entfernt werden.</translation>
    </message>
    <message>
        <source>The receipt could not be written.</source>
        <translation>Der Beleg konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>%1 is not a code page: it has %2 bytes instead of %3.</source>
        <translation>%1 ist keine Codepage: Die Datei hat %2 statt %3 Bytes.</translation>
    </message>
    <message>
        <source>The driver cannot open %1: the name has letters that are not in the system&apos;s character set.</source>
        <translation>Der Treiber kann %1 nicht öffnen: Der Name enthält Buchstaben, die im Zeichensatz des Systems fehlen.</translation>
    </message>
    <message>
        <source>The preferences could not be stored.</source>
        <translation>Die Voreinstellungen konnten nicht gespeichert werden.</translation>
    </message>
    <message>
        <source>The preferences cannot be kept in %1: it is not an ordinary file.</source>
        <translation>Die Voreinstellungen lassen sich nicht in %1 speichern: Das ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>The preferences cannot be kept in %1: it holds something else.</source>
        <translation>Die Voreinstellungen lassen sich nicht in %1 speichern: Die Datei enthält etwas anderes.</translation>
    </message>
    <message>
        <source>The preferences in %1 are damaged and could not be set aside.</source>
        <translation>Die Voreinstellungen in %1 sind beschädigt und konnten nicht verschoben werden.</translation>
    </message>
    <message>
        <source>The preference %1 could not be stored in %2.</source>
        <translation>Die Voreinstellung %1 konnte nicht in %2 gespeichert werden.</translation>
    </message>
    <message>
        <source>There is no folder for the preferences.</source>
        <translation>Es gibt keinen Ordner für die Voreinstellungen.</translation>
    </message>
    <message>
        <source>%1 is not a copy of unsaved work, or is damaged.</source>
        <translation>%1 ist keine Kopie ungespeicherter Änderungen oder ist beschädigt.</translation>
    </message>
    <message>
        <source>This is not the keyboard that the write was prepared for.</source>
        <translation>Das ist nicht die Tastatur, für die der Schreibvorgang vorbereitet wurde.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s contents have changed since the write was prepared, or it is another keyboard.</source>
        <translation>Der Inhalt der Tastatur hat sich geändert, seit der Schreibvorgang vorbereitet wurde, oder es ist eine andere Tastatur.</translation>
    </message>
    <message>
        <source>The interrupted write has meanwhile been resolved.</source>
        <translation>Der unterbrochene Schreibvorgang wurde inzwischen geklärt.</translation>
    </message>
    <message>
        <source>The keyboard holds exactly what it held before the interrupted write (%1), so it may be another one. The record of the write is kept.</source>
        <translation>Die Tastatur enthält genau dasselbe wie vor dem unterbrochenen Schreibvorgang (%1); vielleicht ist es eine andere. Die Aufzeichnung des Schreibvorgangs bleibt erhalten.</translation>
    </message>
    <message>
        <source>The keyboard holds all of the interrupted write (%1), so it may be another one. The record of the write is kept.</source>
        <translation>Die Tastatur enthält bereits alle Daten des unterbrochenen Schreibvorgangs (%1); vielleicht ist es eine andere. Die Aufzeichnung des Schreibvorgangs bleibt erhalten.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s contents do not match the interrupted write (%1). The record of the write is kept.</source>
        <translation>Der Inhalt der Tastatur passt nicht zum unterbrochenen Schreibvorgang (%1). Die Aufzeichnung des Schreibvorgangs bleibt erhalten.</translation>
    </message>
    <message>
        <source>A part of the keyboard&apos;s memory is damaged: %1</source>
        <translation>Ein Teil des Speichers der Tastatur ist beschädigt: %1</translation>
    </message>
    <message>
        <source>Another program is writing to this keyboard (%1).</source>
        <translation>Ein anderes Programm schreibt gerade in diese Tastatur (%1).</translation>
    </message>
    <message>
        <source>Stopped before anything was written.</source>
        <translation>Abgebrochen, bevor etwas geschrieben wurde.</translation>
    </message>
    <message>
        <source>The keyboard holds a part of an interrupted write (%1), which must be finished or rolled back first.</source>
        <translation>Die Tastatur enthält einen Teil eines unterbrochenen Schreibvorgangs (%1), der zuerst abgeschlossen oder rückgängig gemacht werden muss.</translation>
    </message>
    <message>
        <source>The document has faults: %1</source>
        <translation>Das Dokument hat Fehler: %1</translation>
    </message>
    <message>
        <source>%1 has faults: %2</source>
        <translation>%1 hat Fehler: %2</translation>
    </message>
    <message>
        <source>The backup %1 on the Backups page has the keyboard&apos;s previous contents.</source>
        <translation>Den vorigen Inhalt der Tastatur enthält die Sicherung %1 auf der Seite „Sicherungen“.</translation>
    </message>
    <message>
        <source>Start again: the keyboard is then read once more.</source>
        <translation>Beginnen Sie noch einmal von vorn; die Tastatur wird dann neu gelesen.</translation>
    </message>
    <message>
        <source>Try again when the other program has finished.</source>
        <translation>Versuchen Sie es noch einmal, wenn das andere Programm fertig ist.</translation>
    </message>
    <message>
        <source>Choose Keyboard › Write to keyboard to replace the damaged part with the document&apos;s settings.</source>
        <translation>Wählen Sie „Tastatur › In Tastatur schreiben“, um den beschädigten Teil durch die Einstellungen des Dokuments zu ersetzen.</translation>
    </message>
    <message>
        <source>Choose another driver library or keyboard in the Keyboard menu.</source>
        <translation>Wählen Sie im Menü „Tastatur“ eine andere Treiberbibliothek oder Tastatur.</translation>
    </message>
    <message>
        <source>Start the program with the option --model to choose a model.</source>
        <translation>Starten Sie das Programm mit der Option --model, um ein Modell zu wählen.</translation>
    </message>
    <message>
        <source>Start the program without the options --keyboard and --model.</source>
        <translation>Starten Sie das Programm ohne die Optionen --keyboard und --model.</translation>
    </message>
    <message>
        <source>Move the file to another folder once you have dealt with it.</source>
        <translation>Verschieben Sie die Datei in einen anderen Ordner, sobald die Sache geklärt ist.</translation>
    </message>
    <message>
        <source>Move %1 to another folder once you have dealt with it.</source>
        <translation>Verschieben Sie %1 in einen anderen Ordner, sobald die Sache geklärt ist.</translation>
    </message>
    <message>
        <source>Driver&apos;s function: %1</source>
        <translation>Funktion des Treibers: %1</translation>
    </message>
    <message>
        <source>Driver&apos;s status: %1</source>
        <translation>Status des Treibers: %1</translation>
    </message>
    <message>
        <source>Driver&apos;s message: %1</source>
        <translation>Meldung des Treibers: %1</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>Datei: %1</translation>
    </message>
    <message>
        <source>Section: %1</source>
        <translation>Bereich: %1</translation>
    </message>
    <message>
        <source>Address: %1 (hexadecimal)</source>
        <translation>Adresse: %1 (hexadezimal)</translation>
    </message>
    <message>
        <source>Byte: %1 (hexadecimal)</source>
        <translation>Byte: %1 (hexadezimal)</translation>
    </message>
    <message>
        <source>%1 instead of %2</source>
        <translation>%1 statt %2</translation>
    </message>
    <message>
        <source>Layouts: %1</source>
        <translation>Belegungen: %1</translation>
    </message>
    <message>
        <source>Write: %1</source>
        <translation>Schreibvorgang: %1</translation>
    </message>
    <message>
        <source>Backup: %1</source>
        <translation>Sicherung: %1</translation>
    </message>
    <message>
        <source>Reported by the system: %1</source>
        <translation>Meldung des Systems: %1</translation>
    </message>
    <message>
        <source>%1, %2</source>
        <translation>%1, %2</translation>
    </message>
    <message>
        <source>%1 for %2, %3</source>
        <translation>%1 für %2, %3</translation>
    </message>
    <message>
        <source>an untitled document</source>
        <translation>unbenanntes Dokument</translation>
    </message>
    <message>
        <source>The model %1 of the simulated keyboard has faults: %2</source>
        <translation>Das Modell %1 der simulierten Tastatur ist fehlerhaft: %2</translation>
    </message>
    <message>
        <source>The keyboard holds parts of several interrupted writes.</source>
        <translation>Die Tastatur enthält Teile mehrerer unterbrochener Schreibvorgänge.</translation>
    </message>
    <message>
        <source>Another program is writing to this keyboard, or to one of its kind that cannot be distinguished from it.</source>
        <translation>Ein anderes Programm schreibt gerade in diese Tastatur oder in eine baugleiche, die sich nicht von ihr unterscheiden lässt.</translation>
    </message>
    <message>
        <source>The document has placeholders instead of values. Replace them in a text editor, and open it again.</source>
        <translation>Das Dokument enthält Platzhalter statt Werten. Ersetzen Sie sie in einem Texteditor, und öffnen Sie es erneut.</translation>
    </message>
    <message>
        <source>The names of options in %1 are not used: %2</source>
        <translation>Die Namen von Optionen in %1 werden nicht verwendet: %2</translation>
    </message>
    <message>
        <source>success</source>
        <translation>erfolgreich</translation>
    </message>
    <message>
        <source>the keyboard is not open</source>
        <translation>es besteht keine Verbindung zur Tastatur</translation>
    </message>
    <message>
        <source>the keyboard is being used by another program</source>
        <translation>ein anderes Programm benutzt die Tastatur</translation>
    </message>
    <message>
        <source>not a keyboard file, or damaged</source>
        <translation>keine Tastaturdatei, oder sie ist beschädigt</translation>
    </message>
    <message>
        <source>a file could not be read or written</source>
        <translation>eine Datei ließ sich nicht lesen oder schreiben</translation>
    </message>
    <message>
        <source>the file is not of the expected kind, or damaged</source>
        <translation>die Datei ist nicht von der erwarteten Art oder beschädigt</translation>
    </message>
    <message>
        <source>the address or the size exceeds the keyboard&apos;s memory</source>
        <translation>Adresse oder Größe liegen außerhalb des Speichers der Tastatur</translation>
    </message>
    <message>
        <source>the directory has no such entry</source>
        <translation>das Verzeichnis hat keinen solchen Eintrag</translation>
    </message>
    <message>
        <source>the transfer was interrupted</source>
        <translation>die Übertragung wurde unterbrochen</translation>
    </message>
    <message>
        <source>a buffer or a file name is missing</source>
        <translation>ein Puffer oder ein Dateiname fehlt</translation>
    </message>
    <message>
        <source>the keyboard is not in position-programming mode</source>
        <translation>die Tastatur ist nicht im Positionsmodus</translation>
    </message>
    <message>
        <source>the keyboard has no such layer</source>
        <translation>die Tastatur hat keine solche Ebene</translation>
    </message>
    <message>
        <source>there is no such model, or it is invalid</source>
        <translation>es gibt kein solches Modell, oder es ist ungültig</translation>
    </message>
    <message>
        <source>the driver is busy with another call</source>
        <translation>der Treiber führt gerade einen anderen Aufruf aus</translation>
    </message>
    <message>
        <source>Line: %1</source>
        <translation>Zeile: %1</translation>
    </message>
    <message>
        <source>The keyboard&apos;s capabilities could not be read and count as absent.</source>
        <translation>Die Fähigkeiten der Tastatur konnten nicht gelesen werden und gelten als nicht vorhanden.</translation>
    </message>
    <message>
        <source>keyboard firmware</source>
        <translation>Die Firmware der Tastatur</translation>
    </message>
    <message>
        <source>chipcard reader firmware</source>
        <translation>Die Firmware des Chipkartenlesers</translation>
    </message>
    <message>
        <source>Resolve the interrupted write once the keyboard answers again.</source>
        <translation>Klären Sie dies, sobald die Tastatur wieder antwortet.</translation>
    </message>
    <message>
        <source>Resolve the interrupted write first.</source>
        <translation>Klären Sie zuerst den unterbrochenen Schreibvorgang.</translation>
    </message>
    <message>
        <source>First affected: %1.</source>
        <translation>Erste betroffene Einstellungen: %1.</translation>
    </message>
    <message>
        <source>The backup was made from a %1, whose modules differ from those of this %2.</source>
        <translation>Die Sicherung stammt von einer %1, die andere Module hat als diese %2.</translation>
    </message>
    <message>
        <source>This backup comes from another keyboard of this model, or from one that was connected differently.</source>
        <translation>Diese Sicherung stammt von einer anderen Tastatur dieses Modells oder von einer, die anders angeschlossen war.</translation>
    </message>
    <message>
        <source>This backup comes from another keyboard of this model (%1), or from one that was connected differently.</source>
        <translation>Diese Sicherung stammt von einer anderen Tastatur dieses Modells (%1) oder von einer, die anders angeschlossen war.</translation>
    </message>
    <message>
        <source>This backup belongs to %1, and no record shows which unit this keyboard is.</source>
        <translation>Diese Sicherung stammt von %1, und keine Aufzeichnung zeigt, zu welcher Einheit diese Tastatur gehört.</translation>
    </message>
    <message>
        <source>This backup belongs to %1, and according to the records this keyboard is %2.</source>
        <translation>Diese Sicherung stammt von %1; nach den Aufzeichnungen gehört diese Tastatur zu %2.</translation>
    </message>
    <message>
        <source>An unexpected error occurred.</source>
        <translation>Ein unerwarteter Fehler ist aufgetreten.</translation>
    </message>
</context>
<context>
    <name>Failures</name>
    <message>
        <source>%1: a text was cut to what a keyboard can hold (%2).</source>
        <translation>%1: Ein Text wurde auf die Länge gekürzt, die eine Tastatur speichern kann (%2).</translation>
    </message>
    <message>
        <source>%1: codes that no keyboard can hold were left out of a sequence (%2).</source>
        <translation>%1: In einer Folge wurden Codes ausgelassen, die keine Tastatur speichern kann (%2).</translation>
    </message>
    <message>
        <source>%1: a sequence was cut to what a keyboard can hold (%2).</source>
        <translation>%1: Eine Folge wurde auf die Länge gekürzt, die eine Tastatur speichern kann (%2).</translation>
    </message>
    <message>
        <source>%1 (Driver&apos;s status: %2)</source>
        <translation>%1 (Status des Treibers: %2)</translation>
    </message>
    <message>
        <source>Bytes of the backup for which this keyboard has no place: %1.</source>
        <translation>Bytes der Sicherung, für die diese Tastatur keinen Platz hat: %1.</translation>
    </message>
    <message>
        <source>%1: not all of this is in the backup; the rest stays as it is.</source>
        <translation>%1: nicht vollständig in der Sicherung enthalten; der Rest bleibt, wie er ist.</translation>
    </message>
    <message>
        <source>Nothing was written.</source>
        <translation>Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>The keyboard is partly written.</source>
        <translation>In der Tastatur steht nur ein Teil der neuen Daten.</translation>
    </message>
    <message>
        <source>The keyboard may be partly written.</source>
        <translation>In der Tastatur steht möglicherweise nur ein Teil der neuen Daten.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s contents have not changed.</source>
        <translation>Der Inhalt der Tastatur ist unverändert.</translation>
    </message>
    <message>
        <source>Only a second read showed that the write was complete.</source>
        <translation>Erst beim zweiten Lesen zeigte sich, dass alles geschrieben war.</translation>
    </message>
    <message>
        <source>The driver reported a failure, but the write was complete.</source>
        <translation>Der Treiber hat einen Fehler gemeldet, aber es wurde alles geschrieben.</translation>
    </message>
    <message>
        <source>%1: a number was limited to the range that a document allows (%2).</source>
        <translation>%1: Eine Zahl wurde auf den im Dokument erlaubten Bereich begrenzt (%2).</translation>
    </message>
</context>
<context>
    <name>Faults</name>
    <message>
        <source>more than %1 bytes</source>
        <translation>mehr als %1 Bytes</translation>
    </message>
    <message>
        <source>the text is UTF-16, not UTF-8</source>
        <translation>der Text ist UTF-16, nicht UTF-8</translation>
    </message>
    <message>
        <source>not valid JSON: the end is missing</source>
        <translation>kein gültiges JSON: das Ende fehlt</translation>
    </message>
    <message>
        <source>not valid JSON: line %1, at the end of %2</source>
        <translation>kein gültiges JSON: Zeile %1, am Ende von %2</translation>
    </message>
    <message>
        <source>the number %1 is too large</source>
        <translation>die Zahl %1 ist zu groß</translation>
    </message>
    <message>
        <source>objects and lists are nested more than %1 deep</source>
        <translation>Objekte und Listen sind tiefer als %1 Ebenen geschachtelt</translation>
    </message>
    <message>
        <source>an object has more than %1 members</source>
        <translation>ein Objekt hat mehr als %1 Elemente</translation>
    </message>
    <message>
        <source>the member %1 is given twice</source>
        <translation>das Element %1 steht zweimal darin</translation>
    </message>
    <message>
        <source>not a file of the format &quot;%1&quot;</source>
        <translation>keine Datei des Formats „%1“</translation>
    </message>
    <message>
        <source>version %1 is not known; this program reads version %2</source>
        <translation>die Version %1 ist unbekannt; dieses Programm liest Version %2</translation>
    </message>
    <message>
        <source>its contents have been changed since it was written</source>
        <translation>die Datei ist nicht mehr so, wie sie geschrieben wurde</translation>
    </message>
    <message>
        <source>there are more faults than are reported</source>
        <translation>es gibt mehr Fehler, als hier aufgeführt sind</translation>
    </message>
    <message>
        <source>unknown member %1</source>
        <translation>unbekanntes Element %1</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is missing</source>
        <translation>„%1“ fehlt</translation>
    </message>
    <message>
        <source>%1 is not an object</source>
        <translation>%1 ist kein Objekt</translation>
    </message>
    <message>
        <source>%1 is not a list</source>
        <translation>%1 ist keine Liste</translation>
    </message>
    <message>
        <source>%1 is not a list of %2 elements</source>
        <translation>%1 ist keine Liste mit %2 Einträgen</translation>
    </message>
    <message>
        <source>the list has more than %1 elements</source>
        <translation>die Liste hat mehr als %1 Einträge</translation>
    </message>
    <message>
        <source>the list is empty</source>
        <translation>die Liste ist leer</translation>
    </message>
    <message>
        <source>%1 is not a text</source>
        <translation>%1 ist kein Text</translation>
    </message>
    <message>
        <source>the text is empty</source>
        <translation>der Text ist leer</translation>
    </message>
    <message>
        <source>the text holds a character of code 0, which would end it</source>
        <translation>der Text enthält ein Zeichen mit dem Code 0, das ihn beenden würde</translation>
    </message>
    <message>
        <source>the text has %1 UTF-16 units, more than the %2 that fit</source>
        <translation>der Text hat %1 UTF-16-Einheiten; höchstens %2 passen hinein</translation>
    </message>
    <message>
        <source>%1 is not a text of at most %2 printable ASCII characters</source>
        <translation>%1 ist kein Text aus höchstens %2 druckbaren ASCII-Zeichen</translation>
    </message>
    <message>
        <source>%1 is neither true nor false</source>
        <translation>%1 ist weder true noch false</translation>
    </message>
    <message>
        <source>%1 is not a whole number from %2 to %3</source>
        <translation>%1 ist keine ganze Zahl von %2 bis %3</translation>
    </message>
    <message>
        <source>%1 is not a code from %2 to %3</source>
        <translation>%1 ist kein Code von %2 bis %3</translation>
    </message>
    <message>
        <source>%1 is neither a list of key codes nor a text</source>
        <translation>%1 ist weder eine Liste von Tastencodes noch ein Text</translation>
    </message>
    <message>
        <source>%1 is not one of: %2</source>
        <translation>%1 ist keiner der Werte %2</translation>
    </message>
    <message>
        <source>%1 is not a text of hexadecimal digits for whole bytes</source>
        <translation>%1 ist kein Text aus hexadezimalen Ziffern für ganze Bytes</translation>
    </message>
    <message>
        <source>%1 is not an identifier like {01234567-89AB-CDEF-0123-456789ABCDEF}</source>
        <translation>%1 ist keine Kennung der Form {01234567-89AB-CDEF-0123-456789ABCDEF}</translation>
    </message>
    <message>
        <source>%1 is not the name of a file</source>
        <translation>%1 ist kein Dateiname</translation>
    </message>
    <message>
        <source>%1 is not a module of a directory</source>
        <translation>%1 ist kein Modul eines Verzeichnisses</translation>
    </message>
    <message>
        <source>the sequence has %1 codes, more than the %2 that fit</source>
        <translation>die Folge hat %1 Codes; höchstens %2 passen hinein</translation>
    </message>
    <message>
        <source>a sequence as text needs a keyboard layout</source>
        <translation>eine Folge als Text braucht eine Tastaturbelegung</translation>
    </message>
    <message>
        <source>{0} would end the sequence in the keyboard</source>
        <translation>{0} würde die Folge in der Tastatur beenden</translation>
    </message>
    <message>
        <source>&quot;%1&quot; does not begin a placeholder like ${name}; write $${ for ${ itself</source>
        <translation>„%1“ ist nicht der Anfang eines Platzhalters wie ${name}; für ${ selbst schreiben Sie $${</translation>
    </message>
    <message>
        <source>a value is missing for %1</source>
        <translation>für %1 fehlt ein Wert</translation>
    </message>
    <message>
        <source>its variables give it more than %1 bytes</source>
        <translation>seine Variablen machen ihn länger als %1 Bytes</translation>
    </message>
    <message>
        <source>%1 is not a variable&apos;s name: a letter, and then letters, digits, hyphens and underscores</source>
        <translation>%1 ist kein Name einer Variablen: ein Buchstabe, dann Buchstaben, Ziffern, Binde- und Unterstriche</translation>
    </message>
    <message>
        <source>the list has more than one element with %1</source>
        <translation>die Liste hat mehr als einen Eintrag mit %1</translation>
    </message>
    <message>
        <source>key %1 is not programmable here</source>
        <translation>die Taste %1 lässt sich hier nicht belegen</translation>
    </message>
    <message>
        <source>key %1 is used more than once</source>
        <translation>die Taste %1 kommt mehr als einmal vor</translation>
    </message>
    <message>
        <source>the keyboard does not store this option; it can only be %1</source>
        <translation>die Tastatur speichert diese Option nicht; nur %1 ist möglich</translation>
    </message>
    <message>
        <source>this keyboard stores no identifier</source>
        <translation>diese Tastatur speichert keine Kennung</translation>
    </message>
    <message>
        <source>this keyboard has no such module</source>
        <translation>diese Tastatur hat dieses Modul nicht</translation>
    </message>
    <message>
        <source>the area, up to %1, overlaps that of %2, from %3 to %4</source>
        <translation>der Bereich bis %1 überschneidet sich mit dem von %2, von %3 bis %4</translation>
    </message>
    <message>
        <source>a range does not have as many new bytes as old ones</source>
        <translation>ein Bereich hat unterschiedlich viele alte und neue Bytes</translation>
    </message>
    <message>
        <source>the keyboard is damaged at address %1 (hexadecimal): a description holds half a character</source>
        <translation>der Speicher ist an der Adresse %1 (hexadezimal) beschädigt: eine Beschreibung enthält ein halbes Zeichen</translation>
    </message>
    <message>
        <source>was damaged in the keyboard when the backup was made</source>
        <translation>war in der Tastatur beschädigt, als die Sicherung angelegt wurde</translation>
    </message>
    <message>
        <source>no key of the layout types &quot;%1&quot;</source>
        <translation>keine Taste der Belegung erzeugt „%1“</translation>
    </message>
    <message>
        <source>character %1: a space or + is missing after %2</source>
        <translation>Zeichen %1: nach %2 fehlt ein Leerzeichen oder +</translation>
    </message>
    <message>
        <source>character %1: a space is missing after %2</source>
        <translation>Zeichen %1: nach %2 fehlt ein Leerzeichen</translation>
    </message>
    <message>
        <source>character %1: a key is missing after +</source>
        <translation>Zeichen %1: nach + fehlt eine Taste</translation>
    </message>
    <message>
        <source>character %1: %2 is not a code from 0 to 255</source>
        <translation>Zeichen %1: %2 ist kein Code von 0 bis 255</translation>
    </message>
    <message>
        <source>character %1: the closing &quot; is missing</source>
        <translation>Zeichen %1: das schließende Anführungszeichen fehlt</translation>
    </message>
    <message>
        <source>character %1: no key is called %2</source>
        <translation>Zeichen %1: keine Taste heißt %2</translation>
    </message>
    <message>
        <source>character %1: no key is called %2; the nearest: %3</source>
        <translation>Zeichen %1: keine Taste heißt %2; ähnlich heißen: %3</translation>
    </message>
    <message>
        <source>character %1: %2 could be %3</source>
        <translation>Zeichen %1: %2 ist mehrdeutig: %3</translation>
    </message>
    <message>
        <source>character %1: no key has the number %2</source>
        <translation>Zeichen %1: keine Taste hat die Nummer %2</translation>
    </message>
    <message>
        <source>character %1: %2, key %3, cannot be pressed through a sequence</source>
        <translation>Zeichen %1: %2, Taste %3, lässt sich nicht durch eine Folge drücken</translation>
    </message>
    <message>
        <source>the file cannot be read: it is not an ordinary file</source>
        <translation>die Datei ist nicht lesbar: sie ist keine gewöhnliche Datei</translation>
    </message>
    <message>
        <source>the file cannot be read</source>
        <translation>die Datei ist nicht lesbar</translation>
    </message>
    <message>
        <source>the file is larger than %1 MiB</source>
        <translation>die Datei ist größer als %1 MiB</translation>
    </message>
    <message>
        <source>the folder cannot be read: %1</source>
        <translation>der Ordner ist nicht lesbar: %1</translation>
    </message>
    <message>
        <source>no layout for language %1 among %2 layout files</source>
        <translation>keine Belegung für die Sprache %1 unter %2 Belegungsdateien</translation>
    </message>
    <message>
        <source>not NUMBER=TEXT</source>
        <translation>nicht von der Form NUMMER=TEXT</translation>
    </message>
    <message>
        <source>not UTF-8</source>
        <translation>kein UTF-8</translation>
    </message>
    <message>
        <source>a control character</source>
        <translation>ein Steuerzeichen</translation>
    </message>
    <message>
        <source>a layout has no string %1; the last is %2</source>
        <translation>eine Belegung hat keinen Text %1; der letzte ist %2</translation>
    </message>
    <message>
        <source>string %1 is already in line %2</source>
        <translation>der Text %1 steht schon in Zeile %2</translation>
    </message>
    <message>
        <source>&quot;%1&quot; is not a language id from 1 to 32767</source>
        <translation>„%1“ ist keine Sprachkennung von 1 bis 32767</translation>
    </message>
    <message>
        <source>the layout has no keys</source>
        <translation>die Belegung hat keine Tasten</translation>
    </message>
    <message>
        <source>position code %1: no &quot;%2&quot; in (top,left,width,height)</source>
        <translation>Positionscode %1: kein „%2“ in (oben,links,Breite,Höhe)</translation>
    </message>
    <message>
        <source>position code %1: &quot;%2&quot; is not a number</source>
        <translation>Positionscode %1: „%2“ ist keine Zahl</translation>
    </message>
    <message>
        <source>position code %1: %2 exceeds 16 bits</source>
        <translation>Positionscode %1: %2 passt nicht in 16 Bit</translation>
    </message>
    <message>
        <source>position code %1: the support is missing</source>
        <translation>Positionscode %1: die Ziffer für die Programmierbarkeit fehlt</translation>
    </message>
    <message>
        <source>position code %1: the support is &quot;%2&quot;, not 0, 1 or 2</source>
        <translation>Positionscode %1: die Ziffer für die Programmierbarkeit ist „%2“, nicht 0, 1 oder 2</translation>
    </message>
    <message>
        <source>position code %1: the colour set is missing</source>
        <translation>Positionscode %1: der Farbsatz fehlt</translation>
    </message>
    <message>
        <source>position code %1: the colour set is &quot;%2&quot;, not 0, 1 or 2</source>
        <translation>Positionscode %1: der Farbsatz ist „%2“, nicht 0, 1 oder 2</translation>
    </message>
    <message>
        <source>position code %1: the rectangle (top,left,width,height) is missing</source>
        <translation>Positionscode %1: das Rechteck (oben,links,Breite,Höhe) fehlt</translation>
    </message>
    <message>
        <source>position code %1: a key of %2 by %3 cannot be seen: more than 25 each way, or 0 by 0 for a key without a place</source>
        <translation>Positionscode %1: eine Taste von %2 mal %3 ist nicht zu sehen: mehr als 25 in jeder Richtung, oder 0 mal 0 für eine Taste ohne Platz</translation>
    </message>
    <message>
        <source>position code %1: the key has no caption</source>
        <translation>Positionscode %1: die Taste hat keine Beschriftung</translation>
    </message>
    <message>
        <source>%1 must be an item by itself, with blanks around it</source>
        <translation>%1 muss für sich stehen, mit Leerzeichen davor und danach</translation>
    </message>
    <message>
        <source>the block&apos;s first key is not its slot, key %1</source>
        <translation>die erste Taste des Blocks ist nicht sein Platz, Taste %1</translation>
    </message>
    <message>
        <source>the keyboard is damaged at address %1 (hexadecimal): key %2 is in group %3, and groups are 1 to %4</source>
        <translation>der Speicher ist an der Adresse %1 (hexadezimal) beschädigt: Taste %2 gehört zur Gruppe %3; es gibt nur die Gruppen 1 bis %4</translation>
    </message>
    <message>
        <source>the keyboard is damaged at address %1 (hexadecimal): keys %2 and %3 of group %4 both have a sequence, and a group has one</source>
        <translation>der Speicher ist an der Adresse %1 (hexadezimal) beschädigt: die Tasten %2 und %3 der Gruppe %4 haben je eine Folge; eine Gruppe hat nur eine</translation>
    </message>
</context>
<context>
    <name>FilesPage</name>
    <message>
        <source>Parameter memory</source>
        <translation>Parameterspeicher</translation>
    </message>
    <message>
        <source>Code page</source>
        <translation>Codepage</translation>
    </message>
    <message>
        <source>Compares the keyboard&apos;s code page with a file.</source>
        <translation>Vergleicht die Codepage der Tastatur mit einer Datei.</translation>
    </message>
    <message>
        <source>Compare with file…</source>
        <translation>Mit Datei vergleichen …</translation>
    </message>
    <message>
        <source>%1: replace the keyboard&apos;s contents with the file %2?</source>
        <translation>%1: Den Inhalt der Tastatur durch die Datei %2 ersetzen?</translation>
    </message>
    <message>
        <source>Reading from the keyboard…</source>
        <translation>Aus der Tastatur wird gelesen …</translation>
    </message>
    <message>
        <source>%1 was not saved.</source>
        <translation>%1 wurde nicht gespeichert.</translation>
    </message>
    <message>
        <source>Keyboard to file: %1 saved to %2.</source>
        <translation>Tastatur in Datei: %1 in %2 gespeichert.</translation>
    </message>
    <message>
        <source>Writing to the keyboard. Do not unplug it.</source>
        <translation>In die Tastatur wird geschrieben. Bitte nicht abziehen.</translation>
    </message>
    <message>
        <source>%1 was not loaded.</source>
        <translation>%1 wurde nicht geladen.</translation>
    </message>
    <message>
        <source>File to keyboard: %1 loaded from %2.</source>
        <translation>Datei in Tastatur: %1 aus %2 geladen.</translation>
    </message>
    <message>
        <source>The code page was not compared.</source>
        <translation>Die Codepage wurde nicht verglichen.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s code page equals %1.</source>
        <translation>Die Codepage der Tastatur stimmt mit %1 überein.</translation>
    </message>
    <message>
        <source>The keyboard&apos;s code page differs from %1.</source>
        <translation>Die Codepage der Tastatur weicht von %1 ab.</translation>
    </message>
    <message>
        <source>Keyboard firmware</source>
        <translation>Firmware der Tastatur</translation>
    </message>
    <message>
        <source>Chipcard reader firmware</source>
        <translation>Firmware des Chipkartenlesers</translation>
    </message>
    <message>
        <source>Load from file</source>
        <translation>Aus Datei laden</translation>
    </message>
    <message>
        <source>Save to file…</source>
        <translation>In Datei speichern …</translation>
    </message>
    <message>
        <source>Load from file…</source>
        <translation>Aus Datei laden …</translation>
    </message>
    <message>
        <source>The software of the chipcard reader, sent over the serial port set in Preferences.</source>
        <translation>Die Software des Chipkartenlesers, übertragen über die serielle Schnittstelle, die in den Voreinstellungen gewählt ist.</translation>
    </message>
    <message>
        <source>The software that runs on the keyboard.</source>
        <translation>Die Software, die in der Tastatur läuft.</translation>
    </message>
    <message>
        <source>The complete settings memory, in the driver&apos;s file format. After loading, read the keyboard to see its new contents.</source>
        <translation>Der gesamte Einstellungsspeicher im Dateiformat des Treibers. Lesen Sie die Tastatur nach dem Laden neu aus, um den neuen Inhalt zu sehen.</translation>
    </message>
</context>
<context>
    <name>FreeProgKeysFace</name>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten …</translation>
    </message>
    <message>
        <source>Edit the current key&apos;s sequence</source>
        <translation>Die Folge der gewählten Taste bearbeiten</translation>
    </message>
    <message>
        <source>Clear key</source>
        <translation>Taste leeren</translation>
    </message>
    <message>
        <source>Remove the current key&apos;s sequence</source>
        <translation>Die Folge der gewählten Taste entfernen</translation>
    </message>
    <message>
        <source>Clear all keys…</source>
        <translation>Alle Tasten leeren …</translation>
    </message>
    <message>
        <source>Remove the sequences of all keys</source>
        <translation>Die Folgen aller Tasten entfernen</translation>
    </message>
    <message>
        <source>The key sends:</source>
        <translation>Die Taste sendet:</translation>
    </message>
    <message>
        <source>This key cannot be programmed.</source>
        <translation>Diese Taste ist nicht belegbar.</translation>
    </message>
    <message>
        <source>Clear all keys of this module?</source>
        <translation>Alle Tasten dieses Moduls leeren?</translation>
    </message>
    <message>
        <source>This module has no place for this key in the keyboard.</source>
        <translation>Dieses Modul hat in der Tastatur keinen Platz für diese Taste.</translation>
    </message>
    <message>
        <source>Select a key first.</source>
        <translation>Wählen Sie zuerst eine Taste aus.</translation>
    </message>
</context>
<context>
    <name>HeldKeys</name>
    <message>
        <source>Shift</source>
        <translation>Umschalt</translation>
    </message>
    <message>
        <source>Ctrl</source>
        <translation>Strg</translation>
    </message>
    <message>
        <source>Alt</source>
        <translation>Alt</translation>
    </message>
    <message>
        <source>Alt Gr</source>
        <translation>Alt Gr</translation>
    </message>
    <message>
        <source>Hold %1 while the next key is pressed</source>
        <translation>%1 halten, während die nächste Taste gedrückt wird</translation>
    </message>
</context>
<context>
    <name>HelpWindow</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
</context>
<context>
    <name>InPlaceEditor</name>
    <message>
        <source>This key cannot be programmed.</source>
        <translation>Diese Taste ist nicht belegbar.</translation>
    </message>
    <message>
        <source>%1 sends: %2</source>
        <translation>%1 sendet: %2</translation>
    </message>
</context>
<context>
    <name>KeyActions</name>
    <message>
        <source>Edit</source>
        <translation>Bearbeiten</translation>
    </message>
    <message>
        <source>Cut</source>
        <translation>Ausschneiden</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>Kopieren</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>Einfügen</translation>
    </message>
    <message>
        <source>Duplicate to the next free key</source>
        <translation>Auf die nächste freie Taste duplizieren</translation>
    </message>
    <message>
        <source>Swap</source>
        <translation>Tauschen</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Fill a series</source>
        <translation>Reihe ausfüllen</translation>
    </message>
    <message>
        <source>Select all</source>
        <translation>Alle auswählen</translation>
    </message>
    <message numerus="yes">
        <source>%n keys</source>
        <translation>
            <numerusform>%n Taste</numerusform>
            <numerusform>%n Tasten</numerusform>
        </translation>
    </message>
    <message>
        <source>Paste into all</source>
        <translation>In alle einfügen</translation>
    </message>
    <message>
        <source>The clipboard has no key sequence.</source>
        <translation>Die Zwischenablage enthält keine Tastenfolge.</translation>
    </message>
    <message numerus="yes">
        <source>%n sequences were copied: select as many keys to paste them.</source>
        <translation>
            <numerusform>%n Folge wurde kopiert: Wählen Sie zum Einfügen eine Taste aus.</numerusform>
            <numerusform>%n Folgen wurden kopiert: Wählen Sie zum Einfügen ebenso viele Tasten aus.</numerusform>
        </translation>
    </message>
    <message>
        <source>No key after this one is free.</source>
        <translation>Keine Taste nach dieser ist frei.</translation>
    </message>
    <message numerus="yes">
        <source>%n keys cleared.</source>
        <translation>
            <numerusform>%n Taste geleert.</numerusform>
            <numerusform>%n Tasten geleert.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Pasted into %n keys.</source>
        <translation>
            <numerusform>In %n Taste eingefügt.</numerusform>
            <numerusform>In %n Tasten eingefügt.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 and %2 swapped.</source>
        <translation>%1 und %2 getauscht.</translation>
    </message>
    <message numerus="yes">
        <source>%n keys filled.</source>
        <translation>
            <numerusform>%n Taste belegt.</numerusform>
            <numerusform>%n Tasten belegt.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 overwritten.</source>
        <translation>%1 überschrieben.</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnehmen</translation>
    </message>
</context>
<context>
    <name>KeyEdits</name>
    <message>
        <source>%1 cannot be programmed. Nothing has been changed.</source>
        <translation>%1 ist nicht belegbar. Es wurde nichts geändert.</translation>
    </message>
    <message>
        <source>%1 has room for %2 codes, but the sequence has %3. Nothing has been changed.</source>
        <translation>%1 hat Platz für %2 Codes, die Tastenfolge hat aber %3. Es wurde nichts geändert.</translation>
    </message>
</context>
<context>
    <name>KeyMarks</name>
    <message>
        <source>Changed, and not yet written to the keyboard</source>
        <translation>Geändert und noch nicht in die Tastatur geschrieben</translation>
    </message>
    <message>
        <source>Never sent: another module programs this key</source>
        <translation>Wird nie gesendet: Ein anderes Modul belegt diese Taste</translation>
    </message>
</context>
<context>
    <name>KeyPalette</name>
    <message>
        <source>Find a key</source>
        <translation>Taste suchen</translation>
    </message>
    <message>
        <source>Keys to add</source>
        <translation>Tasten zum Anfügen</translation>
    </message>
    <message>
        <source>A–Z</source>
        <translation>A–Z</translation>
    </message>
    <message>
        <source>F1–F12</source>
        <translation>F1–F12</translation>
    </message>
    <message>
        <source>Navigation</source>
        <translation>Cursor</translation>
    </message>
    <message>
        <source>Ctrl/Alt</source>
        <translation>Strg/Alt</translation>
    </message>
    <message>
        <source>Keypad</source>
        <translation>Num</translation>
    </message>
</context>
<context>
    <name>KeySheet</name>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Layout: %1</source>
        <translation>Belegung: %1</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Caption</source>
        <translation>Beschriftung</translation>
    </message>
    <message>
        <source>Sequence</source>
        <translation>Folge</translation>
    </message>
    <message>
        <source>No key is programmed.</source>
        <translation>Keine Taste ist belegt.</translation>
    </message>
    <message>
        <source>Layer %1</source>
        <translation>Ebene %1</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Readers</source>
        <translation>Leser</translation>
    </message>
    <message>
        <source>Input</source>
        <translation>Eingang</translation>
    </message>
    <message>
        <source>Prefix</source>
        <translation>Präfix</translation>
    </message>
    <message>
        <source>Suffix</source>
        <translation>Suffix</translation>
    </message>
    <message>
        <source>Track %1</source>
        <translation>Spur %1</translation>
    </message>
    <message>
        <source>%1 (not read)</source>
        <translation>%1 (nicht gelesen)</translation>
    </message>
    <message>
        <source>Reader %1</source>
        <translation>Leser %1</translation>
    </message>
    <message>
        <source>(empty)</source>
        <translation>(leer)</translation>
    </message>
    <message>
        <source>(off)</source>
        <translation>(aus)</translation>
    </message>
    <message>
        <source>(off) %1</source>
        <translation>(aus) %1</translation>
    </message>
    <message>
        <source>%1 (continued)</source>
        <translation>%1 (Fortsetzung)</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
</context>
<context>
    <name>KeyboardMenu</name>
    <message>
        <source>&amp;Read from keyboard</source>
        <translation>Aus Tastatur &amp;lesen</translation>
    </message>
    <message>
        <source>&amp;Write to keyboard</source>
        <translation>In Tastatur &amp;schreiben</translation>
    </message>
    <message>
        <source>Resolve &amp;interrupted write…</source>
        <translation>&amp;Unterbrochenen Schreibvorgang klären …</translation>
    </message>
    <message>
        <source>&amp;Connect again</source>
        <translation>&amp;Neu verbinden</translation>
    </message>
    <message>
        <source>Use a &amp;driver library…</source>
        <translation>&amp;Treiberbibliothek verwenden …</translation>
    </message>
    <message>
        <source>Use the &amp;simulated keyboard</source>
        <translation>&amp;Simulierte Tastatur verwenden</translation>
    </message>
    <message>
        <source>Driver libraries (*.dll)</source>
        <translation>Treiberbibliotheken (*.dll)</translation>
    </message>
    <message>
        <source>Driver libraries (*.so)</source>
        <translation>Treiberbibliotheken (*.so)</translation>
    </message>
    <message>
        <source>Use a driver library</source>
        <translation>Treiberbibliothek verwenden</translation>
    </message>
    <message>
        <source>No write to this keyboard was interrupted.</source>
        <translation>Für diese Tastatur gibt es keinen unterbrochenen Schreibvorgang.</translation>
    </message>
    <message>
        <source>Connecting the keyboard…</source>
        <translation>Die Tastatur wird verbunden …</translation>
    </message>
    <message>
        <source>Read all settings of the keyboard into the document (Ctrl+R)</source>
        <translation>Alle Einstellungen der Tastatur in das Dokument lesen (Strg+R)</translation>
    </message>
    <message>
        <source>Review the document&apos;s changes, write them and read them back (Ctrl+Shift+W)</source>
        <translation>Die Änderungen des Dokuments prüfen, schreiben und zurücklesen (Strg+Umschalt+W)</translation>
    </message>
    <message>
        <source>Check that the keyboard is plugged in, that no other program uses it, and that the chosen driver library belongs to it.</source>
        <translation>Prüfen Sie, ob die Tastatur angeschlossen ist, ob kein anderes Programm sie benutzt und ob die gewählte Treiberbibliothek zu ihr gehört.</translation>
    </message>
</context>
<context>
    <name>KeyboardPicture</name>
    <message>
        <source>Picture of the keyboard</source>
        <translation>Bild der Tastatur</translation>
    </message>
    <message>
        <source>%1, programmed: %2</source>
        <translation>%1, belegt: %2</translation>
    </message>
</context>
<context>
    <name>LayerActions</name>
    <message>
        <source>Name of this layer</source>
        <translation>Name dieser Ebene</translation>
    </message>
    <message>
        <source>Copy or swap</source>
        <translation>Kopieren oder tauschen</translation>
    </message>
    <message>
        <source>Layer %1</source>
        <translation>Ebene %1</translation>
    </message>
    <message>
        <source>&amp;Copy to layer</source>
        <translation>In Ebene &amp;kopieren</translation>
    </message>
    <message>
        <source>&amp;Swap with layer</source>
        <translation>Mit Ebene &amp;tauschen</translation>
    </message>
    <message>
        <source>Layer %1 now has the keys of layer %2.</source>
        <translation>Ebene %1 hat jetzt die Tasten von Ebene %2.</translation>
    </message>
    <message>
        <source>Layers %1 and %2 have been swapped.</source>
        <translation>Die Ebenen %1 und %2 wurden getauscht.</translation>
    </message>
    <message>
        <source>Copy or swap layer</source>
        <translation>Ebene kopieren oder tauschen</translation>
    </message>
</context>
<context>
    <name>LayeredFuncKeysFace</name>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten …</translation>
    </message>
    <message>
        <source>Edit the current key&apos;s sequence</source>
        <translation>Die Folge der gewählten Taste bearbeiten</translation>
    </message>
    <message>
        <source>Clear key</source>
        <translation>Taste leeren</translation>
    </message>
    <message>
        <source>Remove the current key&apos;s sequence</source>
        <translation>Die Folge der gewählten Taste entfernen</translation>
    </message>
    <message>
        <source>Clear layer…</source>
        <translation>Ebene leeren …</translation>
    </message>
    <message>
        <source>Remove the sequences of this layer</source>
        <translation>Die Folgen dieser Ebene entfernen</translation>
    </message>
    <message>
        <source>Clear all layers…</source>
        <translation>Alle Ebenen leeren …</translation>
    </message>
    <message>
        <source>Remove the sequences of all layers</source>
        <translation>Die Folgen aller Ebenen entfernen</translation>
    </message>
    <message>
        <source>The key sends:</source>
        <translation>Die Taste sendet:</translation>
    </message>
    <message>
        <source>Clear all keys of layer %1?</source>
        <translation>Alle Tasten der Ebene %1 leeren?</translation>
    </message>
    <message>
        <source>Clear all keys of all layers?</source>
        <translation>Alle Tasten aller Ebenen leeren?</translation>
    </message>
    <message>
        <source>Has changes that are not yet written to the keyboard</source>
        <translation>Enthält Änderungen, die noch nicht in die Tastatur geschrieben sind</translation>
    </message>
    <message>
        <source>Select a key first.</source>
        <translation>Wählen Sie zuerst eine Taste aus.</translation>
    </message>
</context>
<context>
    <name>LayoutCaps</name>
    <message>
        <source>Key %1</source>
        <translation>Taste %1</translation>
    </message>
</context>
<context>
    <name>LintWords</name>
    <message>
        <source>Key %1 is pressed and never released.</source>
        <translation>Die Taste %1 wird gedrückt und nie losgelassen.</translation>
    </message>
    <message>
        <source>Key %1 is released and was not pressed.</source>
        <translation>Die Taste %1 wird losgelassen, ohne gedrückt zu sein.</translation>
    </message>
    <message>
        <source>Key %1 is released and was not pressed; a sequence cannot press key %2.</source>
        <translation>Die Taste %1 wird losgelassen, ohne gedrückt zu sein; die Taste %2 kann eine Folge nicht drücken.</translation>
    </message>
    <message>
        <source>This layout has no key %1.</source>
        <translation>Diese Belegung hat keine Taste %1.</translation>
    </message>
    <message>
        <source>Never sent, as the key sends the sequence of %1 instead.</source>
        <translation>Wird nie gesendet, da die Taste stattdessen die Folge von %1 sendet.</translation>
    </message>
</context>
<context>
    <name>MagnetCardFace</name>
    <message>
        <source>Tracks</source>
        <translation>Spuren</translation>
    </message>
    <message>
        <source>All tracks</source>
        <translation>Alle Spuren</translation>
    </message>
    <message>
        <source>This track</source>
        <translation>Diese Spur</translation>
    </message>
    <message>
        <source>Keys sent before and after the track&apos;s data</source>
        <translation>Tasten vor und nach den Daten der Spur</translation>
    </message>
    <message>
        <source>Edit…</source>
        <translation>Bearbeiten …</translation>
    </message>
    <message>
        <source>Edit the prefix</source>
        <translation>Das Präfix bearbeiten</translation>
    </message>
    <message>
        <source>Remove</source>
        <translation>Entfernen</translation>
    </message>
    <message>
        <source>Remove the prefix</source>
        <translation>Das Präfix entfernen</translation>
    </message>
    <message>
        <source>Edit the suffix</source>
        <translation>Das Suffix bearbeiten</translation>
    </message>
    <message>
        <source>Remove the suffix</source>
        <translation>Das Suffix entfernen</translation>
    </message>
    <message>
        <source>This keyboard cannot read track %1.</source>
        <translation>Diese Tastatur kann Spur %1 nicht lesen.</translation>
    </message>
    <message>
        <source>Tracks: none</source>
        <translation>Spuren: keine</translation>
    </message>
    <message>
        <source>Tracks: %1</source>
        <translation>Spuren: %1</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>&amp;Document</source>
        <translation>&amp;Dokument</translation>
    </message>
    <message>
        <source>&amp;Quit</source>
        <translation>&amp;Beenden</translation>
    </message>
    <message>
        <source>&amp;Edit</source>
        <translation>&amp;Bearbeiten</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>&amp;Redo</source>
        <translation>&amp;Wiederholen</translation>
    </message>
    <message>
        <source>&amp;Find</source>
        <translation>&amp;Suchen</translation>
    </message>
    <message>
        <source>&amp;Keyboard</source>
        <translation>&amp;Tastatur</translation>
    </message>
    <message>
        <source>&amp;Go</source>
        <translation>&amp;Gehe zu</translation>
    </message>
    <message>
        <source>&amp;Help</source>
        <translation>&amp;Hilfe</translation>
    </message>
    <message>
        <source>&amp;About</source>
        <translation>&amp;Über</translation>
    </message>
    <message>
        <source>About</source>
        <translation>Über</translation>
    </message>
    <message>
        <source>QXControls %1: programs modular point-of-sale keyboards.</source>
        <translation>QXControls %1: programmiert modulare Kassentastaturen.</translation>
    </message>
    <message>
        <source>Main</source>
        <translation>Symbolleiste</translation>
    </message>
    <message>
        <source>One document is open at a time; not opened: %1.</source>
        <translation>Es ist immer nur ein Dokument geöffnet; nicht geöffnet: %1.</translation>
    </message>
    <message>
        <source>&amp;Help on this page</source>
        <translation>&amp;Hilfe zu dieser Seite</translation>
    </message>
    <message>
        <source>&amp;What is this?</source>
        <translation>&amp;Was ist das?</translation>
    </message>
    <message>
        <source>Undo</source>
        <translation>Rückgängig</translation>
    </message>
    <message>
        <source>Show</source>
        <translation>Anzeigen</translation>
    </message>
    <message>
        <source>Changes in the document</source>
        <translation>Änderungen im Dokument</translation>
    </message>
    <message>
        <source>Before</source>
        <translation>Vorher</translation>
    </message>
    <message>
        <source>As read from the keyboard</source>
        <translation>Wie aus der Tastatur gelesen</translation>
    </message>
    <message>
        <source>Resolve…</source>
        <translation>Klären …</translation>
    </message>
    <message>
        <source>Show backups</source>
        <translation>Sicherungen anzeigen</translation>
    </message>
    <message>
        <source>%1[*] — QXControls</source>
        <translation>%1[*] – QXControls</translation>
    </message>
</context>
<context>
    <name>ModulePage</name>
    <message>
        <source>This keyboard does not have this module. The document keeps these settings; writing leaves them out.</source>
        <translation>Diese Tastatur hat dieses Modul nicht. Das Dokument behält diese Einstellungen; beim Schreiben werden sie ausgelassen.</translation>
    </message>
    <message>
        <source>This keyboard does not have this module.</source>
        <translation>Diese Tastatur hat dieses Modul nicht.</translation>
    </message>
    <message>
        <source>The document has no settings for this module, and writing leaves the keyboard&apos;s as they are. Changes made here become part of the document.</source>
        <translation>Das Dokument hat keine Einstellungen für dieses Modul; beim Schreiben bleiben die der Tastatur unverändert. Änderungen hier werden Teil des Dokuments.</translation>
    </message>
</context>
<context>
    <name>NoticeBar</name>
    <message>
        <source>Close this message</source>
        <translation>Diese Meldung schließen</translation>
    </message>
    <message>
        <source>Details</source>
        <translation>Einzelheiten</translation>
    </message>
</context>
<context>
    <name>OverviewPage</name>
    <message>
        <source>not yet</source>
        <translation>noch nicht</translation>
    </message>
    <message>
        <source>running</source>
        <translation>läuft</translation>
    </message>
    <message>
        <source>done</source>
        <translation>fertig</translation>
    </message>
    <message>
        <source>failed</source>
        <translation>fehlgeschlagen</translation>
    </message>
    <message>
        <source>&amp;Try again</source>
        <translation>&amp;Erneut versuchen</translation>
    </message>
    <message>
        <source>Use the &amp;simulated keyboard</source>
        <translation>&amp;Simulierte Tastatur verwenden</translation>
    </message>
    <message>
        <source>Modules</source>
        <translation>Module</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Address</source>
        <translation>Adresse</translation>
    </message>
    <message>
        <source>Bootloader</source>
        <translation>Bootloader</translation>
    </message>
    <message>
        <source>Country</source>
        <translation>Land</translation>
    </message>
    <message>
        <source>Configuration</source>
        <translation>Konfiguration</translation>
    </message>
    <message>
        <source>V.24 connection</source>
        <translation>V.24-Anschluss</translation>
    </message>
    <message>
        <source>chipcard reader</source>
        <translation>Chipkartenleser</translation>
    </message>
    <message>
        <source>barcode reader</source>
        <translation>Barcodeleser</translation>
    </message>
    <message>
        <source>magnetic track 1</source>
        <translation>Magnetspur 1</translation>
    </message>
    <message>
        <source>magnetic track 2</source>
        <translation>Magnetspur 2</translation>
    </message>
    <message>
        <source>magnetic track 3</source>
        <translation>Magnetspur 3</translation>
    </message>
    <message>
        <source>magnetic track 4</source>
        <translation>Magnetspur 4</translation>
    </message>
    <message>
        <source>Kind</source>
        <translation>Art</translation>
    </message>
    <message>
        <source>simulated keyboard</source>
        <translation>simulierte Tastatur</translation>
    </message>
    <message>
        <source>keyboard behind a driver library</source>
        <translation>Tastatur an einer Treiberbibliothek</translation>
    </message>
    <message>
        <source>Technical details</source>
        <translation>Technische Einzelheiten</translation>
    </message>
    <message>
        <source>No keyboard</source>
        <translation>Keine Tastatur</translation>
    </message>
    <message>
        <source>A write to this keyboard was interrupted.</source>
        <translation>Das Schreiben in diese Tastatur wurde unterbrochen.</translation>
    </message>
    <message>
        <source>Firmware</source>
        <translation>Firmware</translation>
    </message>
    <message>
        <source>no modules</source>
        <translation>keine Module</translation>
    </message>
    <message>
        <source>free keys</source>
        <translation>freie Tasten</translation>
    </message>
    <message>
        <source>Opening the driver</source>
        <translation>Treiber öffnen</translation>
    </message>
    <message>
        <source>Finding the keyboard&apos;s modules</source>
        <translation>Module der Tastatur ermitteln</translation>
    </message>
    <message>
        <source>Reading its name and versions</source>
        <translation>Name und Versionen lesen</translation>
    </message>
    <message>
        <source>Features</source>
        <translation>Ausstattung</translation>
    </message>
    <message>
        <source>not tried</source>
        <translation>nicht ausgeführt</translation>
    </message>
</context>
<context>
    <name>PageBook</name>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Not in this keyboard (%1)</source>
        <translation>Nicht in dieser Tastatur (%1)</translation>
    </message>
    <message numerus="yes">
        <source>%n module(s) that this keyboard does not have</source>
        <translation>
            <numerusform>Ein Modul, das diese Tastatur nicht hat</numerusform>
            <numerusform>%n Module, die diese Tastatur nicht hat</numerusform>
        </translation>
    </message>
    <message>
        <source>%1 (absent)</source>
        <translation>%1 (nicht vorhanden)</translation>
    </message>
    <message>
        <source>Hide absent pages (%1)</source>
        <translation>Fehlende Seiten ausblenden (%1)</translation>
    </message>
</context>
<context>
    <name>PosFace</name>
    <message>
        <source>Blocks:</source>
        <translation>Blöcke:</translation>
    </message>
    <message>
        <source>Edit blocks…</source>
        <translation>Blöcke bearbeiten …</translation>
    </message>
    <message>
        <source>Group keys into blocks that send one sequence</source>
        <translation>Tasten zu Blöcken zusammenfassen, die eine Folge senden</translation>
    </message>
    <message>
        <source>Remove all blocks and their sequences</source>
        <translation>Alle Blöcke und ihre Folgen entfernen</translation>
    </message>
    <message>
        <source>Remove all POS blocks?</source>
        <translation>Alle POS-Blöcke entfernen?</translation>
    </message>
    <message numerus="yes">
        <source>%n block(s)</source>
        <translation>
            <numerusform>Ein Block</numerusform>
            <numerusform>%n Blöcke</numerusform>
        </translation>
    </message>
    <message>
        <source>No block</source>
        <translation>Kein Block</translation>
    </message>
    <message numerus="yes">
        <source>Block %1 (%n key(s))</source>
        <translation>
            <numerusform>Block %1 (%n Taste)</numerusform>
            <numerusform>Block %1 (%n Tasten)</numerusform>
        </translation>
    </message>
    <message>
        <source>Remove all…</source>
        <translation>Alle entfernen …</translation>
    </message>
</context>
<context>
    <name>PreferenceEditors</name>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Classic</source>
        <translation>Klassisch</translation>
    </message>
    <message>
        <source>Other (%1)</source>
        <translation>Andere (%1)</translation>
    </message>
    <message>
        <source>Your own</source>
        <translation>Eigene</translation>
    </message>
    <message>
        <source>Colour &amp;set:</source>
        <translation>&amp;Farbschema:</translation>
    </message>
    <message>
        <source>None</source>
        <translation>Keine</translation>
    </message>
    <message>
        <source>Code page of the POS keys</source>
        <translation>Codepage der POS-Tasten</translation>
    </message>
    <message>
        <source>F&amp;ile:</source>
        <translation>Date&amp;i:</translation>
    </message>
    <message>
        <source>&amp;Forget</source>
        <translation>Ve&amp;rgessen</translation>
    </message>
    <message>
        <source>Forget the last document</source>
        <translation>Das letzte Dokument vergessen</translation>
    </message>
    <message>
        <source>Last document:</source>
        <translation>Letztes Dokument:</translation>
    </message>
    <message>
        <source>B&amp;rowse…</source>
        <translation>D&amp;urchsuchen …</translation>
    </message>
    <message>
        <source>Ask</source>
        <translation>Auswahl beim Start</translation>
    </message>
    <message>
        <source>Read the keyboard</source>
        <translation>Tastatur lesen</translation>
    </message>
    <message>
        <source>Open the last document</source>
        <translation>Letztes Dokument öffnen</translation>
    </message>
    <message>
        <source>Start from the defaults</source>
        <translation>Mit den Werkseinstellungen beginnen</translation>
    </message>
    <message>
        <source>&amp;Begin with:</source>
        <translation>Beginnen m&amp;it:</translation>
    </message>
</context>
<context>
    <name>PreferencesPage</name>
    <message>
        <source>General</source>
        <translation>Allgemein</translation>
    </message>
    <message>
        <source>Languages</source>
        <translation>Sprachen</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Key display</source>
        <translation>Tastenanzeige</translation>
    </message>
    <message>
        <source>POS keys</source>
        <translation>POS-Tasten</translation>
    </message>
    <message>
        <source>While you work</source>
        <translation>Bei der Arbeit</translation>
    </message>
    <message>
        <source>&amp;Save documents automatically</source>
        <translation>Dokumente &amp;automatisch speichern</translation>
    </message>
    <message>
        <source>Open the &amp;test page after writing</source>
        <translation>Nach dem Schreiben die Seite „A&amp;usprobieren“ öffnen</translation>
    </message>
    <message>
        <source>Show key &amp;releases in sequences</source>
        <translation>&amp;Loslassen von Tasten in Folgen anzeigen</translation>
    </message>
    <message>
        <source>&amp;Open the sequence editor:</source>
        <translation>Den Folgen&amp;editor öffnen:</translation>
    </message>
    <message>
        <source>With its button</source>
        <translation>Über die Schaltfläche</translation>
    </message>
    <message>
        <source>With its button or by typing on a sequence</source>
        <translation>Über die Schaltfläche oder durch Tippen in einer Folge</translation>
    </message>
    <message>
        <source>The program</source>
        <translation>Programm</translation>
    </message>
    <message>
        <source>&amp;Language:</source>
        <translation>&amp;Sprache:</translation>
    </message>
    <message>
        <source>The keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Standard (English, United States)</source>
        <translation>Standard (Englisch, USA)</translation>
    </message>
    <message>
        <source>Key la&amp;yout:</source>
        <translation>Tastaturbe&amp;legung:</translation>
    </message>
    <message>
        <source>Connection</source>
        <translation>Verbindung</translation>
    </message>
    <message>
        <source>Serial &amp;port:</source>
        <translation>Serielle S&amp;chnittstelle:</translation>
    </message>
    <message>
        <source>&amp;Baud rate (the driver&apos;s index):</source>
        <translation>Ba&amp;udrate (Index des Treibers):</translation>
    </message>
    <message>
        <source>&amp;Oldest suitable version:</source>
        <translation>Ä&amp;lteste geeignete Version:</translation>
    </message>
    <message>
        <source>Captions</source>
        <translation>Beschriftungen</translation>
    </message>
    <message>
        <source> pt</source>
        <translation> pt</translation>
    </message>
    <message>
        <source>Colours</source>
        <translation>Farben</translation>
    </message>
    <message>
        <source>&amp;Programmed keys:</source>
        <translation>B&amp;elegte Tasten:</translation>
    </message>
    <message>
        <source>E&amp;mpty keys:</source>
        <translation>&amp;Leere Tasten:</translation>
    </message>
    <message>
        <source>The &amp;current key:</source>
        <translation>Die ge&amp;wählte Taste:</translation>
    </message>
    <message>
        <source>Keys that are &amp;not used:</source>
        <translation>&amp;Unbenutzte Tasten:</translation>
    </message>
    <message>
        <source>Empty</source>
        <translation>Leer</translation>
    </message>
    <message>
        <source>Current</source>
        <translation>Gewählt</translation>
    </message>
    <message>
        <source>Unused</source>
        <translation>Unbenutzt</translation>
    </message>
    <message>
        <source>Preview</source>
        <translation>Vorschau</translation>
    </message>
    <message>
        <source>Code page</source>
        <translation>Codepage</translation>
    </message>
    <message>
        <source>The &amp;current block:</source>
        <translation>Der g&amp;ewählte Block:</translation>
    </message>
    <message>
        <source>Keys in &amp;no block:</source>
        <translation>Taste&amp;n ohne Block:</translation>
    </message>
    <message>
        <source>Reset to defaults</source>
        <translation>Auf Vorgaben zurücksetzen</translation>
    </message>
    <message>
        <source>Set all preferences to their defaults? The font size, the code page, what to begin with and the window&apos;s position do not change.</source>
        <translation>Alle Voreinstellungen auf ihre Vorgaben setzen? Schriftgröße, Codepage, die Auswahl beim Start und die Position des Fensters ändern sich nicht.</translation>
    </message>
    <message>
        <source>Light</source>
        <translation>Hell</translation>
    </message>
    <message>
        <source>Dark</source>
        <translation>Dunkel</translation>
    </message>
    <message>
        <source>Appearance</source>
        <translation>Erscheinungsbild</translation>
    </message>
    <message>
        <source>&amp;Windows and keys:</source>
        <translation>Fen&amp;ster und Tasten:</translation>
    </message>
    <message>
        <source>Reset to defa&amp;ults…</source>
        <translation>Auf &amp;Vorgaben zurücksetzen …</translation>
    </message>
    <message>
        <source>Same as system</source>
        <translation>Wie das System</translation>
    </message>
    <message>
        <source>At startup</source>
        <translation>Beim Start</translation>
    </message>
    <message>
        <source>Chipcard reader firmware</source>
        <translation>Firmware des Chipkartenlesers</translation>
    </message>
    <message>
        <source>Check the firmware at &amp;startup</source>
        <translation>Firmware beim &amp;Start prüfen</translation>
    </message>
    <message>
        <source>Programmed</source>
        <translation>Belegt</translation>
    </message>
    <message>
        <source>&amp;Command delta (stored for other programs):</source>
        <translation>Be&amp;fehlsversatz (für andere Programme gespeichert):</translation>
    </message>
    <message>
        <source>Keyboard firmware</source>
        <translation>Firmware der Tastatur</translation>
    </message>
    <message>
        <source>Colour %1:</source>
        <translation>Farbe %1:</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Farbe %1</translation>
    </message>
    <message>
        <source>In no block</source>
        <translation>In keinem Block</translation>
    </message>
    <message>
        <source>Smallest &amp;font size:</source>
        <translation>&amp;Kleinste Schriftgröße:</translation>
    </message>
    <message>
        <source>A keyboard that has its own layout is shown with that one.</source>
        <translation>Eine Tastatur mit eigener Belegung wird mit dieser gezeigt.</translation>
    </message>
    <message>
        <source>The connected keyboard has its own layout: %1.</source>
        <translation>Die verbundene Tastatur hat eine eigene Belegung: %1.</translation>
    </message>
</context>
<context>
    <name>Problems</name>
    <message>
        <source>%1 could not be read.</source>
        <translation>%1 konnte nicht gelesen werden.</translation>
    </message>
    <message>
        <source>%1 could not be written.</source>
        <translation>%1 konnte nicht geschrieben werden.</translation>
    </message>
    <message>
        <source>%1 could not be created.</source>
        <translation>%1 konnte nicht angelegt werden.</translation>
    </message>
    <message>
        <source>%1 could not be removed.</source>
        <translation>%1 konnte nicht gelöscht werden.</translation>
    </message>
    <message>
        <source>The program %1 could not be started.</source>
        <translation>Das Programm %1 konnte nicht gestartet werden.</translation>
    </message>
    <message>
        <source>The library %1 could not be loaded.</source>
        <translation>Die Bibliothek %1 konnte nicht geladen werden.</translation>
    </message>
    <message>
        <source>It is not an ordinary file.</source>
        <translation>Es ist keine gewöhnliche Datei.</translation>
    </message>
    <message>
        <source>The file is write-protected.</source>
        <translation>Die Datei ist schreibgeschützt.</translation>
    </message>
    <message>
        <source>It is a folder.</source>
        <translation>Es ist ein Ordner.</translation>
    </message>
    <message>
        <source>It is a device, not a file.</source>
        <translation>Es ist ein Gerät, keine Datei.</translation>
    </message>
    <message>
        <source>There is no folder %1.</source>
        <translation>Den Ordner %1 gibt es nicht.</translation>
    </message>
    <message>
        <source>The folder %1 cannot be used.</source>
        <translation>Der Ordner %1 kann nicht verwendet werden.</translation>
    </message>
    <message>
        <source>It is a broken link.</source>
        <translation>Die Verknüpfung führt ins Leere.</translation>
    </message>
    <message>
        <source>The file has more than %1 bytes.</source>
        <translation>Die Datei hat mehr als %1 Bytes.</translation>
    </message>
    <message>
        <source>It delivers no data.</source>
        <translation>Von dort kommen keine Daten.</translation>
    </message>
    <message>
        <source>The file already exists.</source>
        <translation>Diese Datei gibt es bereits.</translation>
    </message>
    <message>
        <source>The user&apos;s folder is unknown: none of these variables is set: %1.</source>
        <translation>Der Ordner des Benutzers ist unbekannt: Keine dieser Variablen ist gesetzt: %1.</translation>
    </message>
    <message>
        <source>The file, or a library that it needs, is missing.</source>
        <translation>Die Datei oder eine Bibliothek, die sie benötigt, fehlt.</translation>
    </message>
    <message>
        <source>The file is not a library that this program can load.</source>
        <translation>Die Datei ist keine Bibliothek, die dieses Programm laden kann.</translation>
    </message>
    <message>
        <source>The file is neither a 32-bit nor a 64-bit library.</source>
        <translation>Die Datei ist weder eine 32-Bit- noch eine 64-Bit-Bibliothek.</translation>
    </message>
    <message>
        <source>A %1-bit driver library needs the program %2, which is missing.</source>
        <translation>Eine %1-Bit-Treiberbibliothek benötigt das Programm %2, das fehlt.</translation>
    </message>
    <message>
        <source>%1 is of a different version from this program.</source>
        <translation>%1 hat nicht die gleiche Version wie dieses Programm.</translation>
    </message>
    <message>
        <source>The library lacks these functions: %1.</source>
        <translation>Der Bibliothek fehlen diese Funktionen: %1.</translation>
    </message>
    <message>
        <source>The driver wrote beyond the end of a buffer.</source>
        <translation>Der Treiber hat über das Ende eines Puffers hinaus geschrieben.</translation>
    </message>
    <message>
        <source>The driver did not answer within %1 seconds.</source>
        <translation>Der Treiber hat %1 Sekunden lang nicht geantwortet.</translation>
    </message>
    <message>
        <source>The driver gave an invalid answer.</source>
        <translation>Der Treiber hat eine ungültige Antwort gegeben.</translation>
    </message>
    <message>
        <source>The driver closed its connection.</source>
        <translation>Der Treiber hat die Verbindung geschlossen.</translation>
    </message>
    <message>
        <source>The driver did not answer when the program was to end.</source>
        <translation>Der Treiber hat nicht geantwortet, als das Programm beendet werden sollte.</translation>
    </message>
    <message>
        <source>The driver ended its process with status %1.</source>
        <translation>Der Treiber hat seinen Prozess mit dem Status %1 beendet.</translation>
    </message>
    <message>
        <source>The driver crashed.</source>
        <translation>Der Treiber ist abgestürzt.</translation>
    </message>
    <message>
        <source>There is neither such a file nor such a model. The built-in models are: %1.</source>
        <translation>Es gibt weder eine solche Datei noch ein solches Modell. Die eingebauten Modelle sind: %1.</translation>
    </message>
    <message>
        <source>Another program is using it.</source>
        <translation>Ein anderes Programm verwendet die Datei.</translation>
    </message>
    <message>
        <source>It is the file of the simulated keyboard itself.</source>
        <translation>Es ist die Datei der simulierten Tastatur selbst.</translation>
    </message>
    <message>
        <source>The file has the parameters of another keyboard.</source>
        <translation>Die Datei enthält die Parameter einer anderen Tastatur.</translation>
    </message>
    <message>
        <source>The file is of another kind: it does not begin with %1.</source>
        <translation>Die Datei ist von anderer Art: Sie beginnt nicht mit %1.</translation>
    </message>
    <message>
        <source>The file has another version than %2 (offset %1).</source>
        <translation>Die Datei hat eine andere Version als %2 (Position %1).</translation>
    </message>
    <message>
        <source>The file ends too early, at offset %1.</source>
        <translation>Die Datei endet zu früh, an Position %1.</translation>
    </message>
    <message>
        <source>The file is damaged: its checksum at offset %1 is wrong.</source>
        <translation>Die Datei ist beschädigt: Ihre Prüfsumme an Position %1 ist falsch.</translation>
    </message>
    <message>
        <source>The file is damaged: from offset %1, its parts do not add up.</source>
        <translation>Die Datei ist beschädigt: Ab Position %1 passen ihre Teile nicht zusammen.</translation>
    </message>
    <message>
        <source>The keyboard memory in the file has the wrong size: %1 bytes.</source>
        <translation>Der Tastaturspeicher in der Datei hat die falsche Größe: %1 Bytes.</translation>
    </message>
    <message>
        <source>The keyboard model in the file is invalid.</source>
        <translation>Das Tastaturmodell in der Datei ist ungültig.</translation>
    </message>
    <message>
        <source>The file is damaged: offset %1 says %2 bytes of content, but there are %3.</source>
        <translation>Die Datei ist beschädigt: An Position %1 steht eine Größe von %2 Bytes, der Inhalt hat aber %3.</translation>
    </message>
</context>
<context>
    <name>QXLayeredFuncKeysView</name>
    <message>
        <source>Function keys of layer %1</source>
        <translation>Funktionstasten der Ebene %1</translation>
    </message>
    <message>
        <source>%1, not programmed</source>
        <translation>%1, nicht belegt</translation>
    </message>
    <message>
        <source>%1, programmed: %2</source>
        <translation>%1, belegt: %2</translation>
    </message>
    <message>
        <source>%1, current key</source>
        <translation>%1, gewählte Taste</translation>
    </message>
    <message>
        <source>%1, programmed</source>
        <translation>%1, belegt</translation>
    </message>
    <message>
        <source>%1, empty</source>
        <translation>%1, leer</translation>
    </message>
    <message>
        <source>(several keys selected)</source>
        <translation>(mehrere Tasten ausgewählt)</translation>
    </message>
</context>
<context>
    <name>QXLayoutDisplayView</name>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Cannot be recorded: a sequence has no codes that press and release key %1, only those of the keys up to 127.</source>
        <translation>Kann nicht aufgenommen werden: Tastenfolgen haben nur für die Tasten bis 127 Codes zum Drücken und Loslassen, nicht für Taste %1.</translation>
    </message>
    <message>
        <source>Key %1</source>
        <translation>Taste %1</translation>
    </message>
    <message>
        <source>%1, dead key</source>
        <translation>%1, Tottaste</translation>
    </message>
    <message>
        <source>%1, cannot be programmed</source>
        <translation>%1, nicht belegbar</translation>
    </message>
    <message>
        <source>%1, cannot be recorded</source>
        <translation>%1, lässt sich nicht aufnehmen</translation>
    </message>
    <message>
        <source>%1, programmed: %2</source>
        <translation>%1, belegt: %2</translation>
    </message>
    <message>
        <source>%1, programmed</source>
        <translation>%1, belegt</translation>
    </message>
    <message>
        <source>%1, not programmed</source>
        <translation>%1, nicht belegt</translation>
    </message>
    <message>
        <source>%1, current key</source>
        <translation>%1, gewählte Taste</translation>
    </message>
</context>
<context>
    <name>QXPosDisplayView</name>
    <message>
        <source>POS keys</source>
        <translation>POS-Tasten</translation>
    </message>
    <message>
        <source>%1, block %2</source>
        <translation>%1, Block %2</translation>
    </message>
    <message>
        <source>%1, in no block</source>
        <translation>%1, in keinem Block</translation>
    </message>
    <message>
        <source>%1, sends: %2</source>
        <translation>%1, sendet: %2</translation>
    </message>
    <message>
        <source>%1, current key</source>
        <translation>%1, gewählte Taste</translation>
    </message>
    <message>
        <source>Key %1</source>
        <translation>Taste %1</translation>
    </message>
</context>
<context>
    <name>QuickFind</name>
    <message>
        <source>Find (Ctrl+K)</source>
        <translation>Suchen (Strg+K)</translation>
    </message>
    <message>
        <source>Find</source>
        <translation>Suchen</translation>
    </message>
    <message>
        <source>Clear the search</source>
        <translation>Suche leeren</translation>
    </message>
    <message>
        <source>Found</source>
        <translation>Gefunden</translation>
    </message>
    <message>
        <source>Nothing found</source>
        <translation>Nichts gefunden</translation>
    </message>
    <message>
        <source>Actions</source>
        <translation>Aktionen</translation>
    </message>
    <message>
        <source>Pages</source>
        <translation>Seiten</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>Settings</source>
        <translation>Einstellungen</translation>
    </message>
    <message>
        <source>%1 (%2 of %3)</source>
        <comment>kind, shown, found</comment>
        <translation>%1 (%2 von %3)</translation>
    </message>
    <message>
        <source>%1: %2</source>
        <comment>a setting and its value</comment>
        <translation>%1: %2</translation>
    </message>
    <message>
        <source>%1 — %2</source>
        <comment>an action and its menu</comment>
        <translation>%1 – %2</translation>
    </message>
</context>
<context>
    <name>ReaderEditor</name>
    <message>
        <source>This keyboard cannot read this track.</source>
        <translation>Diese Tastatur kann diese Spur nicht lesen.</translation>
    </message>
    <message>
        <source>Nothing: it is switched off.</source>
        <translation>Nichts: Das Senden ist ausgeschaltet.</translation>
    </message>
</context>
<context>
    <name>ReviewSheet</name>
    <message numerus="yes">
        <source>This changes %n setting(s) of the keyboard %1.</source>
        <translation>
            <numerusform>Das ändert eine Einstellung der Tastatur %1.</numerusform>
            <numerusform>Das ändert %n Einstellungen der Tastatur %1.</numerusform>
        </translation>
    </message>
    <message>
        <source>This changes no setting of the keyboard %1, only bytes that no setting uses.</source>
        <translation>Das ändert keine Einstellung der Tastatur %1, nur Bytes, die zu keiner Einstellung gehören.</translation>
    </message>
    <message>
        <source>In the keyboard now</source>
        <translation>Jetzt in der Tastatur</translation>
    </message>
    <message>
        <source>After writing</source>
        <translation>Nach dem Schreiben</translation>
    </message>
    <message>
        <source>&amp;Write to keyboard</source>
        <translation>In Tastatur &amp;schreiben</translation>
    </message>
    <message>
        <source>The keyboard has no module for these, which are left out: %1</source>
        <translation>Dafür hat die Tastatur kein Modul; diese Bereiche werden ausgelassen: %1</translation>
    </message>
    <message>
        <source>Show this sequence on its page</source>
        <translation>Diese Folge auf ihrer Seite anzeigen</translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s) are sent.</source>
        <translation>
            <numerusform>%n Byte wird gesendet.</numerusform>
            <numerusform>%n Bytes werden gesendet.</numerusform>
        </translation>
    </message>
    <message>
        <source>%1: %2 → %3</source>
        <translation>%1: %2 → %3</translation>
    </message>
    <message>
        <source>The keyboard&apos;s contents are backed up first; after writing, they are read back and compared.</source>
        <translation>Zuerst wird der Inhalt der Tastatur gesichert; nach dem Schreiben wird er zurückgelesen und verglichen.</translation>
    </message>
    <message>
        <source>Technical details</source>
        <translation>Technische Einzelheiten</translation>
    </message>
    <message>
        <source>The keyboard&apos;s identifier is replaced by another one. If the document belongs to another keyboard, both then have the same identifier.</source>
        <translation>Die Kennung der Tastatur wird durch eine andere ersetzt. Gehört das Dokument zu einer anderen Tastatur, haben danach beide dieselbe Kennung.</translation>
    </message>
    <message>
        <source>The keyboard has no identifier and is given one. If the document is written to several keyboards, they all have the same identifier.</source>
        <translation>Die Tastatur hat keine Kennung und erhält eine. Wird das Dokument in mehrere Tastaturen geschrieben, haben alle dieselbe Kennung.</translation>
    </message>
    <message numerus="yes">
        <source>%n warning(s) about sequences:</source>
        <translation>
            <numerusform>Eine Warnung zu einer Folge:</numerusform>
            <numerusform>%n Warnungen zu Folgen:</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SelectionPanel</name>
    <message>
        <source>Enter after each</source>
        <translation>Jeweils mit Enter</translation>
    </message>
    <message>
        <source>Fill</source>
        <translation>Ausfüllen</translation>
    </message>
    <message>
        <source>for example TILL</source>
        <translation>zum Beispiel KASSE</translation>
    </message>
    <message>
        <source>Fill a series</source>
        <translation>Reihe ausfüllen</translation>
    </message>
    <message>
        <source>Text:</source>
        <translation>Text:</translation>
    </message>
    <message>
        <source>First number:</source>
        <translation>Erste Nummer:</translation>
    </message>
    <message>
        <source>Digits:</source>
        <translation>Stellen:</translation>
    </message>
    <message numerus="yes">
        <source>%n keys selected</source>
        <translation>
            <numerusform>%n Taste ausgewählt</numerusform>
            <numerusform>%n Tasten ausgewählt</numerusform>
        </translation>
    </message>
    <message>
        <source>Texts: %1 to %2</source>
        <translation>Texte: %1 bis %2</translation>
    </message>
</context>
<context>
    <name>SequenceInspector</name>
    <message>
        <source>No key selected</source>
        <translation>Keine Taste ausgewählt</translation>
    </message>
    <message>
        <source>Select a key to see and change what it sends.</source>
        <translation>Wählen Sie eine Taste, um ihre Folge zu sehen und zu ändern.</translation>
    </message>
    <message>
        <source>There is no room for more keys.</source>
        <translation>Für weitere Tasten ist kein Platz.</translation>
    </message>
    <message>
        <source>Back</source>
        <translation>Zurück</translation>
    </message>
    <message>
        <source>Remove what is before the caret</source>
        <translation>Entfernen, was vor der Einfügemarke steht</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Leeren</translation>
    </message>
    <message>
        <source>Remove all keys of the sequence</source>
        <translation>Alle Tasten der Folge entfernen</translation>
    </message>
    <message>
        <source>Record</source>
        <translation>Aufnehmen</translation>
    </message>
    <message>
        <source>Each press and release in order; ^ marks a release</source>
        <translation>Jedes Drücken und Loslassen der Reihe nach; ^ steht für das Loslassen</translation>
    </message>
    <message>
        <source>The keyboard reported key %1, which no sequence can have.</source>
        <translation>Die Tastatur hat die Taste %1 gemeldet, die keine Folge enthalten kann.</translation>
    </message>
    <message>
        <source>From the device</source>
        <translation>Vom Gerät</translation>
    </message>
    <message>
        <source>Record the keys that you press on the connected keyboard, which does not type meanwhile</source>
        <translation>Nimmt die Tasten auf, die Sie an der verbundenen Tastatur drücken; sie tippt währenddessen nicht</translation>
    </message>
    <message>
        <source>Codes left: %1</source>
        <translation>Freie Codes: %1</translation>
    </message>
    <message>
        <source>The PC &amp;receives:</source>
        <translation>Der PC &amp;empfängt:</translation>
    </message>
    <message>
        <source>Stop</source>
        <translation>Stopp</translation>
    </message>
    <message>
        <source>Press keys on the connected keyboard.</source>
        <translation>Drücken Sie Tasten der verbundenen Tastatur.</translation>
    </message>
    <message>
        <source>Record the keys that you press on this PC&apos;s keyboard, until you press the Pause key</source>
        <translation>Nimmt die Tasten auf, die Sie auf der Tastatur dieses PCs drücken, bis Sie die Pause-Taste drücken</translation>
    </message>
    <message>
        <source>Press keys; end with the Pause key.</source>
        <translation>Drücken Sie die Tasten und zum Schluss die Pause-Taste.</translation>
    </message>
</context>
<context>
    <name>SequenceLabel</name>
    <message>
        <source>No keys</source>
        <translation>Keine Tasten</translation>
    </message>
</context>
<context>
    <name>SettingHelp</name>
    <message>
        <source>How long the keyboard waits between two characters. Raise it for a program that loses characters; 0 is the fastest.</source>
        <translation>Wie lange die Tastatur zwischen zwei Zeichen wartet. Erhöhen Sie den Wert für Programme, die Zeichen verlieren; 0 ist am schnellsten.</translation>
    </message>
    <message>
        <source>Applies to all tracks of the magnetic card reader.</source>
        <translation>Gilt für alle Spuren des Magnetkartenlesers.</translation>
    </message>
    <message>
        <source>The track whose settings are shown.</source>
        <translation>Die Spur, deren Einstellungen gezeigt werden.</translation>
    </message>
    <message>
        <source>Whether the reader sends this track.</source>
        <translation>Ob der Leser diese Spur sendet.</translation>
    </message>
    <message>
        <source>Sends the prefix before the data of this track. A prefix that is not sent is kept.</source>
        <translation>Sendet das Präfix vor den Daten dieser Spur. Ein Präfix, das nicht gesendet wird, bleibt erhalten.</translation>
    </message>
    <message>
        <source>Sends the suffix after the data of this track. A suffix that is not sent is kept.</source>
        <translation>Sendet das Suffix nach den Daten dieser Spur. Ein Suffix, das nicht gesendet wird, bleibt erhalten.</translation>
    </message>
    <message>
        <source>The keys sent before the data of this track.</source>
        <translation>Die Tasten, die vor den Daten dieser Spur gesendet werden.</translation>
    </message>
    <message>
        <source>The keys sent after the data of this track.</source>
        <translation>Die Tasten, die nach den Daten dieser Spur gesendet werden.</translation>
    </message>
    <message>
        <source>Codes with fewer characters are not read.</source>
        <translation>Codes mit weniger Zeichen werden nicht gelesen.</translation>
    </message>
    <message>
        <source>Codes with more characters are not read.</source>
        <translation>Codes mit mehr Zeichen werden nicht gelesen.</translation>
    </message>
    <message>
        <source>An option of the barcode reader; the reader&apos;s manual describes it.</source>
        <translation>Eine Option des Barcodelesers; sein Handbuch beschreibt sie.</translation>
    </message>
    <message>
        <source>The kinds of code, and the keys that each reader sends.</source>
        <translation>Die Codearten und die Tasten, die jeder Leser sendet.</translation>
    </message>
    <message>
        <source>Sends these keys with each code of this reader. Keys that are not sent are kept.</source>
        <translation>Sendet diese Tasten mit jedem Code dieses Lesers. Tasten, die nicht gesendet werden, bleiben erhalten.</translation>
    </message>
    <message>
        <source>The keys sent with each code of this reader.</source>
        <translation>Die Tasten, die mit jedem Code dieses Lesers gesendet werden.</translation>
    </message>
    <message>
        <source>Shows the release of each key in sequences, marked with ^.</source>
        <translation>Zeigt in Folgen auch das Loslassen jeder Taste, mit ^ gekennzeichnet.</translation>
    </message>
    <message>
        <source>Select a key to program it. Shift, Ctrl or a frame drawn with the mouse selects several.</source>
        <translation>Wählen Sie eine Taste, um sie zu belegen. Umschalt, Strg oder ein mit der Maus gezogener Rahmen wählt mehrere.</translation>
    </message>
    <message>
        <source>The function keys of the layer shown. Select one to program it.</source>
        <translation>Die Funktionstasten der gezeigten Ebene. Wählen Sie eine, um sie zu belegen.</translation>
    </message>
    <message>
        <source>Select a key or block to program it; several keys can be joined to a block.</source>
        <translation>Wählen Sie eine Taste oder einen Block, um sie zu belegen; mehrere Tasten lassen sich zu einem Block verbinden.</translation>
    </message>
    <message>
        <source>A name for the layer, kept in the document. The keyboard does not store it.</source>
        <translation>Ein Name für die Ebene, der im Dokument bleibt. Die Tastatur speichert ihn nicht.</translation>
    </message>
    <message>
        <source>The keys that the selected key sends.</source>
        <translation>Die Tasten, die die gewählte Taste sendet.</translation>
    </message>
    <message>
        <source>A description of the function key, at most 64 characters. The keyboard stores it.</source>
        <translation>Eine Beschreibung der Funktionstaste mit höchstens 64 Zeichen. Die Tastatur speichert sie.</translation>
    </message>
    <message>
        <source>Text to type: Enter adds the keys that type it, Ctrl+Enter also adds Enter.</source>
        <translation>Text zum Tippen: Die Eingabetaste fügt die Tasten an, die ihn tippen, Strg+Eingabe fügt auch die Eingabetaste an.</translation>
    </message>
    <message>
        <source>Finds keys of the layout by their label, name or number.</source>
        <translation>Findet Tasten der Belegung nach Beschriftung, Name oder Nummer.</translation>
    </message>
    <message>
        <source>Keys to add to the sequence.</source>
        <translation>Tasten zum Anfügen an die Folge.</translation>
    </message>
    <message>
        <source>Holds this key while the next one is pressed.</source>
        <translation>Hält diese Taste, während die nächste gedrückt wird.</translation>
    </message>
    <message>
        <source>The text before the number of each key.</source>
        <translation>Der Text vor der Nummer jeder Taste.</translation>
    </message>
    <message>
        <source>The number of the first key; each further key has the next one.</source>
        <translation>Die Nummer der ersten Taste; jede weitere hat die nächste.</translation>
    </message>
    <message>
        <source>The least number of digits, filled with zeros.</source>
        <translation>Die Mindestzahl der Stellen; fehlende werden mit Nullen aufgefüllt.</translation>
    </message>
    <message>
        <source>Adds Enter after each text.</source>
        <translation>Fügt nach jedem Text die Eingabetaste an.</translation>
    </message>
    <message>
        <source>The pages of this window; a number counts the programmed keys.</source>
        <translation>Die Seiten dieses Fensters; eine Zahl nennt die belegten Tasten.</translation>
    </message>
    <message>
        <source>Keyboard contents saved before each write, newest first.</source>
        <translation>Vor jedem Schreiben gesicherte Inhalte von Tastaturen, die neuesten zuerst.</translation>
    </message>
    <message>
        <source>The modules of the keyboard, and where each is in its memory.</source>
        <translation>Die Module der Tastatur und wo jedes in ihrem Speicher liegt.</translation>
    </message>
    <message>
        <source>The data of this track on the card to swipe.</source>
        <translation>Die Daten dieser Spur auf der Karte, die durchgezogen werden soll.</translation>
    </message>
    <message>
        <source>The kind of the code to scan.</source>
        <translation>Die Art des Codes, der gelesen werden soll.</translation>
    </message>
    <message>
        <source>The characters of the code to scan.</source>
        <translation>Die Zeichen des Codes, der gelesen werden soll.</translation>
    </message>
    <message>
        <source>The reader that scans the code.</source>
        <translation>Der Leser, der den Code liest.</translation>
    </message>
    <message>
        <source>The document that was opened or saved last.</source>
        <translation>Das zuletzt geöffnete oder gespeicherte Dokument.</translation>
    </message>
    <message>
        <source>Saves changes to a document that has a file, without asking.</source>
        <translation>Speichert Änderungen an einem Dokument, das eine Datei hat, ohne zu fragen.</translation>
    </message>
    <message>
        <source>Opens the test page after writing to the simulated keyboard.</source>
        <translation>Öffnet die Seite „Ausprobieren“, wenn in die simulierte Tastatur geschrieben wurde.</translation>
    </message>
    <message>
        <source>Whether typing on a sequence also opens its editor.</source>
        <translation>Ob auch Tippen auf einer Folge ihren Editor öffnet.</translation>
    </message>
    <message>
        <source>The language of the program&apos;s texts.</source>
        <translation>Die Sprache der Texte des Programms.</translation>
    </message>
    <message>
        <source>The labels of keys and the characters that they type, for a keyboard without a layout of its own.</source>
        <translation>Die Beschriftung der Tasten und die Zeichen, die sie erzeugen, für eine Tastatur ohne eigene Belegung.</translation>
    </message>
    <message>
        <source>The speed of that port, as an index of the driver.</source>
        <translation>Die Geschwindigkeit dieser Schnittstelle als Index des Treibers.</translation>
    </message>
    <message>
        <source>Sets all colours of keys at once.</source>
        <translation>Setzt alle Farben der Tasten auf einmal.</translation>
    </message>
    <message>
        <source>The colour of keys that have a sequence.</source>
        <translation>Die Farbe von Tasten, die eine Folge haben.</translation>
    </message>
    <message>
        <source>The colour of keys that can be programmed and have no sequence.</source>
        <translation>Die Farbe von Tasten, die belegbar sind und keine Folge haben.</translation>
    </message>
    <message>
        <source>The colour of the selected key.</source>
        <translation>Die Farbe der gewählten Taste.</translation>
    </message>
    <message>
        <source>The colour of keys that cannot be programmed.</source>
        <translation>Die Farbe von Tasten, die nicht belegbar sind.</translation>
    </message>
    <message>
        <source>The file with which the keyboard&apos;s code page is compared.</source>
        <translation>Die Datei, mit der die Codepage der Tastatur verglichen wird.</translation>
    </message>
    <message>
        <source>The colour of the keys of this block.</source>
        <translation>Die Farbe der Tasten dieses Blocks.</translation>
    </message>
    <message>
        <source>The colour of the selected block.</source>
        <translation>Die Farbe des gewählten Blocks.</translation>
    </message>
    <message>
        <source>The colour of keys that are in no block.</source>
        <translation>Die Farbe von Tasten, die in keinem Block sind.</translation>
    </message>
    <message>
        <source>Whether all windows are light or dark. Keys with the light or the dark set of colours follow.</source>
        <translation>Ob alle Fenster hell oder dunkel sind. Tasten mit dem hellen oder dunklen Farbschema passen sich an.</translation>
    </message>
    <message>
        <source>Records the keys that are pressed on this PC&apos;s keyboard. Pause stops it.</source>
        <translation>Nimmt die Tasten auf, die auf der Tastatur dieses PCs gedrückt werden. Die Taste Pause beendet die Aufnahme.</translation>
    </message>
    <message>
        <source>Finds actions, pages, keys, settings and preferences by name.</source>
        <translation>Findet Aktionen, Seiten, Tasten, Einstellungen und Voreinstellungen nach Namen.</translation>
    </message>
    <message>
        <source>The settings of the chosen backup that differ from the document.</source>
        <translation>Die Einstellungen der gewählten Sicherung, die vom Dokument abweichen.</translation>
    </message>
    <message>
        <source>Click a key to press it on the copy of the keyboard.</source>
        <translation>Klicken Sie auf eine Taste, um sie an der Kopie der Tastatur zu drücken.</translation>
    </message>
    <message>
        <source>The copy has what the keyboard would hold after writing the document.</source>
        <translation>Die Kopie enthält, was die Tastatur nach dem Schreiben des Dokuments enthielte.</translation>
    </message>
    <message>
        <source>The copy has what the keyboard holds now.</source>
        <translation>Die Kopie enthält, was die Tastatur jetzt enthält.</translation>
    </message>
    <message>
        <source>The layer of the function keys below.</source>
        <translation>Die Ebene der Funktionstasten darunter.</translation>
    </message>
    <message>
        <source>Click a function key to press it in the layer shown.</source>
        <translation>Klicken Sie auf eine Funktionstaste, um sie in der gezeigten Ebene zu drücken.</translation>
    </message>
    <message>
        <source>The keyboard with its programmed keys. Choose a key to open the page where it is programmed.</source>
        <translation>Die Tastatur mit ihren belegten Tasten. Eine gewählte Taste führt zu der Seite, auf der sie belegt wird.</translation>
    </message>
    <message>
        <source>Records the keys that are pressed on the connected keyboard. It types nothing until the recording stops.</source>
        <translation>Nimmt die Tasten auf, die an der verbundenen Tastatur gedrückt werden. Sie tippt nichts, bis die Aufnahme endet.</translation>
    </message>
    <message>
        <source>The serial port of the chipcard reader, for its firmware.</source>
        <translation>Die serielle Schnittstelle des Chipkartenlesers, für dessen Firmware.</translation>
    </message>
    <message>
        <source>Warns of a keyboard whose firmware is older than the version below.</source>
        <translation>Warnt vor einer Tastatur, deren Firmware älter als die Version darunter ist.</translation>
    </message>
    <message>
        <source>The oldest suitable firmware of a keyboard.</source>
        <translation>Die älteste geeignete Firmware einer Tastatur.</translation>
    </message>
    <message>
        <source>A number that some drivers use. It is only stored: this program does not use it, and starts every driver with 0.</source>
        <translation>Eine Zahl, die manche Treiber benutzen. Sie wird nur gespeichert: Dieses Programm verwendet sie nicht und startet jeden Treiber mit 0.</translation>
    </message>
    <message>
        <source>The ten layers of function keys. The number in brackets counts the programmed keys; a dot marks a layer with changes that are not yet written to the keyboard.</source>
        <translation>Die zehn Ebenen der Funktionstasten. Die Zahl in Klammern nennt die belegten Tasten; ein Punkt kennzeichnet eine Ebene mit Änderungen, die noch nicht in die Tastatur geschrieben sind.</translation>
    </message>
    <message>
        <source>The keys that the selected key sends, in order. The arrow keys move the caret, in a text by character; Delete and Backspace remove, Ctrl with an arrow key moves.</source>
        <translation>Die Tasten, die die gewählte Taste sendet, der Reihe nach. Die Pfeiltasten bewegen die Einfügemarke, in einem Text um ein Zeichen; Entf und Rücktaste entfernen, Strg mit einer Pfeiltaste verschiebt.</translation>
    </message>
    <message>
        <source>Each press and release that the PC receives, in order; ^ marks a release. If another module&apos;s sequence is sent instead, that one.</source>
        <translation>Jedes Drücken und Loslassen, das der PC empfängt, der Reihe nach; ^ steht für das Loslassen. Wird stattdessen die Folge eines anderen Moduls gesendet, dann diese.</translation>
    </message>
    <message>
        <source>The codes that the PC has received, in order.</source>
        <translation>Die Codes, die der PC empfangen hat, der Reihe nach.</translation>
    </message>
    <message>
        <source>Asks at startup how to begin.</source>
        <translation>Fragt beim Start, womit begonnen werden soll.</translation>
    </message>
    <message>
        <source>How the program starts, or whether it asks.</source>
        <translation>Womit das Programm beginnt oder ob es danach fragt.</translation>
    </message>
    <message>
        <source>The smallest size of texts on keys, but never below 8 points; where there is room, they are larger.</source>
        <translation>Die kleinste Schriftgröße auf Tasten, aber nie unter 8 Punkt; wo Platz ist, sind die Texte größer.</translation>
    </message>
</context>
<context>
    <name>SettingWords</name>
    <message>
        <source>Common settings</source>
        <translation>Allgemeines</translation>
    </message>
    <message>
        <source>Shortest code</source>
        <translation>Mindestlänge</translation>
    </message>
    <message>
        <source>Longest code</source>
        <translation>Höchstlänge</translation>
    </message>
    <message>
        <source>Option</source>
        <translation>Option</translation>
    </message>
    <message>
        <source>Reader</source>
        <translation>Leser</translation>
    </message>
    <message>
        <source>Send prefix</source>
        <translation>Präfix senden</translation>
    </message>
    <message>
        <source>Prefix</source>
        <translation>Präfix</translation>
    </message>
    <message>
        <source>Send suffix</source>
        <translation>Suffix senden</translation>
    </message>
    <message>
        <source>Suffix</source>
        <translation>Suffix</translation>
    </message>
    <message>
        <source>Barcode reader</source>
        <translation>Barcodeleser</translation>
    </message>
    <message>
        <source>Keyboard</source>
        <translation>Tastatur</translation>
    </message>
    <message>
        <source>Key</source>
        <translation>Taste</translation>
    </message>
    <message>
        <source>Free keys</source>
        <translation>Freie Tasten</translation>
    </message>
    <message>
        <source>Function keys 4610</source>
        <translation>Funktionstasten 4610</translation>
    </message>
    <message>
        <source>Function keys 4620</source>
        <translation>Funktionstasten 4620</translation>
    </message>
    <message>
        <source>Function keys 4630</source>
        <translation>Funktionstasten 4630</translation>
    </message>
    <message>
        <source>Identifier</source>
        <translation>Kennung</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Description</source>
        <translation>Beschreibung</translation>
    </message>
    <message>
        <source>Layered function keys</source>
        <translation>Funktionstasten in Ebenen</translation>
    </message>
    <message>
        <source>Send each track as soon as it is read</source>
        <translation>Jede Spur senden, sobald sie gelesen ist</translation>
    </message>
    <message>
        <source>Verify checksum (LRC)</source>
        <translation>Prüfsumme (LRC) prüfen</translation>
    </message>
    <message>
        <source>Verify last character</source>
        <translation>Letztes Zeichen prüfen</translation>
    </message>
    <message>
        <source>Track</source>
        <translation>Spur</translation>
    </message>
    <message>
        <source>Read this track</source>
        <translation>Diese Spur lesen</translation>
    </message>
    <message>
        <source>Magnetic card reader</source>
        <translation>Magnetkartenleser</translation>
    </message>
    <message>
        <source>Number</source>
        <translation>Nummer</translation>
    </message>
    <message>
        <source>Colour</source>
        <translation>Farbe</translation>
    </message>
    <message>
        <source>Keys</source>
        <translation>Tasten</translation>
    </message>
    <message>
        <source>POS keys</source>
        <translation>POS-Tasten</translation>
    </message>
    <message>
        <source>Fixed bytes</source>
        <translation>Feste Bytes</translation>
    </message>
    <message>
        <source>Show key releases</source>
        <translation>Loslassen von Tasten anzeigen</translation>
    </message>
    <message>
        <source>off</source>
        <translation>aus</translation>
    </message>
    <message>
        <source>on</source>
        <translation>an</translation>
    </message>
    <message>
        <source>(empty)</source>
        <translation>(leer)</translation>
    </message>
    <message>
        <source>(none)</source>
        <translation>(keine)</translation>
    </message>
    <message>
        <source>(damaged)</source>
        <translation>(beschädigt)</translation>
    </message>
    <message>
        <source>(sound)</source>
        <translation>(unbeschädigt)</translation>
    </message>
    <message>
        <source>Device</source>
        <translation>Gerät</translation>
    </message>
    <message>
        <source>Readers</source>
        <translation>Leser</translation>
    </message>
    <message>
        <source>Programmable keys</source>
        <translation>Programmierbare Tasten</translation>
    </message>
    <message>
        <source>Tools</source>
        <translation>Werkzeuge</translation>
    </message>
    <message numerus="yes">
        <source>%n key(s) programmed</source>
        <translation>
            <numerusform>Eine Taste belegt</numerusform>
            <numerusform>%n Tasten belegt</numerusform>
        </translation>
    </message>
    <message>
        <source>No key programmed</source>
        <translation>Keine Taste belegt</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Interleaved 2 of 5</source>
        <translation>2/5 Interleaved</translation>
    </message>
    <message>
        <source>Industrial 2 of 5</source>
        <translation>2/5 Industrial</translation>
    </message>
    <message>
        <source>Matrix 2 of 5</source>
        <translation>2/5 Matrix</translation>
    </message>
    <message>
        <source>&quot;%1&quot;</source>
        <translation>„%1“</translation>
    </message>
    <message>
        <source>Output delay</source>
        <translation>Ausgabeverzögerung</translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n change(s))</source>
        <translation>
            <numerusform>%1 (eine Änderung)</numerusform>
            <numerusform>%1 (%n Änderungen)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SheetMenu</name>
    <message>
        <source>Export key sheet</source>
        <translation>Tastenübersicht exportieren</translation>
    </message>
    <message>
        <source>Key sheets (%1)</source>
        <translation>Tastenübersichten (%1)</translation>
    </message>
    <message>
        <source>&amp;Print key sheet…</source>
        <translation>Tastenübersicht &amp;drucken …</translation>
    </message>
    <message>
        <source>&amp;Export key sheet…</source>
        <translation>Tastenübersicht &amp;exportieren …</translation>
    </message>
    <message>
        <source>Key sheet written to %1.</source>
        <translation>Die Tastenübersicht wurde in %1 gespeichert.</translation>
    </message>
    <message>
        <source>The key sheet was not written.</source>
        <translation>Die Tastenübersicht wurde nicht gespeichert.</translation>
    </message>
    <message>
        <source>Key sheet sent to the printer.</source>
        <translation>Die Tastenübersicht wurde an den Drucker gesendet.</translation>
    </message>
</context>
<context>
    <name>StartWizard</name>
    <message>
        <source>Start</source>
        <translation>Start</translation>
    </message>
    <message>
        <source>What would you like to begin with?</source>
        <translation>Womit möchten Sie beginnen?</translation>
    </message>
    <message>
        <source>&amp;Read the keyboard</source>
        <translation>Die Tastatur &amp;lesen</translation>
    </message>
    <message>
        <source>Show and change what the keyboard holds now.</source>
        <translation>Anzeigen und ändern, was die Tastatur jetzt enthält.</translation>
    </message>
    <message>
        <source>No keyboard is connected.</source>
        <translation>Es ist keine Tastatur verbunden.</translation>
    </message>
    <message>
        <source>Continue with %1.</source>
        <translation>Mit %1 weiterarbeiten.</translation>
    </message>
    <message>
        <source>%1 is no longer there.</source>
        <translation>%1 ist nicht mehr vorhanden.</translation>
    </message>
    <message>
        <source>&amp;Open the last document</source>
        <translation>Das letzte &amp;Dokument öffnen</translation>
    </message>
    <message>
        <source>Start from the &amp;defaults</source>
        <translation>Mit den &amp;Werkseinstellungen beginnen</translation>
    </message>
    <message>
        <source>&amp;Show this at startup</source>
        <translation>Beim &amp;Start anzeigen</translation>
    </message>
    <message>
        <source>A new document with default settings; no keyboard needs to be connected.</source>
        <translation>Ein neues Dokument; auch ohne angeschlossene Tastatur.</translation>
    </message>
</context>
<context>
    <name>StateChip</name>
    <message>
        <source>No keyboard</source>
        <translation>Keine Tastatur</translation>
    </message>
    <message>
        <source>Connect the keyboard</source>
        <translation>Die Tastatur verbinden</translation>
    </message>
    <message>
        <source>Not compared with the keyboard</source>
        <translation>Nicht mit der Tastatur verglichen</translation>
    </message>
    <message>
        <source>Show the changes that writing would make in the keyboard</source>
        <translation>Anzeigen, was ein Schreibvorgang in der Tastatur ändern würde</translation>
    </message>
    <message>
        <source>In sync</source>
        <translation>Tastatur auf aktuellem Stand</translation>
    </message>
    <message numerus="yes">
        <source>%n change(s) not in the keyboard</source>
        <translation>
            <numerusform>%n Änderung nicht in der Tastatur</numerusform>
            <numerusform>%n Änderungen nicht in der Tastatur</numerusform>
        </translation>
    </message>
    <message>
        <source>Show the changes before they are written</source>
        <translation>Die Änderungen anzeigen, bevor sie geschrieben werden</translation>
    </message>
    <message>
        <source>Interrupted write: resolve…</source>
        <translation>Unterbrochener Schreibvorgang: klären …</translation>
    </message>
    <message>
        <source>A write to this keyboard was interrupted: finish it or roll it back</source>
        <translation>Das Schreiben in diese Tastatur wurde unterbrochen: abschließen oder rückgängig machen</translation>
    </message>
    <message>
        <source>Looking for an interrupted write…</source>
        <translation>Suche nach einem unterbrochenen Schreibvorgang …</translation>
    </message>
    <message>
        <source>The keyboard holds all settings of the document for which it has modules</source>
        <translation>Die Tastatur enthält alle Einstellungen des Dokuments, für die sie Module hat</translation>
    </message>
</context>
<context>
    <name>StatusLine</name>
    <message>
        <source>%1 — firmware %2, bootloader %3</source>
        <translation>%1 – Firmware %2, Bootloader %3</translation>
    </message>
    <message>
        <source>%1 — simulated keyboard</source>
        <translation>%1 – simulierte Tastatur</translation>
    </message>
    <message>
        <source>%1 — ⚠ firmware too old</source>
        <translation>%1 – ⚠ Firmware zu alt</translation>
    </message>
    <message>
        <source>The keyboard&apos;s firmware %1 is older than version %2, which the preferences require. Newer firmware can be loaded on the Keyboard files page.</source>
        <translation>Die Firmware %1 der Tastatur ist älter als die Version %2, die in den Voreinstellungen verlangt wird. Auf der Seite „Tastaturdateien“ lässt sich eine neuere laden.</translation>
    </message>
</context>
<context>
    <name>TestDrivePage</name>
    <message>
        <source>Ke&amp;ys</source>
        <translation>Ta&amp;sten</translation>
    </message>
    <message>
        <source>C&amp;ard</source>
        <translation>&amp;Karte</translation>
    </message>
    <message>
        <source>Pressed and released key %1</source>
        <translation>Taste %1 gedrückt und losgelassen</translation>
    </message>
    <message>
        <source>Pressed layer %1, %2</source>
        <translation>Ebene %1, %2 gedrückt</translation>
    </message>
    <message>
        <source>no data</source>
        <translation>keine Daten</translation>
    </message>
    <message>
        <source>&amp;Swipe the card</source>
        <translation>Karte du&amp;rchziehen</translation>
    </message>
    <message>
        <source>Swiped a card</source>
        <translation>Karte durchgezogen</translation>
    </message>
    <message>
        <source>&amp;Scan</source>
        <translation>&amp;Lesen</translation>
    </message>
    <message>
        <source>Scanned a code</source>
        <translation>Code gelesen</translation>
    </message>
    <message>
        <source>nothing</source>
        <translation>nichts</translation>
    </message>
    <message>
        <source>&amp;Barcode</source>
        <translation>Bar&amp;code</translation>
    </message>
    <message>
        <source>%1, programmed: %2</source>
        <translation>%1, belegt: %2</translation>
    </message>
    <message>
        <source>the document, &amp;not yet written</source>
        <translation>das Dokument (noch n&amp;icht geschrieben)</translation>
    </message>
    <message>
        <source>what the keyboard h&amp;olds</source>
        <translation>&amp;was die Tastatur enthält</translation>
    </message>
    <message>
        <source>Co&amp;py</source>
        <translation>Ko&amp;pieren</translation>
    </message>
    <message>
        <source>Copies the whole log</source>
        <translation>Kopiert das ganze Protokoll</translation>
    </message>
    <message>
        <source>&amp;Clear</source>
        <translation>Protok&amp;oll leeren</translation>
    </message>
    <message>
        <source>Empties the log</source>
        <translation>Leert das Protokoll</translation>
    </message>
    <message>
        <source>Keys of the keyboard</source>
        <translation>Tasten der Tastatur</translation>
    </message>
    <message>
        <source>Layer</source>
        <translation>Ebene</translation>
    </message>
    <message>
        <source>Function keys</source>
        <translation>Funktionstasten</translation>
    </message>
    <message>
        <source>Press keys, swipe cards and scan codes on a copy of the keyboard. It follows the rules of the simulated keyboard; the keyboard itself is only read.</source>
        <translation>Drücken Sie Tasten, ziehen Sie Karten durch und lesen Sie Codes an einer Kopie der Tastatur. Die Kopie folgt den Regeln der simulierten Tastatur; die Tastatur selbst wird nur gelesen.</translation>
    </message>
    <message>
        <source>Testing needs a keyboard. Choose the simulated one in the Keyboard menu.</source>
        <translation>Zum Ausprobieren ist eine Tastatur nötig. Die simulierte finden Sie im Menü „Tastatur“.</translation>
    </message>
    <message>
        <source>The keyboard could not be copied.</source>
        <translation>Die Tastatur konnte nicht kopiert werden.</translation>
    </message>
    <message>
        <source>Try:</source>
        <translation>Ausprobieren:</translation>
    </message>
    <message>
        <source>The PC recei&amp;ves:</source>
        <translation>Der PC &amp;empfängt:</translation>
    </message>
    <message>
        <source>&amp;Layer:</source>
        <translation>Ebe&amp;ne:</translation>
    </message>
    <message>
        <source>Track %1:</source>
        <translation>Spur %1:</translation>
    </message>
    <message>
        <source>K&amp;ind of code:</source>
        <translation>Code&amp;art:</translation>
    </message>
    <message>
        <source>Da&amp;ta:</source>
        <translation>Date&amp;n:</translation>
    </message>
    <message>
        <source>&amp;Reader:</source>
        <translation>Lese&amp;r:</translation>
    </message>
    <message>
        <source>Layered &amp;function keys</source>
        <translation>&amp;Funktionstasten in Ebenen</translation>
    </message>
    <message>
        <source>Output delay: %1</source>
        <translation>Ausgabeverzögerung: %1</translation>
    </message>
</context>
<context>
    <name>TestDriveTexts</name>
    <message>
        <source>prefix of track %1</source>
        <translation>Präfix von Spur %1</translation>
    </message>
    <message>
        <source>data of track %1</source>
        <translation>Daten von Spur %1</translation>
    </message>
    <message>
        <source>suffix of track %1</source>
        <translation>Suffix von Spur %1</translation>
    </message>
    <message>
        <source>prefix of reader %1</source>
        <translation>Präfix von Leser %1</translation>
    </message>
    <message>
        <source>data of reader %1</source>
        <translation>Daten von Leser %1</translation>
    </message>
    <message>
        <source>suffix of reader %1</source>
        <translation>Suffix von Leser %1</translation>
    </message>
    <message>
        <source>This keyboard has no key %1.</source>
        <translation>Diese Tastatur hat keine Taste %1.</translation>
    </message>
    <message>
        <source>The POS keys&apos; memory is damaged.</source>
        <translation>Der Speicher der POS-Tasten ist beschädigt.</translation>
    </message>
    <message>
        <source>This keyboard has no layered function keys.</source>
        <translation>Diese Tastatur hat keine Funktionstasten in Ebenen.</translation>
    </message>
    <message>
        <source>Layer %1, %2 has no sequence.</source>
        <translation>Ebene %1, %2 hat keine Folge.</translation>
    </message>
    <message>
        <source>This keyboard has no magnetic card reader.</source>
        <translation>Diese Tastatur hat keinen Magnetkartenleser.</translation>
    </message>
    <message>
        <source>This keyboard cannot read track %1.</source>
        <translation>Diese Tastatur kann Spur %1 nicht lesen.</translation>
    </message>
    <message>
        <source>Track %1 is switched off.</source>
        <translation>Spur %1 ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>The checksum (LRC) of track %1 is wrong; the reader rejects the track.</source>
        <translation>Die Prüfsumme (LRC) von Spur %1 ist falsch; der Leser weist die Spur zurück.</translation>
    </message>
    <message>
        <source>The checksum (LRC) of track %1 is wrong; the reader does not verify it.</source>
        <translation>Die Prüfsumme (LRC) von Spur %1 ist falsch; der Leser prüft sie nicht.</translation>
    </message>
    <message>
        <source>The last character of track %1 is wrong; the reader rejects the track.</source>
        <translation>Das letzte Zeichen von Spur %1 ist falsch; der Leser weist die Spur zurück.</translation>
    </message>
    <message>
        <source>The last character of track %1 is wrong; the reader does not verify it.</source>
        <translation>Das letzte Zeichen von Spur %1 ist falsch; der Leser prüft es nicht.</translation>
    </message>
    <message>
        <source>Each track is sent as soon as it has been read.</source>
        <translation>Jede Spur wird gesendet, sobald sie gelesen ist.</translation>
    </message>
    <message>
        <source>The tracks are sent once all have been read.</source>
        <translation>Die Spuren werden gesendet, wenn alle gelesen sind.</translation>
    </message>
    <message>
        <source>This keyboard has no barcode reader.</source>
        <translation>Diese Tastatur hat keinen Barcodeleser.</translation>
    </message>
    <message>
        <source>A barcode needs at least one character.</source>
        <translation>Ein Barcode braucht mindestens ein Zeichen.</translation>
    </message>
    <message>
        <source>%1 is switched off.</source>
        <translation>%1 ist ausgeschaltet.</translation>
    </message>
    <message>
        <source>%1 accepts %2 to %3 characters; the code has %4.</source>
        <translation>%1 nimmt %2 bis %3 Zeichen an; der Code hat %4.</translation>
    </message>
    <message>
        <source>Key %1</source>
        <translation>Taste %1</translation>
    </message>
</context>
<context>
    <name>TestedKeyboard</name>
    <message>
        <source>Reading the keyboard…</source>
        <translation>Tastatur wird gelesen …</translation>
    </message>
</context>
<context>
    <name>TextEntry</name>
    <message>
        <source>Type text</source>
        <translation>Text eingeben</translation>
    </message>
    <message>
        <source>Text to type</source>
        <translation>Zu tippender Text</translation>
    </message>
    <message>
        <source>Add</source>
        <translation>Anfügen</translation>
    </message>
    <message>
        <source>Add the keys that type the text</source>
        <translation>Die Tasten anfügen, die den Text tippen</translation>
    </message>
    <message>
        <source>Add + Enter</source>
        <translation>Anfügen + Enter</translation>
    </message>
    <message>
        <source>Add the keys that type the text, and Enter (Ctrl+Enter); without a text, Enter alone</source>
        <translation>Die Tasten, die den Text tippen, und die Eingabetaste anfügen (Strg+Eingabe); ohne Text nur die Eingabetaste</translation>
    </message>
</context>
<context>
    <name>Transfers</name>
    <message>
        <source>Interrupted write</source>
        <translation>Unterbrochener Schreibvorgang</translation>
    </message>
    <message>
        <source>&amp;Finish writing</source>
        <translation>Schreiben &amp;abschließen</translation>
    </message>
    <message>
        <source>&amp;Roll back</source>
        <translation>&amp;Vorigen Inhalt wiederherstellen</translation>
    </message>
    <message>
        <source>&amp;Later</source>
        <translation>&amp;Später</translation>
    </message>
    <message>
        <source>Write to keyboard</source>
        <translation>In Tastatur schreiben</translation>
    </message>
    <message>
        <source>&amp;Repair</source>
        <translation>&amp;Reparieren</translation>
    </message>
    <message>
        <source>Nothing was read; the document is unchanged.</source>
        <translation>Es wurde nichts gelesen; das Dokument ist unverändert.</translation>
    </message>
    <message>
        <source>Reading the keyboard…</source>
        <translation>Die Tastatur wird gelesen …</translation>
    </message>
    <message>
        <source>Comparing the document with the keyboard…</source>
        <translation>Das Dokument wird mit der Tastatur verglichen …</translation>
    </message>
    <message>
        <source>The keyboard&apos;s memory is damaged in: %1.

Repairing replaces all settings there with the document&apos;s. Otherwise nothing is written.</source>
        <translation>Der Speicher der Tastatur ist in diesen Bereichen beschädigt: %1.

Beim Reparieren werden dort alle Einstellungen durch die des Dokuments ersetzt. Andernfalls wird nichts geschrieben.</translation>
    </message>
    <message>
        <source>Nothing was written.</source>
        <translation>Es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>This document was read while a write to the keyboard was interrupted. It may be a mixture of old and new settings. Write it anyway?</source>
        <translation>Als dieses Dokument gelesen wurde, war das Schreiben in die Tastatur unterbrochen. Alte und neue Einstellungen können darin gemischt sein. Trotzdem schreiben?</translation>
    </message>
    <message>
        <source>The keyboard already has these settings; nothing was written.</source>
        <translation>Die Tastatur hat diese Einstellungen bereits; es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>The backup was not restored.</source>
        <translation>Die Sicherung wurde nicht zurückgespielt.</translation>
    </message>
    <message>
        <source>Comparing the backup with the keyboard…</source>
        <translation>Die Sicherung wird mit der Tastatur verglichen …</translation>
    </message>
    <message>
        <source>Restore backup</source>
        <translation>Sicherung zurückspielen</translation>
    </message>
    <message>
        <source>Write it into this keyboard?</source>
        <translation>Trotzdem in diese Tastatur schreiben?</translation>
    </message>
    <message>
        <source>The keyboard already matches this backup; nothing was written.</source>
        <translation>Die Tastatur stimmt bereits mit dieser Sicherung überein; es wurde nichts geschrieben.</translation>
    </message>
    <message>
        <source>Writing to the keyboard. Do not unplug it.</source>
        <translation>In die Tastatur wird geschrieben. Bitte nicht abziehen.</translation>
    </message>
    <message>
        <source>The interrupted write could not be resolved.</source>
        <translation>Der unterbrochene Schreibvorgang konnte nicht geklärt werden.</translation>
    </message>
    <message>
        <source>%1 for %2, %3 (%4)</source>
        <translation>%1 für %2, %3 (%4)</translation>
    </message>
    <message>
        <source>no unit</source>
        <translation>keine Einheit</translation>
    </message>
    <message>
        <source>The interrupted write of %1 has been finished, read back and verified.</source>
        <translation>Der unterbrochene Schreibvorgang (%1) ist abgeschlossen und durch Zurücklesen bestätigt.</translation>
    </message>
    <message>
        <source>The interrupted write of %1 has been rolled back: the keyboard&apos;s previous contents are restored, read back and verified.</source>
        <translation>Der unterbrochene Schreibvorgang (%1) ist rückgängig gemacht: Die Tastatur hat wieder ihren vorigen Inhalt; durch Zurücklesen bestätigt.</translation>
    </message>
    <message>
        <source>The keyboard holds the backup, but could not be read again. The document is unchanged.</source>
        <translation>Die Sicherung ist in der Tastatur, die Tastatur ließ sich aber nicht noch einmal lesen. Das Dokument ist unverändert.</translation>
    </message>
    <message>
        <source>Looking for an interrupted write…</source>
        <translation>Suche nach einem unterbrochenen Schreibvorgang …</translation>
    </message>
    <message>
        <source>All settings were read, but a write to this keyboard was interrupted, so they may be a mixture of old and new ones. Resolve the write, then read again.</source>
        <translation>Alle Einstellungen wurden gelesen. Das Schreiben in diese Tastatur wurde aber unterbrochen; alte und neue Einstellungen können gemischt sein. Klären Sie den Schreibvorgang und lesen Sie dann noch einmal.</translation>
    </message>
    <message>
        <source>The backup was restored, read back and verified. The document has its settings.</source>
        <translation>Die Sicherung wurde zurückgespielt und durch Zurücklesen bestätigt. Das Dokument hat jetzt ihre Einstellungen.</translation>
    </message>
    <message>
        <source>“Finish writing” completes it; “Roll back” restores the keyboard&apos;s previous contents.</source>
        <translation>„Schreiben abschließen“ schreibt den Rest; „Vorigen Inhalt wiederherstellen“ macht das Geschriebene rückgängig.</translation>
    </message>
    <message>
        <source>The keyboard holds parts of several interrupted writes, and their records do not show which keyboard each was for. Which of them was interrupted on this keyboard?</source>
        <translation>Die Tastatur enthält Teile mehrerer unterbrochener Schreibvorgänge; die Aufzeichnungen zeigen nicht, zu welcher Tastatur jeder gehört. Welcher davon wurde in dieser Tastatur unterbrochen?</translation>
    </message>
    <message>
        <source>The interrupted write of %1 must be finished or rolled back before anything else is written.</source>
        <translation>Der unterbrochene Schreibvorgang (%1) muss abgeschlossen oder rückgängig gemacht werden, bevor etwas anderes geschrieben wird.</translation>
    </message>
    <message numerus="yes">
        <source>%n change(s) (%1) written to the keyboard, read back and verified.</source>
        <translation>
            <numerusform>%n Änderung (%1) in die Tastatur geschrieben und durch Zurücklesen bestätigt.</numerusform>
            <numerusform>%n Änderungen (%1) in die Tastatur geschrieben und durch Zurücklesen bestätigt.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n Byte</numerusform>
            <numerusform>%n Bytes</numerusform>
        </translation>
    </message>
    <message>
        <source>All settings were read; the keyboard itself was not changed.</source>
        <translation>Alle Einstellungen wurden gelesen; die Tastatur selbst wurde nicht verändert.</translation>
    </message>
    <message numerus="yes">
        <source>%n setting(s) differ from the previous document.</source>
        <translation>
            <numerusform>%n Einstellung weicht vom vorherigen Dokument ab.</numerusform>
            <numerusform>%n Einstellungen weichen vom vorherigen Dokument ab.</numerusform>
        </translation>
    </message>
    <message>
        <source>Writing %1 to this keyboard was interrupted (%2). The keyboard may hold only part of it.</source>
        <translation>Das Schreiben in diese Tastatur wurde unterbrochen (%1, %2). Die Tastatur enthält möglicherweise nur einen Teil der neuen Daten.</translation>
    </message>
</context>
<context>
    <name>TypedCodes</name>
    <message>
        <source>No key of this layout types &quot;%1&quot;.</source>
        <translation>Keine Taste dieser Belegung erzeugt „%1“.</translation>
    </message>
</context>
<context>
    <name>WindowPages</name>
    <message>
        <source>Overview</source>
        <translation>Überblick</translation>
    </message>
    <message>
        <source>Keyboard files</source>
        <translation>Tastaturdateien</translation>
    </message>
    <message>
        <source>Backups</source>
        <translation>Sicherungen</translation>
    </message>
    <message>
        <source>Test</source>
        <translation>Ausprobieren</translation>
    </message>
    <message>
        <source>Preferences</source>
        <translation>Voreinstellungen</translation>
    </message>
    <message>
        <source>%1 menu</source>
        <translation>Menü %1</translation>
    </message>
</context>
<context>
    <name>WorkBar</name>
    <message>
        <source>Saving a backup of the keyboard&apos;s contents…</source>
        <translation>Der Inhalt der Tastatur wird gesichert …</translation>
    </message>
    <message>
        <source>Checking that it is still the same keyboard…</source>
        <translation>Es wird geprüft, ob es noch dieselbe Tastatur ist …</translation>
    </message>
    <message>
        <source>Sending the settings…</source>
        <translation>Die Einstellungen werden gesendet …</translation>
    </message>
    <message>
        <source>Reading the keyboard back to compare…</source>
        <translation>Die Tastatur wird zum Vergleich zurückgelesen …</translation>
    </message>
    <message>
        <source>Back up</source>
        <translation>Sichern</translation>
    </message>
    <message>
        <source>Check</source>
        <translation>Prüfen</translation>
    </message>
    <message>
        <source>Write</source>
        <translation>Schreiben</translation>
    </message>
    <message>
        <source>Read back</source>
        <translation>Zurücklesen</translation>
    </message>
    <message>
        <source>Progress</source>
        <translation>Fortschritt</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>Abbrechen</translation>
    </message>
    <message>
        <source>Nothing is written until the step Write begins</source>
        <translation>Bis zum Schritt „Schreiben“ wird nichts geschrieben</translation>
    </message>
    <message>
        <source>Cannot be cancelled now</source>
        <translation>Jetzt nicht mehr abzubrechen</translation>
    </message>
    <message>
        <source>Stopping now would leave the keyboard partly written</source>
        <translation>Bei einem Abbruch bliebe die Tastatur nur zum Teil beschrieben</translation>
    </message>
    <message>
        <source>Cancelling…</source>
        <translation>Wird abgebrochen …</translation>
    </message>
</context>
<context>
    <name>Workbench</name>
    <message>
        <source>The preferences in %1 are damaged: the defaults are used.</source>
        <translation>Die Voreinstellungen in %1 sind beschädigt; es gelten die Vorgaben.</translation>
    </message>
    <message>
        <source>The damaged preferences are kept in %1.</source>
        <translation>Die beschädigten Voreinstellungen liegen nun in %1.</translation>
    </message>
    <message>
        <source>%1: damaged in the keyboard, and left out of the document.</source>
        <translation>%1: in der Tastatur beschädigt und im Dokument ausgelassen.</translation>
    </message>
    <message>
        <source>No keyboard was chosen: the simulated keyboard in %1 is used.</source>
        <translation>Es wurde keine Tastatur gewählt: Die simulierte Tastatur in %1 wird verwendet.</translation>
    </message>
</context>
<context>
    <name>frmPOSProgrammerView</name>
    <message>
        <source>Click a free key to start a block, or a key of a block to change that block.</source>
        <translation>Klicken Sie auf eine freie Taste, um einen Block zu beginnen, oder auf eine Taste eines Blocks, um ihn zu ändern.</translation>
    </message>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>&amp;Undo</source>
        <translation>&amp;Rückgängig</translation>
    </message>
    <message>
        <source>Colour %1</source>
        <translation>Farbe %1</translation>
    </message>
    <message>
        <source>Codes left:</source>
        <translation>Freie Codes:</translation>
    </message>
    <message>
        <source>Sends nothing yet</source>
        <translation>Sendet noch nichts</translation>
    </message>
    <message>
        <source>Keys without a block:</source>
        <translation>Tasten ohne Block:</translation>
    </message>
    <message>
        <source>Click keys to put them into the block or to take them out; Ctrl+click takes a key from another block. Ctrl and the arrow keys move without leaving the block. The first key, row by row, is the major key, in bold.</source>
        <translation>Klicken Sie auf Tasten, um sie in den Block aufzunehmen oder daraus zu entfernen; Strg+Klick holt eine Taste aus einem anderen Block. Mit Strg und den Pfeiltasten gehen Sie weiter; der Block bleibt dabei ausgewählt. Die Haupttaste (fett) ist die erste Taste, zeilenweise gezählt.</translation>
    </message>
</context>
<context>
    <name>frmSequencerView</name>
    <message>
        <source>Help</source>
        <translation>Hilfe</translation>
    </message>
    <message>
        <source>Record clicks as the keyboard reports them (press only)</source>
        <translation>Klicks so aufnehmen, wie die Tastatur sie meldet (nur Drücken)</translation>
    </message>
    <message>
        <source>Codes left:</source>
        <translation>Freie Codes:</translation>
    </message>
    <message>
        <source>The text has %1 codes, only %2 fit.</source>
        <translation>Der Text hat %1 Codes, nur %2 passen hinein.</translation>
    </message>
    <message>
        <source>As &amp;text:</source>
        <translation>Als &amp;Text:</translation>
    </message>
    <message>
        <source>&amp;Apply</source>
        <translation>Über&amp;nehmen</translation>
    </message>
    <message>
        <source>Keys by their names. A presses a key, ^A releases it, Ctrl+C presses and releases both, {30} is a code.</source>
        <translation>Tasten mit ihren Namen. A drückt eine Taste, ^A lässt sie los, Ctrl+C drückt beide und lässt sie los, {30} ist ein Code.</translation>
    </message>
    <message>
        <source>Click keys, press them on the keyboard, type text, or edit the sequence as text.</source>
        <translation>Klicken Sie auf Tasten, drücken Sie sie auf der Tastatur, geben Sie Text ein oder bearbeiten Sie die Folge als Text.</translation>
    </message>
    <message>
        <source>Click keys, press them on the keyboard, or type text.</source>
        <translation>Klicken Sie auf Tasten, drücken Sie sie auf der Tastatur oder geben Sie Text ein.</translation>
    </message>
    <message>
        <source>for example: Ctrl+C Enter ^Enter</source>
        <translation>zum Beispiel: Ctrl+C Enter ^Enter</translation>
    </message>
</context>
</TS>
