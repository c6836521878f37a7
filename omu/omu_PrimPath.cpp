#include "omu/omu_PrimPath.h"

#include <string>

#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constexpr cls_FieldHandle kPath("path");
constexpr cls_FieldHandle kContext("context");
constexpr cls_FieldHandle kContextType("contextType");

}  // namespace

omu_PrimPath::omu_PrimPath(cls_ReadVisitor& visitor) : omu_PrimPath() {
    visitor.Read(kContext, context);
    visitor.Read(kContextType, contextType);
    const auto body = visitor.MakeReadObj(kPath);
    const auto reader = body ? body->MakeReadListPrim(cow_String()) : nullptr;
    if (reader) components = reader->ConstGetList();
}

cow_String omu_PrimPath::TypeString() const { return "path"; }

cow_String omu_PrimPath::AsString(int) const {
    std::string text = "'";
    for (int i = 0; i < components.Length(); ++i) {
        if (i > 0) text += '.';
        text += components[i].View();
    }
    text += '\'';
    return cow_String(text);
}

bool omu_PrimPath::operator==(const omu_Primitive& other) const {
    const auto* path = dynamic_cast<const omu_PrimPath*>(&other);
    return path && contextType == path->contextType && context == path->context &&
           components.IsEqual(path->components);
}

void omu_PrimPath::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimPath* omu_PrimPath::Copy() const { return new omu_PrimPath(*this); }

std::uint32_t omu_PrimPath::TypeId() const { return kTypeId; }

void omu_PrimPath::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kContext, context);
    visitor.Write(kContextType, contextType);
    const auto body = visitor.MakeWriteObj(kPath, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListPrim(cow_String(), 1) : nullptr;
    if (writer) writer->Write(components);
}

void omu_PrimPath::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimPath>("omu_PrimPath")
                           .AddAttribute(kPath.Name(), cls_KIND_COLLECTION, 0, cls_LIST_STRING)
                           .AddAttribute(kContext.Name(), cls_KIND_STRING)
                           .AddAttribute(kContextType.Name(), cls_KIND_CHAR));
}
