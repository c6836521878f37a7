// Uses the installed headers and links the library: start-up, a box moved by a matrix, a list that
// shares its elements until it is written.

#include <cow/cow_List.h>
#include <frame/KTSOvuGeom.h>
#include <gsl/gsl_BBox.h>
#include <gsl/gsl_Matrix.h>
#include <gsl/gsl_Point.h>

#include <cstdio>

namespace {

int failures = 0;

void Expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "not so: %s\n", what);
    ++failures;
}

}  // namespace

int main() {
    int uses = 0;
    KTSOvuGeom_initialize(uses);
    Expect(uses == 0, "the loader has brought the library up");

    gsl_BBox box;
    box.Add(gsl_Point(0, 0, 0));
    box.Add(gsl_Point(1, 2, 3));
    gsl_Matrix shift;
    shift.SetTranslation(gsl_Vector(10, 0, 0));
    gsl_Point corner = box.High();
    corner.Transform(shift);
    Expect(corner == gsl_Point(11, 2, 3), "the high corner moves by the translation");

    cow_List<gsl_Point> points;
    points.Append(corner);
    const cow_List<gsl_Point> before = points;
    points.Append(box.Low());
    Expect(before.Length() == 1 && points.Length() == 2, "a copy keeps its content");

    KTSOvuGeom_finalize(uses);
    Expect(uses == 0, "a matched pair leaves the count");
    return failures;
}
