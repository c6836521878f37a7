#pragma once

#include <memory>

#include "foundation/shared/KTSBasSharedExport.h"

/// A copy-on-write handle whose type the holder of this interface does not know. The table of the
/// objects read from a stream keeps one, so that every reference to an object shares one handle.
class KTSBASSHARED_API cls_CowHolder {
  public:
    virtual ~cls_CowHolder();
};

/// A holder of the handle type `Handle`, null at first.
template <class Handle>
class cls_CowHolderOf : public cls_CowHolder {
  public:
    Handle handle;
};

/// Makes a holder that owns `object`. When it throws, the object stays the caller's.
using cls_CowAdopt = std::shared_ptr<cls_CowHolder> (*)(void* object);

/// `cls_CowAdopt` for a `Handle` over `T`. The constructor function of the object's class answered
/// a pointer to that class; `T` is the class itself or its first base.
template <class Handle, class T>
std::shared_ptr<cls_CowHolder> cls_AdoptCow(void* object) {
    auto holder = std::make_shared<cls_CowHolderOf<Handle>>();
    holder->handle = static_cast<T*>(object);
    return holder;
}

/// The handle in `holder`; a null handle when it holds none or one of another type.
template <class Handle>
[[nodiscard]] Handle cls_HandleOf(const std::shared_ptr<cls_CowHolder>& holder) {
    const auto* typed = dynamic_cast<const cls_CowHolderOf<Handle>*>(holder.get());
    return typed ? typed->handle : Handle();
}
