<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>CanvasAddGuideDialog</name>
    <message>
        <source>No preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select All</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Selected</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CanvasObjectPanel</name>
    <message>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Visible</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Position Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Crop left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Crop top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Crop right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Crop bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Label offset X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Label offset Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Circle size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Font size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bold</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Shadow</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Alignment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Left</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Center</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Right</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Vertical alignment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Middle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bottom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Aspect ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bounds dimensions (mm)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Bounds resolution (px)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Snap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Background</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Show document title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Use custom title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Custom title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Title band</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Canvas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Document title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Select an object to edit its properties.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>CanvasTab</name>
    <message>
        <source>Scale X %1 Y %2  Position X %3 Y %4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No canvas objects to export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Canvas PNG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PNG Images (*.png)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Exported %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No selected guide to export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selected guide image is not available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected Guide PNG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selected guide PNG file could not be saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All Files (*.*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Image failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Selected image file could not be read.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No guide tab is available.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Canvas view PNG file could not be saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Canvas view copied: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Translate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Rotate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Resize (T)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Crop (C)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Guide sources</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Add Text Box</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Raise</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Lower</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Canvas PNG...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Selected Guide PNG...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Copy View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Fit View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No preview</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>No guide tabs available</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Canvas PNG image could not be rendered.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PNG file could not be saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not create a folder for pasted images.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not save the clipboard image as PNG.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Guide Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Text Box</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 Copy %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>%1 guide source%2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
