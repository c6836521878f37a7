#include "foundation/shared/cls_Visitors.h"

#include "foundation/shared/cls_Memento.h"

cls_WriteVisitor::~cls_WriteVisitor() = default;

cls_ReadVisitor::~cls_ReadVisitor() = default;

cls_ReadCollectionBase::~cls_ReadCollectionBase() = default;

cls_WriteCollectionBase::~cls_WriteCollectionBase() = default;

cls_ReadBlob::~cls_ReadBlob() = default;

cls_CowHolder::~cls_CowHolder() = default;

cls_MementoWrite::~cls_MementoWrite() = default;

cls_MementoRead::~cls_MementoRead() = default;
