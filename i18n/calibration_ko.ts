<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>CalibrationDiagnostics</name>
    <message>
        <source>Point %1 looks mismatched: without it the RMS drops from %2 px to %3 px.</source>
        <translation>%1번 포인트가 잘못 매칭된 것 같습니다: 이 포인트를 빼면 RMS가 %2 px에서 %3 px로 떨어집니다.</translation>
    </message>
    <message>
        <source>The used points are nearly coplanar: add points at other depths for a reliable fit.</source>
        <translation>사용한 포인트가 거의 한 평면에 있습니다: 믿을 만한 피팅을 위해 다른 깊이의 포인트를 추가하세요.</translation>
    </message>
    <message>
        <source>The used points cover less than a tenth of the image: add points nearer its edges.</source>
        <translation>사용한 포인트가 이미지의 10분의 1도 덮지 못합니다: 가장자리에 가까운 포인트를 추가하세요.</translation>
    </message>
</context>
<context>
    <name>CalibrationMatchList</name>
    <message>
        <source>No calibration point edit to undo.</source>
        <translation>취소할 캘리브레이션 포인트 편집이 없습니다.</translation>
    </message>
    <message>
        <source>Calibration point move undone.</source>
        <translation>캘리브레이션 포인트 이동을 취소했습니다.</translation>
    </message>
    <message>
        <source>Calibration point deletion undone.</source>
        <translation>캘리브레이션 포인트 삭제를 취소했습니다.</translation>
    </message>
    <message>
        <source>%1 calibration point deletions undone.</source>
        <translation>캘리브레이션 포인트 %1개 삭제를 취소했습니다.</translation>
    </message>
    <message>
        <source>No calibration point edit to redo.</source>
        <translation>다시 실행할 캘리브레이션 포인트 편집이 없습니다.</translation>
    </message>
    <message>
        <source>Calibration point move redone.</source>
        <translation>캘리브레이션 포인트 이동을 다시 실행했습니다.</translation>
    </message>
    <message>
        <source>Calibration point deletion redone.</source>
        <translation>캘리브레이션 포인트 삭제를 다시 실행했습니다.</translation>
    </message>
    <message>
        <source>%1 calibration point deletions redone.</source>
        <translation>캘리브레이션 포인트 %1개 삭제를 다시 실행했습니다.</translation>
    </message>
    <message>
        <source>Matched point deleted.</source>
        <translation>매칭 포인트를 삭제했습니다.</translation>
    </message>
    <message>
        <source>%1 matched points deleted.</source>
        <translation>매칭 포인트 %1개를 삭제했습니다.</translation>
    </message>
    <message>
        <source>Matched points cleared.</source>
        <translation>매칭 포인트를 모두 지웠습니다.</translation>
    </message>
</context>
<context>
    <name>CalibrationMatrixFile</name>
    <message>
        <source>Could not write matrix file.</source>
        <translation>행렬 파일을 쓸 수 없습니다.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Open a 3D view to calibrate a projector.</source>
        <translation>프로젝터를 캘리브레이션하려면 3D 뷰를 여세요.</translation>
    </message>
