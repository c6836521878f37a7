"""The library's values as scripts use them: what they compute, how they show and compare."""

import copy
import inspect
import math
import pickle
import unittest

import ktsovu
from ktsovu import BBox, Camera, Color, Matrix, Point, Quaternion, Vector


class Values(unittest.TestCase):
    def test_show_as_what_a_script_would_write(self):
        for text in (
            "Point(1.0, -2.5, 1e-07)",
            "Vector(0.0, 0.0, 1.0)",
            "BBox()",
            "BBox(Point(0.0, 0.0, 0.0), Point(1.0, 2.0, 3.0))",
            "Quaternion(0.0, 0.0, 0.0, 1.0)",
            "Color.fromRGB(65535, 0, 257)",
            "Matrix(((1.0, 0.0, 0.0, 2.0), (0.0, 1.0, 0.0, 0.0), (0.0, 0.0, 1.0, 0.0),"
            " (0.0, 0.0, 0.0, 1.0)))",
        ):
            value = eval(text)
            self.assertEqual(repr(value), text)
            self.assertEqual(str(value), text)
            self.assertEqual(value, eval(text))
            self.assertEqual(value, copy.deepcopy(value))
            self.assertNotEqual(value, text)
            with self.assertRaises(TypeError):
                hash(value)

    def test_take_keywords_and_three_numbers_for_points_and_vectors(self):
        origin = Point(0, 0, 0)
        self.assertEqual(Point(z=3, x=1, y=2.0), Point(1, 2, 3))
        for place in (Point(3, 4, 0), (3, 4, 0), [3, 4.0, 0], ktsovu.array([3, 4, 0])):
            self.assertEqual(origin.distance(place), 5.0)
            self.assertEqual(origin.distance(point=place), 5.0)
        x, y, z = Vector(7, 8, 9)
        self.assertEqual((x, y, z), (7.0, 8.0, 9.0))
        self.assertEqual(Vector(7, 8, 9)[-1], 9.0)
        self.assertEqual(len(Quaternion(0, 0, 0, 1)), 4)
        with self.assertRaises(IndexError):
            origin[3]

    def test_compute_by_operators(self):
        a, b = Point(1, 2, 3), Point(4, 6, 8)
        self.assertEqual(b - a, Vector(3, 4, 5))
        self.assertEqual(a + (b - a), b)
        self.assertEqual(b - Vector(3, 4, 5), a)
        self.assertEqual(2 * Vector(1, 2, 3) - Vector(1, 2, 3) * 1.5, Vector(0.5, 1, 1.5))
        for wrong in (lambda: a + b, lambda: a * 2, lambda: Vector(1, 2, 3) * True, lambda: a - 1):
            with self.assertRaises(TypeError):
                wrong()

    def test_turn_points_by_matrices_and_quaternions_alike(self):
        axis, angle = Vector(1, 2, 3), 0.7
        matrix = Matrix.rotation(axis, angle)
        point = matrix * Point(4, -5, 6)
        x, y, z = (math.fsum(a * b for a, b in zip(row, (4, -5, 6, 1))) for row in matrix.rows[:3])
        self.assertEqual(point, Point(x, y, z))
        self.assertEqual(matrix.inverse() * point, Point(4, -5, 6))
        self.assertTrue((matrix * matrix.inverse()).isIdentity)
        self.assertFalse(matrix.isIdentity)
        got_axis, got_angle = matrix.axisAndAngle()
        self.assertEqual(got_axis, axis.unit())
        self.assertAlmostEqual(got_angle, angle)
        quaternion = Quaternion.fromAxis(axis, angle)
        for ours, theirs in zip(quaternion, Quaternion.fromMatrix(matrix)):
            self.assertAlmostEqual(ours, theirs)
        self.assertEqual(quaternion.rotationVector(), axis.unit() * angle)
        self.assertAlmostEqual((quaternion * quaternion.inverse()).w, 1)
        shift = Matrix.translation((1, 0, 0))
        self.assertEqual(shift * matrix * Point(0, 0, 0), Point(1, 0, 0))
        self.assertEqual(shift * Vector(1, 1, 1), Vector(1, 1, 1))
        self.assertEqual(Matrix(rows=shift.rows).origin, Point(1, 0, 0))

    def test_grow_boxes(self):
        box = BBox()
        self.assertTrue(box.isEmpty)
        self.assertEqual(box.diagonal, -1.0)
        box.add(Point(1, 1, 1))
        box.add(item=(0, 0, 0))
        box.add(BBox((0, 0, 0), (0, 3, 0)))
        self.assertEqual(box, BBox(low=(0, 0, 0), high=(1, 3, 1)))
        self.assertEqual(box.center, Point(0.5, 1.5, 0.5))
        self.assertTrue(box.contains((1, 3, 1)))
        self.assertFalse(box.contains(BBox((0, 0, 0), (1, 3, 2))))
        self.assertTrue(box.intersects(BBox((1, 3, 1))))
        self.assertEqual(box.transformed(Matrix.translation((1, 0, 0))).low, Point(1, 0, 0))
        kept = box.copy()
        box.add((9, 9, 9))
        self.assertNotEqual(box, kept)

    def test_see_a_box_from_every_side(self):
        camera = Camera()
        camera.makeParallel()
        box = BBox((-1, -1, -1), (3, 2, 1))
        for view in ("FRONT", "BACK", "TOP", "BOTTOM", "RIGHT", "LEFT", "ISOMETRIC"):
            camera.fit(box, getattr(ktsovu, view))
            same = Camera()
            same.makeParallel()
            same.fit(box=box, view=view)
            self.assertEqual(camera, same)
            self.assertEqual(camera.target, box.center)
            for corner in (box.low, box.high):
                x, y, depth = camera.project(corner)
                self.assertTrue(0 < x < 1 and 0 < y < 1 and -1 < depth < 1, (view, x, y, depth))
        x, y, _ = camera.project(box.center)
        self.assertAlmostEqual(x, 0.5, 5)
        self.assertAlmostEqual(y, 0.5, 5)
        camera.makePerspective()
        self.assertIsNone(camera.project(camera.eye + (camera.eye - camera.target)))

    def test_know_colours_by_name(self):
        names = ktsovu.colorNames()
        self.assertEqual(len(names), 28)
        for name in names:
            color = Color(name)
            self.assertEqual(Color.fromRGB(color.red, color.green, color.blue), color)
            self.assertEqual(Color.fromHSV(*color.hsv).distance(color), 0)
        white, black = Color("Default"), Color.fromRGB(0, 0, 0)
        self.assertEqual(black.mixed(white, weight=1), white)
        self.assertEqual(black.mixed(white), white.mixed(black))


