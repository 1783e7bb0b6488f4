<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>ExportImageSource</name>
    <message>
        <location filename="../exchange/ExportImageSource.cpp" line="+67"/>
        <source>GPU rendering is not available for this export.</source>
        <translation>이 내보내기에는 GPU 렌더링을 사용할 수 없습니다.</translation>
    </message>
</context>
<context>
    <name>ExportScene</name>
    <message>
        <location filename="../exchange/ExportScene.cpp" line="+123"/>
        <source>Could not save texture image:</source>
        <translation>텍스처 이미지를 저장할 수 없습니다:</translation>
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
        <translation>FBX 내보내기...</translation>
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
        <translation>가이드 메시 내보내기 (OBJ + MEL)...</translation>
    </message>
    <message>
        <location filename="../exchange/MayaExport.cpp" line="+183"/>
        <source>Maya ASCII</source>
        <translation>Maya ASCII</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export Maya Projector Scene...</source>
        <translation>Maya 프로젝터 장면 내보내기...</translation>
    </message>
    <message>
        <location filename="../exchange/ObjExport.cpp" line="+1"/>
        <source>Export OBJ...</source>
        <translation>OBJ 내보내기...</translation>
    </message>
    <message>
        <location filename="../exchange/UsdExport.cpp" line="+319"/>
        <source>USD ASCII</source>
        <translation>USD ASCII</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Export USD...</source>
        <translation>USD 내보내기...</translation>
    </message>
    <message>
        <location filename="../exchange/ViewMeshExport.cpp" line="+1"/>
        <source>Export Projector View Mesh...</source>
        <translation>프로젝터 뷰 메시 내보내기...</translation>
    </message>
</context>
<context>
    <name>FbxExport</name>
    <message>
        <location filename="../exchange/FbxExport.cpp" line="-93"/>
        <source>No visible mesh objects or projectors are available for FBX export.</source>
        <translation>FBX로 내보낼 보이는 메시 개체나 프로젝터가 없습니다.</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+31"/>
        <source>Could not create export folder:</source>
        <translation>내보내기 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+31"/>
        <source>Could not save FBX file:</source>
        <translation>FBX 파일을 저장할 수 없습니다:</translation>
    </message>
</context>
<context>
    <name>GuideMeshExport</name>
    <message>
        <location filename="../exchange/GuideMeshExport.cpp" line="-96"/>
        <location line="+12"/>
        <location line="+45"/>
        <source>Could not save OBJ file:</source>
        <translation>OBJ 파일을 저장할 수 없습니다:</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+8"/>
        <source>Could not save MTL file:</source>
        <translation>MTL 파일을 저장할 수 없습니다:</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+3"/>
        <source>Could not save MEL file:</source>
        <translation>MEL 파일을 저장할 수 없습니다:</translation>
    </message>
    <message>
        <location line="+23"/>
        <source>The project has no such guide.</source>
        <translation>프로젝트에 해당 가이드가 없습니다.</translation>
    </message>
</context>
<context>
    <name>MayaExport</name>
    <message>
        <location filename="../exchange/MayaExport.cpp" line="-47"/>
        <source>Select a projector or camera object first.</source>
        <translation>먼저 프로젝터나 카메라 개체를 선택하세요.</translation>
    </message>
    <message>
        <location line="+5"/>
        <source>Could not create export folder:</source>
        <translation>내보내기 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location line="+8"/>
        <source>Could not export companion OBJ scene:</source>
        <translation>함께 쓰는 OBJ 장면을 내보낼 수 없습니다:</translation>
    </message>
    <message>
        <location line="+4"/>
        <location line="+17"/>
        <source>Could not save projector scene file:</source>
        <translation>프로젝터 장면 파일을 저장할 수 없습니다:</translation>
    </message>
</context>
<context>
    <name>ObjExport</name>
    <message>
        <location filename="../exchange/ObjExport.cpp" line="-99"/>
        <location line="+7"/>
        <source>No 3D object is selected for OBJ export.</source>
        <translation>OBJ로 내보낼 3D 개체가 선택되지 않았습니다.</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>No visible mesh objects are available for OBJ export.</source>
        <translation>OBJ로 내보낼 보이는 메시 개체가 없습니다.</translation>
    </message>
    <message>
        <location line="+9"/>
        <location line="+6"/>
        <location line="+44"/>
        <source>Could not save OBJ file:</source>
        <translation>OBJ 파일을 저장할 수 없습니다:</translation>
    </message>
    <message>
        <location line="+6"/>
        <location line="+5"/>
        <source>Could not save MTL file:</source>
        <translation>MTL 파일을 저장할 수 없습니다:</translation>
    </message>
</context>
<context>
    <name>UsdExport</name>
    <message>
        <location filename="../exchange/UsdExport.cpp" line="-82"/>
        <source>No visible mesh objects or projectors are available for USD export.</source>
        <translation>USD로 내보낼 보이는 메시 개체나 프로젝터가 없습니다.</translation>
    </message>
    <message>
        <location line="+7"/>
        <location line="+25"/>
        <source>Could not create export folder:</source>
        <translation>내보내기 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location line="+12"/>
        <location line="+25"/>
        <source>Could not save USD file:</source>
        <translation>USD 파일을 저장할 수 없습니다:</translation>
    </message>
</context>
<context>
    <name>ViewMeshExport</name>
    <message>
        <location filename="../exchange/ViewMeshExport.cpp" line="-197"/>
        <source>Select a projector or camera object first.</source>
        <translation>먼저 프로젝터나 카메라 개체를 선택하세요.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Selected projector is no longer available.</source>
        <translation>선택한 프로젝터를 더 이상 사용할 수 없습니다.</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Selected object is not a projector or camera.</source>
        <translation>선택한 개체는 프로젝터나 카메라가 아닙니다.</translation>
    </message>
    <message>
        <location line="+63"/>
        <location line="+10"/>
        <location line="+89"/>
        <source>Could not save OBJ file:</source>
        <translation>OBJ 파일을 저장할 수 없습니다:</translation>
    </message>
    <message>
        <location line="-3"/>
        <source>No mesh faces are visible inside the selected projector view.</source>
        <translation>선택한 프로젝터 뷰 안에 보이는 메시 면이 없습니다.</translation>
    </message>
    <message>
        <location line="+9"/>
        <location line="+5"/>
        <source>Could not save MTL file:</source>
        <translation>MTL 파일을 저장할 수 없습니다:</translation>
    </message>
</context>
</TS>
