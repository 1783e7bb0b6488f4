<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>SceneAddObjectDialog</name>
    <message>
        <location filename="../scene/ui/SceneAddObjectDialog.cpp" line="21"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ScenePropertyPanel</name>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="73"/>
        <source>Select an object to edit its properties.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="279"/>
        <source>No file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="280"/>
        <source>Browse...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="281"/>
        <source>Clear</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="334"/>
        <source>Guide %1 (missing)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="341"/>
        <source>None</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="363"/>
        <source>Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="364"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="365"/>
        <source>Visible</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="367"/>
        <source>Opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="374"/>
        <source>Transform</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="375"/>
        <source>Position X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="376"/>
        <source>Position Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="377"/>
        <source>Position Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="378"/>
        <source>Rotation X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="379"/>
        <source>Rotation Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="380"/>
        <source>Rotation Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="385"/>
        <source>Size X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="385"/>
        <source>Size Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="385"/>
        <source>Size Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="398"/>
        <source>Display</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="401"/>
        <source>Shading</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="402"/>
        <source>Wireframe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="403"/>
        <source>Wireframe thickness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="403"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="577"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="578"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="616"/>
        <source>px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="406"/>
        <source>Flip normals</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="407"/>
        <source>Mesh colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="409"/>
        <source>Show dimensions</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="412"/>
        <source>Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="417"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="425"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="509"/>
        <source>Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="418"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="426"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="469"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="482"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="510"/>
        <source>Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="419"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="471"/>
        <source>Radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="420"/>
        <source>Circumference</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="422"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="427"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="511"/>
        <source>Depth</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="434"/>
        <source>Texture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="435"/>
        <source>Show texture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="436"/>
        <source>Guide tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="437"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="600"/>
        <source>Image file</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="438"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="601"/>
        <source>Images and movies (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp *.mp4 *.mov *.avi *.mkv);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="440"/>
        <source>Texture rotation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="452"/>
        <source>Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="453"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="512"/>
        <source>Corner radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="454"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="490"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="515"/>
        <source>Round lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="455"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="473"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="488"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="502"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="513"/>
        <source>U lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="456"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="474"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="489"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="503"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="514"/>
        <source>V lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="460"/>
        <source>Circle Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="461"/>
        <source>Mapping</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="461"/>
        <source>Planar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="461"/>
        <source>Polar</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="462"/>
        <source>Hole radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="463"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="470"/>
        <source>Angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="464"/>
        <source>Flip polar V</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="468"/>
        <source>Cylinder Wall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="472"/>
        <source>Lock arc length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="475"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="491"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="516"/>
        <source>Wall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="476"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="517"/>
        <source>Top</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="477"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="492"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="518"/>
        <source>Floor</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="481"/>
        <source>Person</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="487"/>
        <source>Horseshoe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="493"/>
        <source>Bend X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="494"/>
        <source>Bend Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="495"/>
        <source>Bend Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="497"/>
        <source>Dome</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="497"/>
        <source>Sphere</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="498"/>
        <source>U start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="499"/>
        <source>U end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="500"/>
        <source>V start</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="501"/>
        <source>V end</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="508"/>
        <source>L Shape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="522"/>
        <source>Curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="523"/>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="556"/>
        <source>Extrude</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="524"/>
        <source>Closed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="526"/>
        <source>Points</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="531"/>
        <source>Distance Measure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="532"/>
        <source>Start X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="533"/>
        <source>Start Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="534"/>
        <source>Start Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="535"/>
        <source>End X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="536"/>
        <source>End Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="537"/>
        <source>End Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="541"/>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="542"/>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="543"/>
        <source>Label offset X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="544"/>
        <source>Label offset Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="545"/>
        <source>Label offset Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="546"/>
        <source>Circle scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="547"/>
        <source>Label scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="548"/>
        <source>Label scale X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="549"/>
        <source>Label scale Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="550"/>
        <source>Font scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="554"/>
        <source>DXF Mesh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="555"/>
        <source>Line thickness</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="560"/>
        <source>OBJ Mesh</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="564"/>
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="576"/>
        <source>Projector</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="576"/>
        <source>Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="577"/>
        <source>Resolution width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="578"/>
        <source>Resolution height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="579"/>
        <source>Throw ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="580"/>
        <source>Lens shift X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="581"/>
        <source>Lens shift Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="582"/>
        <source>Flip horizontal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="583"/>
        <source>Flip vertical</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="584"/>
        <source>Rotate 180°</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="585"/>
        <source>Show frustum</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="586"/>
        <source>Show name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="587"/>
        <source>Show info text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="590"/>
        <source>Projection visible</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="592"/>
        <source>Projection opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="595"/>
        <source>Colour</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="597"/>
        <source>Projected Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="598"/>
        <source>Guide object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="599"/>
        <source>Object %1 (not a guide)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="606"/>
        <source>Pixel Footprint</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="607"/>
        <source>Heat map</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="608"/>
        <source>Grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="609"/>
        <source>Labels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="610"/>
        <source>Automatic range</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="612"/>
        <source>Heat map opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="616"/>
        <source>Grid step</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="617"/>
        <source>Metric</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>Larger of U and V</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>U (horizontal)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>V (vertical)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ScenePropertyPanel.cpp" line="618"/>
        <source>Area (√(U×V))</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SceneTexts</name>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="18"/>
        <source>Viewport Controls</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="23"/>
        <source>Mouse Wheel: Zoom</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="24"/>
        <source>P: Perspective View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="25"/>
        <source>V: Projector View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="26"/>
        <source>I: Toggle Projector Frustum</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="27"/>
        <source>X: Toggle Local/World Handles</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="28"/>
        <source>Alt + Left Drag: Orbit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="29"/>
        <source>Alt + Middle Drag: Pan</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="30"/>
        <source>Alt + Right Drag: Dolly</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="31"/>
        <source>F: Frame Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="34"/>
        <source>Perspective</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="35"/>
        <source>Front</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="36"/>
        <source>Side</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="40"/>
        <source>%1 View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="45"/>
        <source>Click points on the y=0 plane. Right-click or Esc to finish.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="50"/>
        <source>VantreoGuide 3D object copy (%1 object%2)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="55"/>
        <source>Copied %1 3D object%2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="58"/>
        <source>No 3D objects were copied.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="59"/>
        <source>Select a 3D object to copy.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="63"/>
        <source>Pasted %1 3D object%2.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="66"/>
        <source>Delete 3D Object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="72"/>
        <source>%1 objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="76"/>
        <source>selected object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="77"/>
        <source>Delete &quot;%1&quot; from the 3D View?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="83"/>
        <source>The Projector Calibration window will close because its projector &quot;%1&quot; is being deleted.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneTexts.cpp" line="85"/>
        <source>Projector Calibration windows will close because their projectors are being deleted.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>SceneWidget</name>
    <message>
        <location filename="../scene/ui/SceneWidget.cpp" line="791"/>
        <source>Select a projector or camera to look through.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/SceneWidget.cpp" line="1217"/>
        <source>The 3D view could not start.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ThreeDViewTab</name>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="52"/>
        <source>Objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="117"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="207"/>
        <source>Add</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="125"/>
        <source>Move (W)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="125"/>
        <source>Rotate (E)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="125"/>
        <source>Scale (R)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="132"/>
        <source>Local Axes (X)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="135"/>
        <source>Snap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="140"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="188"/>
        <source>View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="141"/>
        <source>Perspective (P)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="142"/>
        <source>Front</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="143"/>
        <source>Side</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="144"/>
        <source>Projector View (V)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="146"/>
        <source>Select a projector or camera to look through.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="148"/>
        <source>Frame Selection (F)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="150"/>
        <source>Save Camera View...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="152"/>
        <source>Save Camera View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="152"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="153"/>
        <source>View %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="157"/>
        <source>Camera Views</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="162"/>
        <source>No saved camera views</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="166"/>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="172"/>
        <source>Show Objects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="175"/>
        <source>Show Grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="178"/>
        <source>Show All Projector Frusta</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="181"/>
        <source>Show OBJ Polygon Lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="184"/>
        <source>Show Viewport Controls</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="193"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="199"/>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="194"/>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="195"/>
        <source>Paste</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="196"/>
        <source>Duplicate</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="197"/>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="213"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <source>Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="214"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="419"/>
        <source>Circle Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="215"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="425"/>
        <source>Cylinder Wall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="216"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="431"/>
        <source>Dome</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="217"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="437"/>
        <source>Sphere</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="218"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="443"/>
        <source>Horseshoe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="219"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="450"/>
        <source>L Shape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="220"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="456"/>
        <source>Person</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="221"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="462"/>
        <source>Projector</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="222"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="468"/>
        <source>Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="223"/>
        <source>Curve</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="224"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="478"/>
        <source>Distance Measure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="225"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="482"/>
        <source>Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="226"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <source>Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="227"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="519"/>
        <source>Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <source>Add Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="420"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="444"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="451"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="500"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="520"/>
        <source>Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="415"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="420"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="426"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="432"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="438"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="444"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="451"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="457"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="500"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="520"/>
        <source>Height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="419"/>
        <source>Add Circle Plane</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="421"/>
        <source>Hole radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="425"/>
        <source>Add Cylinder Wall</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="426"/>
        <source>Arc length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="427"/>
        <source>Angle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="431"/>
        <source>Add Dome</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="432"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="438"/>
        <source>Radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="433"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="439"/>
        <source>Segments around</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="433"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="439"/>
        <source>Segments up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="437"/>
        <source>Add Sphere</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="443"/>
        <source>Add Horseshoe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="444"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="451"/>
        <source>Depth</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="445"/>
        <source>Bend radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="445"/>
        <source>U lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="446"/>
        <source>V lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="446"/>
        <source>Round lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="450"/>
        <source>Add L Shape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="452"/>
        <source>Corner radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="456"/>
        <source>Add Person</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="457"/>
        <source>Width (0 = from height)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="462"/>
        <source>Add Projector</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="463"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="469"/>
        <source>Body width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="463"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="469"/>
        <source>Body height</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="464"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="470"/>
        <source>Body depth</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="468"/>
        <source>Add Camera</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="478"/>
        <source>Add Distance Measure</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="478"/>
        <source>Length</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="485"/>
        <source>Add Comment</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="485"/>
        <source>Comment text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="495"/>
        <source>Guide 1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="497"/>
        <source>Add Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="499"/>
        <source>Guide tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="511"/>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="519"/>
        <source>Add Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../scene/ui/ThreeDViewTab.cpp" line="512"/>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All files (*)</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
