<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>MainWindow</name>
    <message>
        <source>Open a 3D view to export a UV LUT.</source>
        <translation>UV LUT를 내보내려면 3D 뷰를 여세요.</translation>
    </message>
</context>
<context>
    <name>MediaServerLink</name>
    <message>
        <source>Connecting to %1:%2 timed out.</source>
        <translation>%1:%2 연결 시간이 초과되었습니다.</translation>
    </message>
    <message>
        <source>Could not open file for upload:
%1</source>
        <translation>업로드할 파일을 열 수 없습니다:
%1</translation>
    </message>
    <message>
        <source>File does not exist:
%1</source>
        <translation>파일이 없습니다:
%1</translation>
    </message>
    <message>
        <source>File transfer header is too large.</source>
        <translation>파일 전송 헤더가 너무 큽니다.</translation>
    </message>
    <message>
        <source>File upload finished, but MainService did not return an allfinish response.</source>
        <translation>파일 업로드는 끝났지만 MainService가 allfinish 응답을 보내지 않았습니다.</translation>
    </message>
    <message>
        <source>Invalid Vantreo Server IP: %1</source>
        <translation>잘못된 Vantreo Server IP: %1</translation>
    </message>
    <message>
        <source>MainService response did not confirm completion:
%1</source>
        <translation>MainService 응답이 완료를 확인하지 않았습니다:
%1</translation>
    </message>
    <message>
        <source>The media server did not accept data within %1 ms.</source>
        <translation>미디어 서버가 %1 ms 안에 데이터를 받지 않았습니다.</translation>
    </message>
    <message>
        <source>Vantreo Server UDP send failed: %1</source>
        <translation>Vantreo Server UDP 전송 실패: %1</translation>
    </message>
    <message>
        <source>Vantreo Server invalid IP: %1</source>
        <translation>Vantreo Server IP가 잘못되었습니다: %1</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <source>Export Projector/Camera UV LUT...</source>
        <translation>프로젝터/카메라 UV LUT 내보내기...</translation>
    </message>
