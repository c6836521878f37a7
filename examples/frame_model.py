"""Fits a camera to a model from every ready view and tells where the parts lie in the picture.

usage: frame_model.py MODEL [WIDTH HEIGHT]
"""

import sys

import ktsovu

VIEWS = (ktsovu.FRONT, ktsovu.TOP, ktsovu.RIGHT, ktsovu.ISOMETRIC)


def color_of(number, count):
    """Colours around the circle of hues."""
    return ktsovu.Color.fromHSV(hue=number / count, saturation=0.6, value=0.9)


def main(path, width, height):
    parts = ktsovu.readModel(path)
    model = ktsovu.BBox()
    for part in parts:
        model.add(part.box)

    camera = ktsovu.Camera()
    camera.makeParallel()
    for view in VIEWS:
        camera.fit(model, view)
        camera.fitDevice(width, height)
        print(f"{view}: {camera}")
        for number, part in enumerate(parts):
            x, y, depth = camera.project(part.box.center)
            color = color_of(number, len(parts))
            pixel = f"({round(x * width)}, {round((1 - y) * height)})"
            print(f"    {part.name:32} pixel {pixel:>12}  depth {depth:+.3f}  {color}")


if __name__ == "__main__":
    if len(sys.argv) not in (2, 4):
        sys.exit("usage: frame_model.py MODEL [WIDTH HEIGHT]")
    width, height = map(int, sys.argv[2:4]) if len(sys.argv) == 4 else (1280, 720)
    main(sys.argv[1], width, height)
