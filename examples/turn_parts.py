"""Arranges copies of a model in a circle about the z axis and saves them in a database.

usage: turn_parts.py MODEL COUNT DATABASE

'ktsovu show DATABASE' prints the parts of the arrangement.
"""

import math
import sys

import ktsovu

Z_AXIS = (0, 0, 1)


def turned(part, turn, number):
    """The part turned about the origin, under a name of its own."""
    return ktsovu.Part(
        name=f"{part.name} {number}",
        vertices=part.vertices(),
        triangles=part.triangles(),
        placement=turn,
    )


def main(path, count, database):
    parts = ktsovu.readModel(path)
    arrangement = []
    for number in range(count):
        turn = ktsovu.Matrix.rotation(Z_AXIS, 2 * math.pi * number / count)
        arrangement += [turned(part, turn, number) for part in parts]
    ktsovu.saveParts(arrangement, database)

    overlaps = sum(
        first.box.intersects(second.box)
        for i, first in enumerate(arrangement)
        for second in arrangement[:i]
    )
    step = ktsovu.Quaternion.fromAxis(Z_AXIS, 2 * math.pi / count)
    print(f"{len(arrangement)} parts saved in {database}, each turned by {step}")
    print(f"{overlaps} pairs of boxes overlap")


if __name__ == "__main__":
    if len(sys.argv) != 4 or not sys.argv[2].isdecimal():
        sys.exit("usage: turn_parts.py MODEL COUNT DATABASE")
    main(sys.argv[1], int(sys.argv[2]), sys.argv[3])
