<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>CaptureVideoWriter</name>
    <message>
        <source>Invalid capture frame size.</source>
        <translation>Invalid capture frame size.</translation>
    </message>
    <message>
        <source>Capture file path is empty.</source>
        <translation>Capture file path is empty.</translation>
    </message>
    <message>
        <source>Capture file writer creation failed</source>
        <translation>Capture file writer creation failed</translation>
    </message>
    <message>
        <source>Capture writer start failed</source>
        <translation>Capture writer start failed</translation>
    </message>
    <message>
        <source>Video encoder startup failed</source>
        <translation>Video encoder startup failed</translation>
    </message>
    <message>
        <source>Capture writer attribute creation failed</source>
        <translation>Capture writer attribute creation failed</translation>
    </message>
    <message>
        <source>Output media type creation failed</source>
        <translation>Output media type creation failed</translation>
    </message>
    <message>
        <source>Capture stream creation failed</source>
        <translation>Capture stream creation failed</translation>
    </message>
    <message>
        <source>Input media type creation failed</source>
        <translation>Input media type creation failed</translation>
    </message>
    <message>
        <source>Capture sample creation failed</source>
        <translation>Capture sample creation failed</translation>
    </message>
    <message>
        <source>Capture frame buffer creation failed</source>
        <translation>Capture frame buffer creation failed</translation>
    </message>
    <message>
        <source>Capture writer is not active.</source>
        <translation>Capture writer is not active.</translation>
    </message>
    <message>
        <source>Captured frame is empty.</source>
        <translation>Captured frame is empty.</translation>
    </message>
    <message>
        <source>Capture frame buffer lock failed</source>
        <translation>Capture frame buffer lock failed</translation>
    </message>
    <message>
        <source>Capture frame write failed</source>
        <translation>Capture frame write failed</translation>
    </message>
    <message>
        <source>The video encoder did not finish in time.</source>
        <translation>The video encoder did not finish in time.</translation>
    </message>
</context>
<context>
    <name>WindowCaptureRecorder</name>
    <message>
        <source>Capture target is not available.</source>
        <translation>Capture target is not available.</translation>
    </message>
    <message>
        <source>Capture file path is empty.</source>
        <translation>Capture file path is empty.</translation>
    </message>
    <message>
        <source>Could not capture the selected target.</source>
        <translation>Could not capture the selected target.</translation>
    </message>
    <message>
        <source>Capture writer is not active.</source>
        <translation>Capture writer is not active.</translation>
    </message>
    <message>
        <source>Failed to finalize capture video:</source>
        <translation>Failed to finalize capture video:</translation>
    </message>
    <message>
        <source>Captured frame is empty.</source>
        <translation>Captured frame is empty.</translation>
    </message>
    <message>
        <source>Capture stopped:</source>
        <translation>Capture stopped:</translation>
    </message>
</context>
<context>
    <name>MovieTexture</name>
    <message>
        <source>Movie texture file is not available:</source>
        <translation>Movie texture file is not available:</translation>
    </message>
    <message>
        <source>Movie texture reader attribute creation failed:</source>
        <translation>Movie texture reader attribute creation failed:</translation>
    </message>
    <message>
        <source>Movie texture source reader creation failed:</source>
        <translation>Movie texture source reader creation failed:</translation>
    </message>
    <message>
        <source>Movie texture video stream selection failed:</source>
        <translation>Movie texture video stream selection failed:</translation>
    </message>
    <message>
        <source>Movie texture media type creation failed:</source>
        <translation>Movie texture media type creation failed:</translation>
    </message>
    <message>
        <source>Movie texture sample read failed:</source>
        <translation>Movie texture sample read failed:</translation>
    </message>
    <message>
        <source>Movie texture seek failed:</source>
        <translation>Movie texture seek failed:</translation>
    </message>
    <message>
        <source>Movie texture frame size query failed:</source>
        <translation>Movie texture frame size query failed:</translation>
    </message>
    <message>
        <source>Movie texture DXGI resource query failed:</source>
        <translation>Movie texture DXGI resource query failed:</translation>
    </message>
    <message>
        <source>Movie texture GPU sample format is not directly supported:</source>
        <translation>Movie texture GPU sample format is not directly supported:</translation>
    </message>
    <message>
        <source>Movie texture RGB32 output setup failed:</source>
        <translation>Movie texture RGB32 output setup failed:</translation>
    </message>
    <message>
        <source>Could not copy movie texture frame:</source>
        <translation>Could not copy movie texture frame:</translation>
    </message>
    <message>
        <source>Movie texture worker start failed:</source>
        <translation>Movie texture worker start failed:</translation>
    </message>
    <message>
        <source>No Movie</source>
        <translation>No Movie</translation>
    </message>
    <message>
        <source>Opening...</source>
        <translation>Opening...</translation>
    </message>
    <message>
        <source>Cueing...</source>
        <translation>Cueing...</translation>
    </message>
    <message>
        <source>Ready</source>
        <translation>Ready</translation>
    </message>
    <message>
        <source>Failed</source>
        <translation>Failed</translation>
    </message>
    <message>
        <source>GPU Decoding</source>
        <translation>GPU Decoding</translation>
    </message>
    <message>
        <source>CPU Decoding</source>
        <translation>CPU Decoding</translation>
    </message>
    <message>
        <source>CPU Decoding (GPU fallback)</source>
        <translation>CPU Decoding (GPU fallback)</translation>
    </message>
    <message>
        <source>NO MOVIE</source>
        <translation>NO MOVIE</translation>
    </message>
    <message>
        <source>Unsupported movie or codec</source>
        <translation>Unsupported movie or codec</translation>
    </message>
</context>
<context>
    <name>WindowRecording</name>
    <message>
        <source>Record Window</source>
        <translation>Record Window</translation>
    </message>
    <message>
        <source>Record only the GPU preview?</source>
        <translation>Record only the GPU preview?</translation>
    </message>
    <message>
        <source>Choose GPU Preview Only to capture the active preview area, or Program Window to capture the full application window.</source>
        <translation>Choose GPU Preview Only to capture the active preview area, or Program Window to capture the full application window.</translation>
    </message>
    <message>
        <source>GPU Preview Only</source>
        <translation>GPU Preview Only</translation>
    </message>
    <message>
        <source>Program Window</source>
        <translation>Program Window</translation>
    </message>
    <message>
        <source>MP4 Video (*.mp4)</source>
        <translation>MP4 Video (*.mp4)</translation>
    </message>
    <message>
        <source>Capture GPU preview</source>
        <translation>Capture GPU preview</translation>
    </message>
    <message>
        <source>Capture program window</source>
        <translation>Capture program window</translation>
    </message>
    <message>
        <source>Capture failed</source>
        <translation>Capture failed</translation>
    </message>
    <message>
        <source>Could not start capture:
%1</source>
        <translation>Could not start capture:
%1</translation>
    </message>
    <message>
        <source>Capturing %1 at 30 fps: %2</source>
        <translation>Capturing %1 at 30 fps: %2</translation>
    </message>
    <message>
        <source>GPU preview</source>
        <translation>GPU preview</translation>
    </message>
    <message>
        <source>program window</source>
        <translation>program window</translation>
    </message>
    <message>
        <source>Capture stopped: %1</source>
        <translation>Capture stopped: %1</translation>
    </message>
    <message>
        <source>Capture stopped.</source>
        <translation>Capture stopped.</translation>
    </message>
    <message>
        <source>Capture Complete</source>
        <translation>Capture Complete</translation>
    </message>
    <message>
        <source>Capture saved:</source>
        <translation>Capture saved:</translation>
    </message>
</context>
</TS>