</context>
<context>
    <name>UvLutExport</name>
    <message>
        <source>Both output and source objects must be projectors or cameras.</source>
        <translation>출력 객체와 소스 객체는 모두 프로젝터 또는 카메라여야 합니다.</translation>
    </message>
    <message>
        <source>CPU Raster (legacy)</source>
        <translation>CPU 래스터 (레거시)</translation>
    </message>
    <message>
        <source>Collecting scene surfaces for GPU probe...</source>
        <translation>GPU 프로브용 장면 표면을 수집하는 중...</translation>
    </message>
    <message>
        <source>Could not compile GPU UV LUT downsample shader.</source>
        <translation>GPU UV LUT 다운샘플 셰이더를 컴파일할 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not compile GPU UV LUT export shader.</source>
        <translation>GPU UV LUT 내보내기 셰이더를 컴파일할 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not copy completed binary LUT file:</source>
        <translation>완성된 바이너리 LUT 파일을 복사할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not create a temporary LUT folder.</source>
        <translation>임시 LUT 폴더를 만들 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not create export folder:</source>
        <translation>내보내기 폴더를 만들 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not create temporary binary LUT file:</source>
        <translation>임시 바이너리 LUT 파일을 만들 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not flush binary LUT samples:</source>
        <translation>바이너리 LUT 샘플을 디스크에 기록할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not replace existing binary LUT file:</source>
        <translation>기존 바이너리 LUT 파일을 교체할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not save LUT JSON file:</source>
        <translation>LUT JSON 파일을 저장할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not save LUT depth image:</source>
        <translation>LUT 깊이 이미지를 저장할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not save LUT mask image:</source>
        <translation>LUT 마스크 이미지를 저장할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not save LUT preview image:</source>
        <translation>LUT 미리보기 이미지를 저장할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not save UV diagnostic image:</source>
        <translation>UV 진단 이미지를 저장할 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not save camera UV LUT package.</source>
        <translation>카메라 UV LUT 패키지를 저장할 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not save float UV map</source>
        <translation>부동소수점 UV 맵을 저장할 수 없습니다</translation>
    </message>
    <message>
        <source>Could not save float depth map</source>
        <translation>부동소수점 깊이 맵을 저장할 수 없습니다</translation>
    </message>
    <message>
        <source>Could not upload LUT to Vantreo Service.</source>
        <translation>Vantreo Service에 LUT를 업로드할 수 없습니다.</translation>
    </message>
    <message>
        <source>Could not write binary LUT header:</source>
        <translation>바이너리 LUT 헤더를 쓸 수 없습니다:</translation>
    </message>
    <message>
        <source>Could not write binary LUT samples:</source>
        <translation>바이너리 LUT 샘플을 쓸 수 없습니다:</translation>
    </message>
    <message>
        <source>CreateBuffer(GPU UV LUT constants) failed: %1</source>
        <translation>CreateBuffer(GPU UV LUT 상수) 실패: %1</translation>
    </message>
    <message>
        <source>CreateBuffer(GPU UV LUT vertices) failed: %1</source>
        <translation>CreateBuffer(GPU UV LUT 정점) 실패: %1</translation>
    </message>
    <message>
        <source>CreateDepthStencilView(GPU UV LUT depth) failed: %1</source>
        <translation>CreateDepthStencilView(GPU UV LUT 깊이) 실패: %1</translation>
    </message>
    <message>
        <source>CreateRenderTargetView(GPU UV LUT render target) failed: %1</source>
        <translation>CreateRenderTargetView(GPU UV LUT 렌더 타깃) 실패: %1</translation>
    </message>
    <message>
        <source>CreateTexture2D(GPU UV LUT depth) failed: %1</source>
        <translation>CreateTexture2D(GPU UV LUT 깊이) 실패: %1</translation>
    </message>
    <message>
        <source>CreateTexture2D(GPU UV LUT render target) failed: %1</source>
        <translation>CreateTexture2D(GPU UV LUT 렌더 타깃) 실패: %1</translation>
    </message>
    <message>
        <source>CreateTexture2D(GPU UV LUT staging) failed: %1</source>
        <translation>CreateTexture2D(GPU UV LUT 스테이징) 실패: %1</translation>
    </message>
    <message>
        <source>Feathering UV LUT valid mask...</source>
        <translation>UV LUT 유효 마스크에 페더를 적용하는 중...</translation>
    </message>
    <message>
        <source>GPU Probe</source>
        <translation>GPU 프로브</translation>
    </message>
    <message>
        <source>GPU UV LUT MSAA %1x is not supported for D32 depth targets: %2</source>
        <translation>GPU UV LUT MSAA %1x는 D32 깊이 타깃에서 지원되지 않습니다: %2</translation>
    </message>
    <message>
        <source>GPU UV LUT MSAA %1x is not supported for RGBA32F render targets: %2</source>
        <translation>GPU UV LUT MSAA %1x는 RGBA32F 렌더 타깃에서 지원되지 않습니다: %2</translation>
    </message>
    <message>
        <source>GPU device is not ready for GPU UV LUT export.</source>
        <translation>GPU UV LUT 내보내기를 위한 GPU 장치가 준비되지 않았습니다.</translation>
    </message>
    <message>
        <source>LUT export complete.</source>
        <translation>LUT 내보내기가 완료되었습니다.</translation>
    </message>
    <message>
        <source>Map(GPU UV LUT staging) failed: %1</source>
        <translation>Map(GPU UV LUT 스테이징) 실패: %1</translation>
    </message>
    <message>
        <source>No exportable scene surface triangles were found.</source>
        <translation>내보낼 수 있는 장면 표면 삼각형이 없습니다.</translation>
    </message>
    <message>
        <source>No visible surface samples were found inside the selected projector view.</source>
        <translation>선택한 프로젝터 뷰 안에서 보이는 표면 샘플을 찾지 못했습니다.</translation>
    </message>
    <message>
        <source>Not enough memory for a UV LUT of %1 x %2 pixels.</source>
        <translation>%1 x %2 픽셀 UV LUT를 만들 메모리가 부족합니다.</translation>
    </message>
    <message>
        <source>Projecting scene surfaces with CPU raster...</source>
        <translation>CPU 래스터로 장면 표면을 투영하는 중...</translation>
    </message>
    <message>
        <source>Reading GPU UV probe...</source>
        <translation>GPU UV 프로브를 읽는 중...</translation>
    </message>
    <message>
        <source>Rendering GPU UV probe...</source>
        <translation>GPU UV 프로브를 렌더링하는 중...</translation>
    </message>
    <message>
        <source>Resolving visible projector samples...</source>
        <translation>보이는 프로젝터 샘플을 확인하는 중...</translation>
    </message>
    <message>
        <source>Select a source camera/projector image for the UV LUT.</source>
        <translation>UV LUT에 사용할 소스 카메라/프로젝터 이미지를 선택하세요.</translation>
    </message>
    <message>
        <source>Selected projector/camera is no longer available.</source>
        <translation>선택한 프로젝터/카메라를 더 이상 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>The GPU allows UV LUTs of at most %1 x %1 pixels; use the CPU Raster (legacy) method.</source>
        <translation>이 GPU는 최대 %1 x %1 픽셀의 UV LUT만 허용합니다. CPU 래스터 (레거시) 방식을 사용하세요.</translation>
    </message>
    <message>
        <source>The UV LUT of %1 x %2 pixels is too large.</source>
        <translation>%1 x %2 픽셀의 UV LUT는 너무 큽니다.</translation>
    </message>
    <message>
        <source>The output projector/camera and source camera must be different objects.</source>
        <translation>출력 프로젝터/카메라와 소스 카메라는 서로 다른 객체여야 합니다.</translation>
    </message>
    <message>
        <source>The selected source camera/projector has no CPU-readable image.</source>
        <translation>선택한 소스 카메라/프로젝터에 CPU에서 읽을 수 있는 이미지가 없습니다.</translation>
    </message>
    <message>
        <source>UV LUT AA Samples requires the GPU Probe export method.</source>
        <translation>UV LUT AA 샘플은 GPU 프로브 내보내기 방식에서만 사용할 수 있습니다.</translation>
    </message>
    <message>
        <source>Updated LUT %1 to %2</source>
        <translation>LUT %1을(를) %2에 업데이트했습니다</translation>
    </message>
    <message>
        <source>Uploaded %1 to %2 and removed the temporary LUT file.</source>
        <translation>%1을(를) %2에 업로드하고 임시 LUT 파일을 삭제했습니다.</translation>
    </message>
    <message>
        <source>Uploaded %1 to %2, but the temporary LUT file could not be removed.</source>
        <translation>%1을(를) %2에 업로드했지만 임시 LUT 파일을 삭제할 수 없습니다.</translation>
    </message>
    <message>
        <source>Writing LUT JSON...</source>
        <translation>LUT JSON을 쓰는 중...</translation>
    </message>
    <message>
        <source>Writing binary LUT...</source>
        <translation>바이너리 LUT를 쓰는 중...</translation>
    </message>
    <message>
        <source>Writing float LUT maps...</source>
        <translation>부동소수점 LUT 맵을 쓰는 중...</translation>
    </message>
    <message>
        <source>Writing preview images...</source>
        <translation>미리보기 이미지를 쓰는 중...</translation>
    </message>
    <message>
        <source>at most %1 samples</source>
        <translation>최대 %1 샘플</translation>
    </message>
    <message>
        <source>out of memory</source>
        <translation>메모리 부족</translation>
    </message>
