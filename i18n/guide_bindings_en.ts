<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="0"/>
        <source>Guide object: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="0"/>
        <source>Guide</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
