<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ExportImageSource</name>
    <message>
        <location filename="../exchange/ExportImageSource.cpp" line="+67"/>
        <source>GPU rendering is not available for this export.</source>
        <translation>GPU rendering is not available for this export.</translation>
    </message>
</context>
<context>
    <name>ExportScene</name>
    <message>
        <location filename="../exchange/ExportScene.cpp" line="+123"/>
        <source>Could not save texture image:</source>
        <translation>Could not save texture image:</translation>
    </message>
</context>
<context>
    <name>Exporters</name>
    <message>
        <location filename="../exchange/FbxExport.cpp" line="+464"/>
        <source>FBX 7.4 ASCII</source>
        <translation>FBX 7.4 ASCII</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export FBX...</source>
        <translation>Export FBX...</translation>
    </message>
    <message>
        <location filename="../exchange/GuideMeshExport.cpp" line="+198"/>
        <location filename="../exchange/ObjExport.cpp" line="+289"/>
        <location filename="../exchange/ViewMeshExport.cpp" line="+399"/>
        <source>Wavefront OBJ</source>
        <translation>Wavefront OBJ</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export Guide Mesh (OBJ + MEL)...</source>
        <translation>Export Guide Mesh (OBJ + MEL)...</translation>
    </message>
    <message>
        <location filename="../exchange/MayaExport.cpp" line="+183"/>
        <source>Maya ASCII</source>
        <translation>Maya ASCII</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export Maya Projector Scene...</source>
        <translation>Export Maya Projector Scene...</translation>
    </message>
    <message>
        <location filename="../exchange/ObjExport.cpp" line="+1"/>
        <source>Export OBJ...</source>
        <translation>Export OBJ...</translation>
    </message>
    <message>
        <location filename="../exchange/UsdExport.cpp" line="+319"/>
        <source>USD ASCII</source>
        <translation>USD ASCII</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export USD...</source>
        <translation>Export USD...</translation>
    </message>
    <message>
        <location filename="../exchange/ViewMeshExport.cpp" line="+1"/>
        <source>Export Projector View Mesh...</source>
        <translation>Export Projector View Mesh...</translation>
    </message>
</context>
<context>
    <name>FbxExport</name>
    <message>
        <location filename="../exchange/FbxExport.cpp" line="-93"/>
        <source>No visible mesh objects or projectors are available for FBX export.</source>
        <translation>No visible mesh objects or projectors are available for FBX export.</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+31"/>
        <source>Could not create export folder:</source>
        <translation>Could not create export folder:</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+31"/>
        <source>Could not save FBX file:</source>
        <translation>Could not save FBX file:</translation>
    </message>
</context>
<context>
    <name>GuideMeshExport</name>
    <message>
        <location filename="../exchange/GuideMeshExport.cpp" line="-96"/>
        <location line="+12"/>
        <location line="+45"/>
        <source>Could not save OBJ file:</source>
        <translation>Could not save OBJ file:</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+8"/>
        <source>Could not save MTL file:</source>
        <translation>Could not save MTL file:</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+3"/>
        <source>Could not save MEL file:</source>
        <translation>Could not save MEL file:</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>The project has no such guide.</source>
        <translation>The project has no such guide.</translation>
    </message>
</context>
<context>
    <name>MayaExport</name>
    <message>
        <location filename="../exchange/MayaExport.cpp" line="-47"/>
        <source>Select a projector or camera object first.</source>
        <translation>Select a projector or camera object first.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Could not create export folder:</source>
        <translation>Could not create export folder:</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Could not export companion OBJ scene:</source>
        <translation>Could not export companion OBJ scene:</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+17"/>
        <source>Could not save projector scene file:</source>
        <translation>Could not save projector scene file:</translation>
    </message>
</context>
<context>
    <name>ObjExport</name>
    <message>
        <location filename="../exchange/ObjExport.cpp" line="-99"/>
        <location line="+7"/>
        <source>No 3D object is selected for OBJ export.</source>
        <translation>No 3D object is selected for OBJ export.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No visible mesh objects are available for OBJ export.</source>
        <translation>No visible mesh objects are available for OBJ export.</translation>
    </message>
    <message>
        <location line="+9"/>
        <location line="+6"/>
        <location line="+44"/>
        <source>Could not save OBJ file:</source>
        <translation>Could not save OBJ file:</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+5"/>
        <source>Could not save MTL file:</source>
        <translation>Could not save MTL file:</translation>
    </message>
</context>
<context>
    <name>UsdExport</name>
    <message>
        <location filename="../exchange/UsdExport.cpp" line="-82"/>
        <source>No visible mesh objects or projectors are available for USD export.</source>
        <translation>No visible mesh objects or projectors are available for USD export.</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+25"/>
        <source>Could not create export folder:</source>
        <translation>Could not create export folder:</translation>
    </message>
    <message>
        <location line="+12"/>
        <location line="+25"/>
        <source>Could not save USD file:</source>
        <translation>Could not save USD file:</translation>
    </message>
</context>
<context>
    <name>ViewMeshExport</name>
    <message>
        <location filename="../exchange/ViewMeshExport.cpp" line="-197"/>
        <source>Select a projector or camera object first.</source>
        <translation>Select a projector or camera object first.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Selected projector is no longer available.</source>
        <translation>Selected projector is no longer available.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Selected object is not a projector or camera.</source>
        <translation>Selected object is not a projector or camera.</translation>
    </message>
    <message>
        <location line="+63"/>
        <location line="+10"/>
        <location line="+89"/>
        <source>Could not save OBJ file:</source>
        <translation>Could not save OBJ file:</translation>
    </message>
    <message>
        <location line="-3"/>
        <source>No mesh faces are visible inside the selected projector view.</source>
        <translation>No mesh faces are visible inside the selected projector view.</translation>
    </message>
    <message>
        <location line="+9"/>
        <location line="+5"/>
        <source>Could not save MTL file:</source>
        <translation>Could not save MTL file:</translation>
    </message>
</context>
</TS>
