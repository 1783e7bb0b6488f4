<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>PortablePackage</name>
    <message>
        <location filename="../project/PortablePackage.cpp" line="51"/>
        <location filename="../project/PortablePackage.cpp" line="210"/>
        <source>Could not create folder:</source>
        <translation>폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="105"/>
        <source>Could not list the libraries of:</source>
        <translation>다음 파일의 라이브러리 목록을 읽을 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="137"/>
        <source>Application folder was not found.</source>
        <translation>프로그램 폴더를 찾을 수 없습니다.</translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="143"/>
        <source>Could not remove existing package folder:</source>
        <translation>기존 패키지 폴더를 삭제할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="148"/>
        <source>Could not create package folder:</source>
        <translation>패키지 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="220"/>
        <source>Could not copy external resource files:</source>
        <translation>외부 리소스 파일을 복사할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="226"/>
        <source>Could not save sample.vgs:</source>
        <translation>sample.vgs를 저장할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="233"/>
        <source>Could not remove generated package folder:</source>
        <translation>생성된 패키지 폴더를 삭제할 수 없습니다:</translation>
    </message>
</context>
<context>
    <name>ProjectLifecycle</name>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="396"/>
        <source>New Project</source>
        <translation>새 프로젝트</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="396"/>
        <source>Initialize the program and start a new empty project?</source>
        <translation>프로그램을 초기화하고 빈 새 프로젝트를 시작할까요?</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="407"/>
        <source>Project initialized.</source>
        <translation>프로젝트를 초기화했습니다.</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="413"/>
        <source>Open Vantreo project</source>
        <translation>Vantreo 프로젝트 열기</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="414"/>
        <location filename="../app/ProjectLifecycle.cpp" line="421"/>
        <source>All Supported Project Files (*.vgs *.json);;Vantreo Guide Project (*.vgs);;Legacy JSON Settings (*.json)</source>
        <translation>지원되는 모든 프로젝트 파일 (*.vgs *.json);;Vantreo Guide 프로젝트 (*.vgs);;이전 JSON 설정 (*.json)</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="420"/>
        <source>Merge Vantreo project</source>
        <translation>Vantreo 프로젝트 병합</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="427"/>
        <location filename="../app/ProjectLifecycle.cpp" line="996"/>
        <source>Load failed</source>
        <translation>불러오기 실패</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="432"/>
        <location filename="../app/ProjectLifecycle.cpp" line="1000"/>
        <source>Loaded project: %1</source>
        <translation>프로젝트를 불러왔습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="438"/>
        <source>Merge failed</source>
        <translation>병합 실패</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="442"/>
        <source>Merged project: %1</source>
        <translation>프로젝트를 병합했습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="449"/>
        <source>Project file not found:</source>
        <translation>프로젝트 파일을 찾을 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="453"/>
        <source>Loading project...</source>
        <translation>프로젝트를 불러오는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="453"/>
        <source>Merging project...</source>
        <translation>프로젝트를 병합하는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="454"/>
        <source>Reading settings JSON...</source>
        <translation>설정 JSON을 읽는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="480"/>
        <source>Preparing tabs...</source>
        <translation>탭을 준비하는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="482"/>
        <source>Cleared existing tabs...</source>
        <translation>기존 탭을 정리했습니다...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="524"/>
        <source>Merging guide tab %1 of %2...</source>
        <translation>가이드 탭 병합 중 (%1/%2)...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="524"/>
        <source>Loading guide tab %1 of %2...</source>
        <translation>가이드 탭 불러오는 중 (%1/%2)...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="534"/>
        <source>Merging Canvas tab %1 of %2...</source>
        <translation>캔버스 탭 병합 중 (%1/%2)...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="534"/>
        <source>Loading Canvas tab %1 of %2...</source>
        <translation>캔버스 탭 불러오는 중 (%1/%2)...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="543"/>
        <source>Merging 3D View %1 of %2...</source>
        <translation>3D 뷰 병합 중 (%1/%2)...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="543"/>
        <source>Restoring 3D View %1 of %2...</source>
        <translation>3D 뷰 복원 중 (%1/%2)...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="555"/>
        <source>Restoring active guide...</source>
        <translation>활성 가이드를 복원하는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="560"/>
        <source>Updating 3D View controls...</source>
        <translation>3D 뷰 컨트롤을 업데이트하는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="565"/>
        <source>Finalizing load...</source>
        <translation>불러오기를 마무리하는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="579"/>
        <source>Updating loaded views...</source>
        <translation>불러온 뷰를 업데이트하는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="585"/>
        <source>Updating merged views...</source>
        <translation>병합한 뷰를 업데이트하는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="602"/>
        <location filename="../app/ProjectLifecycle.cpp" line="623"/>
        <location filename="../app/ProjectLifecycle.cpp" line="631"/>
        <location filename="../app/ProjectLifecycle.cpp" line="680"/>
        <source>Save failed</source>
        <translation>저장 실패</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="602"/>
        <location filename="../app/ProjectLifecycle.cpp" line="623"/>
        <source>No guide settings to save.</source>
        <translation>저장할 가이드 설정이 없습니다.</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="607"/>
        <location filename="../app/ProjectLifecycle.cpp" line="613"/>
        <location filename="../app/ProjectLifecycle.cpp" line="649"/>
        <source>Save Vantreo project</source>
        <translation>Vantreo 프로젝트 저장</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="607"/>
        <location filename="../app/ProjectLifecycle.cpp" line="650"/>
        <source>Vantreo Guide Project (*)</source>
        <translation>Vantreo Guide 프로젝트 (*)</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="613"/>
        <location filename="../app/ProjectLifecycle.cpp" line="655"/>
        <location filename="../app/ProjectLifecycle.cpp" line="789"/>
        <location filename="../app/ProjectLifecycle.cpp" line="920"/>
        <source>%1 already exists.</source>
        <translation>%1 파일이 이미 있습니다.</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="631"/>
        <location filename="../app/ProjectLifecycle.cpp" line="680"/>
        <source>Could not save project: %1</source>
        <translation>프로젝트를 저장할 수 없습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="638"/>
        <source>Saved project: %1</source>
        <translation>프로젝트를 저장했습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="645"/>
        <location filename="../app/ProjectLifecycle.cpp" line="654"/>
        <location filename="../app/ProjectLifecycle.cpp" line="662"/>
        <source>Save Project As (with Resources)</source>
        <translation>다른 이름으로 프로젝트 저장 (리소스 포함)</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="645"/>
        <location filename="../app/ProjectLifecycle.cpp" line="665"/>
        <source>No project data to save.</source>
        <translation>저장할 프로젝트 데이터가 없습니다.</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="686"/>
        <source>Project saved:</source>
        <translation>프로젝트를 저장했습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="697"/>
        <location filename="../app/ProjectLifecycle.cpp" line="721"/>
        <location filename="../app/ProjectLifecycle.cpp" line="738"/>
        <source>Project backup failed: %1</source>
        <translation>프로젝트 백업 실패: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="722"/>
        <source>Could not create project backup directory: %1</source>
        <translation>프로젝트 백업 폴더를 만들 수 없습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="742"/>
        <source>Project backup saved: %1</source>
        <translation>프로젝트 백업을 저장했습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="767"/>
        <source>(No recent projects)</source>
        <translation>(최근 프로젝트 없음)</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="797"/>
        <location filename="../app/ProjectLifecycle.cpp" line="808"/>
        <source>Export Project Bundle</source>
        <translation>프로젝트 번들 내보내기</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="799"/>
        <location filename="../app/ProjectLifecycle.cpp" line="811"/>
        <source>No project data to export.</source>
        <translation>내보낼 프로젝트 데이터가 없습니다.</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="802"/>
        <location filename="../app/ProjectLifecycle.cpp" line="859"/>
        <source>Vantreo Guide Project Bundle (*.zip)</source>
        <translation>Vantreo Guide 프로젝트 번들 (*.zip)</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="825"/>
        <source>Could not create export folder:</source>
        <translation>내보내기 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="832"/>
        <source>Could not create source folder:</source>
        <translation>source 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="838"/>
        <source>Could not copy external resource files:</source>
        <translation>외부 리소스 파일을 복사할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="843"/>
        <source>Could not save project file:</source>
        <translation>프로젝트 파일을 저장할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="846"/>
        <location filename="../app/ProjectLifecycle.cpp" line="970"/>
        <source>Creating ZIP package...</source>
        <translation>ZIP 패키지를 만드는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="851"/>
        <source>Project bundle created:</source>
        <translation>프로젝트 번들을 만들었습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="852"/>
        <source>Project bundle created: %1</source>
        <translation>프로젝트 번들을 만들었습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="858"/>
        <location filename="../app/ProjectLifecycle.cpp" line="880"/>
        <source>Import Project Bundle</source>
        <translation>프로젝트 번들 가져오기</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="863"/>
        <location filename="../app/ProjectLifecycle.cpp" line="882"/>
        <source>Project bundle file not found:</source>
        <translation>프로젝트 번들 파일을 찾을 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="867"/>
        <location filename="../app/ProjectLifecycle.cpp" line="886"/>
        <source>Selected file is not a ZIP project bundle:</source>
        <translation>선택한 파일은 ZIP 프로젝트 번들이 아닙니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="871"/>
        <source>Choose Import Folder</source>
        <translation>가져올 폴더 선택</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="907"/>
        <source>No project file was found in the selected project bundle:</source>
        <translation>선택한 프로젝트 번들에서 프로젝트 파일을 찾을 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="924"/>
        <source>Importing project bundle...</source>
        <translation>프로젝트 번들을 가져오는 중...</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="931"/>
        <source>The project file listed in the bundle was not extracted:</source>
        <translation>번들에 들어 있는 프로젝트 파일이 압축 해제되지 않았습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="936"/>
        <source>Project bundle imported:</source>
        <translation>프로젝트 번들을 가져왔습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="937"/>
        <source>Imported project bundle: %1</source>
        <translation>프로젝트 번들을 가져왔습니다: %1</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="945"/>
        <location filename="../app/ProjectLifecycle.cpp" line="956"/>
        <source>Create Portable Package</source>
        <translation>포터블 패키지 만들기</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="947"/>
        <location filename="../app/ProjectLifecycle.cpp" line="960"/>
        <source>No project data to package.</source>
        <translation>패키지로 만들 프로젝트 데이터가 없습니다.</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="950"/>
        <source>ZIP Archive (*.zip)</source>
        <translation>ZIP 압축 파일 (*.zip)</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="977"/>
        <source>Portable package created:</source>
        <translation>포터블 패키지를 만들었습니다:</translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="978"/>
        <source>Portable package created: %1</source>
        <translation>포터블 패키지를 만들었습니다: %1</translation>
    </message>
