#include "omu/omu_PyObjectWrapper.h"

#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimVisitor.h"

namespace {

constinit omu_PyObjectWrapper::Hooks installed;

void Retain(void* object) {
    if (object && installed.retain) installed.retain(object);
}

void Release(void* object) {
    if (object && installed.release) installed.release(object);
}

}  // namespace

omu_PyObjectWrapper::omu_PyObjectWrapper(void* pyObject)
    : omu_Primitive(omu_PrimTag::kPyObject), object(pyObject) {
    Retain(object);
}

omu_PyObjectWrapper::omu_PyObjectWrapper(cls_ReadVisitor&) : omu_PyObjectWrapper() {}

omu_PyObjectWrapper::omu_PyObjectWrapper(const omu_PyObjectWrapper& other)
    : omu_PyObjectWrapper(other.object) {}

omu_PyObjectWrapper& omu_PyObjectWrapper::operator=(const omu_PyObjectWrapper& other) {
    Retain(other.object);
    void* const before = object;
    object = other.object;
    Release(before);
    return *this;
}

omu_PyObjectWrapper::~omu_PyObjectWrapper() { Release(object); }

void omu_PyObjectWrapper::SetHooks(const Hooks& hooks) noexcept { installed = hooks; }

cow_String omu_PyObjectWrapper::AsString(int) const { return "Wrapper"; }

bool omu_PyObjectWrapper::operator==(const omu_Primitive& other) const {
    const auto* wrapper = dynamic_cast<const omu_PyObjectWrapper*>(&other);
    return wrapper && object == wrapper->object;
}

void omu_PyObjectWrapper::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PyObjectWrapper* omu_PyObjectWrapper::Copy() const { return new omu_PyObjectWrapper(*this); }

std::uint32_t omu_PyObjectWrapper::TypeId() const { return kTypeId; }

void omu_PyObjectWrapper::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PyObjectWrapper>("omu_PyObjectWrapper"));
}
