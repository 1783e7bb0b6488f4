<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>MainWindow</name>
    <message>
        <source>Vantreo Guide Generator</source>
        <translation>Vantreo Guide Generator</translation>
    </message>
</context>
</TS>
