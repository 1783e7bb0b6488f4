<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>SceneAddObjectDialog</name>
    <message>
        <source> px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resolution width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resolution height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Throw ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lens shift X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lens shift Y</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <source>Array slice</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Whole guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Column %1, Row %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Column %1, Row %2 (not in the array)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SceneHeatmapLegendPainter</name>
    <message>
        <source>Pixel footprint: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
