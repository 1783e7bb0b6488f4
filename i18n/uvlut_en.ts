<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>MainWindow</name>
    <message>
        <source>Open a 3D view to export a UV LUT.</source>
        <translation>Open a 3D view to export a UV LUT.</translation>
    </message>
</context>
<context>
    <name>MediaServerLink</name>
    <message>
        <source>Connecting to %1:%2 timed out.</source>
        <translation>Connecting to %1:%2 timed out.</translation>
    </message>
    <message>
        <source>Could not open file for upload:
%1</source>
        <translation>Could not open file for upload:
%1</translation>
    </message>
    <message>
        <source>File does not exist:
%1</source>
        <translation>File does not exist:
%1</translation>
    </message>
    <message>
        <source>File transfer header is too large.</source>
        <translation>File transfer header is too large.</translation>
    </message>
    <message>
        <source>File upload finished, but MainService did not return an allfinish response.</source>
        <translation>File upload finished, but MainService did not return an allfinish response.</translation>
    </message>
    <message>
        <source>Invalid Vantreo Server IP: %1</source>
        <translation>Invalid Vantreo Server IP: %1</translation>
    </message>
    <message>
        <source>MainService response did not confirm completion:
%1</source>
        <translation>MainService response did not confirm completion:
%1</translation>
    </message>
    <message>
        <source>The media server did not accept data within %1 ms.</source>
        <translation>The media server did not accept data within %1 ms.</translation>
    </message>
    <message>
        <source>Vantreo Server UDP send failed: %1</source>
        <translation>Vantreo Server UDP send failed: %1</translation>
    </message>
    <message>
        <source>Vantreo Server invalid IP: %1</source>
        <translation>Vantreo Server invalid IP: %1</translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <source>Export Projector/Camera UV LUT...</source>
        <translation>Export Projector/Camera UV LUT...</translation>
    </message>
