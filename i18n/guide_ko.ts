<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>GuideExportAll</name>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="38"/>
        <source>The folder &quot;%1&quot; does not exist.</source>
        <translation>&quot;%1&quot; 폴더가 없습니다.</translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="43"/>
        <source>Exporting guides...</source>
        <translation>가이드를 내보내는 중...</translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="43"/>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="44"/>
        <location filename="../app/GuideExportAll.cpp" line="93"/>
        <location filename="../app/GuideExportAll.cpp" line="98"/>
        <source>Export All Guides</source>
        <translation>모든 가이드 내보내기</translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="63"/>
        <source>Could not export &quot;%1&quot;: %2</source>
        <translation>&quot;%1&quot;을(를) 내보낼 수 없습니다: %2</translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="93"/>
        <source>There are no guide tabs to export.</source>
        <translation>내보낼 가이드 탭이 없습니다.</translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="109"/>
        <source>Export failed</source>
        <translation>내보내기 실패</translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="113"/>
        <source>Exported %1 guide images to %2</source>
        <translation>가이드 이미지 %1개를 %2에 내보냈습니다</translation>
    </message>
</context>
<context>
    <name>GuidePreviewWidget</name>
    <message>
        <location filename="../guide/ui/GuidePreviewWidget.cpp" line="373"/>
        <source>Rendering...</source>
        <translation>렌더링 중...</translation>
    </message>
