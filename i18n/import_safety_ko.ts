<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>ZipArchive</name>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The archive holds too many entries.</source>
        <translation>압축 파일에 항목이 너무 많습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The entry "%1" is not a valid file name inside the import folder.</source>
        <translation>항목 "%1"은(는) 가져오기 폴더 안의 올바른 파일 이름이 아닙니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The entry "%1" is a symbolic link; links are not imported.</source>
        <translation>항목 "%1"은(는) 심볼릭 링크입니다. 링크는 가져오지 않습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The archive unpacks to more than the import folder's disk has free or than an import may hold (%1 MB).</source>
        <translation>압축을 풀면 가져오기 폴더 디스크의 여유 공간이나 가져오기 한도(%1 MB)보다 커집니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>The file already exists:
%1</source>
        <translation>파일이 이미 있습니다:
%1</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>ZIP extraction was cancelled.</source>
        <translation>ZIP 압축 풀기가 취소되었습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="0"/>
        <source>Could not write "%1".</source>
        <translation>"%1"을(를) 쓸 수 없습니다.</translation>
    </message>
</context>
</TS>
