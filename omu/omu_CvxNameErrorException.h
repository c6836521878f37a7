#pragma once

#include <cstdint>

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/nex_Exception.h"

class cls_ClassRegistrar;

/// What is wrong with the name of an object. Stored exceptions may hold other values.
enum omu_CvxNameErrorEnm : int {
    omu_NAME_INVALID = 0,        ///< a plain, interface, X-Y or part name
    omu_NAME_EMPTY = 1,          ///< a name of any kind
    omu_NAME_INVALID_JOB = 2,    ///< any fault of a job name but emptiness
    omu_NAME_INVALID_MODEL = 3,  ///< any fault of a model name but emptiness
    omu_NAME_PART_TOO_LONG = 4,  ///< a part name of more than 80 characters
};

/// A name that an object cannot have: "CorvixNameError" in Python.
class KTSOVUGEOM_API omu_CvxNameErrorException
    : public nex_ExceptionLayer<omu_CvxNameErrorException, nex_CommandException> {
  public:
    explicit omu_CvxNameErrorException(omu_CvxNameErrorEnm nameError) : error(nameError) {}
    explicit omu_CvxNameErrorException(cls_ReadVisitor& visitor);

    [[nodiscard]] omu_CvxNameErrorEnm Error() const noexcept { return error; }
    [[nodiscard]] const char* PythonType() const override;
    /// "invalid name", "name is empty", "invalid job name" or "invalid model name".
    ///
    /// Kept: a part name of 81 characters is refused with an empty message, as every error value
    /// but 0 to 3 gives; one would have expected "invalid name". Scripts that tell the long part
    /// name from the others rely on the empty text.
    [[nodiscard]] cow_String JournalMessage(KTSBasStringMode mode) const override;

    /// 19:9.
    [[nodiscard]] static constexpr std::uint32_t TypeId() noexcept { return typ_TypeId(19, 9); }
    /// Writes "m_Error".
    void DBWrite(cls_WriteVisitor& visitor) const override;
    static void InitializeMetadata(cls_ClassRegistrar& registrar);

  private:
    omu_CvxNameErrorEnm error = omu_NAME_INVALID;
};
