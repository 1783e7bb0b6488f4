<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>TabViewDocument</name>
    <message>
        <source>There are no tab views to export.</source>
        <translation>내보낼 탭 보기가 없습니다.</translation>
    </message>
    <message>
        <source>Could not encode slide image %1.</source>
        <translation>슬라이드 이미지 %1을(를) 인코딩할 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not create PDF writer.</source>
        <translation>PDF 작성기를 만들 수 없습니다.</translation>
    </message>
    <message>
        <source>PDF export failed.</source>
        <translation>PDF 내보내기에 실패했습니다.</translation>
    </message>
    <message>
        <source>Could not open %1 for writing.</source>
        <translation>쓰기 위해 %1을(를) 열 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not write %1 into PPTX.</source>
        <translation>%1을(를) PPTX에 쓸 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not finalize PPTX file.</source>
        <translation>PPTX 파일을 마무리할 수 없습니다.</translation>
    </message>
</context>
<context>
    <name>TabViewDocuments</name>
    <message>
        <source>Creating document...</source>
        <translation>문서를 만드는 중...</translation>
    </message>
    <message>
        <source>Tab %1</source>
        <translation>탭 %1</translation>
    </message>
    <message>
        <source>3D Simulation</source>
        <translation>3D 시뮬레이션</translation>
    </message>
    <message>
        <source>Export Tab Views</source>
        <translation>탭 보기 내보내기</translation>
    </message>
    <message>
        <source>There are no tab views to export.</source>
        <translation>내보낼 탭 보기가 없습니다.</translation>
    </message>
    <message>
        <source>Export Tab Views to PDF</source>
        <translation>탭 보기를 PDF로 내보내기</translation>
    </message>
    <message>
        <source>Export Tab Views to PPTX</source>
        <translation>탭 보기를 PPTX로 내보내기</translation>
    </message>
    <message>
        <source>PDF Files (*.pdf)</source>
        <translation>PDF 파일 (*.pdf)</translation>
    </message>
    <message>
        <source>PowerPoint Files (*.pptx)</source>
        <translation>PowerPoint 파일 (*.pptx)</translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation>내보내기 실패</translation>
    </message>
    <message>
        <source>PDF export failed.</source>
        <translation>PDF 내보내기에 실패했습니다.</translation>
    </message>
    <message>
        <source>PPTX export failed.</source>
        <translation>PPTX 내보내기에 실패했습니다.</translation>
    </message>
    <message>
        <source>Tab views exported to PDF: %1</source>
        <translation>탭 보기를 PDF로 내보냈습니다: %1</translation>
    </message>
    <message>
        <source>Tab views exported to PPTX: %1</source>
        <translation>탭 보기를 PPTX로 내보냈습니다: %1</translation>
    </message>
    <message>
        <source>Export complete</source>
        <translation>내보내기 완료</translation>
    </message>
    <message>
        <source>PDF saved successfully.</source>
        <translation>PDF를 저장했습니다.</translation>
    </message>
    <message>
        <source>PowerPoint saved successfully.</source>
        <translation>PowerPoint를 저장했습니다.</translation>
    </message>
</context>
<context>
    <name>Exporters</name>
    <message>
        <source>PDF Files</source>
        <translation>PDF 파일</translation>
    </message>
    <message>
        <source>PowerPoint Files</source>
        <translation>PowerPoint 파일</translation>
    </message>
    <message>
        <source>Export Tab Views to PDF...</source>
        <translation>탭 보기를 PDF로 내보내기...</translation>
    </message>
    <message>
        <source>Export Tab Views to PPTX...</source>
        <translation>탭 보기를 PPTX로 내보내기...</translation>
    </message>
</context>
</TS>
