<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>CaptureVideoWriter</name>
    <message>
        <source>Invalid capture frame size.</source>
        <translation>캡처 프레임 크기가 올바르지 않습니다.</translation>
    </message>
    <message>
        <source>Capture file path is empty.</source>
        <translation>캡처 파일 경로가 비어 있습니다.</translation>
    </message>
    <message>
        <source>Capture file writer creation failed</source>
        <translation>캡처 파일 작성기를 만들지 못했습니다</translation>
    </message>
    <message>
        <source>Capture writer start failed</source>
        <translation>캡처 작성기를 시작하지 못했습니다</translation>
    </message>
    <message>
        <source>Video encoder startup failed</source>
        <translation>비디오 인코더를 시작하지 못했습니다</translation>
    </message>
    <message>
        <source>Capture writer attribute creation failed</source>
        <translation>캡처 작성기 속성을 만들지 못했습니다</translation>
    </message>
    <message>
        <source>Output media type creation failed</source>
        <translation>출력 미디어 형식을 만들지 못했습니다</translation>
    </message>
    <message>
        <source>Capture stream creation failed</source>
        <translation>캡처 스트림을 만들지 못했습니다</translation>
    </message>
    <message>
        <source>Input media type creation failed</source>
        <translation>입력 미디어 형식을 만들지 못했습니다</translation>
    </message>
    <message>
        <source>Capture sample creation failed</source>
        <translation>캡처 샘플을 만들지 못했습니다</translation>
    </message>
    <message>
        <source>Capture frame buffer creation failed</source>
        <translation>캡처 프레임 버퍼를 만들지 못했습니다</translation>
    </message>
    <message>
        <source>Capture writer is not active.</source>
        <translation>캡처 작성기가 활성 상태가 아닙니다.</translation>
    </message>
    <message>
        <source>Captured frame is empty.</source>
        <translation>캡처한 프레임이 비어 있습니다.</translation>
    </message>
    <message>
        <source>Capture frame buffer lock failed</source>
        <translation>캡처 프레임 버퍼를 잠그지 못했습니다</translation>
    </message>
    <message>
        <source>Capture frame write failed</source>
        <translation>캡처 프레임을 쓰지 못했습니다</translation>
    </message>
    <message>
        <source>The video encoder did not finish in time.</source>
        <translation>비디오 인코더가 제시간에 끝나지 않았습니다.</translation>
    </message>
</context>
<context>
    <name>WindowCaptureRecorder</name>
    <message>
        <source>Capture target is not available.</source>
        <translation>캡처 대상을 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>Capture file path is empty.</source>
        <translation>캡처 파일 경로가 비어 있습니다.</translation>
    </message>
    <message>
        <source>Could not capture the selected target.</source>
        <translation>선택한 대상을 캡처할 수 없습니다.</translation>
    </message>
    <message>
        <source>Capture writer is not active.</source>
        <translation>캡처 작성기가 활성 상태가 아닙니다.</translation>
    </message>
    <message>
        <source>Failed to finalize capture video:</source>
        <translation>캡처 비디오를 마무리하지 못했습니다:</translation>
    </message>
    <message>
        <source>Captured frame is empty.</source>
        <translation>캡처한 프레임이 비어 있습니다.</translation>
    </message>
    <message>
        <source>Capture stopped:</source>
        <translation>캡처가 중지되었습니다:</translation>
    </message>
