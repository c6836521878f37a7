#pragma once

#include "cow/cow_CountedHld.h"
#include "cow/cow_DetachCount.h"
#include "foundation/coreutils/cow_Forward.h"

/// Copy policy of `cow_COW` for objects of exactly the type `T`: the copy constructor.
template <class T>
class cow_Direct {
  public:
    /// A new copy, owned by the caller.
    [[nodiscard]] static T* Copy(const T& source) { return new T(source); }
};

/// Copy policy of `cow_COW` for objects of a class derived from `T`: the virtual operation
/// `Copy()`, which returns a new object of the same class.
template <class T>
class cow_Virtual {
  public:
    /// A new polymorphic copy, owned by the caller.
    [[nodiscard]] static T* Copy(const T& source) { return static_cast<T*>(source.Copy()); }
};

/// A counted handle with copy on write: copies share the object until one of them asks for it with
/// `Get()`, which first makes a private copy by `Policy` when the object is shared.
///
/// A copy of the handle costs one increment. `ConstGet()` never copies; `Get()` copies the object
/// at most once, so prefer `ConstGet()` for reading. Handles of one object belong to one thread at
/// a time.
template <class T, class Policy = cow_Direct<T>>
class cow_COW : public cow_CountedHld<T> {
  public:
    using cow_CountedHld<T>::cow_CountedHld;
    using cow_CountedHld<T>::operator=;

    /// The object for writing, private to this handle from now on; null for a null handle. When the
    /// copy throws, the handle is unchanged.
    [[nodiscard]] T* Get() {
        if (this->count->References() != 1) Detach();
        return this->referent;
    }

  private:
    void Detach() {
        T* const copy = this->referent ? Policy::Copy(*this->referent) : nullptr;
        *this = copy;
        cow_RecordDetach(copy ? 1 : 0);
    }
};
