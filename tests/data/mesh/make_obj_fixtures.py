#!/usr/bin/python3
"""Writes the OBJ fixtures of the mesh import tests. Run from this folder:
/usr/bin/python3 make_obj_fixtures.py   (needs assimp-utils and python3-opencv)

shapes.obj          written here: a quad, a concave L-shaped hexagon, a triangle with
                    negative (relative) indices, v//vn and v/vt faces, faces without
                    normals, and bad faces (index past the end, index 0, a NaN vertex and
                    a 1e300 vertex) on the lines listed in BAD_FACE_LINES.
textured_src.obj    written here: a 2 x 1 m quad with texture coordinates and a material
                    library whose map_Kd is checker.png (asymmetric: red top-left quarter).
room.ply            written here: a 6 x 3 x 4 m room box, inward faces, no normals.
room_assimp.obj     `assimp export room.ply room_assimp.obj` (Assimp writes it).
textured_assimp.obj `assimp export textured_src.obj textured_assimp.obj`, with its .mtl.
venue_room.obj      written here: an open room corner, 8 x 6 m floor with a back wall and a
                    left wall 4 m high, quads with texture coordinates and no normals.
"""
import subprocess

import cv2
import numpy as np


def shapes():
    lines = [
        "# shapes for the OBJ reader tests",
        "o shapes",
        "v 0 0 0", "v 1 0 0", "v 1 1 0", "v 0 1 0",                 # 1-4 quad
        "v 2 0 0", "v 4 0 0", "v 4 1 0", "v 3 1 0", "v 3 3 0", "v 2 3 0",  # 5-10 L shape
        "vn 0 0 1",
        "vt 0 0", "vt 1 0", "vt 1 1",
        "f 1 2 3 4",                                             # quad, no normals
        "f 5 6 7 8 9 10",                                        # concave hexagon
        "v 5 0 0", "v 6 0 0", "v 6 1 0",
        "f -3//-1 -2//-1 -1//-1",                                # relative with v//vn
        "f 11/1 12/2 13/3",                                      # v/vt
        "f 1 2 99",                                              # past the end
        "f 0 1 2",                                               # index 0
        "v nan 0 0",
        "f 1 2 -1",                                              # NaN vertex
        "v 1e300 0 0",
        "f 1 2 -1",                                              # 1e300 vertex
        "f 1 2",                                                 # too few corners
    ]
    with open("shapes.obj", "w") as f:
        f.write("\n".join(lines) + "\n")
    bad = [i + 1 for i, line in enumerate(lines) if line in ("f 1 2 99", "f 0 1 2", "f 1 2 -1", "f 1 2")]
    print("BAD_FACE_LINES", bad)


def textured():
    image = np.full((64, 128, 3), 255, np.uint8)   # white, 128 wide, 64 high (BGR)
    image[0:32, 0:64] = (0, 0, 255)                # red top-left quarter
    image[32:64, 64:128] = (255, 0, 0)             # blue bottom-right quarter
    cv2.imwrite("checker.png", image)
    with open("textured_src.mtl", "w") as f:
        f.write("newmtl unused\nKd 1 1 1\nmap_Kd missing.png\n\n")
        f.write("newmtl checker\nKd 1 1 1\nmap_Kd -s 1 1 1 checker.png\n")
    with open("textured_src.obj", "w") as f:
        f.write("mtllib textured_src.mtl\n")
        f.write("v -1 0 0\nv 1 0 0\nv 1 1 0\nv -1 1 0\n")
        f.write("vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\nvn 0 0 1\n")
        f.write("usemtl checker\nf 1/1/1 2/2/1 3/3/1 4/4/1\n")


def room_ply():
    w, h, d = 6.0, 3.0, 4.0
    verts = [(x, y, z) for x in (-w / 2, w / 2) for y in (0.0, h) for z in (-d / 2, d / 2)]
    # Index = 4*ix + 2*iy + iz; quads wound to face into the room.
    quads = [(0, 1, 3, 2), (4, 6, 7, 5), (0, 4, 5, 1), (2, 3, 7, 6), (0, 2, 6, 4), (1, 5, 7, 3)]
    with open("room.ply", "w") as f:
        f.write("ply\nformat ascii 1.0\nelement vertex 8\nproperty float x\nproperty float y\n"
                "property float z\nelement face 6\nproperty list uchar int vertex_indices\nend_header\n")
        for v in verts:
            f.write("%g %g %g\n" % v)
        for q in quads:
            f.write("4 %d %d %d %d\n" % tuple(reversed(q)))


def venue_room():
    # Floor at y = 0 from x -4..4, z -3..3; back wall at z = -3; left wall at x = -4.
    with open("venue_room.obj", "w") as f:
        f.write("# venue room corner, metres\n")
        for v in [(-4, 0, 3), (4, 0, 3), (4, 0, -3), (-4, 0, -3),     # floor 1-4
                  (-4, 0, -3), (4, 0, -3), (4, 4, -3), (-4, 4, -3),   # back wall 5-8
                  (-4, 0, 3), (-4, 0, -3), (-4, 4, -3), (-4, 4, 3)]:  # left wall 9-12
            f.write("v %g %g %g\n" % v)
        f.write("vt 0 0\nvt 1 0\nvt 1 1\nvt 0 1\n")
        f.write("g floor\nf 1/1 2/2 3/3 4/4\ng back_wall\nf 5/1 6/2 7/3 8/4\ng left_wall\nf 9/1 10/2 11/3 12/4\n")


if __name__ == "__main__":
    venue_room()
    shapes()
    textured()
    room_ply()
    subprocess.run(["assimp", "export", "room.ply", "room_assimp.obj"], check=True)
    subprocess.run(["assimp", "export", "textured_src.obj", "textured_assimp.obj"], check=True)
