#include "ann/annC_Annotation.h"

#include "ann/detail/annC_Archive.h"

annC_Annotation::annC_Annotation(cls_ReadVisitor&) : annC_Annotation() {}

annC_Annotation::~annC_Annotation() = default;

annC_Annotation* annC_Annotation::Copy() const { return new annC_Annotation(*this); }

std::uint32_t annC_Annotation::TypeId() const { return kTypeId; }

void annC_Annotation::DBWrite(cls_WriteVisitor&) const {}

bool annC_Annotation::HasSameFields(const annC_Annotation&) const { return true; }

void annC_Annotation::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(annC_MetadataOf<annC_Annotation, annC_Annotation>("annC_Annotation"));
}
