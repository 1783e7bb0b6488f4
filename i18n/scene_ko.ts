<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>SceneAddObjectDialog</name>
    <message>
        <location filename="../scene/ui/SceneAddObjectDialog.cpp" line="21"/>
        <source>Name</source>
        <translation>이름</translation>
    </message>
</context>
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="73"/>
        <source>Select an object to edit its properties.</source>
        <translation>속성을 편집할 개체를 선택하세요.</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="279"/>
        <source>No file</source>
        <translation>파일 없음</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="280"/>
        <source>Browse...</source>
        <translation>찾아보기...</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="281"/>
        <source>Clear</source>
        <translation>지우기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="334"/>
        <source>Guide %1 (missing)</source>
        <translation>가이드 %1 (없음)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="341"/>
        <source>None</source>
        <translation>없음</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="363"/>
        <source>Object</source>
        <translation>개체</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="364"/>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="365"/>
        <source>Visible</source>
        <translation>표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="367"/>
        <source>Opacity</source>
        <translation>불투명도</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="374"/>
        <source>Transform</source>
        <translation>변환</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="375"/>
        <source>Position X</source>
        <translation>위치 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="376"/>
        <source>Position Y</source>
        <translation>위치 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="377"/>
        <source>Position Z</source>
        <translation>위치 Z</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="378"/>
        <source>Rotation X</source>
        <translation>회전 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="379"/>
        <source>Rotation Y</source>
        <translation>회전 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="380"/>
        <source>Rotation Z</source>
        <translation>회전 Z</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="385"/>
        <source>Size X</source>
        <translation>크기 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="385"/>
        <source>Size Y</source>
        <translation>크기 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="385"/>
        <source>Size Z</source>
        <translation>크기 Z</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="398"/>
        <source>Display</source>
        <translation>표시 설정</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="401"/>
        <source>Shading</source>
        <translation>셰이딩</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="402"/>
        <source>Wireframe</source>
        <translation>와이어프레임</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="403"/>
        <source>Wireframe thickness</source>
        <translation>와이어프레임 두께</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="403"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="577"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="578"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="616"/>
        <source>px</source>
        <translation>px</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="406"/>
        <source>Flip normals</source>
        <translation>법선 뒤집기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="407"/>
        <source>Mesh colour</source>
        <translation>메시 색상</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="409"/>
        <source>Show dimensions</source>
        <translation>치수 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="412"/>
        <source>Distance</source>
        <translation>거리</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="417"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="425"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="509"/>
        <source>Width</source>
        <translation>너비</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="418"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="426"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="469"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="482"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="510"/>
        <source>Height</source>
        <translation>높이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="419"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="471"/>
        <source>Radius</source>
        <translation>반지름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="420"/>
        <source>Circumference</source>
        <translation>둘레</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="422"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="427"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="511"/>
        <source>Depth</source>
        <translation>깊이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="434"/>
        <source>Texture</source>
        <translation>텍스처</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="435"/>
        <source>Show texture</source>
        <translation>텍스처 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="436"/>
        <source>Guide tab</source>
        <translation>가이드 탭</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="437"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="600"/>
        <source>Image file</source>
        <translation>이미지 파일</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="438"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="601"/>
        <source>Images and movies (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp *.mp4 *.mov *.avi *.mkv);;All files (*)</source>
        <translation>이미지 및 동영상 (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp *.mp4 *.mov *.avi *.mkv);;모든 파일 (*)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="440"/>
        <source>Texture rotation</source>
        <translation>텍스처 회전</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="452"/>
        <source>Plane</source>
        <translation>평면</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="453"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="512"/>
        <source>Corner radius</source>
        <translation>모서리 반지름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="454"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="490"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="515"/>
        <source>Round lines</source>
        <translation>둥근 부분 선 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="455"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="473"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="488"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="502"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="513"/>
        <source>U lines</source>
        <translation>U 선 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="456"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="474"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="489"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="503"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="514"/>
        <source>V lines</source>
        <translation>V 선 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="460"/>
        <source>Circle Plane</source>
        <translation>원형 평면</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="461"/>
        <source>Mapping</source>
        <translation>매핑</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="461"/>
        <source>Planar</source>
        <translation>평면</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="461"/>
        <source>Polar</source>
        <translation>극좌표</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="462"/>
        <source>Hole radius</source>
        <translation>구멍 반지름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="463"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="470"/>
        <source>Angle</source>
        <translation>각도</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="464"/>
        <source>Flip polar V</source>
        <translation>극좌표 V 뒤집기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="468"/>
        <source>Cylinder Wall</source>
        <translation>원통형 벽</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="472"/>
        <source>Lock arc length</source>
        <translation>호 길이 고정</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="475"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="491"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="516"/>
        <source>Wall</source>
        <translation>벽</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="476"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="517"/>
        <source>Top</source>
        <translation>위</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="477"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="492"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="518"/>
        <source>Floor</source>
        <translation>바닥</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="481"/>
        <source>Person</source>
        <translation>사람</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="487"/>
        <source>Horseshoe</source>
        <translation>말굽형</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="493"/>
        <source>Bend X</source>
        <translation>굽힘 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="494"/>
        <source>Bend Y</source>
        <translation>굽힘 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="495"/>
        <source>Bend Z</source>
        <translation>굽힘 Z</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="497"/>
        <source>Dome</source>
        <translation>돔</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="497"/>
        <source>Sphere</source>
        <translation>구</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="498"/>
        <source>U start</source>
        <translation>U 시작</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="499"/>
        <source>U end</source>
        <translation>U 끝</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="500"/>
        <source>V start</source>
        <translation>V 시작</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="501"/>
        <source>V end</source>
        <translation>V 끝</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="508"/>
        <source>L Shape</source>
        <translation>L자형</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="522"/>
        <source>Curve</source>
        <translation>곡선</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="523"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="556"/>
        <source>Extrude</source>
        <translation>돌출</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="524"/>
        <source>Closed</source>
        <translation>닫힘</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="526"/>
        <source>Points</source>
        <translation>점</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="531"/>
        <source>Distance Measure</source>
        <translation>거리 측정</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="532"/>
        <source>Start X</source>
        <translation>시작 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="533"/>
        <source>Start Y</source>
        <translation>시작 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="534"/>
        <source>Start Z</source>
        <translation>시작 Z</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="535"/>
        <source>End X</source>
        <translation>끝 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="536"/>
        <source>End Y</source>
        <translation>끝 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="537"/>
        <source>End Z</source>
        <translation>끝 Z</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="541"/>
        <source>Comment</source>
        <translation>코멘트</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="542"/>
        <source>Text</source>
        <translation>텍스트</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="543"/>
        <source>Label offset X</source>
        <translation>라벨 오프셋 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="544"/>
        <source>Label offset Y</source>
        <translation>라벨 오프셋 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="545"/>
        <source>Label offset Z</source>
        <translation>라벨 오프셋 Z</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="546"/>
        <source>Circle scale</source>
        <translation>원 크기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="547"/>
        <source>Label scale</source>
        <translation>라벨 크기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="548"/>
        <source>Label scale X</source>
        <translation>라벨 크기 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="549"/>
        <source>Label scale Y</source>
        <translation>라벨 크기 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="550"/>
        <source>Font scale</source>
        <translation>글꼴 크기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="554"/>
        <source>DXF Mesh</source>
        <translation>DXF 메시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="555"/>
        <source>Line thickness</source>
        <translation>선 두께</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="560"/>
        <source>OBJ Mesh</source>
        <translation>OBJ 메시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="564"/>
        <source>File</source>
        <translation>파일</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="576"/>
        <source>Projector</source>
        <translation>프로젝터</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="576"/>
        <source>Camera</source>
        <translation>카메라</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="577"/>
        <source>Resolution width</source>
        <translation>해상도 너비</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="578"/>
        <source>Resolution height</source>
        <translation>해상도 높이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="579"/>
        <source>Throw ratio</source>
        <translation>투사비</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="580"/>
        <source>Lens shift X</source>
        <translation>렌즈 시프트 X</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="581"/>
        <source>Lens shift Y</source>
        <translation>렌즈 시프트 Y</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="582"/>
        <source>Flip horizontal</source>
        <translation>좌우 반전</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="583"/>
        <source>Flip vertical</source>
        <translation>상하 반전</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="584"/>
        <source>Rotate 180°</source>
        <translation>180° 회전</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="585"/>
        <source>Show frustum</source>
        <translation>투사 범위 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="586"/>
        <source>Show name</source>
        <translation>이름 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="587"/>
        <source>Show info text</source>
        <translation>정보 텍스트 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="590"/>
        <source>Projection visible</source>
        <translation>투사 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="592"/>
        <source>Projection opacity</source>
        <translation>투사 불투명도</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="595"/>
        <source>Colour</source>
        <translation>색상</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="597"/>
        <source>Projected Image</source>
        <translation>투사 이미지</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="598"/>
        <source>Guide object</source>
        <translation>가이드 개체</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="599"/>
        <source>Object %1 (not a guide)</source>
        <translation>개체 %1 (가이드 아님)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="606"/>
        <source>Pixel Footprint</source>
        <translation>픽셀 크기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="607"/>
        <source>Heat map</source>
        <translation>히트맵</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="608"/>
        <source>Grid</source>
        <translation>격자</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="609"/>
        <source>Labels</source>
        <translation>라벨</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="610"/>
        <source>Automatic range</source>
        <translation>자동 범위</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="612"/>
        <source>Heat map opacity</source>
        <translation>히트맵 불투명도</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="616"/>
        <source>Grid step</source>
        <translation>격자 간격</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="617"/>
        <source>Metric</source>
        <translation>측정 기준</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>Larger of U and V</source>
        <translation>U와 V 중 큰 값</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>U (horizontal)</source>
        <translation>U (가로)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>V (vertical)</source>
        <translation>V (세로)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>Area (√(U×V))</source>
        <translation>면적 (√(U×V))</translation>
    </message>
