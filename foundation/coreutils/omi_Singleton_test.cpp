#include "foundation/coreutils/omi_Singleton.h"

#include <gtest/gtest.h>

#include <cstddef>

#include "testing/test_FailingAllocator.h"

namespace {

struct Counter {
    Counter() { ++living; }
    ~Counter() { --living; }
    int value = 0;
    static inline int living = 0;
    static inline Counter* singleton = nullptr;
};

TEST(omi_Singleton, LivesFromFirstUseToFinalizeAndAgain) {
    const int registered = omi_SingletonRegistry::Size();
    omi_SingletonBase<Counter>::Finalize();
    EXPECT_FALSE(omi_Singleton<Counter>::Exists());

    omi_Singleton<Counter>::Instance().value = 7;
    EXPECT_EQ(omi_Singleton<Counter>::Instance().value, 7);
    EXPECT_EQ(omi_SingletonRegistry::Size(), registered + 1);
    EXPECT_EQ(omi_SingletonRegistry::Find(typeid(Counter).name()),
              &omi_Singleton<Counter>::Instance());

    omi_SingletonBase<Counter>::Finalize();
    EXPECT_EQ(Counter::living, 0);
    EXPECT_EQ(omi_Singleton<Counter>::Instance().value, 0);
    omi_SingletonBase<Counter>::Finalize();
    EXPECT_EQ(omi_SingletonRegistry::Size(), registered);
}

TEST(omi_Singleton, AFailedRegistrationLeavesNoInstance) {
    {
        const test_FailingAllocator failing(1);
        EXPECT_THROW((void)omi_Singleton<Counter>::Instance(), std::bad_alloc);
    }
    EXPECT_EQ(Counter::living, 0);
    EXPECT_FALSE(omi_Singleton<Counter>::Exists());
}

struct AsksForItself {
    AsksForItself() {
        if (!asked) {
            asked = true;
            (void)omi_Singleton<AsksForItself>::Instance();
        }
    }
    static inline bool asked = false;
    static inline AsksForItself* singleton = nullptr;
};

TEST(omi_SingletonDeathTest, AConstructorThatAsksForItsInstanceEndsTheProcess) {
    EXPECT_DEATH((void)omi_Singleton<AsksForItself>::Instance(), "");
}

TEST(omi_SingletonRegistry, KeepsTheFirstOfANameAndItsOwnCopyOfIt) {
    int first = 0;
    int second = 0;
    char name[] = "test_Name";
    EXPECT_EQ(omi_SingletonRegistry::Register(name, &first), &first);
    EXPECT_EQ(omi_SingletonRegistry::Register("test_Name", &second), &first);
    name[0] = 'X';
    EXPECT_EQ(omi_SingletonRegistry::Remove("test_Name"), &first);
    EXPECT_EQ(omi_SingletonRegistry::Remove("test_Name"), nullptr);
}

}  // namespace
