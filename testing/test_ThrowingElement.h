#pragma once

#include <stdexcept>

/// An element that counts its live objects, notices when it was not constructed where it lies, and
/// throws `Failure` at a chosen copy. It has no move operations.
class test_ThrowingElement {
  public:
    struct Failure : std::runtime_error {
        Failure() : std::runtime_error("scheduled failure of a copy") {}
    };

    test_ThrowingElement() : test_ThrowingElement(0) {}
    explicit test_ThrowingElement(int initial) : value(initial), self(this) { ++live; }
    test_ThrowingElement(const test_ThrowingElement& other) : value(other.Value()), self(this) {
        CountCopy();
        ++live;
    }
    ~test_ThrowingElement() {
        if (self != this) ++faults;
        self = nullptr;
        --live;
    }
    test_ThrowingElement& operator=(const test_ThrowingElement& other) {
        if (self != this) ++faults;
        CountCopy();
        value = other.Value();
        return *this;
    }

    [[nodiscard]] int Value() const {
        if (self != this) ++faults;
        return value;
    }
    friend bool operator==(const test_ThrowingElement& a, const test_ThrowingElement& b) {
        return a.Value() == b.Value();
    }

    /// Makes the n-th copy from now fail, counted from 1; 0 is never.
    static void FailCopy(int n) { countdown = n; }
    [[nodiscard]] static int Live() { return live; }
    /// How often storage was used that held no element.
    [[nodiscard]] static int Faults() { return faults; }

  private:
    static void CountCopy() {
        if (countdown > 0 && --countdown == 0) throw Failure();
    }

    int value;
    const test_ThrowingElement* self;
    static inline int countdown = 0;
    static inline int live = 0;
    static inline int faults = 0;
};
