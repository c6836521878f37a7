"""The command 'ktsovu run' beside python3, and the example scripts in both."""

import json
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

import ktsovu

PROGRAM = os.environ["KTSOVU_PROGRAM"]
EXAMPLES = pathlib.Path(os.environ["KTSOVU_EXAMPLES"])
PYTHON = "/usr/bin/python3"
TWO_BOXES = """v 0 0 0
v 2 0 0
v 0 3 0
v 0 0 4
v 9 9 9
o wedge
f 1 2 3
f 1 2 4
o sheet
f 2 3 4
"""


def cube(name, first, x):
    corners = [(x + (i & 1), i >> 1 & 1, i >> 2) for i in range(8)]
    faces = [(0, 2, 3, 1), (4, 5, 7, 6), (0, 1, 5, 4), (2, 6, 7, 3), (0, 4, 6, 2), (1, 3, 7, 5)]
    lines = ["o " + name] + ["v %g %g %g" % corner for corner in corners]
    return "\n".join(lines + ["f " + " ".join(str(first + i) for i in face) for face in faces]) + "\n"


# Half in each other, and 1.5 apart.
CUBES = cube("a", 1, 0) + cube("b", 9, 0.5) + cube("c", 17, 3)


def run(*command):
    done = subprocess.run(command, capture_output=True, text=True, timeout=120)
    return done.returncode, done.stdout, done.stderr


