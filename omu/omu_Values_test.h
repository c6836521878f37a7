#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "omu/omu_CmdExceptions.h"
#include "omu/omu_InterfaceObj.h"
#include "omu/omu_PrimList.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"

/// Values of scripts in few words, and what becomes of them.
namespace omu_test {

inline omu_PrimNumber I(int number) { return number; }
inline omu_PrimNumber U(unsigned number) { return number; }
inline omu_PrimNumber F(float number) { return number; }
inline omu_PrimNumber D(double number) { return number; }
inline omu_PrimString S(const char* text) { return omu_PrimString(cow_String(text)); }

template <class... Values>
omu_PrimTuple Tuple(const Values&... values) {
    cow_List<omu_PrimHandle> handles;
    (handles.Append(omu_PrimHandle(values.Copy())), ...);
    return omu_PrimTuple(handles);
}
template <class... Values>
omu_PrimList List(const Values&... values) {
    omu_PrimList list;
    (list.Append(values), ...);
    return list;
}

/// An object of the application.
class Arrow : public omu_InterfaceObj {
  public:
    [[nodiscard]] cow_String TypeString() const override { return "Arrow"; }
    [[nodiscard]] bool operator==(const omu_Primitive& other) const override {
        return dynamic_cast<const Arrow*>(&other) != nullptr;
    }
    [[nodiscard]] Arrow* Copy() const override { return new Arrow(*this); }
};

/// The text of `owned`, which ends with the call.
inline cow_String TextOf(const omu_Primitive* owned) {
    return std::unique_ptr<const omu_Primitive>(owned)->AsString(0);
}

/// The text of the `omu_ValueErrorException` that `use` raises; "" for none.
template <class Use>
cow_String MessageOf(const Use& use) {
    try {
        static_cast<void>(use());
    } catch (const omu_ValueErrorException& raised) {
        return raised.JournalMessage(KTSBasStringMode::Untranslated);
    }
    return {};
}

/// What `use` prints on standard error.
template <class Use>
std::string PrintedBy(const Use& use) {
    testing::internal::CaptureStderr();
    use();
    return testing::internal::GetCapturedStderr();
}

}  // namespace omu_test
