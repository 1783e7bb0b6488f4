<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>TabViewDocument</name>
    <message>
        <source>There are no tab views to export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not encode slide image %1.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not create PDF writer.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF export failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not open %1 for writing.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not write %1 into PPTX.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Could not finalize PPTX file.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>TabViewDocuments</name>
    <message>
        <source>Creating document...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tab %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>3D Simulation</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Tab Views</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>There are no tab views to export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Tab Views to PDF</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Tab Views to PPTX</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF Files (*.pdf)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PowerPoint Files (*.pptx)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF export failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PPTX export failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tab views exported to PDF: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Tab views exported to PPTX: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export complete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PDF saved successfully.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PowerPoint saved successfully.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>Exporters</name>
    <message>
        <source>PDF Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>PowerPoint Files</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Tab Views to PDF...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <source>Export Tab Views to PPTX...</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
