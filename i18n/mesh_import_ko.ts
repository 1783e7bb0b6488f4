<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>MeshImport</name>
    <message>
        <source>DXF file is in the binary form; save it as ASCII DXF and import it again.</source>
        <translation>DXF 파일이 바이너리 형식입니다. ASCII DXF로 저장한 뒤 다시 가져오십시오.</translation>
    </message>
    <message>
        <source>DXF drawing has more than %1 line segments and is too large to import.</source>
        <translation>DXF 도면의 선분이 %1개를 넘어 가져오기에는 너무 큽니다.</translation>
    </message>
    <message>
        <source>Not enough memory to read the DXF file.</source>
        <translation>DXF 파일을 읽을 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>DXF has no supported LINE, POLYLINE, LWPOLYLINE, CIRCLE, or ARC entities.</source>
        <translation>DXF에 지원되는 LINE, POLYLINE, LWPOLYLINE, CIRCLE, ARC 엔티티가 없습니다.</translation>
    </message>
    <message>
        <source>DXF produced no renderable line geometry.</source>
        <translation>DXF에서 표시할 수 있는 선 형상이 만들어지지 않았습니다.</translation>
    </message>
    <message>
        <source>DXF file does not exist.</source>
        <translation>DXF 파일이 없습니다.</translation>
    </message>
    <message>
        <source>Could not read %1: %2</source>
        <translation>%1 파일을 읽을 수 없습니다: %2</translation>
    </message>
    <message>
        <source>OBJ has more than %1 vertices or triangles and is too large to import.</source>
        <translation>OBJ의 정점 또는 삼각형이 %1개를 넘어 가져오기에는 너무 큽니다.</translation>
    </message>
    <message>
        <source>OBJ has no valid vertices/faces.</source>
        <translation>OBJ에 유효한 정점/면이 없습니다.</translation>
    </message>
    <message>
        <source>Not enough memory to read the OBJ file.</source>
        <translation>OBJ 파일을 읽을 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>OBJ file does not exist.</source>
        <translation>OBJ 파일이 없습니다.</translation>
    </message>
    <message>
        <source>%1 is not an OBJ or DXF file.</source>
        <translation>%1은(는) OBJ 또는 DXF 파일이 아닙니다.</translation>
    </message>
    <message>
        <source>The object names no mesh file.</source>
        <translation>개체에 메시 파일이 지정되어 있지 않습니다.</translation>
    </message>
</context>
<context>
    <name>ResourceCollector</name>
    <message>
        <source>Imported mesh</source>
        <translation>가져온 메시</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <source>OBJ Mesh...</source>
        <translation>OBJ 메시...</translation>
    </message>
    <message>
        <source>DXF Drawing...</source>
        <translation>DXF 도면...</translation>
    </message>
    <message>
        <source>Import OBJ Mesh</source>
        <translation>OBJ 메시 가져오기</translation>
    </message>
    <message>
        <source>Import DXF Drawing</source>
        <translation>DXF 도면 가져오기</translation>
    </message>
    <message>
        <source>Wavefront OBJ (*.obj);;All files (*)</source>
        <translation>Wavefront OBJ (*.obj);;모든 파일 (*)</translation>
    </message>
    <message>
        <source>DXF Drawing (*.dxf);;All files (*)</source>
        <translation>DXF 도면 (*.dxf);;모든 파일 (*)</translation>
    </message>
    <message>
        <source>Imported %1</source>
        <translation>%1 가져옴</translation>
    </message>
    <message>
        <source>Import failed</source>
        <translation>가져오기 실패</translation>
    </message>
</context>
</TS>
