<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>CanvasTabPanel</name>
    <message>
        <location filename="../app/TabInfoPanel.cpp" line="28"/>
        <source>Canvas</source>
        <translation>캔버스</translation>
    </message>
    <message>
        <location filename="../app/TabInfoPanel.cpp" line="28"/>
        <source>Canvas editing is not available in this version. The canvas is kept as loaded and saved with the project.</source>
        <translation>이 버전에서는 캔버스를 편집할 수 없습니다. 캔버스는 불러온 그대로 유지되며 프로젝트와 함께 저장됩니다.</translation>
    </message>
</context>
<context>
    <name>GpuAdapter</name>
    <message>
        <location filename="../common/GpuAdapter.cpp" line="135"/>
        <source>Unknown GPU</source>
        <translation>알 수 없는 GPU</translation>
    </message>
    <message>
        <location filename="../common/GpuAdapter.cpp" line="139"/>
        <source>%1 GB VRAM</source>
        <translation>VRAM %1 GB</translation>
    </message>
    <message>
        <location filename="../common/GpuAdapter.cpp" line="142"/>
        <source>High Performance</source>
        <translation>고성능</translation>
    </message>
</context>
<context>
    <name>GpuSelectionDialog</name>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="13"/>
        <source>GPU Selection</source>
        <translation>GPU 선택</translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="18"/>
        <source>Auto (High Performance GPU)</source>
        <translation>자동 (고성능 GPU)</translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="27"/>
        <source>Unavailable GPU</source>
        <translation>사용할 수 없는 GPU</translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="29"/>
        <source>Selected GPU is unavailable</source>
        <translation>선택한 GPU를 사용할 수 없습니다</translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="33"/>
        <source>No hardware GPU adapter was reported by the system. Auto mode will use the GPU fallback path.</source>
        <translation>시스템에서 하드웨어 GPU 어댑터를 찾지 못했습니다. 자동 모드는 GPU 대체 경로를 사용합니다.</translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="34"/>
        <source>GPU selection requires restarting VantreoGuide. Already opened GPU previews keep using the current GPU until the program restarts.</source>
        <translation>GPU 선택을 적용하려면 VantreoGuide를 다시 시작해야 합니다. 이미 열린 GPU 미리보기는 프로그램을 다시 시작할 때까지 현재 GPU를 계속 사용합니다.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <location filename="../app/MainWindow.cpp" line="189"/>
        <source>UI Font</source>
        <translation>UI 글꼴</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="213"/>
        <location filename="../app/MainWindow.cpp" line="403"/>
        <source>Version</source>
        <translation>버전</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="214"/>
        <source>VantreoGuide %1
Build %2</source>
        <translation>VantreoGuide %1