</context>
<context>
    <name>UvLutExport</name>
    <message>
        <source>Both output and source objects must be projectors or cameras.</source>
        <translation>Both output and source objects must be projectors or cameras.</translation>
    </message>
    <message>
        <source>CPU Raster (legacy)</source>
        <translation>CPU Raster (legacy)</translation>
    </message>
    <message>
        <source>Collecting scene surfaces for GPU probe...</source>
        <translation>Collecting scene surfaces for GPU probe...</translation>
    </message>
    <message>
        <source>Could not compile GPU UV LUT downsample shader.</source>
        <translation>Could not compile GPU UV LUT downsample shader.</translation>
    </message>
    <message>
        <source>Could not compile GPU UV LUT export shader.</source>
        <translation>Could not compile GPU UV LUT export shader.</translation>
    </message>
    <message>
        <source>Could not copy completed binary LUT file:</source>
        <translation>Could not copy completed binary LUT file:</translation>
    </message>
    <message>
        <source>Could not create a temporary LUT folder.</source>
        <translation>Could not create a temporary LUT folder.</translation>
    </message>
    <message>
        <source>Could not create export folder:</source>
        <translation>Could not create export folder:</translation>
    </message>
    <message>
        <source>Could not create temporary binary LUT file:</source>
        <translation>Could not create temporary binary LUT file:</translation>
    </message>
    <message>
        <source>Could not flush binary LUT samples:</source>
        <translation>Could not flush binary LUT samples:</translation>
    </message>
    <message>
        <source>Could not replace existing binary LUT file:</source>
        <translation>Could not replace existing binary LUT file:</translation>
    </message>
    <message>
        <source>Could not save LUT JSON file:</source>
        <translation>Could not save LUT JSON file:</translation>
    </message>
    <message>
        <source>Could not save LUT depth image:</source>
        <translation>Could not save LUT depth image:</translation>
    </message>
    <message>
        <source>Could not save LUT mask image:</source>
        <translation>Could not save LUT mask image:</translation>
    </message>
    <message>
        <source>Could not save LUT preview image:</source>
        <translation>Could not save LUT preview image:</translation>
    </message>
    <message>
        <source>Could not save UV diagnostic image:</source>
        <translation>Could not save UV diagnostic image:</translation>
    </message>
    <message>
        <source>Could not save camera UV LUT package.</source>
        <translation>Could not save camera UV LUT package.</translation>
    </message>
    <message>
        <source>Could not save float UV map</source>
        <translation>Could not save float UV map</translation>
    </message>
    <message>
        <source>Could not save float depth map</source>
        <translation>Could not save float depth map</translation>
    </message>
    <message>
        <source>Could not upload LUT to Vantreo Service.</source>
        <translation>Could not upload LUT to Vantreo Service.</translation>
    </message>
    <message>
        <source>Could not write binary LUT header:</source>
        <translation>Could not write binary LUT header:</translation>
    </message>
    <message>
        <source>Could not write binary LUT samples:</source>
        <translation>Could not write binary LUT samples:</translation>
    </message>
    <message>
        <source>CreateBuffer(GPU UV LUT constants) failed: %1</source>
        <translation>CreateBuffer(GPU UV LUT constants) failed: %1</translation>
    </message>
    <message>
        <source>CreateBuffer(GPU UV LUT vertices) failed: %1</source>
        <translation>CreateBuffer(GPU UV LUT vertices) failed: %1</translation>
    </message>
    <message>
        <source>CreateDepthStencilView(GPU UV LUT depth) failed: %1</source>
        <translation>CreateDepthStencilView(GPU UV LUT depth) failed: %1</translation>
    </message>
    <message>
        <source>CreateRenderTargetView(GPU UV LUT render target) failed: %1</source>
        <translation>CreateRenderTargetView(GPU UV LUT render target) failed: %1</translation>
    </message>
    <message>
        <source>CreateTexture2D(GPU UV LUT depth) failed: %1</source>
        <translation>CreateTexture2D(GPU UV LUT depth) failed: %1</translation>
    </message>
    <message>
        <source>CreateTexture2D(GPU UV LUT render target) failed: %1</source>
        <translation>CreateTexture2D(GPU UV LUT render target) failed: %1</translation>
    </message>
    <message>
        <source>CreateTexture2D(GPU UV LUT staging) failed: %1</source>
        <translation>CreateTexture2D(GPU UV LUT staging) failed: %1</translation>
    </message>
    <message>
        <source>Feathering UV LUT valid mask...</source>
        <translation>Feathering UV LUT valid mask...</translation>
    </message>
    <message>
        <source>GPU Probe</source>
        <translation>GPU Probe</translation>
    </message>
    <message>
        <source>GPU UV LUT MSAA %1x is not supported for D32 depth targets: %2</source>
        <translation>GPU UV LUT MSAA %1x is not supported for D32 depth targets: %2</translation>
    </message>
    <message>
        <source>GPU UV LUT MSAA %1x is not supported for RGBA32F render targets: %2</source>
        <translation>GPU UV LUT MSAA %1x is not supported for RGBA32F render targets: %2</translation>
    </message>
    <message>
        <source>GPU device is not ready for GPU UV LUT export.</source>
        <translation>GPU device is not ready for GPU UV LUT export.</translation>
    </message>
    <message>
        <source>LUT export complete.</source>
        <translation>LUT export complete.</translation>
    </message>
    <message>
        <source>Map(GPU UV LUT staging) failed: %1</source>
        <translation>Map(GPU UV LUT staging) failed: %1</translation>
    </message>
    <message>
        <source>No exportable scene surface triangles were found.</source>
        <translation>No exportable scene surface triangles were found.</translation>
    </message>
    <message>
        <source>No visible surface samples were found inside the selected projector view.</source>
        <translation>No visible surface samples were found inside the selected projector view.</translation>
    </message>
    <message>
        <source>Not enough memory for a UV LUT of %1 x %2 pixels.</source>
        <translation>Not enough memory for a UV LUT of %1 x %2 pixels.</translation>
    </message>
    <message>
        <source>Projecting scene surfaces with CPU raster...</source>
        <translation>Projecting scene surfaces with CPU raster...</translation>
    </message>
    <message>
        <source>Reading GPU UV probe...</source>
        <translation>Reading GPU UV probe...</translation>
    </message>
    <message>
        <source>Rendering GPU UV probe...</source>
        <translation>Rendering GPU UV probe...</translation>
    </message>
    <message>
        <source>Resolving visible projector samples...</source>
        <translation>Resolving visible projector samples...</translation>
    </message>
    <message>
        <source>Select a source camera/projector image for the UV LUT.</source>
        <translation>Select a source camera/projector image for the UV LUT.</translation>
    </message>
    <message>
        <source>Selected projector/camera is no longer available.</source>
        <translation>Selected projector/camera is no longer available.</translation>
    </message>
    <message>
        <source>The GPU allows UV LUTs of at most %1 x %1 pixels; use the CPU Raster (legacy) method.</source>
        <translation>The GPU allows UV LUTs of at most %1 x %1 pixels; use the CPU Raster (legacy) method.</translation>
    </message>
    <message>
        <source>The UV LUT of %1 x %2 pixels is too large.</source>
        <translation>The UV LUT of %1 x %2 pixels is too large.</translation>
    </message>
    <message>
        <source>The output projector/camera and source camera must be different objects.</source>
        <translation>The output projector/camera and source camera must be different objects.</translation>
    </message>
    <message>
        <source>The selected source camera/projector has no CPU-readable image.</source>
        <translation>The selected source camera/projector has no CPU-readable image.</translation>
    </message>
    <message>
        <source>UV LUT AA Samples requires the GPU Probe export method.</source>
        <translation>UV LUT AA Samples requires the GPU Probe export method.</translation>
    </message>
    <message>
        <source>Updated LUT %1 to %2</source>
        <translation>Updated LUT %1 to %2</translation>
    </message>
    <message>
        <source>Uploaded %1 to %2 and removed the temporary LUT file.</source>
        <translation>Uploaded %1 to %2 and removed the temporary LUT file.</translation>
    </message>
    <message>
        <source>Uploaded %1 to %2, but the temporary LUT file could not be removed.</source>
        <translation>Uploaded %1 to %2, but the temporary LUT file could not be removed.</translation>
    </message>
    <message>
        <source>Writing LUT JSON...</source>
        <translation>Writing LUT JSON...</translation>
    </message>
    <message>
        <source>Writing binary LUT...</source>
        <translation>Writing binary LUT...</translation>
    </message>
    <message>
        <source>Writing float LUT maps...</source>
        <translation>Writing float LUT maps...</translation>
    </message>
    <message>
        <source>Writing preview images...</source>
        <translation>Writing preview images...</translation>
    </message>
    <message>
        <source>at most %1 samples</source>
        <translation>at most %1 samples</translation>
    </message>
    <message>
        <source>out of memory</source>
        <translation>out of memory</translation>
    </message>
