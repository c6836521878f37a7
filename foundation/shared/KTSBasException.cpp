#include "foundation/shared/KTSBasException.h"

KTSBasException::~KTSBasException() = default;