</context>
<context>
    <name>SceneTexts</name>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="18"/>
        <source>Viewport Controls</source>
        <translation>뷰포트 조작</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="23"/>
        <source>Mouse Wheel: Zoom</source>
        <translation>마우스 휠: 확대/축소</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="24"/>
        <source>P: Perspective View</source>
        <translation>P: 원근 보기</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="25"/>
        <source>V: Projector View</source>
        <translation>V: 프로젝터 시점</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="26"/>
        <source>I: Toggle Projector Frustum</source>
        <translation>I: 프로젝터 투사 범위 켜기/끄기</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="27"/>
        <source>X: Toggle Local/World Handles</source>
        <translation>X: 로컬/월드 핸들 전환</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="28"/>
        <source>Alt + Left Drag: Orbit</source>
        <translation>Alt + 왼쪽 드래그: 회전</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="29"/>
        <source>Alt + Middle Drag: Pan</source>
        <translation>Alt + 가운데 드래그: 이동</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="30"/>
        <source>Alt + Right Drag: Dolly</source>
        <translation>Alt + 오른쪽 드래그: 돌리</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="31"/>
        <source>F: Frame Selection</source>
        <translation>F: 선택 항목 맞추기</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="34"/>
        <source>Perspective</source>
        <translation>원근</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="35"/>
        <source>Front</source>
        <translation>정면</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="36"/>
        <source>Side</source>
        <translation>측면</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="40"/>
        <source>%1 View</source>
        <translation>%1 시점</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="45"/>
        <source>Click points on the y=0 plane. Right-click or Esc to finish.</source>
        <translation>y=0 평면 위의 점을 클릭하세요. 끝내려면 오른쪽 클릭 또는 Esc를 누르세요.</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="50"/>
        <source>VantreoGuide 3D object copy (%1 object%2)</source>
        <translation>VantreoGuide 3D 개체 복사 (개체 %1개)</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="55"/>
        <source>Copied %1 3D object%2.</source>
        <translation>3D 개체 %1개를 복사했습니다.</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="58"/>
        <source>No 3D objects were copied.</source>
        <translation>복사된 3D 개체가 없습니다.</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="59"/>
        <source>Select a 3D object to copy.</source>
        <translation>복사할 3D 개체를 선택하세요.</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="63"/>
        <source>Pasted %1 3D object%2.</source>
        <translation>3D 개체 %1개를 붙여 넣었습니다.</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="66"/>
        <source>Delete 3D Object</source>
        <translation>3D 개체 삭제</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="72"/>
        <source>%1 objects</source>
        <translation>개체 %1개</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="76"/>
        <source>selected object</source>
        <translation>선택한 개체</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="77"/>
        <source>Delete &quot;%1&quot; from the 3D View?</source>
        <translation>3D 뷰에서 &quot;%1&quot;을(를) 삭제하시겠습니까?</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="83"/>
        <source>The Projector Calibration window will close because its projector &quot;%1&quot; is being deleted.</source>
        <translation>프로젝터 &quot;%1&quot;이(가) 삭제되므로 프로젝터 보정 창이 닫힙니다.</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="85"/>
        <source>Projector Calibration windows will close because their projectors are being deleted.</source>
        <translation>프로젝터가 삭제되므로 해당 프로젝터 보정 창이 닫힙니다.</translation>
    </message>