</context>
<context>
    <name>ResourceCollector</name>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="18"/>
        <source>Guide logo</source>
        <translation>가이드 로고</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="19"/>
        <source>Guide image object</source>
        <translation>가이드 이미지 오브젝트</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="20"/>
        <source>Canvas image object</source>
        <translation>캔버스 이미지 오브젝트</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="21"/>
        <source>Object texture</source>
        <translation>오브젝트 텍스처</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="22"/>
        <source>Projection image</source>
        <translation>투사 이미지</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="87"/>
        <source>Could not create folder:</source>
        <translation>폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="92"/>
        <source>Could not replace file:</source>
        <translation>파일을 교체할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="97"/>
        <source>Could not copy:</source>
        <translation>복사할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="111"/>
        <source>Resource folder is empty.</source>
        <translation>리소스 폴더가 지정되지 않았습니다.</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="118"/>
        <source>Could not create resource folder:</source>
        <translation>리소스 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="171"/>
        <source>No external resource files were found.</source>
        <translation>외부 리소스 파일이 없습니다.</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="173"/>
        <source>Resource folder:</source>
        <translation>리소스 폴더:</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="175"/>
        <source>Missing files:</source>
        <translation>없는 파일:</translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="179"/>
        <source>Failed files:</source>
        <translation>실패한 파일:</translation>
    </message>
