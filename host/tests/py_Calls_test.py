"""How calls are matched to signatures, checked against a small model of the rules."""

import itertools
import random
import unittest

import ktsovu

MAX_INT = 2**31 - 1


class Value:
    """An argument with the word that messages have for it and the kinds that it passes for."""

    def __init__(self, value, word, *kinds):
        self.value, self.word, self.kinds = value, word, kinds


VALUES = (
    Value(0, "int", "int", "float", "bool"),
    Value(1, "int", "int", "float", "bool"),
    Value(MAX_INT, "int", "int", "float"),
    Value(MAX_INT + 1, "int", "float"),
    Value(2.0, "float", "float"),
    Value(True, "Boolean", "bool"),
    Value("a", "string", "string"),
    Value(None, "primitive"),
    Value(1j, "complex"),
    Value(object(), "primitive"),
    Value((1, 2), "tuple"),
    Value([1, 2, 3], "list", "Vector"),
    Value({"a": 1}, "dictionary"),
    Value(ktsovu.array([1, 2, 3.5]), "omu_PrimArray", "Vector"),
    Value(ktsovu.ON, "ON", "bool"),
    Value(ktsovu.CENTER, "CENTER"),
    Value(ktsovu.Vector(1, 2, 3), "Vector", "Vector"),
    Value(ktsovu.Point(1, 2, 3), "Point"),
)
WORDS = {"int": "int", "float": "float", "bool": "Boolean", "string": "string", "Vector": "Vector"}

# A command, and its parameters: name, kind, whether it is required.
CAMERA = ktsovu.Camera()
COMMANDS = (
    (ktsovu.Point, [("x", "float", 1), ("y", "float", 1), ("z", "float", 1)]),
    (ktsovu.Vector(1, 0, 0).dot, [("vector", "Vector", 1)]),
    (ktsovu.colorNames, []),
    (ktsovu.Matrix.translation, [("vector", "Vector", 1)]),
    (ktsovu.makeLegalGuiName, [("name", "string", 1), ("fallback", "string", 0)]),
    (CAMERA.pan, [("dx", "float", 1), ("dy", "float", 1), ("dz", "float", 0), ("keepTarget", "bool", 0)]),
    (CAMERA.rotate, [("angleDeg", "float", 1), ("axis", "Vector", 1), ("keepTarget", "bool", 0)]),
    (lambda *given, **named: ktsovu.checkName(*given, **named), [("name", "string", 1), ("mode", "int", 1)]),
)


def fault(parameters, given, named):
    """The message that the rules give for a call, None for a good one."""
    names = [name for name, _, _ in parameters]
    for name in named:
        if name not in names:
            return f"keyword error on {name}"
    for number, (name, kind, required) in enumerate(parameters, 1):
        if number <= len(given):
            place, value = f"arg{number}", given[number - 1]
        elif name in named:
            place, value = name, named[name]
        elif required:
            break  # what follows is not looked at
        else:
            continue
        if kind not in value.kinds:
            return f"{place}; found {value.word}, expecting {WORDS[kind]}"
    required = [name for name, _, is_required in parameters if is_required]
    paid = len(given) + sum(name in named for name in required)
    if paid < len(required):
        return f"not all required arguments specified; expected {len(required)}, got {paid}"
    if len(given) + len(named) > len(parameters):
        return f"too many arguments; expected {len(parameters)}, got {len(given) + len(named)}"
    missing = sum(name not in named for name in required[len(given):])
    if missing:
        return f"not all required arguments specified; expected {len(required)}, got {len(required) - missing}"
    return None


