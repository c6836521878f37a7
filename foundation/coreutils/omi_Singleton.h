#pragma once

#include <cstdlib>
#include <typeinfo>

#include "foundation/coreutils/KTSBasCoreUtilsExport.h"

/// The registry of process-wide instances, by type name: one instance per type however many shared
/// libraries use it. It works before the library's initialise and after its finalise.
namespace omi_SingletonRegistry {
/// The instance registered under `typeName`, or null.
[[nodiscard]] KTSBASCOREUTILS_API void* Find(const char* typeName) noexcept;
/// Registers `instance` unless the name is taken, and returns the registered one.
KTSBASCOREUTILS_API void* Register(const char* typeName, void* instance);
/// Takes the entry of `typeName` out and returns its instance; null when there is none.
KTSBASCOREUTILS_API void* Remove(const char* typeName) noexcept;
/// Number of registered instances.
[[nodiscard]] KTSBASCOREUTILS_API int Size() noexcept;
}  // namespace omi_SingletonRegistry

/// The part of a singleton that shut-down needs. See `omi_Singleton` for what `T` provides.
template <class T>
class omi_SingletonBase {
  public:
    /// Removes the instance from the registry and deletes it; nothing when it was never created.
    /// A later `omi_Singleton<T>::Instance()` creates a new one.
    static void Finalize() {
        Pointer() = nullptr;
        delete static_cast<T*>(omi_SingletonRegistry::Remove(typeid(T).name()));
    }
    /// True when the instance exists; never creates it.
    [[nodiscard]] static bool Exists() noexcept { return Pointer() != nullptr; }

  protected:
    static T*& Pointer() noexcept { return T::singleton; }
};

/// The one instance of `T` in the process, created on first use; `Instance()` costs a load and a
/// test afterwards. Not locked: start-up and shut-down run on one thread.
///
/// `T` declares `static T* singleton;`, defined `constinit` as null in the shared library that owns
/// `T`, and exports it with its default constructor and destructor: so every library shares the one
/// pointer (a static of this template would be one pointer a library). All three may be private,
/// with this template and its base as friends.
template <class T>
class omi_Singleton : public omi_SingletonBase<T> {
  public:
    [[nodiscard]] static T& Instance() {
        T* instance = omi_SingletonBase<T>::Pointer();
        return instance ? *instance : Create();
    }

  private:
    /// Ends the process when the registered instance is not the one just created: `T`'s constructor
    /// asked for `Instance()` itself.
    static T& Create() {
        T* created = new T;
        if (Register(created) != created) std::abort();
        omi_SingletonBase<T>::Pointer() = created;
        return *created;
    }

    static T* Register(T* created) {
        try {
            return static_cast<T*>(omi_SingletonRegistry::Register(typeid(T).name(), created));
        } catch (...) {
            delete created;
            throw;
        }
    }
};
