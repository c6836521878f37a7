#pragma once

/// What a collection field holds: container and element type, by the number that archives keep.
///
/// Kept: lists of unsigned integers are 57 and 87 while maps to unsigned integers are 66 and 76,
/// and a list answers to two numbers where a map of primitive values answers to one; one would have
/// expected the same last digit and the same rule for both. The metadata of every stored class rely
/// on the numbers.
enum cls_CollectionType : int {
    cls_NO_COLLECTION = 0,
    cls_LIST_OBJ = 1,
    cls_MAP_STRING_OBJ = 2,
    cls_MAP_INT_OBJ = 3,
    cls_LIST_BOOL = 51,
    cls_LIST_DOUBLE = 52,
    cls_LIST_FLOAT = 53,
    cls_LIST_INT = 54,
    cls_LIST_STRING = 55,
    cls_LIST_UINT = 57,
    cls_MAP_STRING_DOUBLE = 62,
    cls_MAP_STRING_FLOAT = 63,
    cls_MAP_STRING_INT = 64,
    cls_MAP_STRING_STRING = 65,
    cls_MAP_STRING_UINT = 66,
    cls_MAP_INT_DOUBLE = 72,
    cls_MAP_INT_FLOAT = 73,
    cls_MAP_INT_INT = 74,
    cls_MAP_INT_STRING = 75,
    cls_MAP_INT_UINT = 76,
    cls_ALT_LIST_BOOL = 81,
    cls_ALT_LIST_DOUBLE = 82,
    cls_ALT_LIST_FLOAT = 83,
    cls_ALT_LIST_INT = 84,
    cls_ALT_LIST_STRING = 85,
    cls_ALT_LIST_UINT = 87,
    cls_ALT_MAP_STRING_OBJ = 93,
    cls_ALT2_MAP_STRING_OBJ = 112,
};
