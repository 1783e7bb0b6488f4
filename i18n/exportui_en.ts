<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>SceneExport</name>
    <message>
        <location filename="../scene/ui/SceneExportDialogs.cpp" line="+115"/>
        <source>Export failed</source>
        <translation>Export failed</translation>
    </message>
</context>
<context>
    <name>ViewMeshExport</name>
    <message>
        <location line="+10"/>
        <source>Select a projector or camera object first.</source>
        <translation>Select a projector or camera object first.</translation>
    </message>
</context>
<context>
    <name>ViewMeshOptionsDialog</name>
    <message>
        <location line="-102"/>
        <source>Projector View Mesh Options</source>
        <translation>Projector View Mesh Options</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Flatten to 2D (Z = 0)</source>
        <translation>Flatten to 2D (Z = 0)</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Crop to projector frame</source>
        <translation>Crop to projector frame</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Normalize coordinates (X = -aspect..aspect, Y = -1..1)</source>
        <translation>Normalize coordinates (X = -aspect..aspect, Y = -1..1)</translation>
    </message>
    <message>
        <location line="+5"/>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Frame margin</source>
        <translation>Frame margin</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="211"/>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="245"/>
        <source>Exported %1</source>
        <translation>Exported %1</translation>
    </message>
</context>
</TS>