class Constants(unittest.TestCase):
    def test_stand_in_the_module_once_by_name(self):
        constants = {name: value for name, value in vars(ktsovu).items()
                     if isinstance(value, ktsovu.Constant)}
        expected = """ON OFF TRUE FALSE YES NO NOT_SET SCATTERED TOTAL STEP_END STANDARD_EXPLICIT CFD
            EMAG BOTTOM_LEFT BOTTOM_CENTER BOTTOM_RIGHT CENTER_LEFT CENTER CENTER_RIGHT TOP_LEFT
            TOP_CENTER TOP_RIGHT ARROW FILLED_ARROW HOLLOW_CIRCLE FILLED_CIRCLE HOLLOW_DIAMOND
            FILLED_DIAMOND HOLLOW_SQUARE FILLED_SQUARE NONE VERY_THIN THIN MEDIUM THICK SOLID DASHED
            DOTTED DOT_DASH TRANSPARENT MATCH OTHER LEFT RIGHT FRONT BACK TOP BOTTOM ISOMETRIC"""
        self.assertLessEqual(set(expected.split()), set(constants))
        for name, constant in constants.items():
            self.assertEqual((repr(constant), str(constant)), (name, name))
            self.assertIs(copy.deepcopy(constant), constant)
            self.assertIs(pickle.loads(pickle.dumps(constant)), constant)
            self.assertEqual(constant, constant.copy())
        self.assertEqual(len({hash(constant) for constant in constants.values()}), len(constants))
        self.assertNotEqual(ktsovu.ON, ktsovu.OFF)
        self.assertNotEqual(ktsovu.ON, "ON")


class Module(unittest.TestCase):
    def test_makes_values_in_its_own_ways_only(self):
        for attempt in (
            lambda: ktsovu.Constant("ON"),
            lambda: ktsovu.Array(),
            lambda: ktsovu.Primitive(),
            lambda: object.__new__(ktsovu.Primitive),
            lambda: object.__new__(Point),
            lambda: Point.__new__(Point),
            lambda: type("Mine", (ktsovu.Primitive,), {}),
            lambda: type("Mine", (Point,), {}),
            lambda: pickle.dumps(Point(1, 2, 3)),
            lambda: setattr(Point(1, 2, 3), "x", 5),
        ):
            with self.assertRaises((TypeError, AttributeError)):
                attempt()
        self.assertEqual(Point.__new__(Point, 1, y=2, z=3), Point(1, 2, 3))

    def test_describes_everything_in_it(self):
        for name, member in vars(ktsovu).items():
            if name.startswith("__"):
                continue
            self.assertTrue(member.__doc__, name)
            if inspect.isbuiltin(member):
                self.assertTrue(inspect.signature(member).parameters or name in ("colorNames", "AnnotationContainer", "changeHistory"), name)
            if inspect.isclass(member) and issubclass(member, ktsovu.Primitive):
                for attribute, value in vars(member).items():
                    if not attribute.startswith("__"):
                        self.assertTrue(value.__doc__, f"{name}.{attribute}")
        self.assertEqual(str(inspect.signature(Point)), "(x, y, z)")
        self.assertEqual(str(inspect.signature(ktsovu.checkName)), "(name, mode)")


if __name__ == "__main__":
    unittest.main()
