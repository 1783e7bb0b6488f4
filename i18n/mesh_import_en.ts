<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>MeshImport</name>
    <message>
        <source>DXF file is in the binary form; save it as ASCII DXF and import it again.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DXF drawing has more than %1 line segments and is too large to import.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not enough memory to read the DXF file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DXF has no supported LINE, POLYLINE, LWPOLYLINE, CIRCLE, or ARC entities.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DXF produced no renderable line geometry.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DXF file does not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not read %1: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OBJ has more than %1 vertices or triangles and is too large to import.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OBJ has no valid vertices/faces.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Not enough memory to read the OBJ file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>OBJ file does not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 is not an OBJ or DXF file.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>The object names no mesh file.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ResourceCollector</name>
    <message>
        <source>Imported mesh</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <source>OBJ Mesh...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DXF Drawing...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import OBJ Mesh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import DXF Drawing</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Wavefront OBJ (*.obj);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>DXF Drawing (*.dxf);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Imported %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Import failed</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
