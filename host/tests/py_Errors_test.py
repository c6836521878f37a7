"""What scripts get that ask for what cannot be: the class and the whole text of each exception."""

import os
import sys
import tempfile
import unittest

import ktsovu


def nested(depth):
    value = []
    for _ in range(depth - 1):
        value = [value]
    return value


def doubled(times):
    value = [1]
    for _ in range(times):
        value = [value, value]
    return value


class Index:
    """Runs the script's own code in the middle of a conversion."""

    def __init__(self, code):
        self.code = code

    def __index__(self):
        return self.code()


class Errors(unittest.TestCase):
    def expect(self, kind, text, attempt):
        with self.assertRaises(kind) as refused:
            attempt()
        self.assertIs(type(refused.exception), kind)
        self.assertEqual(str(refused.exception), text)

    def test_derive_from_the_closest_of_pythons(self):
        for name, closest in (
            ("RangeError", ValueError),
            ("ColorError", ValueError),
            ("FontError", ValueError),
            ("CorvixNameError", ValueError),
            ("AccessError", PermissionError),
            ("GuiAccessError", PermissionError),
            ("CorvixError", RuntimeError),
        ):
            error = getattr(ktsovu, name)
            self.assertEqual((error.__bases__, error.__module__, error.__name__), ((closest,), "ktsovu", name))

    def test_say_what_is_wrong_with_a_value(self):
        self.expect(ktsovu.RangeError, "red must be in the range: 0 <= red <= 65535",
                    lambda: ktsovu.Color.fromRGB(65536, 0, -1))
        self.expect(ktsovu.RangeError, "hue must be in the range: 0.0 <= hue <= 1.0",
                    lambda: ktsovu.Color.fromHSV(float("nan"), 0, 0))
        self.expect(ktsovu.ColorError, "no %s colour is not a valid color name.",
                    lambda: ktsovu.Color("no %s colour"))
        self.expect(ValueError, "a matrix has 4 rows of 4 numbers, the last one (0, 0, 0, 1)",
                    lambda: ktsovu.Matrix([[1, 2], [3, 4]]))
        self.expect(TypeError, "arg1; found list, expecting 2D sequence of Doubles",
                    lambda: ktsovu.Matrix([[1, 2], [3]]))
        self.expect(ValueError, "Part: part 'p': triangle 0 names vertex 7 of 1",
                    lambda: ktsovu.Part("p", [(0, 0, 0)], [(0, 0, 7)]))

    def test_say_what_is_wrong_with_a_name(self):
        for name, mode, text in (
            ("", 0, "name is empty"),
            ("-Part", 8, "invalid name"),
            ("1" + 80 * "a", 8, ""),
            ("Job 1", 1, "invalid job name"),
            ("a.b", 2, "invalid model name"),
            (39 * "é", 3, "invalid name"),
        ):
            self.expect(ktsovu.CorvixNameError, text, lambda: ktsovu.checkName(name, mode))
        for name, mode in (("", 9), ("", -1), (38 * "é", 3), ("Pärt", 8), ("Job-1", 1)):
            self.assertIsNone(ktsovu.checkName(name=name, mode=mode))
        self.expect(ValueError, "a name holds a zero byte", lambda: ktsovu.checkName("a\0b", 42))
        self.assertEqual(ktsovu.makeLegalFileName("a b.c"), "a_b_c")
        self.assertEqual(ktsovu.makeLegalGuiName("..", fallback="Part"), "Part")

    def test_tell_of_numbers_and_texts_that_do_not_fit(self):
        text = "integer beyond 32 bits: only -2147483648 to 4294967295 fit"
        for number in (2**32, -2**31 - 1, 2**63, 10**5000, -10**5000):
            self.expect(OverflowError, text, lambda: ktsovu.Point(0, number, 0))
            self.expect(OverflowError, text, lambda: ktsovu.Point(0, Index(lambda: number), 0))
        self.assertEqual(ktsovu.Point(2**32 - 1, -2**31, 0).x, 2.0**32 - 1)
        for attempt in (lambda: ktsovu.Color("\ud800"), lambda: ktsovu.Point(1, 2, **{"\udfff": 3})):
            with self.assertRaises(UnicodeEncodeError):
                attempt()

    def test_bound_what_contains_itself_or_is_huge(self):
        endless = []
        endless.append({"a": (endless,)})
        self.expect(ValueError, "a sequence or dictionary that contains itself", lambda: ktsovu.array(endless))
        self.assertIn("dimensions", self.refusal(lambda: ktsovu.array(nested(255) + [1])))
        for value in (nested(257), nested(100000)):
            self.assertIn("nested", self.refusal(lambda: ktsovu.array(value)))
        self.assertEqual(self.refusal(lambda: ktsovu.array(doubled(60))),
                         "values with more than 134217728 elements in all")
        self.expect(TypeError, "the keys of a dictionary must be all strings or all integers",
                    lambda: ktsovu.array({"a": 1, 2: 3}))
        self.expect(TypeError, "arg1; found dictionary, expecting tuple", lambda: ktsovu.array({1: 2, -3: 4}))

    def refusal(self, attempt):
        with self.assertRaises(ValueError) as refused:
            attempt()
        return str(refused.exception)

    def test_let_scripts_run_in_between(self):
        def fail():
            raise KeyError("mine")

        self.expect(KeyError, "'mine'", lambda: ktsovu.Point(0, Index(fail), 0))
        growing = [1.5]
        growing.append(Index(lambda: growing.clear() or 2))
        self.assertEqual(ktsovu.array(growing).tolist(), [1.5, 2.0])
        box = ktsovu.BBox()
        box.add((Index(lambda: box.add((7, 7, 7)) or 0), 0, 0))
        self.assertEqual(box.high, ktsovu.Point(7, 7, 7))

    def test_leave_no_references_behind(self):
        thing = object()
        calls = (lambda: ktsovu.Color(thing), lambda: ktsovu.array([[thing]]), lambda: ktsovu.Point(1, {"a": thing}, 2))
        before = sys.getrefcount(thing)
        for call in calls:
            with self.assertRaises((TypeError, ValueError)):
                call()
        self.assertEqual(sys.getrefcount(thing), before)
        for value in (None, ktsovu.ON, ktsovu.Point, int):
            before = sys.getrefcount(value)
            for _ in range(1000):
                ktsovu.BBox(low=None), ktsovu.Point(1, 2, 3).copy()
                try:
                    ktsovu.Camera().zoom(1.0, value)
                except TypeError:
                    pass
            self.assertLess(abs(sys.getrefcount(value) - before), 100)


class Models(unittest.TestCase):
    def test_are_refused_with_the_file_and_the_cause(self):
        with tempfile.TemporaryDirectory() as folder:
            for name, content, cause in (
                ("none.stl", None, "no such file"),
                ("points.obj", "v 0 0 0\nv 1 1 1\n", "it has no triangles"),
            ):
                path = os.path.join(folder, name)
                if content is not None:
                    with open(path, "w") as file:
                        file.write(content)
                with self.assertRaises(ktsovu.CorvixError) as refused:
                    ktsovu.readModel(path)
                self.assertTrue(str(refused.exception).startswith(path + ": "), refused.exception)
                self.assertIn(cause, str(refused.exception))
            with self.assertRaises(ktsovu.RangeError):
                ktsovu.readModel("x", timeLimit=0)
            with self.assertRaises(ktsovu.CorvixError):
                ktsovu.loadParts(os.path.join(folder, "none.db"))
            with self.assertRaises(ktsovu.CorvixError):
                ktsovu.saveParts([], os.path.join(folder, "no", "a.db"))


if __name__ == "__main__":
    unittest.main()
