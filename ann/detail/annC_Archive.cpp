#include "ann/detail/annC_Archive.h"

#include <charconv>
#include <cstdio>

#include "foundation/coreutils/atr_String.h"

void annC_WritePoint(cls_WriteVisitor& visitor, const cls_FieldHandle& field,
                     const annC_Point2D& point) {
    const auto body = visitor.MakeWriteObj(field, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListPrim(double(), 1) : nullptr;
    if (!writer) return;
    writer->Write(point.x);
    writer->Write(point.y);
}

// One by one, since a block read never takes the last element.
annC_Point2D annC_ReadPoint(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    annC_Point2D point;
    const auto body = visitor.MakeReadObj(field);
    const auto reader = body && body->HasValue() ? body->MakeReadListPrim(double()) : nullptr;
    if (reader && reader->Next()) point.x = reader->Read();
    if (reader && reader->Next()) point.y = reader->Read();
    return point;
}

void annC_ReadAnchor(cls_ReadVisitor& visitor, const cls_FieldHandle& field,
                     annC_AnchorCow& anchor) {
    if (void* const read = visitor.ReadObjValue(field, annC_Anchor::kTypeId)) {
        anchor = annC_AnchorCow(static_cast<annC_Anchor*>(read));
    }
}

namespace {

bool ParseInt(std::string_view text, int& number) {
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && stop == end;
}

}  // namespace

void annC_ReadEnumValue(cls_ReadVisitor& visitor, const cls_FieldHandle& field,
                        omu_PrimEnumBase& value, cow_String (*nameOf)(int)) {
    if (!visitor.DataIsPresent(field)) return;
    cow_String text;
    visitor.Read(field, text);
    int number = 0;
    if (ParseInt(text.View(), number) && value.SetName(nameOf(number))) return;
    const cow_String line =
        atr("Error reading annotation: %s has no value \"%s\"\n", field.Name(), text);
    std::fputs(line.Characters(), stderr);
}