class Scripts(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory()
        self.model = self.write("two.obj", TWO_BOXES)

    def tearDown(self):
        self.folder.cleanup()

    def path(self, name):
        return os.path.join(self.folder.name, name)

    def write(self, name, text):
        with open(self.path(name), "w") as file:
            file.write(text)
        return self.path(name)

    def test_run_as_by_python3(self):
        self.write("helper.py", "NAME = 'found beside the script'\n")
        for text in (
            "import sys, helper; print(sys.argv, __name__, __file__, helper.NAME)",
            "import sys; sys.exit(7)",
            "import sys; sys.exit('a message')",
            "def f():\n    raise KeyError('x')\n\nf()\n",
            "print('no end",
            "import ktsovu\nktsovu.Color('nosuch')\n",
            "import ktsovu\nktsovu.Point(1, 2)\n",
            "import atexit; atexit.register(print, 'bye'); raise SystemExit",
            "import sys; print('a'); print('b', file=sys.stderr); sys.stdout.flush()",
        ):
            script = self.write("script.py", text)
            arguments = (script, "--help", "-x", "ä b", "")
            ours, theirs = run(PROGRAM, "run", *arguments), run(PYTHON, *arguments)
            self.assertEqual(ours, theirs, text)
        self.assertIn("ktsovu.ColorError: nosuch is not a valid color name.",
                      run(PROGRAM, "run", self.write("c.py", "import ktsovu; ktsovu.Color('nosuch')"))[2])
        status, _, text = run(PROGRAM, "run", self.path("none.py"))
        self.assertEqual(status, 2)
        self.assertIn("can't open file", text)

    def test_wrong_usage_is_told_in_one_line(self):
        for arguments in (("run",), ("run", "--frobnicate")):
            status, out, err = run(PROGRAM, *arguments)
            self.assertEqual((status, out, err.count("\n")), (2, "", 1), err)
        self.assertIn("SCRIPT.py", run(PROGRAM, "run", "--help")[1])

    def test_do_by_hand_what_inspect_does(self):
        parts = ktsovu.readModel(self.model, memoryLimit=4096, timeLimit=60)
        _, table, _ = run(PROGRAM, "inspect", self.model)
        self.assertEqual(ktsovu.table(parts), table)
        self.assertEqual(ktsovu.table(parts, json=ktsovu.ON), run(PROGRAM, "inspect", "--json", self.model)[1])
        ktsovu.saveParts(parts, self.path("two.db"))
        self.assertEqual(run(PROGRAM, "show", self.path("two.db"))[1], table)
        loaded = ktsovu.loadParts(pathlib.Path(self.path("two.db")))
        for part, again in zip(parts, loaded):
            self.assertNotEqual(part, again)  # each is a part of its own
            self.assertEqual(part.vertices(), again.vertices())
            box = ktsovu.BBox()
            for vertex in (v for triangle in part.triangles() for v in triangle):
                box.add(part.vertices()[vertex])
            self.assertEqual(box, again.box)
            self.assertEqual((again.vertexCount, again.triangleCount),
                             (part.vertices().shape[0], len(part.triangles())))
        self.assertEqual([part.name for part in loaded], ["wedge", "sheet"])
        moved = ktsovu.Part("wedge", parts[0].vertices(), parts[0].triangles(), ktsovu.Matrix.translation((1, 0, 0)))
        self.assertEqual(moved.box.low, ktsovu.Point(1, 0, 0))
        self.assertIn("wedge#2", ktsovu.table([parts[0], moved]))

    def test_examples_do_what_they_say(self):
        for start in ((PROGRAM, "run"), (PYTHON,)):
            status, out, err = run(*start, str(EXAMPLES / "inspect_model.py"), self.model)
            self.assertEqual((status, err), (0, ""))
            self.assertIn("wedge                                    2       5.38516  (1, 1.5, 2)", out)
            self.assertTrue(out.endswith("2 parts, 3 triangles, from Point(0.0, 0.0, 0.0) to Point(2.0, 3.0, 4.0)\n"))
            database = self.path(f"ring{len(start)}.db")
            status, out, err = run(*start, str(EXAMPLES / "turn_parts.py"), self.model, "4", database)
            self.assertEqual((status, err), (0, ""))
            self.assertIn("8 parts saved", out)
            self.assertIn("total: 8 parts", run(PROGRAM, "show", database)[1])
            status, out, err = run(*start, str(EXAMPLES / "frame_model.py"), self.model, "640", "480")
            self.assertEqual((status, err), (0, ""))
            self.assertEqual(out.count("pixel"), 8)
            status, out, err = run(*start, str(EXAMPLES / "clearance_report.py"), self.model, "0.5")
            self.assertEqual((status, err), (0, ""))
            self.assertIn("0 findings in 1 pairs\n", out)
            for example in sorted(EXAMPLES.glob("*.py")):
                status, out, err = run(*start, str(example))
                self.assertEqual((status, out), (1, ""))
                self.assertTrue(err.startswith(f"usage: {example.name}"), err)
        status, out, err = run(PYTHON, str(EXAMPLES / "inspect_model.py"), self.path("none.obj"))
        self.assertEqual((status, out), (1, ""))
        self.assertTrue(err.startswith("inspect_model.py: " + self.path("none.obj")), err)

    def test_clearance_gives_what_the_command_prints(self):
        cubes = self.write("cubes.obj", CUBES)
        status, out, err = run(PROGRAM, "clearance", cubes, "--gap", "2", "--json")
        self.assertEqual((status, err), (1, ""))
        printed = json.loads(out)
        result = ktsovu.clearance(cubes, gap=2)
        self.assertTrue(result.hasFindings)
        self.assertEqual((result.gap, result.touch), (printed["gap"], printed["touch"]))
        self.assertEqual([(p.kind, p.first, p.second, p.length) for p in result.pairs()],
                         [(p["kind"].replace("tooClose", "too close"), p["first"], p["second"],
                           p.get("depth", p.get("clearance"))) for p in printed["pairs"]])
        self.assertEqual(result.lengths().tolist(), [0.5, 1.5])
        self.assertEqual((result.withoutArea(), result.unclearInside()), ([], []))
        points = memoryview(result.points()).tolist()
        self.assertEqual(points[1], [p for pair in printed["pairs"][1:] for p in (pair["onFirst"], pair["onSecond"])])
        run(PROGRAM, "clearance", cubes, "--gap", "2", "--save", self.path("cubes.db"))
        self.assertEqual(sorted(ktsovu.loadAnnotations(self.path("cubes.db"))),
                         ["arrow 1", "arrow 2", "label 1", "label 2"])
        parts = ktsovu.readModel(cubes)
        moved = ktsovu.clearance(parts, gap=2, move=["b=9,0,0"], ignore=["a:c"])
        self.assertEqual((moved.pairs(), moved.pairsChecked), ([], 2))
        with self.assertRaisesRegex(ktsovu.RangeError, "gap"):
            ktsovu.clearance(parts, gap=-1)
        with self.assertRaisesRegex(ktsovu.CorvixError, "there is no part 'd'"):
            ktsovu.clearance(parts, move=["d=1,2,3"])

    def test_annotations_are_objects_of_scripts(self):
        ktsovu.changeHistory()
        container = ktsovu.AnnotationContainer()
        container["label"] = ktsovu.Text("two\nlines", (10, 20))
        container["arrow"] = ktsovu.Arrow(color="Red", endPoint=(3, 4))
        self.assertEqual((list(container), len(container), "label" in container), (["arrow", "label"], 2, True))
        label = container["label"]
        self.assertGreater(label.height, label.width / 4)
        label.text = "more"
        label.setValues(offsetX=5, justification=ktsovu.CENTER)
        self.assertEqual((container["label"].text, label.offset), ("more", (5.0, 20.0)))
        container.bringToFront(name="label")
        container.changeKey("arrow", "pointer")
        self.assertEqual(container.keys(), ("label", "pointer"))
        self.assertEqual(ktsovu.changeHistory()[2:], [("Remove", "label"), ("Insert", "label", 0),
                                                     ("Rename", "arrow", "pointer", 1)])
        del container["label"]
        for error, use in ((ktsovu.AccessError, lambda: label.text), (KeyError, lambda: container["label"]),
                           (AttributeError, lambda: container["pointer"].nosuch),
                           (ktsovu.ColorError, lambda: ktsovu.Arrow(color="nosuch")),
                           (TypeError, lambda: container["pointer"].translate("x", 1))):
            self.assertRaises(error, use)
        self.assertIn("translate", dir(container["pointer"]))

    def test_examples_are_four(self):
        self.assertEqual(len(list(EXAMPLES.glob("*.py"))), 4)


if __name__ == "__main__":
    del sys.argv[1:]
    unittest.main()