class Calls(unittest.TestCase):
    def check(self, command, parameters, given, named):
        expected = fault(parameters, given, named)
        try:
            command(*(value.value for value in given), **{n: v.value for n, v in named.items()})
            got = None
        except TypeError as refused:
            got = str(refused)
        except ktsovu.CorvixNameError:
            got = None  # the arguments fitted
        shown = [value.value for value in given], {n: v.value for n, v in named.items()}
        self.assertEqual(got, expected, shown)
        return expected

    def test_give_the_fault_of_the_rules(self):
        seed = 20
        chance = random.Random(seed)
        seen = {}
        for command, parameters in COMMANDS:
            names = [name for name, _, _ in parameters] + ["zz", "%s%n"]
            fitting = {name: [v for v in VALUES if kind in v.kinds] for name, kind, _ in parameters}
            for _ in range(3000):
                given = [
                    chance.choice(fitting[names[i]] if i < len(parameters) and chance.random() < 0.8 else VALUES)
                    for i in range(chance.randint(0, len(parameters) + 1))
                ]
                chosen = [name for name in names if chance.random() < 0.35]
                chance.shuffle(chosen)
                named = {name: chance.choice(fitting.get(name, VALUES) if chance.random() < 0.8 else VALUES)
                         for name in chosen}
                text = self.check(command, parameters, given, named)
                kind = text and next(k for k in ("keyword", "found", "not all", "too many") if k in text)
                seen[kind] = seen.get(kind, 0) + 1
        # Every kind of outcome was met often enough to mean something.
        self.assertGreater(min(seen.values()), 500, f"{seen}, seed {seed}")
        self.assertEqual(len(seen), 5)

    def test_a_duplicate_pays_for_no_missing_argument(self):
        for given, named, text in (
            ((1, 2), {"x": 9}, "not all required arguments specified; expected 3, got 2"),
            ((1, 2, 3), {"x": 9}, "too many arguments; expected 3, got 4"),
        ):
            with self.assertRaises(TypeError) as refused:
                ktsovu.Point(*given, **named)
            self.assertEqual(str(refused.exception), text)
        with self.assertRaises(TypeError) as refused:
            CAMERA.zoom(**{"": 1})
        self.assertEqual(str(refused.exception), "keyword error on ")

    def test_alternatives_tell_what_was_wanted_last(self):
        box = ktsovu.BBox()
        cases = (
            (lambda: box.add("a"), "arg1; found string, expecting Point"),
            (lambda: box.add(item=(1, 2)), "item; found tuple, expecting Point"),
            (lambda: box.add(), "not all required arguments specified; expected 1, got 0"),
            (lambda: box.add((0, 0, 0), 1), "too many arguments; expected 1, got 2"),
            (lambda: ktsovu.array(3), "arg1; found int, expecting tuple"),
            (lambda: ktsovu.array(values="a"), "values; found string, expecting tuple"),
            (lambda: ktsovu.BBox(high=1), "high; found int, expecting Point"),
            (lambda: CAMERA.fit(box, ktsovu.CENTER), "arg2; found CENTER, expecting FRONT, BACK, TOP, "
                                                     "RIGHT, LEFT, BOTTOM or ISOMETRIC"),
        )
        for attempt, text in cases:
            with self.assertRaises(TypeError) as refused:
                attempt()
            self.assertEqual(str(refused.exception), text)
        self.assertEqual(ktsovu.BBox(None, None), ktsovu.BBox())
        self.assertEqual(ktsovu.BBox(None, high=(1, 2, 3)), ktsovu.BBox((1, 2, 3)))
        self.assertTrue(ktsovu.Matrix(None).isIdentity)

    def test_faults_in_nested_values_name_their_place(self):
        part = ktsovu.Part("p", [(0, 0, 0), (1, 0, 0), (0, 1, 0)], [(0, 1, 2)])
        for call, text in (
            (lambda: ktsovu.table([part, "x"]), "arg1[1]; found string, expecting Part"),
            (lambda: ktsovu.table(parts=(1,)), "parts[0]; found int, expecting Part"),
            (lambda: ktsovu.saveParts([part, part, None], "x.db"), "arg1[2]; found primitive, expecting Part"),
        ):
            with self.assertRaises(TypeError) as refused:
                call()
            self.assertEqual(str(refused.exception), text)

    def test_ways_of_calling_are_the_same(self):
        class Odd(str):
            pass

        for call in (
            lambda: ktsovu.Point(1, 2, z=3),
            lambda: ktsovu.Point(*(1, 2), **{"z": 3}),
            lambda: ktsovu.Point(1, y=2, **{Odd("z"): 3}),
            lambda: ktsovu.Point.__call__(1, 2, 3),
            lambda: ktsovu.Point.__new__(ktsovu.Point, 1, 2, z=3),
        ):
            self.assertEqual(call(), ktsovu.Point(1, 2, 3))
        for kinds in itertools.permutations((1, "a", None), 2):
            with self.assertRaises(TypeError):
                ktsovu.Point(*kinds)


if __name__ == "__main__":
    unittest.main()
