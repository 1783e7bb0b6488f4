<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>PortablePackage</name>
    <message>
        <location filename="../project/PortablePackage.cpp" line="51"/>
        <location filename="../project/PortablePackage.cpp" line="210"/>
        <source>Could not create folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="105"/>
        <source>Could not list the libraries of:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="137"/>
        <source>Application folder was not found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="143"/>
        <source>Could not remove existing package folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="148"/>
        <source>Could not create package folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="220"/>
        <source>Could not copy external resource files:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="226"/>
        <source>Could not save sample.vgs:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/PortablePackage.cpp" line="233"/>
        <source>Could not remove generated package folder:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ProjectLifecycle</name>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="396"/>
        <source>New Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="396"/>
        <source>Initialize the program and start a new empty project?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="407"/>
        <source>Project initialized.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="413"/>
        <source>Open Vantreo project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="414"/>
        <location filename="../app/ProjectLifecycle.cpp" line="421"/>
        <source>All Supported Project Files (*.vgs *.json);;Vantreo Guide Project (*.vgs);;Legacy JSON Settings (*.json)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="420"/>
        <source>Merge Vantreo project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="427"/>
        <location filename="../app/ProjectLifecycle.cpp" line="996"/>
        <source>Load failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="432"/>
        <location filename="../app/ProjectLifecycle.cpp" line="1000"/>
        <source>Loaded project: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="438"/>
        <source>Merge failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="442"/>
        <source>Merged project: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="449"/>
        <source>Project file not found:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="453"/>
        <source>Loading project...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="453"/>
        <source>Merging project...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="454"/>
        <source>Reading settings JSON...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="480"/>
        <source>Preparing tabs...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="482"/>
        <source>Cleared existing tabs...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="524"/>
        <source>Merging guide tab %1 of %2...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="524"/>
        <source>Loading guide tab %1 of %2...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="534"/>
        <source>Merging Canvas tab %1 of %2...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="534"/>
        <source>Loading Canvas tab %1 of %2...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="543"/>
        <source>Merging 3D View %1 of %2...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="543"/>
        <source>Restoring 3D View %1 of %2...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="555"/>
        <source>Restoring active guide...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="560"/>
        <source>Updating 3D View controls...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="565"/>
        <source>Finalizing load...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="579"/>
        <source>Updating loaded views...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="585"/>
        <source>Updating merged views...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="602"/>
        <location filename="../app/ProjectLifecycle.cpp" line="623"/>
        <location filename="../app/ProjectLifecycle.cpp" line="631"/>
        <location filename="../app/ProjectLifecycle.cpp" line="680"/>
        <source>Save failed</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="602"/>
        <location filename="../app/ProjectLifecycle.cpp" line="623"/>
        <source>No guide settings to save.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="607"/>
        <location filename="../app/ProjectLifecycle.cpp" line="613"/>
        <location filename="../app/ProjectLifecycle.cpp" line="649"/>
        <source>Save Vantreo project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="607"/>
        <location filename="../app/ProjectLifecycle.cpp" line="650"/>
        <source>Vantreo Guide Project (*)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="613"/>
        <location filename="../app/ProjectLifecycle.cpp" line="655"/>
        <location filename="../app/ProjectLifecycle.cpp" line="789"/>
        <location filename="../app/ProjectLifecycle.cpp" line="920"/>
        <source>%1 already exists.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="631"/>
        <location filename="../app/ProjectLifecycle.cpp" line="680"/>
        <source>Could not save project: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="638"/>
        <source>Saved project: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="645"/>
        <location filename="../app/ProjectLifecycle.cpp" line="654"/>
        <location filename="../app/ProjectLifecycle.cpp" line="662"/>
        <source>Save Project As (with Resources)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="645"/>
        <location filename="../app/ProjectLifecycle.cpp" line="665"/>
        <source>No project data to save.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="686"/>
        <source>Project saved:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="697"/>
        <location filename="../app/ProjectLifecycle.cpp" line="721"/>
        <location filename="../app/ProjectLifecycle.cpp" line="738"/>
        <source>Project backup failed: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="722"/>
        <source>Could not create project backup directory: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="742"/>
        <source>Project backup saved: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="767"/>
        <source>(No recent projects)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="797"/>
        <location filename="../app/ProjectLifecycle.cpp" line="808"/>
        <source>Export Project Bundle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="799"/>
        <location filename="../app/ProjectLifecycle.cpp" line="811"/>
        <source>No project data to export.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="802"/>
        <location filename="../app/ProjectLifecycle.cpp" line="859"/>
        <source>Vantreo Guide Project Bundle (*.zip)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="825"/>
        <source>Could not create export folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="832"/>
        <source>Could not create source folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="838"/>
        <source>Could not copy external resource files:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="843"/>
        <source>Could not save project file:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="846"/>
        <location filename="../app/ProjectLifecycle.cpp" line="970"/>
        <source>Creating ZIP package...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="851"/>
        <source>Project bundle created:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="852"/>
        <source>Project bundle created: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="858"/>
        <location filename="../app/ProjectLifecycle.cpp" line="880"/>
        <source>Import Project Bundle</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="863"/>
        <location filename="../app/ProjectLifecycle.cpp" line="882"/>
        <source>Project bundle file not found:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="867"/>
        <location filename="../app/ProjectLifecycle.cpp" line="886"/>
        <source>Selected file is not a ZIP project bundle:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="871"/>
        <source>Choose Import Folder</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="907"/>
        <source>No project file was found in the selected project bundle:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="924"/>
        <source>Importing project bundle...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="931"/>
        <source>The project file listed in the bundle was not extracted:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="936"/>
        <source>Project bundle imported:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="937"/>
        <source>Imported project bundle: %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="945"/>
        <location filename="../app/ProjectLifecycle.cpp" line="956"/>
        <source>Create Portable Package</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="947"/>
        <location filename="../app/ProjectLifecycle.cpp" line="960"/>
        <source>No project data to package.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="950"/>
        <source>ZIP Archive (*.zip)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="977"/>
        <source>Portable package created:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/ProjectLifecycle.cpp" line="978"/>
        <source>Portable package created: %1</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ResourceCollector</name>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="18"/>
        <source>Guide logo</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="19"/>
        <source>Guide image object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="20"/>
        <source>Canvas image object</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="21"/>
        <source>Object texture</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="22"/>
        <source>Projection image</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="87"/>
        <source>Could not create folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="92"/>
        <source>Could not replace file:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="97"/>
        <source>Could not copy:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="111"/>
        <source>Resource folder is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="118"/>
        <source>Could not create resource folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="171"/>
        <source>No external resource files were found.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="173"/>
        <source>Resource folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="175"/>
        <source>Missing files:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ResourceCollector.cpp" line="179"/>
        <source>Failed files:</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>ZipArchive</name>
    <message>
        <location filename="../project/ZipArchive.cpp" line="87"/>
        <source>ZIP file path is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="92"/>
        <source>Could not replace ZIP file:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="100"/>
        <location filename="../project/ZipArchive.cpp" line="105"/>
        <location filename="../project/ZipArchive.cpp" line="110"/>
        <source>ZIP compression failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="114"/>
        <source>ZIP file was not created:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="149"/>
        <location filename="../project/ZipArchive.cpp" line="163"/>
        <source>Package folder does not exist:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="153"/>
        <source>Package folder is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="181"/>
        <location filename="../project/ZipArchive.cpp" line="199"/>
        <source>Project bundle ZIP was not found:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="203"/>
        <source>Import folder is empty.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="207"/>
        <location filename="../project/ZipArchive.cpp" line="233"/>
        <location filename="../project/ZipArchive.cpp" line="243"/>
        <source>Could not create import folder:</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="212"/>
        <location filename="../project/ZipArchive.cpp" line="248"/>
        <location filename="../project/ZipArchive.cpp" line="265"/>
        <source>ZIP extraction failed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="222"/>
        <source>ZIP extraction failed.
The entry &quot;%1&quot; would be written outside the import folder.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="239"/>
        <source>ZIP extraction failed.
The file already exists:
%1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../project/ZipArchive.cpp" line="283"/>
        <source>ZIP inspection failed.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
