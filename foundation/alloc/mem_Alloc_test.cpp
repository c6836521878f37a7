#include "foundation/alloc/mem_Alloc.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <new>
#include <thread>
#include <vector>

#include "foundation/alloc/KTSBasAlloc.h"
#include "testing/test_FailingAllocator.h"

namespace {

struct Tiny {
    unsigned char* block;
    std::size_t bytes;
};

bool HoldsOnly(const Tiny& tiny, unsigned char value) {
    for (std::size_t i = 0; i < tiny.bytes; ++i) {
        if (tiny.block[i] != value) return false;
    }
    return true;
}

TEST(mem_Alloc, TinyBlocksOfEverySizeAreAlignedAndApart) {
    const std::size_t before = mem_LiveBlocks();
    std::vector<Tiny> blocks;
    for (int round = 0; round < 3; ++round) {
        for (std::size_t bytes = 0; bytes <= mem_TinyLimit + 20; ++bytes) {
            auto* block = static_cast<unsigned char*>(mem_OperatorNewTinyThrow(bytes));
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % 8, 0u);
            std::memset(block, static_cast<int>(blocks.size() % 251), bytes);
            blocks.push_back({block, bytes});
        }
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            EXPECT_TRUE(HoldsOnly(blocks[i], static_cast<unsigned char>(i % 251))) << i;
        }
        EXPECT_EQ(mem_LiveBlocks(), before + blocks.size());
        const std::size_t kept = round == 2 ? 0 : blocks.size() / 2;
        for (; blocks.size() > kept; blocks.pop_back()) {
            mem_OperatorDeleteTiny(blocks.back().block, blocks.back().bytes);
        }
    }
    mem_OperatorDeleteTiny(nullptr, 8);
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(mem_Alloc, ReallocKeepsTheContentAndAFailureKeepsTheBlock) {
    const std::size_t before = mem_LiveBlocks();
    char* text = static_cast<char*>(mem_Realloc(nullptr, 6));
    std::memcpy(text, "block", 6);
    text = static_cast<char*>(mem_Realloc(text, 100000));
    EXPECT_STREQ(text, "block");
    EXPECT_THROW(text = static_cast<char*>(mem_Realloc(text, SIZE_MAX - 16)), std::bad_alloc);
    EXPECT_STREQ(text, "block");
    EXPECT_EQ(mem_LiveBlocks(), before + 1);
    mem_Free(text);
    mem_Free(nullptr);
    EXPECT_THROW(static_cast<void>(mem_Malloc(SIZE_MAX)), std::bad_alloc);
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(mem_Alloc, HookFailsTheChosenRequestOnly) {
    const std::size_t before = mem_LiveBlocks();
    {
        const test_FailingAllocator failSecond(2);
        void* first = mem_OperatorNewTinyThrow(8);
        EXPECT_THROW(static_cast<void>(mem_OperatorNewTinyThrow(8)), std::bad_alloc);
        EXPECT_TRUE(test_FailingAllocator::HasFailed());
        void* third = mem_Malloc(0);
        EXPECT_NE(third, nullptr);
        mem_Free(third);
        mem_OperatorDeleteTiny(first, 8);
    }
    for (int request = 1; request <= 2; ++request) {
        const test_FailingAllocator failing(1);
        EXPECT_THROW(static_cast<void>(request == 1 ? mem_Malloc(8) : mem_Realloc(nullptr, 8)),
                     std::bad_alloc);
    }
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(mem_Alloc, ThreadsShareThePool) {
    const std::size_t before = mem_LiveBlocks();
    std::vector<std::thread> threads;
    std::vector<int> intact(4, 0);
    for (int t = 0; t < 4; ++t) {
        threads.emplace_back([t, &intact] {
            std::vector<Tiny> blocks;
            for (std::size_t i = 0; i < 20000; ++i) {
                const std::size_t bytes = 8 + i % 48;
                auto* block = static_cast<unsigned char*>(mem_OperatorNewTinyThrow(bytes));
                std::memset(block, t, bytes);
                blocks.push_back({block, bytes});
            }
            bool whole = true;
            for (const Tiny& tiny : blocks) {
                whole = whole && HoldsOnly(tiny, static_cast<unsigned char>(t));
                mem_OperatorDeleteTiny(tiny.block, tiny.bytes);
            }
            intact[static_cast<std::size_t>(t)] = whole;
        });
    }
    for (std::thread& thread : threads) thread.join();
    EXPECT_EQ(intact, std::vector<int>(4, 1));
    EXPECT_EQ(mem_LiveBlocks(), before);
}

TEST(KTSBasAlloc, CountsOnceAndServesOutsideItsPair) {
    int count = 5;
    KTSBasAlloc_initialize(count);
    KTSBasAlloc_initialize(count);
    EXPECT_EQ(count, 6);
    auto* held = static_cast<int*>(mem_OperatorNewTinyThrow(sizeof(int)));
    *held = 42;
    KTSBasAlloc_finalize(count);
    KTSBasAlloc_finalize(count);
    EXPECT_EQ(count, 5);
    EXPECT_EQ(*held, 42);
    mem_OperatorDeleteTiny(held, sizeof(int));
    KTSBasAlloc_initialize(count);
    KTSBasAlloc_finalize(count);
    EXPECT_EQ(count, 5);
    auto* after = static_cast<int*>(mem_OperatorNewTinyThrow(sizeof(int)));
    *after = 7;
    EXPECT_EQ(*after, 7);
    mem_OperatorDeleteTiny(after, sizeof(int));
}

}  // namespace
