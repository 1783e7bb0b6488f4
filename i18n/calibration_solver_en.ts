<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US">
<context>
    <name>ProjectorCalibration</name>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="20"/>
        <source>Select a projector before calibration.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="25"/>
        <source>Projector Calibration can only be applied to projector objects.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="30"/>
        <source>Projector Calibration needs at least 6 matched points.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="35"/>
        <source>Calibration failed because the matched points did not produce a valid camera solve.</source>
        <translation type="unfinished"></translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="40"/>
        <source>Calibration failed while building the numeric Jacobian.</source>
        <translation type="unfinished"></translation>
    </message>
</context>
</TS>
