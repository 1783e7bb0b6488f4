<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>GuideExportAll</name>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="38"/>
        <source>The folder &quot;%1&quot; does not exist.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="43"/>
        <source>Exporting guides...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="43"/>
        <source>Cancel</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="44"/>
        <location filename="../app/GuideExportAll.cpp" line="93"/>
        <location filename="../app/GuideExportAll.cpp" line="98"/>
        <source>Export All Guides</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="63"/>
        <source>Could not export &quot;%1&quot;: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="93"/>
        <source>There are no guide tabs to export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="109"/>
        <source>Export failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GuideExportAll.cpp" line="113"/>
        <source>Exported %1 guide images to %2</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GuidePreviewWidget</name>
    <message>
        <location filename="../guide/ui/GuidePreviewWidget.cpp" line="373"/>
        <source>Rendering...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GuideTab</name>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="165"/>
        <location filename="../guide/ui/GuideTab.cpp" line="543"/>
        <source>Layers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="202"/>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="204"/>
        <location filename="../guide/ui/GuideTab.cpp" line="205"/>
        <location filename="../guide/ui/GuideTab.cpp" line="413"/>
        <source> mm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="208"/>
        <location filename="../guide/ui/GuideTab.cpp" line="302"/>
        <source>Real Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="209"/>
        <location filename="../guide/ui/GuideTab.cpp" line="210"/>
        <location filename="../guide/ui/GuideTab.cpp" line="246"/>
        <source> px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="215"/>
        <source>Pixel Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="216"/>
        <source>Fixed Ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="217"/>
        <source>Keep the pixel size in the aspect ratio of the real size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="218"/>
        <source>Multiple of 4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="219"/>
        <source>Keep the pixel width and height multiples of 4</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="230"/>
        <source>Grid</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="236"/>
        <source>Rows × Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="237"/>
        <source>Auto Columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="238"/>
        <source>Columns follow from the rows and the aspect ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="239"/>
        <source>Real Square</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="240"/>
        <source>Square cells of a fixed pixel size decide rows and columns</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="248"/>
        <source>Square Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="256"/>
        <source>Color and Numbers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="260"/>
        <source>Default</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="261"/>
        <source>Vantreo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="262"/>
        <source>Color Style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="265"/>
        <source>Row-Col</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="266"/>
        <source>Col-Row</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="267"/>
        <source>Korean Cell Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="268"/>
        <source>English Cell Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="269"/>
        <source>Number Format</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="270"/>
        <source>Randomize Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="272"/>
        <source>Reset Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="274"/>
        <source>Return every cell to the colour style</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="279"/>
        <source>Invert X</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="280"/>
        <source>Invert Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="289"/>
        <source>Display</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="294"/>
        <source>Cell Numbers</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="295"/>
        <source>Cell Boundaries</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="296"/>
        <source>Inner Lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="297"/>
        <source>Center Lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="298"/>
        <source>Cross Lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="299"/>
        <source>Circles</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="300"/>
        <source>Outline</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="301"/>
        <source>Resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="303"/>
        <source>Square Status</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="304"/>
        <source>Width Dimension</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="305"/>
        <source>Height Dimension</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="306"/>
        <location filename="../guide/ui/GuideTab.cpp" line="324"/>
        <source>Description</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="307"/>
        <source>Final Resolution Info</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="317"/>
        <source>Text</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="321"/>
        <source>Description shown on the guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="327"/>
        <source>Font Scale</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="331"/>
        <source>Logo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="333"/>
        <source>Show Logo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="337"/>
        <source>Built-in logo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="339"/>
        <source>...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="340"/>
        <source>Choose a logo image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="342"/>
        <source>Reset</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="343"/>
        <source>Use the built-in logo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="349"/>
        <source>Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="358"/>
        <source>Opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="362"/>
        <source>Orientation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="365"/>
        <source>Flip Horizontal</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="366"/>
        <source>Rotate 90°</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="373"/>
        <source>Document Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="375"/>
        <source>Show Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="376"/>
        <source>Custom Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="384"/>
        <source>Tab title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="385"/>
        <source>Title</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="388"/>
        <source>Background</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="392"/>
        <source>Projector Layout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="394"/>
        <source>Display Projector Info</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="400"/>
        <source>Projectors across</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="401"/>
        <source>Projectors down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="402"/>
        <source>Array</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="408"/>
        <source>Projector Resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="409"/>
        <source>Resolution (px)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="412"/>
        <location filename="../guide/ui/GuideTab.cpp" line="421"/>
        <source>Throw Ratio</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="415"/>
        <location filename="../guide/ui/GuideTab.cpp" line="422"/>
        <source>Throw Distance</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="418"/>
        <source>Minimum Overlap</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="423"/>
        <source>Layout Basis</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="424"/>
        <source>Auto Layout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="425"/>
        <source>Calculate Effective Resolution</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="426"/>
        <source>Floor Projection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="427"/>
        <source>Vertical Projection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="443"/>
        <source>Apply Projector Layout</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="481"/>
        <source>Fit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="481"/>
        <source>Fit the guide into the view (double-click, F)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="482"/>
        <source>100%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="482"/>
        <source>One guide pixel per screen pixel (1)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="483"/>
        <source>Zoom out (-)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="484"/>
        <source>Zoom in (+)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="492"/>
        <source>Save As Default</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="494"/>
        <source>Use this guide&apos;s style for new guides</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="495"/>
        <location filename="../guide/ui/GuideTab.cpp" line="1001"/>
        <source>Export PNG</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="833"/>
        <source>Guide Image size is calculated automatically. Turn off Calculate Effective Resolution to edit W/H.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="843"/>
        <source>%1 × %2 cells of %3 × %4 px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="859"/>
        <source>%1 × %2 projectors, overlap %3 % × %4 %</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="863"/>
        <source>Throw distance %1 mm at throw ratio %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="865"/>
        <source>Image per projector %1 × %2 mm</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="867"/>
        <source>Effective resolution %1 × %2 px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="871"/>
        <source>Projector resolution differs from the guide: %1 px per projector vertically, %2 px in the guide.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="968"/>
        <source>Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="988"/>
        <source>The guide image could not be created (%1 x %2 px).</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1002"/>
        <source>PNG Image (*.png)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1013"/>
        <source>Export failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1016"/>
        <source>Exported %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1024"/>
        <location filename="../guide/ui/GuideTab.cpp" line="1027"/>
        <source>Save Style Default</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1025"/>
        <source>Saved style default:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1027"/>
        <source>Failed to save style default:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1037"/>
        <source>Choose Logo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1038"/>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.svg *.webp);;All Files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/GuideTab.cpp" line="1048"/>
        <source>Title Background</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>LayerListWidget</name>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="100"/>
        <source>Image...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="100"/>
        <source>Add an image layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="101"/>
        <source>Mask</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="101"/>
        <source>Add a mask layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="104"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="271"/>
        <source>Rectangle Mask</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="105"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="271"/>
        <source>Circle Mask</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="107"/>
        <source>Up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="107"/>
        <source>Move the layer up</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="108"/>
        <source>Down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="108"/>
        <source>Move the layer down</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="109"/>
        <source>Remove</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="109"/>
        <source>Remove the layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="131"/>
        <source>Name</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="139"/>
        <source>Opacity</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="143"/>
        <source>Centre X in guide pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="144"/>
        <source>Centre Y in guide pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="147"/>
        <source>Position</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="151"/>
        <source>Width in guide pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="152"/>
        <source>Height in guide pixels</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="155"/>
        <source>Size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="159"/>
        <source>100%</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="160"/>
        <source>Restore the layer&apos;s original size</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="163"/>
        <source>Rotation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="173"/>
        <source>Crop from the left, percent of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="174"/>
        <source>Crop from the top, percent of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="175"/>
        <source>Crop from the right, percent of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="176"/>
        <source>Crop from the bottom, percent of the image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="177"/>
        <source>L</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="179"/>
        <source>T</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="181"/>
        <source>R</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="183"/>
        <source>B</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="185"/>
        <source>Crop</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="192"/>
        <source>Rectangle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="193"/>
        <source>Circle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="194"/>
        <source>Shape</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="196"/>
        <source>Color</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="197"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="213"/>
        <source> px</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="198"/>
        <source>Corner Radius</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="199"/>
        <source>Inverse (mask outside)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="201"/>
        <source>Wireframe</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="212"/>
        <source>U / V Lines</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="214"/>
        <source>Line Width</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="217"/>
        <source>Add an image or a mask, then drag it in the preview: the corners scale it, the round handle turns it.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="273"/>
        <source>Image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="293"/>
        <source>Mask layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="409"/>
        <source>Could not read the image &quot;%1&quot;: %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="523"/>
        <location filename="../guide/ui/LayerListWidget.cpp" line="530"/>
        <source>Add Image Layer</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="524"/>
        <source>Images (*.png *.jpg *.jpeg *.bmp *.tif *.tiff *.webp);;All Files (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../guide/ui/LayerListWidget.cpp" line="537"/>
        <source>Mask Color</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
