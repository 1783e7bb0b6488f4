<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>CanvasTabPanel</name>
    <message>
        <location filename="../app/TabInfoPanel.cpp" line="28"/>
        <source>Canvas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/TabInfoPanel.cpp" line="28"/>
        <source>Canvas editing is not available in this version. The canvas is kept as loaded and saved with the project.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GpuAdapter</name>
    <message>
        <location filename="../common/GpuAdapter.cpp" line="135"/>
        <source>Unknown GPU</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../common/GpuAdapter.cpp" line="139"/>
        <source>%1 GB VRAM</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../common/GpuAdapter.cpp" line="142"/>
        <source>High Performance</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>GpuSelectionDialog</name>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="13"/>
        <source>GPU Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="18"/>
        <source>Auto (High Performance GPU)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="27"/>
        <source>Unavailable GPU</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="29"/>
        <source>Selected GPU is unavailable</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="33"/>
        <source>No hardware GPU adapter was reported by the system. Auto mode will use the GPU fallback path.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/GpuSelectionDialog.cpp" line="34"/>
        <source>GPU selection requires restarting VantreoGuide. Already opened GPU previews keep using the current GPU until the program restarts.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
<context>
    <name>MainWindow</name>
    <message>
        <location filename="../app/MainWindow.cpp" line="189"/>
        <source>UI Font</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="213"/>
        <location filename="../app/MainWindow.cpp" line="403"/>
        <source>Version</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="214"/>
        <source>VantreoGuide %1
Build %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="358"/>
        <source>Vantreo Guide Generator</source>
        <translation>Vantreo Guide Generator</translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="367"/>
        <source>File</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="368"/>
        <source>New Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="369"/>
        <source>Open Project...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="370"/>
        <source>Import Project Bundle...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="371"/>
        <source>Save Project</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="372"/>
        <source>Save Project As...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="373"/>
        <source>Save Project As (with Resources)...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="374"/>
        <source>Export Project Bundle...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="375"/>
        <source>Create Portable Package...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="376"/>
        <source>Merge Project...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="377"/>
        <source>Recent Projects</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="378"/>
        <source>Export All Guides...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="379"/>
        <source>Export Tab Views to PPTX...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="380"/>
        <source>Export Tab Views to PDF...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="381"/>
        <source>Record Window...	Ctrl+Shift+R</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="383"/>
        <source>Edit</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="384"/>
        <source>Undo	Ctrl+Z</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="385"/>
        <source>Redo	Ctrl+Y</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="387"/>
        <source>Add Tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="388"/>
        <location filename="../app/TabFactory.cpp" line="20"/>
        <source>Guide</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="389"/>
        <location filename="../app/TabFactory.cpp" line="22"/>
        <source>Canvas</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="390"/>
        <location filename="../app/MainWindow.cpp" line="506"/>
        <location filename="../app/TabFactory.cpp" line="24"/>
        <source>3D View</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="392"/>
        <source>Settings</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="393"/>
        <source>GPU Selection...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="394"/>
        <source>UI Font...</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="395"/>
        <source>Reset UI Font</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="397"/>
        <source>Language</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="402"/>
        <source>Help</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="404"/>
        <source>Update</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="407"/>
        <source>Startup API: Waiting</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="408"/>
        <source>Startup API request has not been sent yet.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="411"/>
        <source>Use Add Tab or the + tab to start.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="412"/>
        <source>Add guide tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="413"/>
        <source>Version %1  Build %2</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="498"/>
        <source>Guide %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="501"/>
        <source>Canvas %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="506"/>
        <source>3D View %1</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="557"/>
        <source>Delete Tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="557"/>
        <source>Delete &quot;%1&quot;?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="557"/>
        <source>this tab</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="639"/>
        <source>Copy</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="640"/>
        <source>Delete</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="684"/>
        <source>UI scale: %1% (viewport unchanged)</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="779"/>
        <source>Unsaved Changes</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="781"/>
        <source>Save changes before starting a new project?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="782"/>
        <source>Your current project has unsaved changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="784"/>
        <source>Save changes before closing?</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="785"/>
        <source>There are unsaved changes.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="786"/>
        <source>Your program settings have changed.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="871"/>
        <source>GPU selection unchanged.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="880"/>
        <location filename="../app/MainWindow.cpp" line="903"/>
        <source>GPU Selection</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="881"/>
        <source>GPU selection was saved.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="882"/>
        <source>Restart VantreoGuide now to apply it to all GPU previews.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="883"/>
        <source>Restart Now</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="884"/>
        <source>Later</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="891"/>
        <location filename="../app/MainWindow.cpp" line="897"/>
        <source>GPU selection saved. Restart required.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../app/MainWindow.cpp" line="904"/>
        <source>VantreoGuide could not restart automatically. Please restart it manually.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
