#!/usr/bin/python3
"""Writes the DXF fixtures of the mesh import tests with ezdxf (Debian's python3-ezdxf),
a writer this project did not write. Run from this folder: /usr/bin/python3 make_dxf_fixtures.py

plan_r2018.dxf   every entity kind in metres: a LINE, closed and open LWPOLYLINEs, a closed
                 2D POLYLINE, an open 3D POLYLINE, a CIRCLE, an ARC across 0 degrees, a TEXT
                 (skipped), and a block with a far-away LINE that is never inserted.
plan_r12.dxf     the same drawing in R12 (no LWPOLYLINE there, no $INSUNITS), with the
                 ANSI_1252 code page and a layer name outside ASCII.
plan_crlf.dxf    plan_r2018.dxf with CRLF line ends.
units/NN.dxf     one LINE from (0,0) to (1,0) per $INSUNITS code 0..24, 25 and 99.
floor_plan.dxf   a venue floor plan in millimetres: 8 x 6 m walls 200 mm thick, a door
                 with its swing arc, two round columns and a stage edge.
"""
import os
import ezdxf


def draw(msp, lwpolylines=True):
    msp.add_line((0, 0, 0), (10, 0, 0))                          # bottom edge, x 0..10
    if lwpolylines:
        msp.add_lwpolyline([(0, 0), (10, 0), (10, 6), (0, 6)], close=True)
        msp.add_lwpolyline([(2, 2), (3, 2), (3, 3)], close=False)
    else:
        msp.add_polyline2d([(0, 0), (10, 0), (10, 6), (0, 6)], close=True)
        msp.add_polyline2d([(2, 2), (3, 2), (3, 3)], close=False)
    msp.add_polyline2d([(5, 1), (6, 1), (6, 2)], close=True)
    msp.add_polyline3d([(7, 1, 0), (8, 1, 0.5), (8, 2, 1.0)])    # rises to z = 1
    msp.add_circle((5, 3), radius=1)
    msp.add_arc((5, 3), radius=2, start_angle=350, end_angle=10)  # across 0 degrees
    msp.add_text("ROOM")


def block_never_inserted(doc):
    block = doc.blocks.new(name="FAR_AWAY")
    block.add_line((1000, 1000), (2000, 2000))


def plan_r2018():
    doc = ezdxf.new("R2018")
    doc.header["$INSUNITS"] = 6  # metres
    block_never_inserted(doc)
    draw(doc.modelspace())
    doc.saveas("plan_r2018.dxf")


def plan_r12():
    doc = ezdxf.new("R12")
    doc.header["$DWGCODEPAGE"] = "ANSI_1252"
    doc.layers.add("Grundriß_Wände")
    doc.encoding = "cp1252"
    block_never_inserted(doc)
    msp = doc.modelspace()
    draw(msp, lwpolylines=False)
    msp.add_line((0, 6), (10, 6), dxfattribs={"layer": "Grundriß_Wände"})
    doc.saveas("plan_r12.dxf", encoding="cp1252")


def plan_crlf():
    with open("plan_r2018.dxf", "rb") as f:
        data = f.read().replace(b"\r\n", b"\n").replace(b"\n", b"\r\n")
    with open("plan_crlf.dxf", "wb") as f:
        f.write(data)


def units():
    os.makedirs("units", exist_ok=True)
    for code in list(range(0, 25)) + [25, 99]:
        doc = ezdxf.new("R2018")
        doc.header["$INSUNITS"] = code
        doc.modelspace().add_line((0, 0), (1, 0))
        doc.saveas(os.path.join("units", "%02d.dxf" % code))


def floor_plan():
    doc = ezdxf.new("R2018")
    doc.header["$INSUNITS"] = 4  # millimetres
    msp = doc.modelspace()
    msp.add_lwpolyline([(0, 0), (8000, 0), (8000, 6000), (0, 6000)], close=True)
    # Inner wall face with the door opening (900 mm) in the front wall, 1000 mm from the left.
    msp.add_lwpolyline([(1200, 200), (7800, 200), (7800, 5800), (200, 5800), (200, 200), (300, 200)])
    msp.add_line((300, 200), (300, 1100))                                   # door leaf, open
    msp.add_arc((300, 200), radius=900, start_angle=0, end_angle=90)        # door swing
    for x in (2500, 5500):
        msp.add_circle((x, 3000), radius=250)                               # columns
    msp.add_lwpolyline([(1500, 4300), (6500, 4300), (6500, 5800)])           # stage edge
    doc.saveas("floor_plan.dxf")


if __name__ == "__main__":
    floor_plan()
    plan_r2018()
    plan_r12()
    plan_crlf()
    units()
