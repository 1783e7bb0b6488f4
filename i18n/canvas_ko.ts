<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>CanvasAddGuideDialog</name>
    <message>
        <source>No preview</source>
        <translation>미리보기 없음</translation>
    </message>
    <message>
        <source>Add Guide</source>
        <translation>가이드 추가</translation>
    </message>
    <message>
        <source>Select All</source>
        <translation>모두 선택</translation>
    </message>
    <message>
        <source>Add Selected</source>
        <translation>선택 항목 추가</translation>
    </message>
</context>
<context>
    <name>CanvasObjectPanel</name>
    <message>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <source>Visible</source>
        <translation>표시</translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation>불투명도</translation>
    </message>
    <message>
        <source>Position X</source>
        <translation>위치 X</translation>
    </message>
    <message>
        <source>Position Y</source>
        <translation>위치 Y</translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation>회전</translation>
    </message>
    <message>
        <source>Scale X</source>
        <translation>배율 X</translation>
    </message>
    <message>
        <source>Scale Y</source>
        <translation>배율 Y</translation>
    </message>
    <message>
        <source>Crop left</source>
        <translation>왼쪽 자르기</translation>
    </message>
    <message>
        <source>Crop top</source>
        <translation>위 자르기</translation>
    </message>
    <message>
        <source>Crop right</source>
        <translation>오른쪽 자르기</translation>
    </message>
    <message>
        <source>Crop bottom</source>
        <translation>아래 자르기</translation>
    </message>
    <message>
        <source>Show width</source>
        <translation>너비 표시</translation>
    </message>
    <message>
        <source>Show height</source>
        <translation>높이 표시</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>코멘트</translation>
    </message>
    <message>
        <source>Label offset X</source>
        <translation>라벨 위치 X</translation>
    </message>
    <message>
        <source>Label offset Y</source>
        <translation>라벨 위치 Y</translation>
    </message>
    <message>
        <source>Circle size</source>
        <translation>원 크기</translation>
    </message>
    <message>
        <source>Font size</source>
        <translation>글꼴 크기</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>텍스트</translation>
    </message>
    <message>
        <source>Bold</source>
        <translation>굵게</translation>
    </message>
    <message>
        <source>Shadow</source>
        <translation>그림자</translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation>정렬</translation>
    </message>
    <message>
        <source>Left</source>
        <translation>왼쪽</translation>
    </message>
    <message>
        <source>Center</source>
        <translation>가운데</translation>
    </message>
    <message>
        <source>Right</source>
        <translation>오른쪽</translation>
    </message>
    <message>
        <source>Vertical alignment</source>
        <translation>세로 정렬</translation>
    </message>
    <message>
        <source>Top</source>
        <translation>위</translation>
    </message>
    <message>
        <source>Middle</source>
        <translation>중간</translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation>아래</translation>
    </message>
    <message>
        <source>Text color</source>
        <translation>텍스트 색상</translation>
    </message>
    <message>
        <source>Grid</source>
        <translation>격자</translation>
    </message>
    <message>
        <source>Aspect ratio</source>
        <translation>화면 비율</translation>
    </message>
    <message>
        <source>Bounds dimensions (mm)</source>
        <translation>영역 치수 (mm)</translation>
    </message>
    <message>
        <source>Bounds resolution (px)</source>
        <translation>영역 해상도 (px)</translation>
    </message>
    <message>
        <source>Show title</source>
        <translation>제목 표시</translation>
    </message>
    <message>
        <source>Snap</source>
        <translation>맞춤</translation>
    </message>
    <message>
        <source>Background</source>
        <translation>배경</translation>
    </message>
    <message>
        <source>Show document title</source>
        <translation>문서 제목 표시</translation>
    </message>
    <message>
        <source>Use custom title</source>
        <translation>사용자 제목 사용</translation>
    </message>
    <message>
        <source>Custom title</source>
        <translation>사용자 제목</translation>
    </message>
    <message>
        <source>Title band</source>
        <translation>제목 띠</translation>
    </message>
    <message>
        <source>Object</source>
        <translation>개체</translation>
    </message>
    <message>
        <source>Canvas</source>
        <translation>캔버스</translation>
    </message>
    <message>
        <source>Document title</source>
        <translation>문서 제목</translation>
    </message>
    <message>
        <source>Select an object to edit its properties.</source>
        <translation>속성을 편집할 개체를 선택하세요.</translation>
    </message>
