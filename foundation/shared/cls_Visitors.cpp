#include "foundation/shared/cls_Visitors.h"

cls_WriteVisitor::~cls_WriteVisitor() = default;

cls_ReadVisitor::~cls_ReadVisitor() = default;

cls_ReadCollectionBase::~cls_ReadCollectionBase() = default;

cls_WriteCollectionBase::~cls_WriteCollectionBase() = default;
