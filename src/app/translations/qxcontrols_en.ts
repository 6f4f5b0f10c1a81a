<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en">
<context>
    <name>MainWindow</name>
    <message numerus="yes">
        <source>Document to keyboard: wrote %n change(s), read back and found equal.</source>
        <translation><numerusform>Document to keyboard: wrote one change, read back and found equal.</numerusform><numerusform>Document to keyboard: wrote %n changes, read back and found equal.</numerusform></translation>
    </message>
</context>
<context>
    <name>ReviewSheet</name>
    <message numerus="yes">
        <source>Writing changes %n setting(s) of the keyboard %1.</source>
        <translation><numerusform>Writing changes one setting of the keyboard %1.</numerusform><numerusform>Writing changes %n settings of the keyboard %1.</numerusform></translation>
    </message>
</context>
</TS>
