#pragma once

#include <cstdlib>
#include <string>

#include "foundation/basicutils/KTSBasOmniSSELevel.h"

/// Sets the environment variable `name`; null removes it.
inline void test_SetVariable(const char* name, const char* value) {
#if defined(_WIN32)
    _putenv((std::string(name) + "=" + (value ? value : "")).c_str());
#else
    if (value != nullptr) {
        setenv(name, value, 1);
    } else {
        unsetenv(name);
    }
#endif
}

/// Forces the processor level of the numeric runtime while it lives, without a message.
class test_SseLevel {
  public:
    explicit test_SseLevel(const char* level) { Force(level); }
    ~test_SseLevel() {
        // An unknown level leaves the features as the processor has them.
        Force("as read");
        test_SetVariable("ZRX_SSE_LEVEL", nullptr);
        test_SetVariable("ZRX_SSE_LEVEL_NOTIFIED", nullptr);
    }
    test_SseLevel(const test_SseLevel&) = delete;
    test_SseLevel& operator=(const test_SseLevel&) = delete;

  private:
    static void Force(const char* level) {
        test_SetVariable("ZRX_SSE_LEVEL", level);
        test_SetVariable("ZRX_SSE_LEVEL_NOTIFIED", nullptr);
        KTSBasOmniSetSSELevel();
    }
};
