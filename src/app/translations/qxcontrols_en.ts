<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>BackupsPage</name>
    <message numerus="yes">
        <source>%n setting(s) of the backup differ from the document.</source>
        <translation>
            <numerusform>%n setting of the backup differs from the document.</numerusform>
            <numerusform>%n settings of the backup differ from the document.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BarcodeFace</name>
    <message numerus="yes">
        <source>Reads %n kind(s) of code</source>
        <translation>
            <numerusform>Reads one kind of code</numerusform>
            <numerusform>Reads %n kinds of code</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>BlockActions</name>
    <message numerus="yes">
        <source>%n keys joined.</source>
        <translation>
            <numerusform>%n key joined.</numerusform>
            <numerusform>%n keys joined.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n key(s) split off.</source>
        <translation>
            <numerusform>%n key split off.</numerusform>
            <numerusform>%n keys split off.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Block(s) %1 removed with the sequence.</source>
        <translation>
            <numerusform>Block %1 and its sequence removed.</numerusform>
            <numerusform>Blocks %1 and their sequences removed.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Errors</name>
    <message numerus="yes">
        <source>%1 (and %n more)</source>
        <translation>
            <numerusform>%1 (and %n more)</numerusform>
            <numerusform>%1 (and %n more)</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>The keyboard does not hold what was written (%n byte(s)).</source>
        <translation>
            <numerusform>The keyboard does not hold what was written (%n byte).</numerusform>
            <numerusform>The keyboard does not hold what was written (%n bytes).</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>KeyActions</name>
    <message numerus="yes">
        <source>%n keys</source>
        <translation>
            <numerusform>%n key</numerusform>
            <numerusform>%n keys</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n sequences were copied: select as many keys to paste them.</source>
        <translation>
            <numerusform>%n sequence was copied: select one key to paste it.</numerusform>
            <numerusform>%n sequences were copied: select as many keys to paste them.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n keys cleared.</source>
        <translation>
            <numerusform>%n key cleared.</numerusform>
            <numerusform>%n keys cleared.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Pasted into %n keys.</source>
        <translation>
            <numerusform>Pasted into %n key.</numerusform>
            <numerusform>Pasted into %n keys.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n keys filled.</source>
        <translation>
            <numerusform>%n key filled.</numerusform>
            <numerusform>%n keys filled.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PageBook</name>
    <message numerus="yes">
        <source>%n module(s) that this keyboard does not have</source>
        <translation>
            <numerusform>One module that this keyboard does not have</numerusform>
            <numerusform>%n modules that this keyboard does not have</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>PosFace</name>
    <message numerus="yes">
        <source>%n block(s)</source>
        <translation>
            <numerusform>One block</numerusform>
            <numerusform>%n blocks</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Block %1 (%n key(s))</source>
        <translation>
            <numerusform>Block %1 (%n key)</numerusform>
            <numerusform>Block %1 (%n keys)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>ReviewSheet</name>
    <message numerus="yes">
        <source>This changes %n setting(s) of the keyboard %1.</source>
        <translation>
            <numerusform>This changes one setting of the keyboard %1.</numerusform>
            <numerusform>This changes %n settings of the keyboard %1.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s) are sent.</source>
        <translation>
            <numerusform>%n byte is sent.</numerusform>
            <numerusform>%n bytes are sent.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n warning(s) about sequences:</source>
        <translation>
            <numerusform>%n warning about a sequence:</numerusform>
            <numerusform>%n warnings about sequences:</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SelectionPanel</name>
    <message numerus="yes">
        <source>%n keys selected</source>
        <translation>
            <numerusform>%n key selected</numerusform>
            <numerusform>%n keys selected</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>SettingWords</name>
    <message numerus="yes">
        <source>%n key(s) programmed</source>
        <translation>
            <numerusform>One key programmed</numerusform>
            <numerusform>%n keys programmed</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%1 (%n change(s))</source>
        <translation>
            <numerusform>%1 (%n change)</numerusform>
            <numerusform>%1 (%n changes)</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>StateChip</name>
    <message numerus="yes">
        <source>%n change(s) not in the keyboard</source>
        <translation>
            <numerusform>%n change not in the keyboard</numerusform>
            <numerusform>%n changes not in the keyboard</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>Transfers</name>
    <message numerus="yes">
        <source>%n change(s) (%1) written to the keyboard, read back and verified.</source>
        <translation>
            <numerusform>%n change (%1) written to the keyboard, read back and verified.</numerusform>
            <numerusform>%n changes (%1) written to the keyboard, read back and verified.</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n byte(s)</source>
        <translation>
            <numerusform>%n byte</numerusform>
            <numerusform>%n bytes</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n setting(s) differ from the previous document.</source>
        <translation>
            <numerusform>%n setting differs from the previous document.</numerusform>
            <numerusform>%n settings differ from the previous document.</numerusform>
        </translation>
    </message>
</context>
</TS>
