<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>CalibrationDiagnostics</name>
    <message>
        <source>Point %1 looks mismatched: without it the RMS drops from %2 px to %3 px.</source>
        <translation>Point %1 looks mismatched: without it the RMS drops from %2 px to %3 px.</translation>
    </message>
    <message>
        <source>The used points are nearly coplanar: add points at other depths for a reliable fit.</source>
        <translation>The used points are nearly coplanar: add points at other depths for a reliable fit.</translation>
    </message>
    <message>
        <source>The used points cover less than a tenth of the image: add points nearer its edges.</source>
        <translation>The used points cover less than a tenth of the image: add points nearer its edges.</translation>
    </message>
</context>
<context>
    <name>CalibrationMatchList</name>
    <message>
        <source>No calibration point edit to undo.</source>
        <translation>No calibration point edit to undo.</translation>
    </message>
    <message>
        <source>Calibration point move undone.</source>
        <translation>Calibration point move undone.</translation>
    </message>
    <message>
        <source>Calibration point deletion undone.</source>
        <translation>Calibration point deletion undone.</translation>
    </message>
    <message>
        <source>%1 calibration point deletions undone.</source>
        <translation>%1 calibration point deletions undone.</translation>
    </message>
    <message>
        <source>No calibration point edit to redo.</source>
        <translation>No calibration point edit to redo.</translation>
    </message>
    <message>
        <source>Calibration point move redone.</source>
        <translation>Calibration point move redone.</translation>
    </message>
    <message>
        <source>Calibration point deletion redone.</source>
        <translation>Calibration point deletion redone.</translation>
    </message>
    <message>
        <source>%1 calibration point deletions redone.</source>
        <translation>%1 calibration point deletions redone.</translation>
    </message>
    <message>
        <source>Matched point deleted.</source>
        <translation>Matched point deleted.</translation>
    </message>
    <message>
        <source>%1 matched points deleted.</source>
        <translation>%1 matched points deleted.</translation>
    </message>
    <message>
        <source>Matched points cleared.</source>
        <translation>Matched points cleared.</translation>
    </message>