</context>
<context>
    <name>SceneWidget</name>
    <message>
        <location filename="../scene/ui/SceneWidget.cpp" line="791"/>
        <source>Select a projector or camera to look through.</source>
        <translation>시점으로 사용할 프로젝터나 카메라를 선택하세요.</translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneWidget.cpp" line="1217"/>
        <source>The 3D view could not start.</source>
        <translation>3D 뷰를 시작할 수 없습니다.</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="52"/>
        <source>Objects</source>
        <translation>개체</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="117"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="207"/>
        <source>Add</source>
        <translation>추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="125"/>
        <source>Move (W)</source>
        <translation>이동 (W)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="125"/>
        <source>Rotate (E)</source>
        <translation>회전 (E)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="125"/>
        <source>Scale (R)</source>
        <translation>크기 (R)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="132"/>
        <source>Local Axes (X)</source>
        <translation>로컬 축 (X)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="135"/>
        <source>Snap</source>
        <translation>스냅</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="140"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="188"/>
        <source>View</source>
        <translation>보기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="141"/>
        <source>Perspective (P)</source>
        <translation>원근 (P)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="142"/>
        <source>Front</source>
        <translation>정면</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="143"/>
        <source>Side</source>
        <translation>측면</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="144"/>
        <source>Projector View (V)</source>
        <translation>프로젝터 시점 (V)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="146"/>
        <source>Select a projector or camera to look through.</source>
        <translation>시점으로 사용할 프로젝터나 카메라를 선택하세요.</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="148"/>
        <source>Frame Selection (F)</source>
        <translation>선택 항목 맞추기 (F)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="150"/>
        <source>Save Camera View...</source>
        <translation>카메라 뷰 저장...</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="152"/>
        <source>Save Camera View</source>
        <translation>카메라 뷰 저장</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="152"/>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="153"/>
        <source>View %1</source>
        <translation>뷰 %1</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="157"/>
        <source>Camera Views</source>
        <translation>카메라 뷰</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="162"/>
        <source>No saved camera views</source>
        <translation>저장된 카메라 뷰 없음</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="166"/>
        <source>Remove</source>
        <translation>제거</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="172"/>
        <source>Show Objects</source>
        <translation>개체 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="175"/>
        <source>Show Grid</source>
        <translation>격자 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="178"/>
        <source>Show All Projector Frusta</source>
        <translation>모든 프로젝터 투사 범위 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="181"/>
        <source>Show OBJ Polygon Lines</source>
        <translation>OBJ 폴리곤 선 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="184"/>
        <source>Show Viewport Controls</source>
        <translation>뷰포트 조작 안내 표시</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="193"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="199"/>
        <source>Edit</source>
        <translation>편집</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="194"/>
        <source>Copy</source>
        <translation>복사</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="195"/>
        <source>Paste</source>
        <translation>붙여넣기</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="196"/>
        <source>Duplicate</source>
        <translation>복제</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="197"/>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="213"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <source>Plane</source>
        <translation>평면</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="214"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="419"/>
        <source>Circle Plane</source>
        <translation>원형 평면</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="215"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="425"/>
        <source>Cylinder Wall</source>
        <translation>원통형 벽</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="216"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="431"/>
        <source>Dome</source>
        <translation>돔</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="217"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="437"/>
        <source>Sphere</source>
        <translation>구</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="218"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="443"/>
        <source>Horseshoe</source>
        <translation>말굽형</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="219"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="450"/>
        <source>L Shape</source>
        <translation>L자형</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="220"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="456"/>
        <source>Person</source>
        <translation>사람</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="221"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="462"/>
        <source>Projector</source>
        <translation>프로젝터</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="222"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="468"/>
        <source>Camera</source>
        <translation>카메라</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="223"/>
        <source>Curve</source>
        <translation>곡선</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="224"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="478"/>
        <source>Distance Measure</source>
        <translation>거리 측정</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="225"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="482"/>
        <source>Comment</source>
        <translation>코멘트</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="226"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <source>Guide</source>
        <translation>가이드</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="227"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="519"/>
        <source>Image</source>
        <translation>이미지</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <source>Add Plane</source>
        <translation>평면 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="420"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="444"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="451"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="500"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="520"/>
        <source>Width</source>
        <translation>너비</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="420"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="426"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="432"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="438"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="444"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="451"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="457"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="500"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="520"/>
        <source>Height</source>
        <translation>높이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="419"/>
        <source>Add Circle Plane</source>
        <translation>원형 평면 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="421"/>
        <source>Hole radius</source>
        <translation>구멍 반지름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="425"/>
        <source>Add Cylinder Wall</source>
        <translation>원통형 벽 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="426"/>
        <source>Arc length</source>
        <translation>호 길이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="427"/>
        <source>Angle</source>
        <translation>각도</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="431"/>
        <source>Add Dome</source>
        <translation>돔 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="432"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="438"/>
        <source>Radius</source>
        <translation>반지름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="433"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="439"/>
        <source>Segments around</source>
        <translation>둘레 분할 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="433"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="439"/>
        <source>Segments up</source>
        <translation>세로 분할 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="437"/>
        <source>Add Sphere</source>
        <translation>구 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="443"/>
        <source>Add Horseshoe</source>
        <translation>말굽형 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="444"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="451"/>
        <source>Depth</source>
        <translation>깊이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="445"/>
        <source>Bend radius</source>
        <translation>굽힘 반지름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="445"/>
        <source>U lines</source>
        <translation>U 선 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="446"/>
        <source>V lines</source>
        <translation>V 선 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="446"/>
        <source>Round lines</source>
        <translation>둥근 부분 선 수</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="450"/>
        <source>Add L Shape</source>
        <translation>L자형 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="452"/>
        <source>Corner radius</source>
        <translation>모서리 반지름</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="456"/>
        <source>Add Person</source>
        <translation>사람 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="457"/>
        <source>Width (0 = from height)</source>
        <translation>너비 (0 = 키에서 계산)</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="462"/>
        <source>Add Projector</source>
        <translation>프로젝터 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="463"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="469"/>
        <source>Body width</source>
        <translation>본체 너비</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="463"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="469"/>
        <source>Body height</source>
        <translation>본체 높이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="464"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="470"/>
        <source>Body depth</source>
        <translation>본체 깊이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="468"/>
        <source>Add Camera</source>
        <translation>카메라 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="478"/>
        <source>Add Distance Measure</source>
        <translation>거리 측정 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="478"/>
        <source>Length</source>
        <translation>길이</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="485"/>
        <source>Add Comment</source>
        <translation>코멘트 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="485"/>
        <source>Comment text</source>
        <translation>코멘트 내용</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="495"/>
        <source>Guide 1</source>
        <translation>가이드 1</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <source>Add Guide</source>
        <translation>가이드 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="499"/>
        <source>Guide tab</source>
        <translation>가이드 탭</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="511"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="519"/>
        <source>Add Image</source>
        <translation>이미지 추가</translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="512"/>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All files (*)</source>
        <translation>이미지 (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;모든 파일 (*)</translation>
    </message>
</context>
</TS>
