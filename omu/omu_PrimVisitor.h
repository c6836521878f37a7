#pragma once

#include "cow/KTSOvuGeomExport.h"
#include "foundation/coreutils/cow_String.h"

class omu_InterfaceObj;
class omu_PrimArray;
class omu_PrimBoolean;
class omu_PrimComplex;
class omu_PrimEnumBase;
class omu_PrimException;
class omu_PrimExpr;
class omu_PrimList;
class omu_PrimNone;
class omu_PrimNumber;
class omu_PrimPath;
class omu_PrimString;
class omu_PrimTranslatedString;
class omu_PrimTuple;
class omu_PrimType;
class omu_PrimWrapper;
class omu_PyObjectWrapper;
template <class Key>
class omu_PrimDictionary;

/// An operation that differs by the kind of a primitive: `primitive.Accept(&visitor)` calls the
/// `Visit` of its kind. Each does nothing unless it is overridden; elements of sequences and
/// dictionaries are not visited by themselves.
class KTSOVUGEOM_API omu_PrimVisitor {
  public:
    virtual ~omu_PrimVisitor();

    virtual void Visit(const omu_PrimNumber&) {}
    virtual void Visit(const omu_PrimBoolean&) {}
    virtual void Visit(const omu_PrimComplex&) {}
    virtual void Visit(const omu_PrimString&) {}
    virtual void Visit(const omu_PrimTranslatedString&) {}
    virtual void Visit(const omu_PrimNone&) {}
    virtual void Visit(const omu_PrimEnumBase&) {}
    virtual void Visit(const omu_PrimPath&) {}
    virtual void Visit(const omu_PrimExpr&) {}
    virtual void Visit(const omu_PrimType&) {}
    virtual void Visit(const omu_PrimWrapper&) {}
    virtual void Visit(const omu_PyObjectWrapper&) {}
    virtual void Visit(const omu_PrimException&) {}
    virtual void Visit(const omu_PrimArray&) {}
    virtual void Visit(const omu_PrimTuple&) {}
    virtual void Visit(const omu_PrimList&) {}
    virtual void Visit(const omu_PrimDictionary<int>&) {}
    virtual void Visit(const omu_PrimDictionary<cow_String>&) {}
    virtual void Visit(const omu_InterfaceObj&) {}
};
