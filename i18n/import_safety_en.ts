<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ZipArchive</name>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The archive holds too many entries.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The entry "%1" is not a valid file name inside the import folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The entry "%1" is a symbolic link; links are not imported.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The archive unpacks to more than the import folder's disk has free or than an import may hold (%1 MB).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The file already exists:
%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>ZIP extraction was cancelled.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>Could not write "%1".</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
