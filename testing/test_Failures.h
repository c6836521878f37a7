#pragma once

#include <gtest/gtest.h>

#include <exception>

#include "foundation/alloc/mem_Alloc.h"
#include "testing/test_FailingAllocator.h"
#include "testing/test_ThrowingElement.h"

enum class test_Failing { kCopies, kRequests };

/// Runs `use` with the n-th copy of an element in it failing, or the n-th request to the allocator.
/// True when it failed.
template <class Use>
bool test_Fails(test_Failing what, int n, const Use& use) {
    bool hasFailed = false;
    test_ThrowingElement::FailCopy(what == test_Failing::kCopies ? n : 0);
    try {
        const test_FailingAllocator failing(what == test_Failing::kRequests ? n : 0);
        use();
    } catch (const std::exception&) {
        hasFailed = true;
    }
    test_ThrowingElement::FailCopy(0);
    return hasFailed;
}

/// Expects at its end that the blocks and elements are gone that came while it lived, and that no
/// element was used where there was none.
class test_NothingLeft {
  public:
    test_NothingLeft() = default;
    ~test_NothingLeft() {
        EXPECT_EQ(mem_LiveBlocks(), blocks);
        EXPECT_EQ(test_ThrowingElement::Live(), elements);
        EXPECT_EQ(test_ThrowingElement::Faults(), 0);
    }
    test_NothingLeft(const test_NothingLeft&) = delete;
    test_NothingLeft& operator=(const test_NothingLeft&) = delete;

  private:
    std::size_t blocks = mem_LiveBlocks();
    int elements = test_ThrowingElement::Live();
};