빌드 %2</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="358"/>
        <source>Vantreo Guide Generator</source>
        <translation>반트레오 가이드 생성기</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="367"/>
        <source>File</source>
        <translation>파일</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="368"/>
        <source>New Project</source>
        <translation>새 프로젝트</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="369"/>
        <source>Open Project...</source>
        <translation>프로젝트 열기...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="370"/>
        <source>Import Project Bundle...</source>
        <translation>프로젝트 번들 가져오기...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="371"/>
        <source>Save Project</source>
        <translation>프로젝트 저장</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="372"/>
        <source>Save Project As...</source>
        <translation>다른 이름으로 프로젝트 저장...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="373"/>
        <source>Save Project As (with Resources)...</source>
        <translation>다른 이름으로 프로젝트 저장 (리소스 포함)...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="374"/>
        <source>Export Project Bundle...</source>
        <translation>프로젝트 번들 내보내기...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="375"/>
        <source>Create Portable Package...</source>
        <translation>포터블 패키지 만들기...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="376"/>
        <source>Merge Project...</source>
        <translation>프로젝트 병합...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="377"/>
        <source>Recent Projects</source>
        <translation>최근 프로젝트</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="378"/>
        <source>Export All Guides...</source>
        <translation>모든 가이드 내보내기...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="379"/>
        <source>Export Tab Views to PPTX...</source>
        <translation>탭 화면을 PPTX로 내보내기...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="380"/>
        <source>Export Tab Views to PDF...</source>
        <translation>탭 화면을 PDF로 내보내기...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="381"/>
        <source>Record Window...	Ctrl+Shift+R</source>
        <translation>창 녹화...	Ctrl+Shift+R</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="383"/>
        <source>Edit</source>
        <translation>편집</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="384"/>
        <source>Undo	Ctrl+Z</source>
        <translation>실행 취소	Ctrl+Z</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="385"/>
        <source>Redo	Ctrl+Y</source>
        <translation>다시 실행	Ctrl+Y</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="387"/>
        <source>Add Tab</source>
        <translation>탭 추가</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="388"/>
        <location filename="../app/TabFactory.cpp" line="20"/>
        <source>Guide</source>
        <translation>가이드</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="389"/>
        <location filename="../app/TabFactory.cpp" line="22"/>
        <source>Canvas</source>
        <translation>캔버스</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="390"/>
        <location filename="../app/MainWindow.cpp" line="506"/>
        <location filename="../app/TabFactory.cpp" line="24"/>
        <source>3D View</source>
        <translation>3D 뷰</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="392"/>
        <source>Settings</source>
        <translation>설정</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="393"/>
        <source>GPU Selection...</source>
        <translation>GPU 선택...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="394"/>
        <source>UI Font...</source>
        <translation>UI 글꼴...</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="395"/>
        <source>Reset UI Font</source>
        <translation>UI 글꼴 초기화</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="397"/>
        <source>Language</source>
        <translation>언어</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="402"/>
        <source>Help</source>
        <translation>도움말</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="404"/>
        <source>Update</source>
        <translation>업데이트</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="407"/>
        <source>Startup API: Waiting</source>
        <translation>Startup API: 대기 중</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="408"/>
        <source>Startup API request has not been sent yet.</source>
        <translation>Startup API 요청을 아직 보내지 않았습니다.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="411"/>
        <source>Use Add Tab or the + tab to start.</source>
        <translation>탭 추가 메뉴나 + 탭을 눌러 시작하세요.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="412"/>
        <source>Add guide tab</source>
        <translation>가이드 탭 추가</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="413"/>
        <source>Version %1  Build %2</source>
        <translation>버전 %1  빌드 %2</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="498"/>
        <source>Guide %1</source>
        <translation>가이드 %1</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="501"/>
        <source>Canvas %1</source>
        <translation>캔버스 %1</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="506"/>
        <source>3D View %1</source>
        <translation>3D 뷰 %1</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="557"/>
        <source>Delete Tab</source>
        <translation>탭 삭제</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="557"/>
        <source>Delete &quot;%1&quot;?</source>
        <translation>&quot;%1&quot;을(를) 삭제할까요?</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="557"/>
        <source>this tab</source>
        <translation>이 탭</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="639"/>
        <source>Copy</source>
        <translation>복사</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="640"/>
        <source>Delete</source>
        <translation>삭제</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="684"/>
        <source>UI scale: %1% (viewport unchanged)</source>
        <translation>UI 배율: %1% (뷰포트는 그대로)</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="779"/>
        <source>Unsaved Changes</source>
        <translation>저장되지 않은 변경 사항</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="781"/>
        <source>Save changes before starting a new project?</source>
        <translation>새 프로젝트를 시작하기 전에 변경 사항을 저장할까요?</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="782"/>
        <source>Your current project has unsaved changes.</source>
        <translation>현재 프로젝트에 저장되지 않은 변경 사항이 있습니다.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="784"/>
        <source>Save changes before closing?</source>
        <translation>닫기 전에 변경 사항을 저장할까요?</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="785"/>
        <source>There are unsaved changes.</source>
        <translation>저장되지 않은 변경 사항이 있습니다.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="786"/>
        <source>Your program settings have changed.</source>
        <translation>프로그램 설정이 변경되었습니다.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="871"/>
        <source>GPU selection unchanged.</source>
        <translation>GPU 선택이 변경되지 않았습니다.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="880"/>
        <location filename="../app/MainWindow.cpp" line="903"/>
        <source>GPU Selection</source>
        <translation>GPU 선택</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="881"/>
        <source>GPU selection was saved.</source>
        <translation>GPU 선택을 저장했습니다.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="882"/>
        <source>Restart VantreoGuide now to apply it to all GPU previews.</source>
        <translation>모든 GPU 미리보기에 적용하려면 지금 VantreoGuide를 다시 시작하세요.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="883"/>
        <source>Restart Now</source>
        <translation>지금 다시 시작</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="884"/>
        <source>Later</source>
        <translation>나중에</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="891"/>
        <location filename="../app/MainWindow.cpp" line="897"/>
        <source>GPU selection saved. Restart required.</source>
        <translation>GPU 선택을 저장했습니다. 다시 시작해야 합니다.</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="904"/>
        <source>VantreoGuide could not restart automatically. Please restart it manually.</source>
        <translation>VantreoGuide를 자동으로 다시 시작하지 못했습니다. 직접 다시 시작하세요.</translation>
    </message>
</context>
</TS>
