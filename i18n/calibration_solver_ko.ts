<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="ko_KR">
<context>
    <name>ProjectorCalibration</name>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="20"/>
        <source>Select a projector before calibration.</source>
        <translation>캘리브레이션 전에 프로젝터를 선택하세요.</translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="25"/>
        <source>Projector Calibration can only be applied to projector objects.</source>
        <translation>프로젝터 캘리브레이션은 프로젝터 오브젝트에만 적용할 수 있습니다.</translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="30"/>
        <source>Projector Calibration needs at least 6 matched points.</source>
        <translation>프로젝터 캘리브레이션에는 최소 6개의 매칭 포인트가 필요합니다.</translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="35"/>
        <source>Calibration failed because the matched points did not produce a valid camera solve.</source>
        <translation>매칭 포인트로 유효한 카메라 해를 구하지 못해 캘리브레이션에 실패했습니다.</translation>
    </message>
    <message>
        <location filename="../calibration/ProjectorCalibration.cpp" line="40"/>
        <source>Calibration failed while building the numeric Jacobian.</source>
        <translation>수치 야코비안을 만드는 중에 캘리브레이션에 실패했습니다.</translation>
    </message>
</context>
</TS>