</context>
<context>
    <name>CanvasTab</name>
    <message>
        <source>Scale X %1 Y %2  Position X %3 Y %4</source>
        <translation>배율 X %1 Y %2  위치 X %3 Y %4</translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation>내보내기 실패</translation>
    </message>
    <message>
        <source>No canvas objects to export.</source>
        <translation>내보낼 캔버스 개체가 없습니다.</translation>
    </message>
    <message>
        <source>Export Canvas PNG</source>
        <translation>캔버스 PNG 내보내기</translation>
    </message>
    <message>
        <source>PNG Images (*.png)</source>
        <translation>PNG 이미지 (*.png)</translation>
    </message>
    <message>
        <source>Exported %1</source>
        <translation>내보냄: %1</translation>
    </message>
    <message>
        <source>No selected guide to export.</source>
        <translation>내보낼 선택된 가이드가 없습니다.</translation>
    </message>
    <message>
        <source>Selected guide image is not available.</source>
        <translation>선택한 가이드 이미지를 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>Export Selected Guide PNG</source>
        <translation>선택한 가이드 PNG 내보내기</translation>
    </message>
    <message>
        <source>Selected guide PNG file could not be saved.</source>
        <translation>선택한 가이드 PNG 파일을 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>Add Image</source>
        <translation>이미지 추가</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All Files (*.*)</source>
        <translation>이미지 (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;모든 파일 (*.*)</translation>
    </message>
    <message>
        <source>Add Image failed</source>
        <translation>이미지 추가 실패</translation>
    </message>
    <message>
        <source>Selected image file could not be read.</source>
        <translation>선택한 이미지 파일을 읽을 수 없습니다.</translation>
    </message>
    <message>
        <source>Add Guide</source>
        <translation>가이드 추가</translation>
    </message>
    <message>
        <source>No guide tab is available.</source>
        <translation>사용할 수 있는 가이드 탭이 없습니다.</translation>
    </message>
    <message>
        <source>Comment</source>
        <translation>코멘트</translation>
    </message>
    <message>
        <source>Text</source>
        <translation>텍스트</translation>
    </message>
    <message>
        <source>Copy failed</source>
        <translation>복사 실패</translation>
    </message>
    <message>
        <source>Canvas view PNG file could not be saved.</source>
        <translation>캔버스 보기 PNG 파일을 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>Canvas view copied: %1</source>
        <translation>캔버스 보기 복사됨: %1</translation>
    </message>
    <message>
        <source>Paste failed</source>
        <translation>붙여넣기 실패</translation>
    </message>
    <message>
        <source>Translate</source>
        <translation>이동</translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation>회전</translation>
    </message>
    <message>
        <source>Scale</source>
        <translation>배율</translation>
    </message>
    <message>
        <source>Resize (T)</source>
        <translation>크기 조절 (T)</translation>
    </message>
    <message>
        <source>Crop (C)</source>
        <translation>자르기 (C)</translation>
    </message>
    <message>
        <source>Guide sources</source>
        <translation>가이드 소스</translation>
    </message>
    <message>
        <source>Add Comment</source>
        <translation>코멘트 추가</translation>
    </message>
    <message>
        <source>Add Text Box</source>
        <translation>텍스트 상자 추가</translation>
    </message>
    <message>
        <source>Objects</source>
        <translation>개체</translation>
    </message>
    <message>
        <source>Raise</source>
        <translation>위로</translation>
    </message>
    <message>
        <source>Lower</source>
        <translation>아래로</translation>
    </message>
    <message>
        <source>Copy</source>
        <translation>복사</translation>
    </message>
    <message>
        <source>Paste</source>
        <translation>붙여넣기</translation>
    </message>
    <message>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>내보내기</translation>
    </message>
    <message>
        <source>Export Canvas PNG...</source>
        <translation>캔버스 PNG 내보내기...</translation>
    </message>
    <message>
        <source>Export Selected Guide PNG...</source>
        <translation>선택한 가이드 PNG 내보내기...</translation>
    </message>
    <message>
        <source>Copy View</source>
        <translation>보기 복사</translation>
    </message>
    <message>
        <source>Fit View</source>
        <translation>보기 맞춤</translation>
    </message>
    <message>
        <source>No preview</source>
        <translation>미리보기 없음</translation>
    </message>
    <message>
        <source>No guide tabs available</source>
        <translation>가이드 탭 없음</translation>
    </message>
    <message>
        <source>Canvas PNG image could not be rendered.</source>
        <translation>캔버스 PNG 이미지를 렌더링할 수 없습니다.</translation>
    </message>
    <message>
        <source>PNG file could not be saved.</source>
        <translation>PNG 파일을 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not create a folder for pasted images.</source>
        <translation>붙여넣은 이미지용 폴더를 만들 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not save the clipboard image as PNG.</source>
        <translation>클립보드 이미지를 PNG로 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>Guide Image</source>
        <translation>가이드 이미지</translation>
    </message>
    <message>
        <source>Image</source>
        <translation>이미지</translation>
    </message>
    <message>
        <source>Text Box</source>
        <translation>텍스트 상자</translation>
    </message>
    <message>
        <source>%1 Copy</source>
        <translation>%1 복사본</translation>
    </message>
    <message>
        <source>%1 Copy %2</source>
        <translation>%1 복사본 %2</translation>
    </message>
    <message>
        <source>%1 guide source%2</source>
        <translation>가이드 소스 %1개</translation>
    </message>
</context>
</TS>
