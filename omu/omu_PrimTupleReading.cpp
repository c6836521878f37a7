// How a tuple is read as positional arguments.

#include "foundation/coreutils/atr_String.h"
#include "omu/omu_ArgumentTypes.h"
#include "omu/omu_PrimTuple.h"
#include "omu/omu_TypeErrorException.h"

void omu_PrimTuple::Begin() {
    size = Length();
    cursor = 0;
    reqcount = 0;
    argcount = 0;
    numGets = 0;
    isOptional = false;
    canWithdraw = false;
    ClearFault();
}

void omu_PrimTuple::ClearFault() {
    errorArg = 0;
    typeFound = kUndetermined;
    typeExpected = kUndetermined;
    faultPlace.clear();
}

bool omu_PrimTuple::Take(const omu_Primitive& argument, const omu_ArgumentTarget& target) {
    omu_TypeFault fault;
    if (target.Take(argument, fault)) return true;
    errorArg = cursor + 1;
    typeFound = fault.found;
    typeExpected = fault.expected;
    faultPlace = fault.place;
    return false;
}

void omu_PrimTuple::CountGet() {
    ++numGets;
    ++cursor;
    ++argcount;
    if (!isOptional) ++reqcount;
    canWithdraw = true;
    lastWasRequired = !isOptional;
}

bool omu_PrimTuple::Read(const omu_ArgumentTarget& target) {
    const bool taken = errorArg == 0 && cursor < size && Take(*Index(cursor), target);
    CountGet();
    return taken;
}

void omu_PrimTuple::Get(omu_PrimTuple& value) {
    const cow_String place = PlaceOf(cursor + 1);
    if (Read(omu_ArgumentTarget(value))) value.SetNestedErrorStr(place);
}

bool omu_PrimTuple::ErrorOnPrevious() const { return canWithdraw && errorArg == numGets; }

bool omu_PrimTuple::Alternative() {
    if (!canWithdraw) return false;
    if (ErrorOnPrevious()) {
        ClearFault();
    } else if (errorArg != 0 || numGets > size) {
        return false;
    }
    StepBack();
    return true;
}

void omu_PrimTuple::StepBack() {
    --numGets;
    --cursor;
    --argcount;
    if (lastWasRequired) --reqcount;
    canWithdraw = false;
}

bool omu_PrimTuple::Error() const { return errorArg != 0 || size < reqcount || size > cursor; }

void omu_PrimTuple::End(const cow_String& context) const {
    if (errorArg != 0) KTSBasThrow(TypeFault());
    if (size < reqcount) KTSBasThrow(omu_ArgNumberErrorException(reqcount, size, context));
    if (size > cursor) KTSBasThrow(omu_ArgNumberErrorException(cursor, size, context));
}

cow_String omu_PrimTuple::PlaceOf(int number) const {
    return nestedErrorStr.IsEmpty() ? atr("arg%d", number)
                                    : nestedErrorStr + atr("[%d]", number - 1);
}

// The last index of the place stands in the exception as the number of the argument.
omu_ArgTypeErrorException omu_PrimTuple::TypeFault() const {
    if (faultPlace.empty()) return {errorArg, typeExpected, typeFound, nestedErrorStr};
    cow_String place = PlaceOf(errorArg);
    for (std::size_t i = 0; i + 1 < faultPlace.size(); ++i)
        place = place + atr("[%d]", faultPlace[i]);
    return {faultPlace.back() + 1, typeExpected, typeFound, place};
}
