<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>vg::net::StartupClient</name>
    <message>
        <source>Connecting to update server...</source>
        <translation>업데이트 서버에 연결하는 중...</translation>
    </message>
    <message>
        <source>Latest build: %1</source>
        <translation>최신 빌드: %1</translation>
    </message>
    <message>
        <source>Mandatory update. Latest build: %1</source>
        <translation>필수 업데이트. 최신 빌드: %1</translation>
    </message>
    <message>
        <source>Startup API: Connected</source>
        <translation>Startup API: 연결됨</translation>
    </message>
    <message>
        <source>Startup API: Connecting</source>
        <translation>Startup API: 연결 중</translation>
    </message>
    <message>
        <source>Startup API: Invalid JSON</source>
        <translation>Startup API: 잘못된 JSON</translation>
    </message>
    <message>
        <source>Startup API: Invalid Update URL</source>
        <translation>Startup API: 잘못된 업데이트 URL</translation>
    </message>
    <message>
        <source>Startup API: Offline</source>
        <translation>Startup API: 오프라인</translation>
    </message>
    <message>
        <source>Startup API: Rejected</source>
        <translation>Startup API: 거부됨</translation>
    </message>
    <message>
        <source>Startup API: Unauthorized</source>
        <translation>Startup API: 인증 실패</translation>
    </message>
    <message>
        <source>Startup API: Update Available</source>
        <translation>Startup API: 업데이트 있음</translation>
    </message>
    <message>
        <source>Startup API: Update Missing File</source>
        <translation>Startup API: 업데이트 파일 없음</translation>
    </message>
    <message>
        <source>Update check returned invalid JSON.</source>
        <translation>업데이트 확인 응답이 올바른 JSON이 아닙니다.</translation>
    </message>
    <message>
        <source>Update check was rejected.</source>
        <translation>업데이트 확인이 거부되었습니다.</translation>
    </message>
    <message>
        <source>Update is available, but the server response has no downloadUrl.</source>
        <translation>업데이트가 있지만 서버 응답에 downloadUrl이 없습니다.</translation>
    </message>
</context>
<context>
    <name>vg::net::UpdateDownloader</name>
    <message>
        <source>Could not create a temporary directory for the update.</source>
        <translation>업데이트용 임시 폴더를 만들 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not finalize the update file: %1</source>
        <translation>업데이트 파일을 완료할 수 없습니다: %1</translation>
    </message>
    <message>
        <source>Could not verify the update checksum.</source>
        <translation>업데이트 체크섬을 확인할 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not write update file: %1</source>
        <translation>업데이트 파일을 쓸 수 없습니다: %1</translation>
    </message>
    <message>
        <source>Download complete.</source>
        <translation>다운로드가 완료되었습니다.</translation>
    </message>
    <message>
        <source>Mandatory update downloaded.</source>
        <translation>필수 업데이트를 다운로드했습니다.</translation>
    </message>
    <message>
        <source>Update checksum mismatch.</source>
        <translation>업데이트 체크섬이 일치하지 않습니다.</translation>
    </message>
    <message>
        <source>Update download canceled.</source>
        <translation>업데이트 다운로드가 취소되었습니다.</translation>
    </message>
    <message>
        <source>Update download failed: %1</source>
        <translation>업데이트 다운로드 실패: %1</translation>
    </message>
</context>
<context>
    <name>UpdateApplier</name>
    <message>
        <source>Could not create a temporary directory for the update.</source>
        <translation>업데이트용 임시 폴더를 만들 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not write update file: %1</source>
        <translation>업데이트 파일을 쓸 수 없습니다: %1</translation>
    </message>
    <message>
        <source>Current executable path could not be found.</source>
        <translation>현재 실행 파일 경로를 찾을 수 없습니다.</translation>
    </message>
    <message>
        <source>Downloaded update file is missing.</source>
        <translation>다운로드한 업데이트 파일이 없습니다.</translation>
    </message>
    <message>
        <source>Installer updates are not supported on this system.</source>
        <translation>이 시스템에서는 설치 프로그램 업데이트를 지원하지 않습니다.</translation>
    </message>
    <message>
        <source>Package is empty.</source>
        <translation>패키지가 비어 있습니다.</translation>
    </message>
    <message>
        <source>Package updater process could not be started.</source>
        <translation>패키지 업데이트 프로세스를 시작할 수 없습니다.</translation>
    </message>
    <message>
        <source>Package updates must be ZIP files.</source>
        <translation>패키지 업데이트는 ZIP 파일이어야 합니다.</translation>
    </message>
    <message>
        <source>Updater process could not be started.</source>
        <translation>업데이트 프로세스를 시작할 수 없습니다.</translation>
    </message>
