#pragma once

#include <memory>
#include <utility>

#include "cow/cow_Counter.h"

template <class Node, class Link>
class cow_Dismantler;

/// A counted handle: a pointer to a `T` that it owns together with all copies of itself, and a
/// pointer to their common counter.
///
/// Every handle has a counter, the null handle too. A copy costs one increment and never throws;
/// making a handle from nothing or from a pointer allocates a counter. Nothing here copies the `T`:
/// all handles see the same one (`cow_COW` adds the private copy on writing). Counters are plain
/// integers, so all handles of one `T` belong to one thread at a time. A class derived from `T` may
/// be held when `T`'s destructor is virtual.
template <class T>
class cow_CountedHld {
  public:
    /// The null handle, with a counter of its own.
    cow_CountedHld() : count(new cow_Counter), referent(nullptr) {}
    /// Adopts `adopted` (or null), which is deleted when the counter cannot be allocated.
    explicit cow_CountedHld(T* adopted) : count(NewCounter(adopted)), referent(adopted) {}
    cow_CountedHld(const cow_CountedHld& other) noexcept
        : count(other.count), referent(other.referent) {
        count->Increment();
    }
    ~cow_CountedHld() { DropReference(); }

    /// True when no other handle shares the counter.
    [[nodiscard]] bool Exclusive() const noexcept { return count->References() == 1; }
    /// True when both hold the same object (whatever their counters).
    [[nodiscard]] bool Identical(const cow_CountedHld& other) const noexcept {
        return referent == other.referent;
    }
    [[nodiscard]] bool HasValue() const noexcept { return referent != nullptr; }
    [[nodiscard]] bool IsNull() const noexcept { return referent == nullptr; }

    /// The object or null; never copies it.
    [[nodiscard]] const T* ConstGet() const noexcept { return referent; }
    /// The object or null for writing into what all handles share; never copies it.
    [[nodiscard]] T* GetPtr() const noexcept { return referent; }
    /// As `GetPtr`. REQUIRES: `HasValue()`.
    [[nodiscard]] T& GetRef() const noexcept { return *referent; }
    [[nodiscard]] const T* operator->() const noexcept { return referent; }
    [[nodiscard]] const T& operator*() const noexcept { return *referent; }

    /// Exchanges two handles; counters and objects stay in place.
    void Swap(cow_CountedHld& other) noexcept {
        std::swap(count, other.count);
        std::swap(referent, other.referent);
    }

    cow_CountedHld& operator=(const cow_CountedHld& other) noexcept {
        other.count->Increment();
        cow_Counter* const newCount = other.count;
        T* const newReferent = other.referent;
        DropReference();
        count = newCount;
        referent = newReferent;
        return *this;
    }
    /// Adopts `adopted` with a counter of 1 after dropping the reference held so far; nothing when
    /// it is the object held already. When the counter cannot be allocated `adopted` is deleted and
    /// the handle is unchanged.
    cow_CountedHld& operator=(T* adopted) {
        if (adopted == referent && adopted) return *this;
        if (count && Exclusive()) {
            delete std::exchange(referent, adopted);
            return *this;
        }
        cow_Counter* const newCount = NewCounter(adopted);
        DropReference();
        count = newCount;
        referent = adopted;
        return *this;
    }

  protected:
    /// Gives up this handle's share: the last one deletes the object and frees the counter. Both
    /// fields are null then, and only assignment or destruction may follow.
    void DropReference() noexcept {
        if (count && count->Decrement() == 0) {
            delete std::exchange(referent, nullptr);
            delete count;
        }
        count = nullptr;
        referent = nullptr;
    }
    /// Deletes the object for all handles and keeps the counter; this handle is null then.
    void DeleteReferent() noexcept { delete std::exchange(referent, nullptr); }
    /// Deletes the object and the counter, whatever it counts; both fields are null then.
    void Delete() noexcept {
        DeleteReferent();
        delete std::exchange(count, nullptr);
    }

    cow_Counter* count;
    T* referent;

  private:
    template <class Node, class Link>
    friend class cow_Dismantler;
    static cow_Counter* NewCounter(T* adopted) {
        std::unique_ptr<T> owner(adopted);
        cow_Counter* counter = new cow_Counter;
        static_cast<void>(owner.release());
        return counter;
    }
};
