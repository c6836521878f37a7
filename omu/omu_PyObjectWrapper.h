#pragma once

#include "omu/omu_Primitive.h"

/// An object of the interpreter, held opaquely, tag `W`. The library knows no interpreter: the host
/// says by hooks how an object is retained and released, and without hooks neither happens. Copies
/// share the object and retain it. Equal when the objects are the same.
class KTSOVUGEOM_API omu_PyObjectWrapper : public omu_Primitive {
  public:
    /// How the host keeps an object alive; never called with null. Null functions do nothing.
    struct Hooks {
        void (*retain)(void* object) = nullptr;
        void (*release)(void* object) = nullptr;
    };

    /// Retains `pyObject`, or holds null.
    explicit omu_PyObjectWrapper(void* pyObject = nullptr);
    /// Reads the record, which has no fields: holds null.
    explicit omu_PyObjectWrapper(cls_ReadVisitor& visitor);
    omu_PyObjectWrapper(const omu_PyObjectWrapper& other);
    omu_PyObjectWrapper& operator=(const omu_PyObjectWrapper& other);
    ~omu_PyObjectWrapper() override;

    /// The object, which stays held by this primitive.
    [[nodiscard]] void* Object() const noexcept { return object; }

    /// Installs the hooks of the host. Objects held before are released through them too, so they
    /// are set before the first one and taken away after the last; shut-down takes them away.
    static void SetHooks(const Hooks& hooks) noexcept;

    /// "Wrapper".
    [[nodiscard]] cow_String AsString(int flag) const override;
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override;
    void Accept(omu_PrimVisitor* visitor) const override;
    [[nodiscard]] omu_PyObjectWrapper* Copy() const override;
    [[nodiscard]] std::uint32_t TypeId() const override;

    /// 19:33.
    static constexpr std::uint32_t kTypeId = typ_TypeId(19, 33);
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    void* object;
};