</context>
<context>
    <name>MovieTexture</name>
    <message>
        <source>Movie texture file is not available:</source>
        <translation>무비 텍스처 파일을 사용할 수 없습니다:</translation>
    </message>
    <message>
        <source>Movie texture reader attribute creation failed:</source>
        <translation>무비 텍스처 리더 속성을 만들지 못했습니다:</translation>
    </message>
    <message>
        <source>Movie texture source reader creation failed:</source>
        <translation>무비 텍스처 소스 리더를 만들지 못했습니다:</translation>
    </message>
    <message>
        <source>Movie texture video stream selection failed:</source>
        <translation>무비 텍스처 비디오 스트림을 선택하지 못했습니다:</translation>
    </message>
    <message>
        <source>Movie texture media type creation failed:</source>
        <translation>무비 텍스처 미디어 형식을 만들지 못했습니다:</translation>
    </message>
    <message>
        <source>Movie texture sample read failed:</source>
        <translation>무비 텍스처 샘플을 읽지 못했습니다:</translation>
    </message>
    <message>
        <source>Movie texture seek failed:</source>
        <translation>무비 텍스처 탐색에 실패했습니다:</translation>
    </message>
    <message>
        <source>Movie texture frame size query failed:</source>
        <translation>무비 텍스처 프레임 크기를 확인하지 못했습니다:</translation>
    </message>
    <message>
        <source>Movie texture DXGI resource query failed:</source>
        <translation>무비 텍스처 GPU 리소스를 확인하지 못했습니다:</translation>
    </message>
    <message>
        <source>Movie texture GPU sample format is not directly supported:</source>
        <translation>무비 텍스처 GPU 샘플 형식은 직접 지원되지 않습니다:</translation>
    </message>
    <message>
        <source>Movie texture RGB32 output setup failed:</source>
        <translation>무비 텍스처 RGB32 출력을 설정하지 못했습니다:</translation>
    </message>
    <message>
        <source>Could not copy movie texture frame:</source>
        <translation>무비 텍스처 프레임을 복사할 수 없습니다:</translation>
    </message>
    <message>
        <source>Movie texture worker start failed:</source>
        <translation>무비 텍스처 작업자를 시작하지 못했습니다:</translation>
    </message>
    <message>
        <source>No Movie</source>
        <translation>무비 없음</translation>
    </message>
    <message>
        <source>Opening...</source>
        <translation>여는 중...</translation>
    </message>
    <message>
        <source>Cueing...</source>
        <translation>준비 중...</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>준비됨</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>실패</translation>
    </message>
    <message>
        <source>GPU Decoding</source>
        <translation>GPU 디코딩</translation>
    </message>
    <message>
        <source>CPU Decoding</source>
        <translation>CPU 디코딩</translation>
    </message>
    <message>
        <source>CPU Decoding (GPU fallback)</source>
        <translation>CPU 디코딩 (GPU 대체)</translation>
    </message>
    <message>
        <source>NO MOVIE</source>
        <translation>무비 없음</translation>
    </message>
    <message>
        <source>Unsupported movie or codec</source>
        <translation>지원되지 않는 무비 또는 코덱</translation>
    </message>
</context>
<context>
    <name>WindowRecording</name>
    <message>
        <source>Record Window</source>
        <translation>창 녹화</translation>
    </message>
    <message>
        <source>Record only the GPU preview?</source>
        <translation>GPU 미리보기만 녹화하시겠습니까?</translation>
    </message>
    <message>
        <source>Choose GPU Preview Only to capture the active preview area, or Program Window to capture the full application window.</source>
        <translation>활성 미리보기 영역을 캡처하려면 GPU 미리보기만을, 전체 응용 프로그램 창을 캡처하려면 프로그램 창을 선택하십시오.</translation>
    </message>
    <message>
        <source>GPU Preview Only</source>
        <translation>GPU 미리보기만</translation>
    </message>
    <message>
        <source>Program Window</source>
        <translation>프로그램 창</translation>
    </message>
    <message>
        <source>MP4 Video (*.mp4)</source>
        <translation>MP4 비디오 (*.mp4)</translation>
    </message>
    <message>
        <source>Capture GPU preview</source>
        <translation>GPU 미리보기 캡처</translation>
    </message>
    <message>
        <source>Capture program window</source>
        <translation>프로그램 창 캡처</translation>
    </message>
    <message>
        <source>Capture failed</source>
        <translation>캡처 실패</translation>
    </message>
    <message>
        <source>Could not start capture:
%1</source>
        <translation>캡처를 시작할 수 없습니다:
%1</translation>
    </message>
    <message>
        <source>Capturing %1 at 30 fps: %2</source>
        <translation>%1을(를) 30fps로 캡처하는 중: %2</translation>
    </message>
    <message>
        <source>GPU preview</source>
        <translation>GPU 미리보기</translation>
    </message>
    <message>
        <source>program window</source>
        <translation>프로그램 창</translation>
    </message>
    <message>
        <source>Capture stopped: %1</source>
        <translation>캡처가 중지되었습니다: %1</translation>
    </message>
    <message>
        <source>Capture stopped.</source>
        <translation>캡처가 중지되었습니다.</translation>
    </message>
    <message>
        <source>Capture Complete</source>
        <translation>캡처 완료</translation>
    </message>
    <message>
        <source>Capture saved:</source>
        <translation>캡처가 저장되었습니다:</translation>
    </message>
</context>
</TS>
