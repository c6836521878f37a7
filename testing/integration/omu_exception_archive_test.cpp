// The scripting exceptions through the records of the archive, with the library as it is loaded.

#include <gtest/gtest.h>

#include <cstddef>
#include <memory>
#include <string>
#include <typeinfo>
#include <vector>

#include "foundation/shared/bio_Ofilter.h"
#include "foundation/shared/cls_FoundationClasses.h"
#include "idb/idb_Archive.h"
#include "omu/omu_AttributeErrorException.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_CvxNameErrorException.h"
#include "omu/omu_RangeErrorException.h"
#include "omu/omu_TypeErrorException.h"

namespace {

using Bytes = std::vector<std::byte>;
using Limit = omu_RangeErrorException::Limit;

Bytes Save(const nex_Exception& exception) {
    bio_Ofilter out;
    idb_SaveObject(out, exception);
    return Bytes(out.Data(), out.Data() + out.Size());
}

/// What archives give back for an exception of class `classId` or one in its place.
std::unique_ptr<nex_Exception> Load(const Bytes& bytes,
                                    std::uint32_t classId = cls_BASE_EXCEPTION_CLASS) {
    idb_LoadFault fault;
    idb_ObjectPtr object = idb_LoadAnyObject(bytes.data(), bytes.size(), classId, fault);
    EXPECT_EQ(object == nullptr, fault.status != idb_LoadStatusEnm::Loaded) << fault.text.View();
    return object ? static_cast<nex_Exception*>(object.get())->Clone() : nullptr;
}

void ExpectSurvives(const nex_Exception& exception) {
    const Bytes bytes = Save(exception);
    const std::unique_ptr<nex_Exception> loaded = Load(bytes);
    ASSERT_NE(loaded, nullptr) << exception.what();
    EXPECT_TRUE(typeid(*loaded) == typeid(exception)) << typeid(exception).name();
    EXPECT_STREQ(loaded->what(), exception.what());
    EXPECT_STREQ(loaded->PythonType(), exception.PythonType());
    EXPECT_EQ(Save(*loaded), bytes);
}

TEST(omu_ExceptionArchive, EveryClassComesBackAsItself) {
    ExpectSurvives(omu_TypeErrorException());
    ExpectSurvives(omu_ArgNumberErrorException(2, 3, "command"));
    ExpectSurvives(omu_ArgTypeErrorException(4, "int", "string", "points"));
    ExpectSurvives(omu_KeywordErrorException("in ", "zz"));
    ExpectSurvives(omu_KeywordTypeErrorException("k", "int", "float", ""));
    ExpectSurvives(omu_KeywordTypeErrorException("k", "int", "float", "k[1]"));
    ExpectSurvives(omu_GenericTypeErrorException());
    ExpectSurvives(omu_RangeErrorException("n", 2, {"0.0", omu_LIMIT_INCLUDED}, {}));
    ExpectSurvives(omu_RangeErrorException(
        "n", 1, {"0", static_cast<omu_RangeQualifierEnm>(4294967295)}, {"1", omu_LIMIT_EXCLUDED}));
    ExpectSurvives(omu_AttributeErrorException(7));
    ExpectSurvives(omu_AttributeErrorException::NoSuchMember("Part", "nmae"));
    for (const int error : {0, 1, 2, 3, 4, -1}) {
        ExpectSurvives(omu_CvxNameErrorException(static_cast<omu_CvxNameErrorEnm>(error)));
    }
    ExpectSurvives(omu_KeyErrorException("k"));
    ExpectSurvives(omu_IndexErrorException(-3));
    ExpectSurvives(omu_ValueErrorException("v"));
    ExpectSurvives(omu_OverflowErrorException("o"));
    ExpectSurvives(omu_NameErrorException("n"));
    ExpectSurvives(omu_ZeroDivisionErrorException("z"));
    ExpectSurvives(omu_AccessErrorException("a"));
    ExpectSurvives(omu_PyCorvixException("p"));
    ExpectSurvives(omu_GuiAccessErrorException("g"));
    ExpectSurvives(omu_FontErrorException("f"));
}

TEST(omu_ExceptionArchive, RecordHoldsTheFieldsInTheOrderOfTheirNames) {
    const unsigned char expected[] = {
        2, 0, 19, 0, 1,   0,   0,   0, 0,  // class 19:2, a value, no reference
        2, 0, 0,  0, 3,   0,   0,   0,     // m_Expected, m_Found
        3, 0, 0,  0, 'c', 'm', 'd',        // m_Context
    };
    const Bytes bytes = Save(omu_ArgNumberErrorException(2, 3, "cmd"));
    ASSERT_EQ(bytes.size(), sizeof expected);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        EXPECT_EQ(static_cast<unsigned>(bytes[i]), expected[i]) << i;
    }
}

TEST(omu_ExceptionArchive, DerivedClassesTakeThePlaceOfTheirParent) {
    const Bytes keyword = Save(omu_KeywordErrorException("", "zz"));
    EXPECT_NE(Load(keyword, omu_TypeErrorException::TypeId()), nullptr);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Load(keyword, omu_ArgNumberErrorException::TypeId()), nullptr);
    EXPECT_EQ(Load(Save(omu_KeyErrorException("k")), omu_TypeErrorException::TypeId()), nullptr);
    testing::internal::GetCapturedStderr();
}

}  // namespace