</context>
<context>
    <name>GuideTab</name>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="165"/>
        <location filename="../guide/ui/GuideTab.cpp" line="543"/>
        <source>Layers</source>
        <translation>레이어</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="202"/>
        <source>Size</source>
        <translation>크기</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="204"/>
        <location filename="../guide/ui/GuideTab.cpp" line="205"/>
        <location filename="../guide/ui/GuideTab.cpp" line="413"/>
        <source> mm</source>
        <translation> mm</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="208"/>
        <location filename="../guide/ui/GuideTab.cpp" line="302"/>
        <source>Real Size</source>
        <translation>실제 크기</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="209"/>
        <location filename="../guide/ui/GuideTab.cpp" line="210"/>
        <location filename="../guide/ui/GuideTab.cpp" line="246"/>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="215"/>
        <source>Pixel Size</source>
        <translation>픽셀 크기</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="216"/>
        <source>Fixed Ratio</source>
        <translation>비율 고정</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="217"/>
        <source>Keep the pixel size in the aspect ratio of the real size</source>
        <translation>픽셀 크기를 실제 크기의 가로세로 비율로 유지합니다</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="218"/>
        <source>Multiple of 4</source>
        <translation>4의 배수</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="219"/>
        <source>Keep the pixel width and height multiples of 4</source>
        <translation>픽셀 너비와 높이를 4의 배수로 유지합니다</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="230"/>
        <source>Grid</source>
        <translation>그리드</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="236"/>
        <source>Rows × Columns</source>
        <translation>행 × 열</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="237"/>
        <source>Auto Columns</source>
        <translation>열 자동</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="238"/>
        <source>Columns follow from the rows and the aspect ratio</source>
        <translation>열 수를 행 수와 가로세로 비율에서 정합니다</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="239"/>
        <source>Real Square</source>
        <translation>정사각 셀</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="240"/>
        <source>Square cells of a fixed pixel size decide rows and columns</source>
        <translation>고정 픽셀 크기의 정사각 셀로 행과 열을 정합니다</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="248"/>
        <source>Square Size</source>
        <translation>정사각 크기</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="256"/>
        <source>Color and Numbers</source>
        <translation>색상과 번호</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="260"/>
        <source>Default</source>
        <translation>기본</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="261"/>
        <source>Vantreo</source>
        <translation>Vantreo</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="262"/>
        <source>Color Style</source>
        <translation>색상 스타일</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="265"/>
        <source>Row-Col</source>
        <translation>행-열</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="266"/>
        <source>Col-Row</source>
        <translation>열-행</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="267"/>
        <source>Korean Cell Name</source>
        <translation>한글 셀 이름</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="268"/>
        <source>English Cell Name</source>
        <translation>영문 셀 이름</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="269"/>
        <source>Number Format</source>
        <translation>번호 형식</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="270"/>
        <source>Randomize Color</source>
        <translation>무작위 색상</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="272"/>
        <source>Reset Color</source>
        <translation>색상 초기화</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="274"/>
        <source>Return every cell to the colour style</source>
        <translation>모든 셀을 색상 스타일대로 되돌립니다</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="279"/>
        <source>Invert X</source>
        <translation>X 반전</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="280"/>
        <source>Invert Y</source>
        <translation>Y 반전</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="289"/>
        <source>Display</source>
        <translation>표시</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="294"/>
        <source>Cell Numbers</source>
        <translation>셀 번호</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="295"/>
        <source>Cell Boundaries</source>
        <translation>셀 경계</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="296"/>
        <source>Inner Lines</source>
        <translation>내부 선</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="297"/>
        <source>Center Lines</source>
        <translation>중심선</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="298"/>
        <source>Cross Lines</source>
        <translation>대각선</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="299"/>
        <source>Circles</source>
        <translation>원</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="300"/>
        <source>Outline</source>
        <translation>외곽선</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="301"/>
        <source>Resolution</source>
        <translation>해상도</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="303"/>
        <source>Square Status</source>
        <translation>정사각형 여부</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="304"/>
        <source>Width Dimension</source>
        <translation>너비 치수</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="305"/>
        <source>Height Dimension</source>
        <translation>높이 치수</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="306"/>
        <location filename="../guide/ui/GuideTab.cpp" line="324"/>
        <source>Description</source>
        <translation>설명</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="307"/>
        <source>Final Resolution Info</source>
        <translation>최종 해상도 정보</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="317"/>
        <source>Text</source>
        <translation>텍스트</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="321"/>
        <source>Description shown on the guide</source>
        <translation>가이드에 표시할 설명</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="327"/>
        <source>Font Scale</source>
        <translation>글자 배율</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="331"/>
        <source>Logo</source>
        <translation>로고</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="333"/>
        <source>Show Logo</source>
        <translation>로고 표시</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="337"/>
        <source>Built-in logo</source>
        <translation>기본 로고</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="339"/>
        <source>...</source>
        <translation>...</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="340"/>
        <source>Choose a logo image</source>
        <translation>로고 이미지 선택</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="342"/>
        <source>Reset</source>
        <translation>초기화</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="343"/>
        <source>Use the built-in logo</source>
        <translation>기본 로고 사용</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="349"/>
        <source>Image</source>
        <translation>이미지</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="358"/>
        <source>Opacity</source>
        <translation>불투명도</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="362"/>
        <source>Orientation</source>
        <translation>방향</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="365"/>
        <source>Flip Horizontal</source>
        <translation>좌우 반전</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="366"/>
        <source>Rotate 90°</source>
        <translation>90° 회전</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="373"/>
        <source>Document Title</source>
        <translation>문서 제목</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="375"/>
        <source>Show Title</source>
        <translation>제목 표시</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="376"/>
        <source>Custom Title</source>
        <translation>사용자 제목</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="384"/>
        <source>Tab title</source>
        <translation>탭 제목</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="385"/>
        <source>Title</source>
        <translation>제목</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="388"/>
        <source>Background</source>
        <translation>배경</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="392"/>
        <source>Projector Layout</source>
        <translation>프로젝터 배치</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="394"/>
        <source>Display Projector Info</source>
        <translation>프로젝터 정보 표시</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="400"/>
        <source>Projectors across</source>
        <translation>가로 프로젝터 수</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="401"/>
        <source>Projectors down</source>
        <translation>세로 프로젝터 수</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="402"/>
        <source>Array</source>
        <translation>배열</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="408"/>
        <source>Projector Resolution</source>
        <translation>프로젝터 해상도</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="409"/>
        <source>Resolution (px)</source>
        <translation>해상도 (px)</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="412"/>
        <location filename="../guide/ui/GuideTab.cpp" line="421"/>
        <source>Throw Ratio</source>
        <translation>투사비</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="415"/>
        <location filename="../guide/ui/GuideTab.cpp" line="422"/>
        <source>Throw Distance</source>
        <translation>투사 거리</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="418"/>
        <source>Minimum Overlap</source>
        <translation>최소 겹침</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="423"/>
        <source>Layout Basis</source>
        <translation>배치 기준</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="424"/>
        <source>Auto Layout</source>
        <translation>자동 배치</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="425"/>
        <source>Calculate Effective Resolution</source>
        <translation>유효 해상도 계산</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="426"/>
        <source>Floor Projection</source>
        <translation>바닥 투사</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="427"/>
        <source>Vertical Projection</source>
        <translation>세로 투사</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="443"/>
        <source>Apply Projector Layout</source>
        <translation>프로젝터 배치 적용</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="481"/>
        <source>Fit</source>
        <translation>맞춤</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="481"/>
        <source>Fit the guide into the view (double-click, F)</source>
        <translation>가이드를 화면에 맞춥니다 (더블클릭, F)</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="482"/>
        <source>100%</source>
        <translation>100%</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="482"/>
        <source>One guide pixel per screen pixel (1)</source>
        <translation>가이드 1픽셀을 화면 1픽셀로 표시합니다 (1)</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="483"/>
        <source>Zoom out (-)</source>
        <translation>축소 (-)</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="484"/>
        <source>Zoom in (+)</source>
        <translation>확대 (+)</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="492"/>
        <source>Save As Default</source>
        <translation>기본값으로 저장</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="494"/>
        <source>Use this guide&apos;s style for new guides</source>
        <translation>이 가이드의 스타일을 새 가이드에 사용합니다</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="495"/>
        <location filename="../guide/ui/GuideTab.cpp" line="1001"/>
        <source>Export PNG</source>
        <translation>PNG 내보내기</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="833"/>
        <source>Guide Image size is calculated automatically. Turn off Calculate Effective Resolution to edit W/H.</source>
        <translation>가이드 이미지 크기는 자동으로 계산됩니다. 너비/높이를 편집하려면 유효 해상도 계산을 끄십시오.</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="843"/>
        <source>%1 × %2 cells of %3 × %4 px</source>
        <translation>%1 × %2 셀, 셀 크기 %3 × %4 px</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="859"/>
        <source>%1 × %2 projectors, overlap %3 % × %4 %</source>
        <translation>프로젝터 %1 × %2대, 겹침 %3 % × %4 %</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="863"/>
        <source>Throw distance %1 mm at throw ratio %2</source>
        <translation>투사비 %2에서 투사 거리 %1 mm</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="865"/>
        <source>Image per projector %1 × %2 mm</source>
        <translation>프로젝터당 화면 %1 × %2 mm</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="867"/>
        <source>Effective resolution %1 × %2 px</source>
        <translation>유효 해상도 %1 × %2 px</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="871"/>
        <source>Projector resolution differs from the guide: %1 px per projector vertically, %2 px in the guide.</source>
        <translation>프로젝터 해상도가 가이드와 다릅니다: 프로젝터 세로 %1 px, 가이드 %2 px.</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="968"/>
        <source>Guide</source>
        <translation>가이드</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="988"/>
        <source>The guide image could not be created (%1 x %2 px).</source>
        <translation>가이드 이미지를 만들 수 없습니다 (%1 x %2 px).</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1002"/>
        <source>PNG Image (*.png)</source>
        <translation>PNG 이미지 (*.png)</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1013"/>
        <source>Export failed</source>
        <translation>내보내기 실패</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1016"/>
        <source>Exported %1</source>
        <translation>%1 내보냄</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1024"/>
        <location filename="../guide/ui/GuideTab.cpp" line="1027"/>
        <source>Save Style Default</source>
        <translation>스타일 기본값 저장</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1025"/>
        <source>Saved style default:</source>
        <translation>스타일 기본값을 저장했습니다:</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1027"/>
        <source>Failed to save style default:</source>
        <translation>스타일 기본값을 저장하지 못했습니다:</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1037"/>
        <source>Choose Logo</source>
        <translation>로고 선택</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1038"/>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.svg *.webp);;All Files (*)</source>
        <translation>이미지 (*.png *.jpg *.jpeg *.bmp *.svg *.webp);;모든 파일 (*)</translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1048"/>
        <source>Title Background</source>
        <translation>제목 배경</translation>
    </message>
