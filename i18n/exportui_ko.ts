<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>SceneExport</name>
    <message>
        <location filename="../scene/ui/SceneExportDialogs.cpp" line="+115"/>
        <source>Export failed</source>
        <translation>내보내기 실패</translation>
    </message>
</context>
<context>
    <name>ViewMeshExport</name>
    <message>
        <location line="+10"/>
        <source>Select a projector or camera object first.</source>
        <translation>먼저 프로젝터나 카메라 개체를 선택하세요.</translation>
    </message>
</context>
<context>
    <name>ViewMeshOptionsDialog</name>
    <message>
        <location line="-102"/>
        <source>Projector View Mesh Options</source>
        <translation>프로젝터 뷰 메시 옵션</translation>
    </message>
    <message>
        <location line="+1"/>
        <source>Flatten to 2D (Z = 0)</source>
        <translation>2D로 평탄화 (Z = 0)</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Crop to projector frame</source>
        <translation>프로젝터 프레임으로 자르기</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Normalize coordinates (X = -aspect..aspect, Y = -1..1)</source>
        <translation>좌표 정규화 (X = -종횡비..종횡비, Y = -1..1)</translation>
    </message>
    <message>
        <location line="+5"/>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <location line="+2"/>
        <source>Frame margin</source>
        <translation>프레임 여백</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="211"/>
        <source>Export</source>
        <translation>내보내기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="245"/>
        <source>Exported %1</source>
        <translation>%1(으)로 내보냈습니다</translation>
    </message>
</context>
</TS>