</context>
<context>
    <name>ProjectorCalibrationDialog</name>
    <message>
        <source>%1 px</source>
        <translation>%1 px</translation>
    </message>
    <message>
        <source>Click the matching real projected/camera point for %1.</source>
        <translation>%1에 해당하는 실제 투사/카메라 포인트를 클릭하세요.</translation>
    </message>
    <message>
        <source>Now click the matching real projected/camera point for %1.</source>
        <translation>이제 %1에 해당하는 실제 투사/카메라 포인트를 클릭하세요.</translation>
    </message>
    <message>
        <source>Click wireframe vertices, then click matching real points. Need 6 or more. Current: %1</source>
        <translation>와이어프레임 정점을 클릭한 다음 해당하는 실제 포인트를 클릭하세요. 6개 이상 필요합니다. 현재: %1</translation>
    </message>
    <message>
        <source>Add or select a projector object first.</source>
        <translation>먼저 프로젝터 오브젝트를 추가하거나 선택하세요.</translation>
    </message>
    <message>
        <source>Filled %1 matched rows from the current wireframe projection.</source>
        <translation>현재 와이어프레임 투사로 매칭 행 %1개를 채웠습니다.</translation>
    </message>
    <message>
        <source>Projector restored to its pose and lens from when this window opened.</source>
        <translation>프로젝터의 위치와 렌즈를 이 창을 열 때의 상태로 되돌렸습니다.</translation>
    </message>
    <message>
        <source>Auto calibration failed: %1</source>
        <translation>자동 캘리브레이션 실패: %1</translation>
    </message>
    <message>
        <source>Auto </source>
        <translation>자동 </translation>
    </message>
    <message>
        <source>adjusted</source>
        <translation>조정됨</translation>
    </message>
    <message>
        <source>fixed</source>
        <translation>고정됨</translation>
    </message>
    <message>
        <source>%1Calibration applied. RMS error: %2 px, iterations: %3, Throw Ratio: %4 (%5), H-FOV: %6 deg, Lens Shift: %7</source>
        <translation>%1캘리브레이션 적용됨. RMS 오차: %2 px, 반복: %3, 투사비: %4 (%5), 수평 화각: %6도, 렌즈 시프트: %7</translation>
    </message>
    <message>
        <source>3D View projector update needs 6 or more original wireframe points.</source>
        <translation>3D 뷰 프로젝터 업데이트에는 원본 와이어프레임 포인트가 6개 이상 필요합니다.</translation>
    </message>
    <message>
        <source>The projector is no longer in the 3D View.</source>
        <translation>프로젝터가 더 이상 3D 뷰에 없습니다.</translation>
    </message>
    <message>
        <source>Auto calibration preview updated, but 3D View projector update failed: %1</source>
        <translation>자동 캘리브레이션 미리보기는 갱신했지만 3D 뷰 프로젝터 업데이트에 실패했습니다: %1</translation>
    </message>
    <message>
        <source>Calibration preview updated, but 3D View projector update failed: %1</source>
        <translation>캘리브레이션 미리보기는 갱신했지만 3D 뷰 프로젝터 업데이트에 실패했습니다: %1</translation>
    </message>
    <message>
        <source>Add a target object with visible wireframe vertices first.</source>
        <translation>먼저 와이어프레임 정점이 보이는 대상 오브젝트를 추가하세요.</translation>
    </message>
    <message>
        <source>No projected wireframe vertices are visible for this target.</source>
        <translation>이 대상에는 투사된 와이어프레임 정점이 보이지 않습니다.</translation>
    </message>
    <message>
        <source>%1  mismatched</source>
        <translation>%1  잘못 매칭됨</translation>
    </message>
    <message>
        <source>%1  worst</source>
        <translation>%1  최대</translation>
    </message>
    <message>
        <source>Largest residual of this fit.</source>
        <translation>이번 피팅에서 가장 큰 잔차입니다.</translation>
    </message>
    <message>
        <source>No target wireframe.</source>
        <translation>대상 와이어프레임이 없습니다.</translation>
    </message>
    <message>
        <source>Wheel: Zoom   Alt + Left: Orbit   Alt + Middle: Pan   Alt + Right: Dolly</source>
        <translation>휠: 확대/축소   Alt + 왼쪽: 궤도 회전   Alt + 가운데: 이동   Alt + 오른쪽: 돌리</translation>
    </message>
    <message>
        <source>Click the real projected/camera point for the selected vertex.</source>
        <translation>선택한 정점에 해당하는 실제 투사/카메라 포인트를 클릭하세요.</translation>
    </message>
    <message>
        <source>Drag matched points or use arrow keys.  Wheel: Zoom   Alt + Middle: Pan   Alt + Right: Dolly</source>
        <translation>매칭 포인트를 드래그하거나 방향키를 사용하세요.  휠: 확대/축소   Alt + 가운데: 이동   Alt + 오른쪽: 돌리</translation>
    </message>
    <message>
        <source>Projector Calibration</source>
        <translation>프로젝터 캘리브레이션</translation>
    </message>
    <message>
        <source>Projector</source>
        <translation>프로젝터</translation>
    </message>
    <message>
        <source>Target Object</source>
        <translation>대상 오브젝트</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>이름</translation>
    </message>
    <message>
        <source>Wireframe View</source>
        <translation>와이어프레임 뷰</translation>
    </message>
    <message>
        <source>Projector View</source>
        <translation>프로젝터 뷰</translation>
    </message>
    <message>
        <source>Use this point for calibration</source>
        <translation>이 포인트를 캘리브레이션에 사용</translation>
    </message>
    <message>
        <source>Wireframe vertex</source>
        <translation>와이어프레임 정점</translation>
    </message>
    <message>
        <source>Wireframe X</source>
        <translation>와이어프레임 X</translation>
    </message>
    <message>
        <source>Wireframe Y</source>
        <translation>와이어프레임 Y</translation>
    </message>
    <message>
        <source>Wireframe Z</source>
        <translation>와이어프레임 Z</translation>
    </message>
    <message>
        <source>Image X</source>
        <translation>이미지 X</translation>
    </message>
    <message>
        <source>Image Y</source>
        <translation>이미지 Y</translation>
    </message>
    <message>
        <source>Residual (px)</source>
        <translation>잔차 (px)</translation>
    </message>
    <message>
        <source>Load Image</source>
        <translation>이미지 불러오기</translation>
    </message>
    <message>
        <source>Load a captured/reference image as the projector view background.</source>
        <translation>촬영/참조 이미지를 프로젝터 뷰 배경으로 불러옵니다.</translation>
    </message>
    <message>
        <source>Fill From Projection</source>
        <translation>투사에서 채우기</translation>
    </message>
    <message>
        <source>Fill matched point positions from the current projector projection.</source>
        <translation>현재 프로젝터 투사로 매칭 포인트 위치를 채웁니다.</translation>
    </message>
    <message>
        <source>Export Matrix</source>
        <translation>행렬 내보내기</translation>
    </message>
    <message>
        <source>Export LUT</source>
        <translation>LUT 내보내기</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>지우기</translation>
    </message>
    <message>
        <source>Calibrate Projector</source>
        <translation>프로젝터 캘리브레이션</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>복원</translation>
    </message>
    <message>
        <source>Put the projector back as it was when this window opened.</source>
        <translation>프로젝터를 이 창을 열 때의 상태로 되돌립니다.</translation>
    </message>
    <message>
        <source>3D View Projector Update</source>
        <translation>3D 뷰 프로젝터 업데이트</translation>
    </message>
    <message>
        <source>Apply the solved calibration transform to the projector object in the 3D View.</source>
        <translation>계산된 캘리브레이션 변환을 3D 뷰의 프로젝터 오브젝트에 적용합니다.</translation>
    </message>
    <message>
        <source>Adjust Throw Ratio</source>
        <translation>투사비 조정</translation>
    </message>
    <message>
        <source>Allow calibration to solve Throw Ratio. Leave off to keep the current projector throw ratio fixed.</source>
        <translation>캘리브레이션이 투사비를 계산하도록 합니다. 끄면 현재 프로젝터의 투사비를 고정합니다.</translation>
    </message>
    <message>
        <source>Adjust Lens Shift</source>
        <translation>렌즈 시프트 조정</translation>
    </message>
    <message>
        <source>Allow calibration to solve Lens Shift X/Y. Leave off to keep the current projector lens shift fixed.</source>
        <translation>캘리브레이션이 렌즈 시프트 X/Y를 계산하도록 합니다. 끄면 현재 프로젝터의 렌즈 시프트를 고정합니다.</translation>
    </message>
    <message>
        <source>Wire</source>
        <translation>와이어</translation>
    </message>
    <message>
        <source>Show Wireframe</source>
        <translation>와이어프레임 표시</translation>
    </message>
    <message>
        <source>Shade</source>
        <translation>음영</translation>
    </message>
    <message>
        <source>Show Shading</source>
        <translation>음영 표시</translation>
    </message>
    <message>
        <source>Vertex</source>
        <translation>정점</translation>
    </message>
    <message>
        <source>Show Candidate Vertices</source>
        <translation>후보 정점 표시</translation>
    </message>
    <message>
        <source>Show Vertex</source>
        <translation>정점 표시</translation>
    </message>
    <message>
        <source>3D Update</source>
        <translation>3D 업데이트</translation>
    </message>
    <message>
        <source>Throw Ratio</source>
        <translation>투사비</translation>
    </message>
    <message>
        <source>Lens Shift</source>
        <translation>렌즈 시프트</translation>
    </message>
    <message>
        <source>Vertex Size (px)</source>
        <translation>정점 크기 (px)</translation>
    </message>
    <message>
        <source>Marker Size (px)</source>
        <translation>마커 크기 (px)</translation>
    </message>
    <message>
        <source>Output Size (px)</source>
        <translation>출력 크기 (px)</translation>
    </message>
    <message>
        <source>Multiply only the output U coordinate by this value when exporting or updating LUT files.</source>
        <translation>LUT 파일을 내보내거나 업데이트할 때 출력 U 좌표에만 이 값을 곱합니다.</translation>
    </message>
    <message>
        <source>Use a D3D11 MSAA render target and resolve per-sample valid coverage for UV LUT edges.</source>
        <translation>D3D11 MSAA 렌더 타깃을 사용하고 UV LUT 가장자리의 샘플별 유효 커버리지를 계산합니다.</translation>
    </message>
    <message>
        <source>Write soft valid-mask coverage near UV LUT edges. 0 keeps the legacy 0/1 valid mask.</source>
        <translation>UV LUT 가장자리 근처에 부드러운 유효 마스크 커버리지를 씁니다. 0이면 기존 0/1 유효 마스크를 유지합니다.</translation>
    </message>
    <message>
        <source>UV LUT U Scale (0-10)</source>
        <translation>UV LUT U 배율 (0-10)</translation>
    </message>
    <message>
        <source>UV LUT AA Samples</source>
        <translation>UV LUT AA 샘플</translation>
    </message>
    <message>
        <source>UV LUT Edge Feather (px)</source>
        <translation>UV LUT 가장자리 페더 (px)</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>출력</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>자동</translation>
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
        <source>Optional Spout/NDI output name.</source>
        <translation>선택 사항인 Spout/NDI 출력 이름입니다.</translation>
    </message>
    <message>
        <source>Auto: VantreoGuide Calibration Projector View</source>
        <translation>자동: VantreoGuide Calibration Projector View</translation>
    </message>
    <message>
        <source>Vantreo Server UDP</source>
        <translation>Vantreo Server UDP</translation>
    </message>
    <message>
        <source>Enable Link</source>
        <translation>링크 사용</translation>
    </message>
    <message>
        <source>Send the UV LUT to the server after each Calibrate Projector.</source>
        <translation>프로젝터 캘리브레이션을 실행할 때마다 UV LUT를 서버로 보냅니다.</translation>
    </message>
    <message>
        <source>Update LUT</source>
        <translation>LUT 업데이트</translation>
    </message>
    <message>
        <source>UDP Server</source>
        <translation>UDP 서버</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>포트</translation>
    </message>
    <message>
        <source>Player</source>
        <translation>플레이어</translation>
    </message>
    <message>
        <source>Warp</source>
        <translation>워프</translation>
    </message>
    <message>
        <source>Send UV LUT Enabled</source>
        <translation>UV LUT 전송 켜짐</translation>
    </message>
    <message>
        <source>Send UV LUT Disabled</source>
        <translation>UV LUT 전송 꺼짐</translation>
    </message>
    <message>
        <source>3D View projector update is on.</source>
        <translation>3D 뷰 프로젝터 업데이트가 켜져 있습니다.</translation>
    </message>
    <message>
        <source>3D View projector update is off. Calibration preview will update without changing the projector object.</source>
        <translation>3D 뷰 프로젝터 업데이트가 꺼져 있습니다. 캘리브레이션 미리보기는 프로젝터 오브젝트를 바꾸지 않고 갱신됩니다.</translation>
    </message>
    <message>
        <source>Throw Ratio will be adjusted by calibration.</source>
        <translation>캘리브레이션이 투사비를 조정합니다.</translation>
    </message>
    <message>
        <source>Throw Ratio is fixed to the current projector value.</source>
        <translation>투사비가 현재 프로젝터 값으로 고정됩니다.</translation>
    </message>
    <message>
        <source>Lens Shift X/Y will be adjusted by calibration.</source>
        <translation>캘리브레이션이 렌즈 시프트 X/Y를 조정합니다.</translation>
    </message>
    <message>
        <source>Lens Shift X/Y is fixed to the current projector values.</source>
        <translation>렌즈 시프트 X/Y가 현재 프로젝터 값으로 고정됩니다.</translation>
    </message>
    <message>
        <source>Select a projector before exporting matrix.</source>
        <translation>행렬을 내보내기 전에 프로젝터를 선택하세요.</translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation>내보내기 실패</translation>
    </message>
    <message>
        <source>Matrix exported from calibration points: %1 (RMS %2 px)</source>
        <translation>캘리브레이션 포인트로 행렬을 내보냈습니다: %1 (RMS %2 px)</translation>
    </message>
    <message>
        <source>Matrix exported from projector transform: %1</source>
        <translation>프로젝터 변환으로 행렬을 내보냈습니다: %1</translation>
    </message>
    <message>
        <source>Text Files (*.txt);;All Files (*.*)</source>
        <translation>텍스트 파일 (*.txt);;모든 파일 (*.*)</translation>
    </message>
    <message>
        <source>Could not load the reference image.</source>
        <translation>참조 이미지를 불러올 수 없습니다.</translation>
    </message>
    <message>
        <source>Reference image loaded. Select a point row and click the matching image position.</source>
        <translation>참조 이미지를 불러왔습니다. 포인트 행을 선택하고 해당하는 이미지 위치를 클릭하세요.</translation>
    </message>
    <message>
        <source>Load Reference Image</source>
        <translation>참조 이미지 불러오기</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff);;All Files (*.*)</source>
        <translation>이미지 (*.png *.jpg *.jpeg *.bmp *.tif *.tiff);;모든 파일 (*.*)</translation>
    </message>
    <message>
        <source>Load failed</source>
        <translation>불러오기 실패</translation>
    </message>
    <message>
        <source>Clear Calibration Points</source>
        <translation>캘리브레이션 포인트 지우기</translation>
    </message>
    <message>
        <source>Clear all calibration point matches?</source>
        <translation>모든 캘리브레이션 포인트 매칭을 지울까요?</translation>
    </message>
    <message>
        <source>Camera UV LUT export is unavailable.</source>
        <translation>카메라 UV LUT 내보내기는 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>Add a camera (or another projector) with an image to map the UV LUT from.</source>
        <translation>UV LUT를 만들 이미지가 있는 카메라(또는 다른 프로젝터)를 추가하세요.</translation>
    </message>
    <message>
        <source>Camera UV LUT update is unavailable.</source>
        <translation>카메라 UV LUT 업데이트는 사용할 수 없습니다.</translation>
    </message>
    <message>
        <source>Vantreo Server link is disabled.</source>
        <translation>Vantreo Server 링크가 꺼져 있습니다.</translation>
    </message>
    <message>
        <source>Update LUT failed</source>
        <translation>LUT 업데이트 실패</translation>
    </message>
    <message>
        <source>Spout output &quot;%1&quot; is unavailable: %2</source>
        <translation>Spout 출력 &quot;%1&quot;을(를) 사용할 수 없습니다: %2</translation>
    </message>
    <message>
        <source>NDI output &quot;%1&quot; could not start: %2</source>
        <translation>NDI 출력 &quot;%1&quot;을(를) 시작할 수 없습니다: %2</translation>
    </message>
    <message>
        <source>NDI output &quot;%1&quot; is on.</source>
        <translation>NDI 출력 &quot;%1&quot;이(가) 켜졌습니다.</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <source>Calibrate Projector...</source>
        <translation>프로젝터 캘리브레이션...</translation>
    </message>
</context>
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <source>Calibrate Projector...</source>
        <translation>프로젝터 캘리브레이션...</translation>
    </message>
</context>
</TS>
