<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>NdiRuntime</name>
    <message>
        <source>NDI receiver support is unavailable:</source>
        <translation>NDI 수신 기능을 사용할 수 없습니다:</translation>
    </message>
    <message>
        <source>NDI sender support is unavailable:</source>
        <translation>NDI 송신 기능을 사용할 수 없습니다:</translation>
    </message>
    <message>
        <source>Required NDI entry points were not found.</source>
        <translation>필요한 NDI 진입점을 찾지 못했습니다.</translation>
    </message>
    <message>
        <source>Required NDI sender entry points were not found.</source>
        <translation>필요한 NDI 송신 진입점을 찾지 못했습니다.</translation>
    </message>
    <message>
        <source>NDI runtime initialization failed.</source>
        <translation>NDI 런타임을 초기화하지 못했습니다.</translation>
    </message>
    <message>
        <source>no runtime library name</source>
        <translation>런타임 라이브러리 이름이 없습니다</translation>
    </message>
</context>
<context>
    <name>NdiReceiver</name>
    <message>
        <source>Failed to create NDI source finder.</source>
        <translation>NDI 소스 검색기를 만들지 못했습니다.</translation>
    </message>
    <message>
        <source>Failed to create NDI receiver for source</source>
        <translation>다음 소스의 NDI 수신기를 만들지 못했습니다</translation>
    </message>
    <message>
        <source>NDI receiver connected to source</source>
        <translation>NDI 수신기가 소스에 연결되었습니다</translation>
    </message>
    <message>
        <source>NDI receiver reconnected with source URL</source>
        <translation>NDI 수신기가 소스 URL로 다시 연결되었습니다</translation>
    </message>
    <message>
        <source>Could not upload NDI frame for source</source>
        <translation>다음 소스의 NDI 프레임을 올리지 못했습니다</translation>
    </message>
</context>
<context>
    <name>NdiSender</name>
    <message>
        <source>Failed to create NDI projector view sender</source>
        <translation>NDI 프로젝터 뷰 송신기를 만들지 못했습니다</translation>
    </message>
    <message>
        <source>NDI projector view sender opened as</source>
        <translation>NDI 프로젝터 뷰 송신기를 다음 이름으로 열었습니다</translation>
    </message>
</context>
<context>
    <name>SpoutSupport</name>
    <message>
        <source>Spout is not available on this system.</source>
        <translation>이 시스템에서는 Spout를 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>Failed to open Spout sender for projector view output.</source>
        <translation>프로젝터 뷰 출력용 Spout 송신기를 열지 못했습니다.</translation>
    </message>
</context>
<context>
    <name>VideoPlaceholder</name>
    <message>
        <source>NO NDI</source>
        <translation>NDI 없음</translation>
    </message>
    <message>
        <source>Select source or check input</source>
        <translation>소스를 선택하거나 입력을 확인하세요</translation>
    </message>
    <message>
        <source>NO SPOUT</source>
        <translation>SPOUT 없음</translation>
    </message>
    <message>
        <source>Select sender or check input</source>
        <translation>송신기를 선택하거나 입력을 확인하세요</translation>
    </message>
</context>
<context>
    <name>MovieTexture</name>
    <message>
        <source>Could not upload movie texture frame:</source>
        <translation>동영상 텍스처 프레임을 올리지 못했습니다:</translation>
    </message>
</context>
<context>
    <name>VideoSourceRegistry</name>
    <message>
        <source>Looking for source...</source>
        <translation>소스를 찾는 중...</translation>
    </message>
    <message>
        <source>Connected: %1</source>
        <translation>연결됨: %1</translation>
    </message>
</context>
<context>
    <name>SceneVideoSourceControls</name>
    <message>
        <source>Movie decoding</source>
        <translation>동영상 디코딩</translation>
    </message>
    <message>
        <source>Source state</source>
        <translation>소스 상태</translation>
    </message>
    <message>
        <source>NDI source</source>
        <translation>NDI 소스</translation>
    </message>
    <message>
        <source>NDI source name or URL</source>
        <translation>NDI 소스 이름 또는 URL</translation>
    </message>
    <message>
        <source>Spout sender</source>
        <translation>Spout 송신기</translation>
    </message>
    <message>
        <source>Spout sender name</source>
        <translation>Spout 송신기 이름</translation>
    </message>
</context>
<context>
    <name>SceneViewOutputControls</name>
    <message>
        <source>None</source>
        <translation>없음</translation>
    </message>
    <message>
        <source>Spout</source>
        <translation>Spout</translation>
    </message>
    <message>
        <source>NDI</source>
        <translation>NDI</translation>
    </message>
    <message>
        <source>View output</source>
        <translation>뷰 출력</translation>
    </message>
    <message>
        <source>Output name</source>
        <translation>출력 이름</translation>
    </message>
</context>
</TS>
