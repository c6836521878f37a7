"""Arrays: made of nested sequences and of buffers, read by index, and as buffers themselves."""

import array
import itertools
import struct
import unittest

import ktsovu

try:
    import numpy
except ImportError:
    numpy = None


def nested(values, depth):
    return [nested(values, depth - 1), nested(values, depth - 1)] if depth else values


class OfSequences(unittest.TestCase):
    def test_show_their_numbers_and_type(self):
        cases = {
            "array([1, 2, 3], 'i')": [1, 2, 3],
            "array([1.0, 2.5], 'd')": (1, 2.5),
            "array([[1, 2], [3, 4]], 'i')": [(1, 2), [3, 4]],
            "array([], 'd')": [],
            "array([[1, 2], [3, 4], [5, 6]], 'i')": [ktsovu.array([1, 2]), [3, 4], (5, 6)],
            "array([4000000000.0, 0.5], 'd')": [4000000000, 0.5],
        }
        for text, values in cases.items():
            made = ktsovu.array(values)
            self.assertEqual((str(made), repr(made)), (text, text))
            self.assertEqual(made, ktsovu.array(values=values))
            self.assertEqual(ktsovu.array(made), made)
            self.assertEqual(made.tolist(), ktsovu.array(made.tolist() or values).tolist())

    def test_refuse_what_is_no_array_with_the_cause(self):
        dimensions = "omu_PrimArray from sequence failed - dimensions. "
        cases = (
            ([[1, 2, 3], [1, 2]], dimensions + "different dims in child. dimThis=2, j=0"),
            ([1, [2]], dimensions + "different num dims in child. nd=0, ndTemp=1, i=1"),
            ([[1], True], dimensions + "Child not PrimSequence or PrimNumber"),
            (["a"], dimensions + "Child not PrimSequence or PrimNumber"),
            ([[], []], "omu_PrimArray from sequence failed - DimsAndData"),
            ([4000000000, 1], "omu_PrimArray from sequence failed - copyValues"),
        )
        for values, text in cases:
            with self.assertRaises(ValueError) as refused:
                ktsovu.array(values)
            self.assertEqual(str(refused.exception), text)

    def test_are_read_by_index_as_lists_are(self):
        for depth in range(4):
            values = nested([1, 2, 3], depth)
            made = ktsovu.array(values)
            self.assertEqual(made.shape, (2,) * depth + (3,))
            self.assertEqual(made.tolist(), values)
            self.assertEqual([row if depth == 0 else row.tolist() for row in made], values)
            for first, last in itertools.product((-9, -2, 0, 1, 2, 9), repeat=2):
                self.assertEqual(made[first:last].tolist(), values[first:last])
            for index in (len(values), -len(values) - 1):
                with self.assertRaises(IndexError):
                    made[index]
        made = ktsovu.array([[1, 2, 3], [4, 5, 6]])
        self.assertEqual((made[1, 2], made[-1, -3], made[1][0]), (6, 4, 4))
        self.assertEqual(made.item(1, 2), 6)
        for attempt, error in (
            (lambda: made[0, 3], IndexError),
            (lambda: made[0, 0, 0], IndexError),
            (lambda: made["a"], TypeError),
            (lambda: made[::2], ValueError),
        ):
            with self.assertRaises(error):
                attempt()
        for indices, text in (
            ((1,), "less indices given than size of array (1<2)"),
            ((0, 1, 2), "more indices given than size of array (3>2)"),
            ((-2, 0), "index out of range, dimension 0 (-2 >= 2)"),
        ):
            with self.assertRaises(ValueError) as refused:
                made.item(*indices)
            self.assertEqual(str(refused.exception), text)

    def test_change_alone(self):
        made = ktsovu.array([[1, 2], [3, 4]])
        kept, row, view = made.copy(), made[0], memoryview(made)
        made[0, 0] = 9
        made[-1, -1] = 2.75
        made.setItem(7, 0, 1)
        self.assertEqual(made.tolist(), [[9, 7], [3, 2]])
        self.assertEqual(kept.tolist(), [[1, 2], [3, 4]])
        self.assertEqual(row.tolist(), [1, 2])
        self.assertEqual(view.tolist(), [[1, 2], [3, 4]])
        for value in ("a", True, None):
            with self.assertRaises(TypeError):
                made[0, 0] = value
        with self.assertRaises(TypeError):
            del made[0, 0]