</context>
<context>
    <name>ZipArchive</name>
    <message>
        <location filename="../project/ZipArchive.cpp" line="87"/>
        <source>ZIP file path is empty.</source>
        <translation>ZIP 파일 경로가 지정되지 않았습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="92"/>
        <source>Could not replace ZIP file:</source>
        <translation>ZIP 파일을 교체할 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="100"/>
        <location filename="../project/ZipArchive.cpp" line="105"/>
        <location filename="../project/ZipArchive.cpp" line="110"/>
        <source>ZIP compression failed.</source>
        <translation>ZIP 압축에 실패했습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="114"/>
        <source>ZIP file was not created:</source>
        <translation>ZIP 파일이 만들어지지 않았습니다:</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="149"/>
        <location filename="../project/ZipArchive.cpp" line="163"/>
        <source>Package folder does not exist:</source>
        <translation>패키지 폴더가 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="153"/>
        <source>Package folder is empty.</source>
        <translation>패키지 폴더가 비어 있습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="181"/>
        <location filename="../project/ZipArchive.cpp" line="199"/>
        <source>Project bundle ZIP was not found:</source>
        <translation>프로젝트 번들 ZIP을 찾을 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="203"/>
        <source>Import folder is empty.</source>
        <translation>가져올 폴더가 지정되지 않았습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="207"/>
        <location filename="../project/ZipArchive.cpp" line="233"/>
        <location filename="../project/ZipArchive.cpp" line="243"/>
        <source>Could not create import folder:</source>
        <translation>가져올 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="212"/>
        <location filename="../project/ZipArchive.cpp" line="248"/>
        <location filename="../project/ZipArchive.cpp" line="265"/>
        <source>ZIP extraction failed.</source>
        <translation>ZIP 압축 해제에 실패했습니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="222"/>
        <source>ZIP extraction failed.
The entry &quot;%1&quot; would be written outside the import folder.</source>
        <translation>ZIP 압축 해제에 실패했습니다.
항목 "%1"이(가) 가져올 폴더 밖에 쓰이게 됩니다.</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="239"/>
        <source>ZIP extraction failed.
The file already exists:
%1</source>
        <translation>ZIP 압축 해제에 실패했습니다.
파일이 이미 있습니다:
%1</translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="283"/>
        <source>ZIP inspection failed.</source>
        <translation>ZIP 검사에 실패했습니다.</translation>
    </message>
</context>
</TS>
