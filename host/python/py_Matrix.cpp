#include <cstddef>

#include "cow/cow_2DArray.h"
#include "foundation/coreutils/atr_String.h"
#include "host/python/py_Values.h"
#include "omu/omu_CmdExceptions.h"

namespace {

const cow_String kRows = "rows";
const cow_String kAxis = "axis";
const cow_String kAngle = "angleRad";
const cow_String kPoint = "point";
const cow_String kVector = "vector";

constexpr const char* kNoRows = "a matrix has 4 rows of 4 numbers, the last one (0, 0, 0, 1)";

using MatrixClass = py_Class<gsl_Matrix>;

gsl_Matrix FromRows(const cow_2DArray<double>& rows) {
    const auto at = [&rows](int row, int column) { return rows.ConstGet(row, column); };
    const bool isTransform = rows.Rows() == 4 && rows.Cols() == 4 && at(3, 0) == 0 &&
                             at(3, 1) == 0 && at(3, 2) == 0 && at(3, 3) == 1;
    if (!isTransform) KTSBasThrow(omu_ValueErrorException(kNoRows));
    gsl_Matrix matrix;
    for (int row = 0; row < 3; ++row) {
        matrix.SetRow(row, gsl_Vector(at(row, 0), at(row, 1), at(row, 2)));
    }
    matrix.SetTranslation(gsl_Vector(at(0, 3), at(1, 3), at(2, 3)));
    return matrix;
}

py_Result New(omu_Arguments& arguments) {
    cow_2DArray<double> rows;
    arguments.Optional();
    const bool isGiven = py_GetOptional(arguments, rows, kRows);
    if (arguments.Error()) return {};
    return py_Return(isGiven ? FromRows(rows) : gsl_Matrix());
}

py_Result Rotation(omu_Arguments& arguments) {
    gsl_Vector axis;
    double angleRad = 0;
    gsl_Point point;
    arguments.Get(axis, kAxis);
    arguments.Get(angleRad, kAngle);
    arguments.Optional();
    arguments.Get(point, kPoint);
    if (arguments.Error()) return {};
    // The form with a point: the other one leaves the mark of the identity on the matrix.
    gsl_Matrix matrix;
    matrix.AxisRotation(point, axis, angleRad);
    return py_Return(matrix);
}

py_Result Translation(omu_Arguments& arguments) {
    gsl_Vector vector;
    arguments.Get(vector, kVector);
    if (arguments.Error()) return {};
    gsl_Matrix matrix;
    matrix.SetTranslation(vector);
    return py_Return(matrix);
}

py_Result Inverse(const gsl_Matrix& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    return py_Return(self.InverseRigidTransform());
}

py_Result AxisAndAngle(const gsl_Matrix& self, omu_Arguments& arguments) {
    if (arguments.Error()) return {};
    gsl_Point translation;
    gsl_Vector axis;
    double angleRad = 0;
    self.GetAxisRotation(translation, axis, angleRad);
    return py_ReturnTuple(axis, angleRad);
}

cow_2DArray<double> Rows(const gsl_Matrix& matrix) {
    double entries[4][4];
    matrix.AsArray(entries);
    cow_2DArray<double> rows(4, 4);
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) rows.Get(row, column) = entries[row][column];
    }
    return rows;
}

gsl_Matrix Product(const gsl_Matrix& left, const gsl_Matrix& right) {
    return right.GetConcatenated(left);
}
gsl_Point Image(const gsl_Matrix& matrix, const gsl_Point& point) {
    gsl_Point image(point.GetX(), point.GetY(), point.GetZ());
    matrix.Transform(image);
    return image;
}
gsl_Vector Turned(const gsl_Matrix& matrix, const gsl_Vector& vector) {
    gsl_Vector image = vector;
    matrix.Transform(image);
    return image;
}

PyMethodDef kMethods[] = {
    MatrixClass::StaticMethod<&Rotation>(
        "rotation",
        "rotation(axis, angleRad, point=(0, 0, 0))\n--\n\n"
        "Returns the right-handed rotation about an axis through a point; the identity "
        "when\nthe axis is null."),
    MatrixClass::StaticMethod<&Translation>(
        "translation", "translation(vector)\n--\n\nReturns the translation by a vector."),
    MatrixClass::Method<&Inverse>("inverse",
                                  "inverse($self)\n--\n\n"
                                  "Returns the inverse of a rigid transform, that is a "
                                  "rotation and a translation."),
    MatrixClass::Method<&AxisAndAngle>(
        "axisAndAngle",
        "axisAndAngle($self)\n--\n\n"
        "Returns the axis and the angle in radians of the rotation; a null axis "
        "when it\ndoes not turn."),
    {},
};

PyGetSetDef kAttributes[] = {
    MatrixClass::Attribute<&Rows>("rows", "the 16 entries, row by row"),
    MatrixClass::Attribute<&gsl_Matrix::NewOrigin>("origin", "the image of the origin"),
    MatrixClass::Attribute<&gsl_Matrix::IsIdentity>("isIdentity",
                                                    "true within 1e-8 for each entry"),
    {},
};

PyType_Slot slots[] = {
    {Py_tp_doc,
     const_cast<char*>(
         "Matrix(rows=None)\n--\n\n"
         "A transform of 4 rows of 4 numbers, applied to columns; the last row is (0, 0, 0, 1), "
         "the last\ncolumn the translation. matrix * point and matrix * vector apply it, and a * b "
         "applies b first.\nWithout rows it is the identity. Matrices are equal within 0.001 for "
         "each entry.")},
    {Py_tp_methods, kMethods},
    {Py_tp_getset, kAttributes},
    MatrixClass::Constructor<&New>(),
    py_Operator<&Image, &Turned, &Product>(Py_nb_multiply),
    {},
};

}  // namespace

cow_String py_ValueTraits<gsl_Matrix>::Text(const gsl_Matrix& matrix) {
    double entries[4][4];
    matrix.AsArray(entries);
    cow_String rows;
    for (const auto& row : entries) {
        rows = rows + (rows.IsEmpty() ? "" : ", ") +
               atr("(%s, %s, %s, %s)", py_NumberText(row[0]), py_NumberText(row[1]),
                   py_NumberText(row[2]), py_NumberText(row[3]));
    }
    return atr("Matrix((%s))", rows);
}

void py_AddMatrix(PyObject* module) { MatrixClass::Add<&New>(module, slots); }