class OfBuffers(unittest.TestCase):
    def test_take_native_blocks_as_they_are(self):
        for code, values in (("i", [1, -2**31, 2**31 - 1]), ("f", [0.5, -1.25]), ("d", [0.1, 1e300])):
            made = ktsovu.array(array.array(code, values))
            self.assertEqual((made.typeCode, made.tolist()), (code, values))
            self.assertEqual(bytes(memoryview(made)), array.array(code, values).tobytes())

    def test_convert_other_types_number_by_number(self):
        for code in "bBhHIlLqQ":
            made = ktsovu.array(array.array(code, [1, 2, 100]))
            self.assertEqual((made.typeCode, made.tolist()), ("i", [1, 2, 100]))
        for code, value in (("I", 2**31), ("q", -2**31 - 1), ("Q", 2**64 - 1)):
            with self.assertRaises(OverflowError):
                ktsovu.array(array.array(code, [0, value]))
        self.assertEqual(ktsovu.array(b"\x01\xff").tolist(), [1, 255])

    def test_export_themselves_for_reading_alone(self):
        made = ktsovu.array([[1, 2, 3], [4, 5, 6]])
        view = memoryview(made)
        self.assertEqual((view.format, view.shape, view.strides), ("i", (2, 3), (12, 4)))
        self.assertTrue(view.readonly and view.c_contiguous)
        self.assertEqual(view.tolist(), made.tolist())
        self.assertEqual(ktsovu.array(view), made)
        self.assertEqual(ktsovu.array(view[1:]).tolist(), [[4, 5, 6]])
        self.assertEqual(memoryview(ktsovu.array([])).tolist(), [])
        for write in (lambda: struct.pack_into("i", made, 0, 1), lambda: view.__setitem__((0, 0), 9)):
            with self.assertRaises(TypeError):
                write()

    def test_are_no_numbers_of_other_kinds(self):
        with self.assertRaises(ValueError) as refused:
            ktsovu.array(memoryview(b"\1\0").cast("?"))
        self.assertIn("Child not PrimSequence or PrimNumber", str(refused.exception))


@unittest.skipUnless(numpy, "NOT TESTED: numpy is not installed")
class OfNumpy(unittest.TestCase):
    TAKEN = {"i1": "i", "u1": "i", "i2": "i", "u2": "i", "i4": "i", "u4": "i", "i8": "i", "u8": "i",
             "f2": "f", "f4": "f", "f8": "d"}

    def test_take_every_order_of_rows_and_bytes(self):
        for (dtype, code), order in itertools.product(self.TAKEN.items(), "<>"):
            given = numpy.arange(24).reshape(2, 3, 4).astype(order + dtype)
            for layout in (given, given.T, given[::-1, ::2], given[:, 1:1], numpy.asfortranarray(given)):
                made = ktsovu.array(layout)
                self.assertEqual((made.typeCode, made.shape), (code, layout.shape))
                self.assertEqual(made.tolist(), layout.tolist())
                again = numpy.asarray(made)
                self.assertEqual(again.dtype.char, code)
                self.assertTrue((again == layout).all())
                self.assertFalse(again.flags.writeable)

    def test_refuse_what_they_do_not_hold(self):
        child = "omu_PrimArray from sequence failed - dimensions. Child not PrimSequence or PrimNumber"
        other = "PrimArray only INT, FLOAT, DOUBLE allowed"
        for given, text in (
            (numpy.array([True]), child),
            (numpy.array([1j]), child),
            (numpy.array(["a"]), child),
            (numpy.array([b"a"]), child),
            (numpy.array([1, 2], dtype=object), child),
            (numpy.array([1], dtype=numpy.longdouble), other),
            (numpy.zeros(2, dtype="i4,f8"), other),
        ):
            with self.assertRaises(ValueError, msg=str(given)) as refused:
                ktsovu.array(given)
            self.assertEqual(str(refused.exception), text)

    def test_scalars_count_as_the_number_that_they_give(self):
        self.assertEqual(ktsovu.Point(numpy.float32(0.5), numpy.int8(2), numpy.uint64(3)),
                         ktsovu.Point(0.5, 2, 3))
        self.assertEqual(ktsovu.array([numpy.float16(2), numpy.longdouble(3)]).tolist(), [2.0, 3.0])
        self.assertEqual(str(ktsovu.array([numpy.array(3), numpy.int64(4)])), "array([3, 4], 'i')")
        self.assertEqual(str(ktsovu.array([numpy.array(3.5)])), "array([3.5], 'd')")
        box = ktsovu.BBox((0, 0, 0))
        self.assertEqual(ktsovu.Point(0, 0, 0).distance(numpy.array([3, 4, 0])), 5.0)
        self.assertTrue(box.contains(numpy.zeros(3)))
        parts = []
        self.assertIn("{", ktsovu.table(parts, json=numpy.bool_(True)))
        with self.assertRaises(TypeError) as refused:
            ktsovu.Point(numpy.complex64(1j), 0, 0)
        self.assertEqual(str(refused.exception), "arg1; found complex, expecting float")


if __name__ == "__main__":
    unittest.main()
