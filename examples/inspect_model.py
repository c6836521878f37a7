"""Prints the parts of a model with their triangles and boxes, computed here vertex by vertex.

usage: inspect_model.py MODEL

It is what 'ktsovu inspect MODEL' prints; start from it for a table of your own.
"""

import sys

import ktsovu


def box_of(part):
    """The box of the vertices that triangles use, in model space."""
    vertices = part.vertices()
    box = ktsovu.BBox()
    for triangle in part.triangles():
        for vertex in triangle:
            box.add(vertices[vertex])
    return box


def main(path):
    parts = ktsovu.readModel(path)
    total = ktsovu.BBox()
    print(f"{'part':32} {'triangles':>9}  {'diagonal':>12}  centre")
    for part in parts:
        box = box_of(part)
        total.add(box)
        x, y, z = box.center
        print(f"{part.name:32} {part.triangleCount:9}  {box.diagonal:12.6g}  ({x:.6g}, {y:.6g}, {z:.6g})")
    triangles = sum(part.triangleCount for part in parts)
    print(f"{len(parts)} parts, {triangles} triangles, from {total.low} to {total.high}")


if __name__ == "__main__":
    if len(sys.argv) != 2:
        sys.exit("usage: inspect_model.py MODEL")
    try:
        main(sys.argv[1])
    except ktsovu.CorvixError as error:
        sys.exit(f"inspect_model.py: {error}")