</context>
<context>
    <name>UvLutExportDialog</name>
    <message>
        <source>AA Samples</source>
        <translation>AA Samples</translation>
    </message>
    <message>
        <source>Browse...</source>
        <translation>Browse...</translation>
    </message>
    <message>
        <source>Edge Feather (px)</source>
        <translation>Edge Feather (px)</translation>
    </message>
    <message>
        <source>Export</source>
        <translation>Export</translation>
    </message>
    <message>
        <source>Export JSON, preview image, diagnostic images, and float maps for checking the LUT.</source>
        <translation>Export JSON, preview image, diagnostic images, and float maps for checking the LUT.</translation>
    </message>
    <message>
        <source>Export Projector/Camera UV LUT</source>
        <translation>Export Projector/Camera UV LUT</translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation>Export failed</translation>
    </message>
    <message>
        <source>Folder</source>
        <translation>Folder</translation>
    </message>
    <message>
        <source>LUT output uses the projector resolution.</source>
        <translation>LUT output uses the projector resolution.</translation>
    </message>
    <message>
        <source>Method</source>
        <translation>Method</translation>
    </message>
    <message>
        <source>Output View</source>
        <translation>Output View</translation>
    </message>
    <message>
        <source>Player IP</source>
        <translation>Player IP</translation>
    </message>
    <message>
        <source>Server IP</source>
        <translation>Server IP</translation>
    </message>
    <message>
        <source>Source UV Texture</source>
        <translation>Source UV Texture</translation>
    </message>
    <message>
        <source>U Scale</source>
        <translation>U Scale</translation>
    </message>
    <message>
        <source>UDP Port</source>
        <translation>UDP Port</translation>
    </message>
    <message>
        <source>Update LUT</source>
        <translation>Update LUT</translation>
    </message>
    <message>
        <source>Update LUT failed</source>
        <translation>Update LUT failed</translation>
    </message>
    <message>
        <source>Vantreo Server</source>
        <translation>Vantreo Server</translation>
    </message>
    <message>
        <source>Warp Editor</source>
        <translation>Warp Editor</translation>
    </message>
</context>
</TS>