</context>
<context>
    <name>UvLutExportDialog</name>
    <message>
        <source>AA Samples</source>
        <translation>AA 샘플</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>찾아보기...</translation>
    </message>
    <message>
        <source>Edge Feather (px)</source>
        <translation>가장자리 페더 (px)</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>내보내기</translation>
    </message>
    <message>
        <source>Export JSON, preview image, diagnostic images, and float maps for checking the LUT.</source>
        <translation>LUT 확인용 JSON, 미리보기 이미지, 진단 이미지, 부동소수점 맵을 내보냅니다.</translation>
    </message>
    <message>
        <source>Export Projector/Camera UV LUT</source>
        <translation>프로젝터/카메라 UV LUT 내보내기</translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation>내보내기 실패</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>폴더</translation>
    </message>
    <message>
        <source>LUT output uses the projector resolution.</source>
        <translation>LUT 출력은 프로젝터 해상도를 사용합니다.</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>방식</translation>
    </message>
    <message>
        <source>Output View</source>
        <translation>출력 뷰</translation>
    </message>
    <message>
        <source>Player IP</source>
        <translation>플레이어 IP</translation>
    </message>
    <message>
        <source>Server IP</source>
        <translation>서버 IP</translation>
    </message>
    <message>
        <source>Source UV Texture</source>
        <translation>소스 UV 텍스처</translation>
    </message>
    <message>
        <source>U Scale</source>
        <translation>U 배율</translation>
    </message>
    <message>
        <source>UDP Port</source>
        <translation>UDP 포트</translation>
    </message>
    <message>
        <source>Update LUT</source>
        <translation>LUT 업데이트</translation>
    </message>
    <message>
        <source>Update LUT failed</source>
        <translation>LUT 업데이트 실패</translation>
    </message>
    <message>
        <source>Vantreo Server</source>
        <translation>Vantreo Server</translation>
    </message>
    <message>
        <source>Warp Editor</source>
        <translation>워프 에디터</translation>
    </message>
</context>
</TS>