</context>
<context>
    <name>UpdateController</name>
    <message>
        <source>A new update is available.</source>
        <translation>새 업데이트가 있습니다.</translation>
    </message>
    <message>
        <source>Applying update. The application will restart automatically.</source>
        <translation>업데이트를 적용합니다. 프로그램이 자동으로 다시 시작됩니다.</translation>
    </message>
    <message>
        <source>Cancel</source>
        <translation>취소</translation>
    </message>
    <message>
        <source>Connecting to update server...</source>
        <translation>업데이트 서버에 연결하는 중...</translation>
    </message>
    <message>
        <source>Downloading update... %1%</source>
        <translation>업데이트 다운로드 중... %1%</translation>
    </message>
    <message>
        <source>Latest build: %1</source>
        <translation>최신 빌드: %1</translation>
    </message>
    <message>
        <source>Mandatory Update</source>
        <translation>필수 업데이트</translation>
    </message>
    <message>
        <source>Mandatory update found. Downloading automatically...</source>
        <translation>필수 업데이트가 있습니다. 자동으로 다운로드하는 중...</translation>
    </message>
    <message>
        <source>No release notes.</source>
        <translation>릴리스 노트가 없습니다.</translation>
    </message>
    <message>
        <source>Startup API: Applying Package</source>
        <translation>Startup API: 패키지 적용 중</translation>
    </message>
    <message>
        <source>Startup API: Applying Update</source>
        <translation>Startup API: 업데이트 적용 중</translation>
    </message>
    <message>
        <source>Startup API: Update Failed</source>
        <translation>Startup API: 업데이트 실패</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>업데이트</translation>
    </message>
    <message>
        <source>Update Available</source>
        <translation>업데이트 있음</translation>
    </message>
    <message>
        <source>Update apply canceled.</source>
        <translation>업데이트 적용이 취소되었습니다.</translation>
    </message>
    <message>
        <source>Update skipped. Current build: %1, server build: %2</source>
        <translation>업데이트를 건너뛰었습니다. 현재 빌드: %1, 서버 빌드: %2</translation>
    </message>
</context>
<context>
    <name>UpdateDialog</name>
    <message>
        <source>%1 MB (%2 bytes)</source>
        <translation>%1 MB (%2 바이트)</translation>
    </message>
    <message>
        <source>Channel: %1</source>
        <translation>채널: %1</translation>
    </message>
    <message>
        <source>Check Now</source>
        <translation>지금 확인</translation>
    </message>
    <message>
        <source>Check updates on startup</source>
        <translation>시작할 때 업데이트 확인</translation>
    </message>
    <message>
        <source>Close</source>
        <translation>닫기</translation>
    </message>
    <message>
        <source>Current Build</source>
        <translation>현재 빌드</translation>
    </message>
    <message>
        <source>Current build: %1</source>
        <translation>현재 빌드: %1</translation>
    </message>
    <message>
        <source>Download &amp;&amp; Update</source>
        <translation>다운로드 및 업데이트</translation>
    </message>
    <message>
        <source>File: %1</source>
        <translation>파일: %1</translation>
    </message>
    <message>
        <source>Latest build: %1</source>
        <translation>최신 빌드: %1</translation>
    </message>
    <message>
        <source>No release notes.</source>
        <translation>릴리스 노트가 없습니다.</translation>
    </message>
    <message>
        <source>Published: %1</source>
        <translation>게시일: %1</translation>
    </message>
    <message>
        <source>Reason: %1</source>
        <translation>사유: %1</translation>
    </message>
    <message>
        <source>Release notes:</source>
        <translation>릴리스 노트:</translation>
    </message>
    <message>
        <source>Server Build</source>
        <translation>서버 빌드</translation>
    </message>
    <message>
        <source>Size: %1</source>
        <translation>크기: %1</translation>
    </message>
    <message>
        <source>Status: No update available</source>
        <translation>상태: 업데이트 없음</translation>
    </message>
    <message>
        <source>Status: Update available</source>
        <translation>상태: 업데이트 있음</translation>
    </message>
    <message>
        <source>Update</source>
        <translation>업데이트</translation>
    </message>
    <message>
        <source>Update Type</source>
        <translation>업데이트 유형</translation>
    </message>
    <message>
        <source>Update type: %1</source>
        <translation>업데이트 유형: %1</translation>
    </message>
    <message>
        <source>VantreoGuide update</source>
        <translation>VantreoGuide 업데이트</translation>
    </message>
    <message>
        <source>When enabled, startup update checks ask before downloading and applying available updates.</source>
        <translation>켜면 시작할 때 업데이트를 확인하고, 업데이트를 다운로드하여 적용하기 전에 묻습니다.</translation>
    </message>
</context>
</TS>
