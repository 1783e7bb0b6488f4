<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>MainWindow</name>
    <message>
        <source>Vantreo Guide Generator</source>
        <translation>반트레오 가이드 생성기</translation>
    </message>
</context>
</TS>