</context>
<context>
    <name>CalibrationMatrixFile</name>
    <message>
        <source>Could not write matrix file.</source>
        <translation>Could not write matrix file.</translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <source>Open a 3D view to calibrate a projector.</source>
        <translation>Open a 3D view to calibrate a projector.</translation>
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
        <translation>Click the matching real projected/camera point for %1.</translation>
    </message>
    <message>
        <source>Now click the matching real projected/camera point for %1.</source>
        <translation>Now click the matching real projected/camera point for %1.</translation>
    </message>
    <message>
        <source>Click wireframe vertices, then click matching real points. Need 6 or more. Current: %1</source>
        <translation>Click wireframe vertices, then click matching real points. Need 6 or more. Current: %1</translation>
    </message>
    <message>
        <source>Add or select a projector object first.</source>
        <translation>Add or select a projector object first.</translation>
    </message>
    <message>
        <source>Filled %1 matched rows from the current wireframe projection.</source>
        <translation>Filled %1 matched rows from the current wireframe projection.</translation>
    </message>
    <message>
        <source>Projector restored to its pose and lens from when this window opened.</source>
        <translation>Projector restored to its pose and lens from when this window opened.</translation>
    </message>
    <message>
        <source>Auto calibration failed: %1</source>
        <translation>Auto calibration failed: %1</translation>
    </message>
    <message>
        <source>Auto </source>
        <translation>Auto </translation>
    </message>
    <message>
        <source>adjusted</source>
        <translation>adjusted</translation>
    </message>
    <message>
        <source>fixed</source>
        <translation>fixed</translation>
    </message>
    <message>
        <source>%1Calibration applied. RMS error: %2 px, iterations: %3, Throw Ratio: %4 (%5), H-FOV: %6 deg, Lens Shift: %7</source>
        <translation>%1Calibration applied. RMS error: %2 px, iterations: %3, Throw Ratio: %4 (%5), H-FOV: %6 deg, Lens Shift: %7</translation>
    </message>
    <message>
        <source>3D View projector update needs 6 or more original wireframe points.</source>
        <translation>3D View projector update needs 6 or more original wireframe points.</translation>
    </message>
    <message>
        <source>The projector is no longer in the 3D View.</source>
        <translation>The projector is no longer in the 3D View.</translation>
    </message>
    <message>
        <source>Auto calibration preview updated, but 3D View projector update failed: %1</source>
        <translation>Auto calibration preview updated, but 3D View projector update failed: %1</translation>
    </message>
    <message>
        <source>Calibration preview updated, but 3D View projector update failed: %1</source>
        <translation>Calibration preview updated, but 3D View projector update failed: %1</translation>
    </message>
    <message>
        <source>Add a target object with visible wireframe vertices first.</source>
        <translation>Add a target object with visible wireframe vertices first.</translation>
    </message>
    <message>
        <source>No projected wireframe vertices are visible for this target.</source>
        <translation>No projected wireframe vertices are visible for this target.</translation>
    </message>
    <message>
        <source>%1  mismatched</source>
        <translation>%1  mismatched</translation>
    </message>
    <message>
        <source>%1  worst</source>
        <translation>%1  worst</translation>
    </message>
    <message>
        <source>Largest residual of this fit.</source>
        <translation>Largest residual of this fit.</translation>
    </message>
    <message>
        <source>No target wireframe.</source>
        <translation>No target wireframe.</translation>
    </message>
    <message>
        <source>Wheel: Zoom   Alt + Left: Orbit   Alt + Middle: Pan   Alt + Right: Dolly</source>
        <translation>Wheel: Zoom   Alt + Left: Orbit   Alt + Middle: Pan   Alt + Right: Dolly</translation>
    </message>
    <message>
        <source>Click the real projected/camera point for the selected vertex.</source>
        <translation>Click the real projected/camera point for the selected vertex.</translation>
    </message>
    <message>
        <source>Drag matched points or use arrow keys.  Wheel: Zoom   Alt + Middle: Pan   Alt + Right: Dolly</source>
        <translation>Drag matched points or use arrow keys.  Wheel: Zoom   Alt + Middle: Pan   Alt + Right: Dolly</translation>
    </message>
    <message>
        <source>Projector Calibration</source>
        <translation>Projector Calibration</translation>
    </message>
    <message>
        <source>Projector</source>
        <translation>Projector</translation>
    </message>
    <message>
        <source>Target Object</source>
        <translation>Target Object</translation>
    </message>
    <message>
        <source>Name</source>
        <translation>Name</translation>
    </message>
    <message>
        <source>Wireframe View</source>
        <translation>Wireframe View</translation>
    </message>
    <message>
        <source>Projector View</source>
        <translation>Projector View</translation>
    </message>
    <message>
        <source>Use this point for calibration</source>
        <translation>Use this point for calibration</translation>
    </message>
    <message>
        <source>Wireframe vertex</source>
        <translation>Wireframe vertex</translation>
    </message>
    <message>
        <source>Wireframe X</source>
        <translation>Wireframe X</translation>
    </message>
    <message>
        <source>Wireframe Y</source>
        <translation>Wireframe Y</translation>
    </message>
    <message>
        <source>Wireframe Z</source>
        <translation>Wireframe Z</translation>
    </message>
    <message>
        <source>Image X</source>
        <translation>Image X</translation>
    </message>
    <message>
        <source>Image Y</source>
        <translation>Image Y</translation>
    </message>
    <message>
        <source>Residual (px)</source>
        <translation>Residual (px)</translation>
    </message>
    <message>
        <source>Load Image</source>
        <translation>Load Image</translation>
    </message>
    <message>
        <source>Load a captured/reference image as the projector view background.</source>
        <translation>Load a captured/reference image as the projector view background.</translation>
    </message>
    <message>
        <source>Fill From Projection</source>
        <translation>Fill From Projection</translation>
    </message>
    <message>
        <source>Fill matched point positions from the current projector projection.</source>
        <translation>Fill matched point positions from the current projector projection.</translation>
    </message>
    <message>
        <source>Export Matrix</source>
        <translation>Export Matrix</translation>
    </message>
    <message>
        <source>Export LUT</source>
        <translation>Export LUT</translation>
    </message>
    <message>
        <source>Clear</source>
        <translation>Clear</translation>
    </message>
    <message>
        <source>Calibrate Projector</source>
        <translation>Calibrate Projector</translation>
    </message>
    <message>
        <source>Restore</source>
        <translation>Restore</translation>
    </message>
    <message>
        <source>Put the projector back as it was when this window opened.</source>
        <translation>Put the projector back as it was when this window opened.</translation>
    </message>
    <message>
        <source>3D View Projector Update</source>
        <translation>3D View Projector Update</translation>
    </message>
    <message>
        <source>Apply the solved calibration transform to the projector object in the 3D View.</source>
        <translation>Apply the solved calibration transform to the projector object in the 3D View.</translation>
    </message>
    <message>
        <source>Adjust Throw Ratio</source>
        <translation>Adjust Throw Ratio</translation>
    </message>
    <message>
        <source>Allow calibration to solve Throw Ratio. Leave off to keep the current projector throw ratio fixed.</source>
        <translation>Allow calibration to solve Throw Ratio. Leave off to keep the current projector throw ratio fixed.</translation>
    </message>
    <message>
        <source>Adjust Lens Shift</source>
        <translation>Adjust Lens Shift</translation>
    </message>
    <message>
        <source>Allow calibration to solve Lens Shift X/Y. Leave off to keep the current projector lens shift fixed.</source>
        <translation>Allow calibration to solve Lens Shift X/Y. Leave off to keep the current projector lens shift fixed.</translation>
    </message>
    <message>
        <source>Wire</source>
        <translation>Wire</translation>
    </message>
    <message>
        <source>Show Wireframe</source>
        <translation>Show Wireframe</translation>
    </message>
    <message>
        <source>Shade</source>
        <translation>Shade</translation>
    </message>
    <message>
        <source>Show Shading</source>
        <translation>Show Shading</translation>
    </message>
    <message>
        <source>Vertex</source>
        <translation>Vertex</translation>
    </message>
    <message>
        <source>Show Candidate Vertices</source>
        <translation>Show Candidate Vertices</translation>
    </message>
    <message>
        <source>Show Vertex</source>
        <translation>Show Vertex</translation>
    </message>
    <message>
        <source>3D Update</source>
        <translation>3D Update</translation>
    </message>
    <message>
        <source>Throw Ratio</source>
        <translation>Throw Ratio</translation>
    </message>
    <message>
        <source>Lens Shift</source>
        <translation>Lens Shift</translation>
    </message>
    <message>
        <source>Vertex Size (px)</source>
        <translation>Vertex Size (px)</translation>
    </message>
    <message>
        <source>Marker Size (px)</source>
        <translation>Marker Size (px)</translation>
    </message>
    <message>
        <source>Output Size (px)</source>
        <translation>Output Size (px)</translation>
    </message>
    <message>
        <source>Multiply only the output U coordinate by this value when exporting or updating LUT files.</source>
        <translation>Multiply only the output U coordinate by this value when exporting or updating LUT files.</translation>
    </message>
    <message>
        <source>Use a D3D11 MSAA render target and resolve per-sample valid coverage for UV LUT edges.</source>
        <translation>Use a D3D11 MSAA render target and resolve per-sample valid coverage for UV LUT edges.</translation>
    </message>
    <message>
        <source>Write soft valid-mask coverage near UV LUT edges. 0 keeps the legacy 0/1 valid mask.</source>
        <translation>Write soft valid-mask coverage near UV LUT edges. 0 keeps the legacy 0/1 valid mask.</translation>
    </message>
    <message>
        <source>UV LUT U Scale (0-10)</source>
        <translation>UV LUT U Scale (0-10)</translation>
    </message>
    <message>
        <source>UV LUT AA Samples</source>
        <translation>UV LUT AA Samples</translation>
    </message>
    <message>
        <source>UV LUT Edge Feather (px)</source>
        <translation>UV LUT Edge Feather (px)</translation>
    </message>
    <message>
        <source>Output</source>
        <translation>Output</translation>
    </message>
    <message>
        <source>Auto</source>
        <translation>Auto</translation>
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
        <translation>Optional Spout/NDI output name.</translation>
    </message>
    <message>
        <source>Auto: VantreoGuide Calibration Projector View</source>
        <translation>Auto: VantreoGuide Calibration Projector View</translation>
    </message>
    <message>
        <source>Vantreo Server UDP</source>
        <translation>Vantreo Server UDP</translation>
    </message>
    <message>
        <source>Enable Link</source>
        <translation>Enable Link</translation>
    </message>
    <message>
        <source>Send the UV LUT to the server after each Calibrate Projector.</source>
        <translation>Send the UV LUT to the server after each Calibrate Projector.</translation>
    </message>
    <message>
        <source>Update LUT</source>
        <translation>Update LUT</translation>
    </message>
    <message>
        <source>UDP Server</source>
        <translation>UDP Server</translation>
    </message>
    <message>
        <source>Port</source>
        <translation>Port</translation>
    </message>
    <message>
        <source>Player</source>
        <translation>Player</translation>
    </message>
    <message>
        <source>Warp</source>
        <translation>Warp</translation>
    </message>
    <message>
        <source>Send UV LUT Enabled</source>
        <translation>Send UV LUT Enabled</translation>
    </message>
    <message>
        <source>Send UV LUT Disabled</source>
        <translation>Send UV LUT Disabled</translation>
    </message>
    <message>
        <source>3D View projector update is on.</source>
        <translation>3D View projector update is on.</translation>
    </message>
    <message>
        <source>3D View projector update is off. Calibration preview will update without changing the projector object.</source>
        <translation>3D View projector update is off. Calibration preview will update without changing the projector object.</translation>
    </message>
    <message>
        <source>Throw Ratio will be adjusted by calibration.</source>
        <translation>Throw Ratio will be adjusted by calibration.</translation>
    </message>
    <message>
        <source>Throw Ratio is fixed to the current projector value.</source>
        <translation>Throw Ratio is fixed to the current projector value.</translation>
    </message>
    <message>
        <source>Lens Shift X/Y will be adjusted by calibration.</source>
        <translation>Lens Shift X/Y will be adjusted by calibration.</translation>
    </message>
    <message>
        <source>Lens Shift X/Y is fixed to the current projector values.</source>
        <translation>Lens Shift X/Y is fixed to the current projector values.</translation>
    </message>
    <message>
        <source>Select a projector before exporting matrix.</source>
        <translation>Select a projector before exporting matrix.</translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation>Export failed</translation>
    </message>
    <message>
        <source>Matrix exported from calibration points: %1 (RMS %2 px)</source>
        <translation>Matrix exported from calibration points: %1 (RMS %2 px)</translation>
    </message>
    <message>
        <source>Matrix exported from projector transform: %1</source>
        <translation>Matrix exported from projector transform: %1</translation>
    </message>
    <message>
        <source>Text Files (*.txt);;All Files (*.*)</source>
        <translation>Text Files (*.txt);;All Files (*.*)</translation>
    </message>
    <message>
        <source>Could not load the reference image.</source>
        <translation>Could not load the reference image.</translation>
    </message>
    <message>
        <source>Reference image loaded. Select a point row and click the matching image position.</source>
        <translation>Reference image loaded. Select a point row and click the matching image position.</translation>
    </message>
    <message>
        <source>Load Reference Image</source>
        <translation>Load Reference Image</translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff);;All Files (*.*)</source>
        <translation>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff);;All Files (*.*)</translation>
    </message>
    <message>
        <source>Load failed</source>
        <translation>Load failed</translation>
    </message>
    <message>
        <source>Clear Calibration Points</source>
        <translation>Clear Calibration Points</translation>
    </message>
    <message>
        <source>Clear all calibration point matches?</source>
        <translation>Clear all calibration point matches?</translation>
    </message>
    <message>
        <source>Camera UV LUT export is unavailable.</source>
        <translation>Camera UV LUT export is unavailable.</translation>
    </message>
    <message>
        <source>Add a camera (or another projector) with an image to map the UV LUT from.</source>
        <translation>Add a camera (or another projector) with an image to map the UV LUT from.</translation>
    </message>
    <message>
        <source>Camera UV LUT update is unavailable.</source>
        <translation>Camera UV LUT update is unavailable.</translation>
    </message>
    <message>
        <source>Vantreo Server link is disabled.</source>
        <translation>Vantreo Server link is disabled.</translation>
    </message>
    <message>
        <source>Update LUT failed</source>
        <translation>Update LUT failed</translation>
    </message>
    <message>
        <source>Spout output &quot;%1&quot; is unavailable: %2</source>
        <translation>Spout output &quot;%1&quot; is unavailable: %2</translation>
    </message>
    <message>
        <source>NDI output &quot;%1&quot; could not start: %2</source>
        <translation>NDI output &quot;%1&quot; could not start: %2</translation>
    </message>
    <message>
        <source>NDI output &quot;%1&quot; is on.</source>
        <translation>NDI output &quot;%1&quot; is on.</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <source>Calibrate Projector...</source>
        <translation>Calibrate Projector...</translation>
    </message>
</context>
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <source>Calibrate Projector...</source>
        <translation>Calibrate Projector...</translation>
    </message>
</context>
</TS>