</context>
<context>
    <name>LayerListWidget</name>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="100"/>
        <source>Image...</source>
        <translation>이미지...</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="100"/>
        <source>Add an image layer</source>
        <translation>이미지 레이어 추가</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="101"/>
        <source>Mask</source>
        <translation>마스크</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="101"/>
        <source>Add a mask layer</source>
        <translation>마스크 레이어 추가</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="104"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="271"/>
        <source>Rectangle Mask</source>
        <translation>사각형 마스크</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="105"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="271"/>
        <source>Circle Mask</source>
        <translation>원형 마스크</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="107"/>
        <source>Up</source>
        <translation>위로</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="107"/>
        <source>Move the layer up</source>
        <translation>레이어를 위로 이동</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="108"/>
        <source>Down</source>
        <translation>아래로</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="108"/>
        <source>Move the layer down</source>
        <translation>레이어를 아래로 이동</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="109"/>
        <source>Remove</source>
        <translation>삭제</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="109"/>
        <source>Remove the layer</source>
        <translation>레이어 삭제</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="131"/>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="139"/>
        <source>Opacity</source>
        <translation>불투명도</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="143"/>
        <source>Centre X in guide pixels</source>
        <translation>중심 X (가이드 픽셀)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="144"/>
        <source>Centre Y in guide pixels</source>
        <translation>중심 Y (가이드 픽셀)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="147"/>
        <source>Position</source>
        <translation>위치</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="151"/>
        <source>Width in guide pixels</source>
        <translation>너비 (가이드 픽셀)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="152"/>
        <source>Height in guide pixels</source>
        <translation>높이 (가이드 픽셀)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="155"/>
        <source>Size</source>
        <translation>크기</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="159"/>
        <source>100%</source>
        <translation>100%</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="160"/>
        <source>Restore the layer&apos;s original size</source>
        <translation>레이어를 원래 크기로 되돌립니다</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="163"/>
        <source>Rotation</source>
        <translation>회전</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="173"/>
        <source>Crop from the left, percent of the image</source>
        <translation>왼쪽 자르기 (이미지 대비 %)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="174"/>
        <source>Crop from the top, percent of the image</source>
        <translation>위쪽 자르기 (이미지 대비 %)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="175"/>
        <source>Crop from the right, percent of the image</source>
        <translation>오른쪽 자르기 (이미지 대비 %)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="176"/>
        <source>Crop from the bottom, percent of the image</source>
        <translation>아래쪽 자르기 (이미지 대비 %)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="177"/>
        <source>L</source>
        <translation>좌</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="179"/>
        <source>T</source>
        <translation>상</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="181"/>
        <source>R</source>
        <translation>우</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="183"/>
        <source>B</source>
        <translation>하</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="185"/>
        <source>Crop</source>
        <translation>자르기</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="192"/>
        <source>Rectangle</source>
        <translation>사각형</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="193"/>
        <source>Circle</source>
        <translation>원형</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="194"/>
        <source>Shape</source>
        <translation>모양</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="196"/>
        <source>Color</source>
        <translation>색상</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="197"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="213"/>
        <source> px</source>
        <translation> px</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="198"/>
        <source>Corner Radius</source>
        <translation>모서리 반경</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="199"/>
        <source>Inverse (mask outside)</source>
        <translation>반전 (바깥쪽 마스크)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="201"/>
        <source>Wireframe</source>
        <translation>와이어프레임</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="212"/>
        <source>U / V Lines</source>
        <translation>U / V 선 수</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="214"/>
        <source>Line Width</source>
        <translation>선 두께</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="217"/>
        <source>Add an image or a mask, then drag it in the preview: the corners scale it, the round handle turns it.</source>
        <translation>이미지나 마스크를 추가한 뒤 미리보기에서 끌어 옮기십시오. 모서리는 크기를, 둥근 핸들은 회전을 조절합니다.</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="273"/>
        <source>Image</source>
        <translation>이미지</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="293"/>
        <source>Mask layer</source>
        <translation>마스크 레이어</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="409"/>
        <source>Could not read the image &quot;%1&quot;: %2</source>
        <translation>&quot;%1&quot; 이미지를 읽을 수 없습니다: %2</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="523"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="530"/>
        <source>Add Image Layer</source>
        <translation>이미지 레이어 추가</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="524"/>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All Files (*)</source>
        <translation>이미지 (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;모든 파일 (*)</translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="537"/>
        <source>Mask Color</source>
        <translation>마스크 색상</translation>
    </message>
</context>
</TS>
