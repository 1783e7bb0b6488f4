<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>SceneAddObjectDialog</name>
    <message>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <source>Resolution width</source>
        <translation>해상도 너비</translation>
    </message>
    <message>
        <source>Resolution height</source>
        <translation>해상도 높이</translation>
    </message>
    <message>
        <source>Throw ratio</source>
        <translation>투사비</translation>
    </message>
    <message>
        <source>Lens shift X</source>
        <translation>렌즈 시프트 X</translation>
    </message>
    <message>
        <source>Lens shift Y</source>
        <translation>렌즈 시프트 Y</translation>
    </message>
</context>
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <source>Array slice</source>
        <translation>배열 조각</translation>
    </message>
    <message>
        <source>Whole guide</source>
        <translation>가이드 전체</translation>
    </message>
    <message>
        <source>Column %1, Row %2</source>
        <translation>%1열, %2행</translation>
    </message>
    <message>
        <source>Column %1, Row %2 (not in the array)</source>
        <translation>%1열, %2행 (배열에 없음)</translation>
    </message>
</context>
<context>
    <name>SceneHeatmapLegendPainter</name>
    <message>
        <source>Pixel footprint: %1</source>
        <translation>픽셀 크기: %1</translation>
    </message>
</context>
</TS>
