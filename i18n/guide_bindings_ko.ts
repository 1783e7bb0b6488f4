<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="0"/>
        <source>Guide object: %1</source>
        <translation>가이드 오브젝트: %1</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="0"/>
        <source>Guide</source>
        <translation>가이드</translation>
    </message>
</context>
</TS>
