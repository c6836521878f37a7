#pragma once

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "foundation/coreutils/atr_String.h"
#include "foundation/coreutils/cow_String.h"
#include "foundation/shared/cls_CollectionType.h"

/// One kind of collection: the types that its readers and writers accept, and what is said of any
/// other type.
struct idb_CollectionKind {
    cls_CollectionType types[3];  ///< the last one repeated
    const char* readMessage;
    const char* writeMessage;

    /// True for an accepted type; else the message goes to standard error.
    [[nodiscard]] bool AcceptForReading(cls_CollectionType type) const {
        return Accept(type, readMessage);
    }
    [[nodiscard]] bool AcceptForWriting(cls_CollectionType type) const {
        return Accept(type, writeMessage);
    }

  private:
    bool Accept(cls_CollectionType type, const char* message) const {
        if (std::ranges::find(types, type) != std::end(types)) return true;
        std::fputs(atr(message, static_cast<int>(type)).Characters(), stderr);
        return false;
    }
};

template <class T>
extern const idb_CollectionKind idb_ListOf;
template <class K, class T>
extern const idb_CollectionKind idb_MapOf;

/// Stands for objects among the types of elements and values.
struct idb_Objects {};

template <>
inline constexpr idb_CollectionKind idb_ListOf<idb_Objects>{
    {cls_LIST_OBJ, cls_LIST_OBJ, cls_LIST_OBJ},
    "error getting ReadListPrim for object collection type: %d\n",
    "error getting WriteListPrim for object collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_ListOf<bool>{
    {cls_LIST_BOOL, cls_ALT_LIST_BOOL, cls_ALT_LIST_BOOL},
    "error getting ReadListPrim for bool collection type: %d\n",
    "error getting WriteListPrim for bool collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_ListOf<double>{
    {cls_LIST_DOUBLE, cls_ALT_LIST_DOUBLE, cls_ALT_LIST_DOUBLE},
    "error getting ReadListPrim for double collection type: %d\n",
    "error getting WriteListPrim for double collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_ListOf<float>{
    {cls_LIST_FLOAT, cls_ALT_LIST_FLOAT, cls_ALT_LIST_FLOAT},
    "error getting ReadListPrim for float collection type: %d\n",
    "error getting WriteListPrim for float collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_ListOf<int>{
    {cls_LIST_INT, cls_ALT_LIST_INT, cls_ALT_LIST_INT},
    "error getting ReadListPrim for int collection type: %d\n",
    "error getting WriteListPrim for int collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_ListOf<cow_String>{
    {cls_LIST_STRING, cls_ALT_LIST_STRING, cls_ALT_LIST_STRING},
    "error getting ReadListPrim for string collection type: %d\n",
    "error getting WriteListPrim for string collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_ListOf<unsigned>{
    {cls_LIST_UINT, cls_ALT_LIST_UINT, cls_ALT_LIST_UINT},
    "error getting ReadListPrim for unsigned int collection type: %d\n",
    "error getting WriteListPrim for unsigned int collection type: %d\n"};

template <>
inline constexpr idb_CollectionKind idb_MapOf<cow_String, idb_Objects>{
    {cls_MAP_STRING_OBJ, cls_ALT_MAP_STRING_OBJ, cls_ALT2_MAP_STRING_OBJ},
    "error getting ReadMap string to obj collection type: %d\n",
    "error getting WriteMap string to obj collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<cow_String, double>{
    {cls_MAP_STRING_DOUBLE, cls_MAP_STRING_DOUBLE, cls_MAP_STRING_DOUBLE},
    "error getting ReadListMap string to double collection type: %d\n",
    "error getting WriteListMap string to double collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<cow_String, float>{
    {cls_MAP_STRING_FLOAT, cls_MAP_STRING_FLOAT, cls_MAP_STRING_FLOAT},
    "error getting ReadListMap string to float collection type: %d\n",
    "error getting WriteListMap string to float collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<cow_String, int>{
    {cls_MAP_STRING_INT, cls_MAP_STRING_INT, cls_MAP_STRING_INT},
    "error getting ReadListMap string to int collection type: %d\n",
    "error getting WriteListMap string to int collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<cow_String, cow_String>{
    {cls_MAP_STRING_STRING, cls_MAP_STRING_STRING, cls_MAP_STRING_STRING},
    "error getting ReadListMap string to string collection type: %d\n",
    "error getting WriteListMap string to string collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<cow_String, unsigned>{
    {cls_MAP_STRING_UINT, cls_MAP_STRING_UINT, cls_MAP_STRING_UINT},
    "error getting ReadListMap string to uint collection type: %d\n",
    "error getting WriteListMap string to uint collection type: %d\n"};

template <>
inline constexpr idb_CollectionKind idb_MapOf<int, idb_Objects>{
    {cls_MAP_INT_OBJ, cls_MAP_INT_OBJ, cls_MAP_INT_OBJ},
    "error getting ReadMap int to obj collection type: %d\n",
    "error getting WriteMap int to obj collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<int, double>{
    {cls_MAP_INT_DOUBLE, cls_MAP_INT_DOUBLE, cls_MAP_INT_DOUBLE},
    "error getting ReadListMap int to double collection type: %d\n",
    "error getting WriteListMap int to double collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<int, float>{
    {cls_MAP_INT_FLOAT, cls_MAP_INT_FLOAT, cls_MAP_INT_FLOAT},
    "error getting ReadListMap int to float collection type: %d\n",
    "error getting WriteListMap int to float collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<int, int>{
    {cls_MAP_INT_INT, cls_MAP_INT_INT, cls_MAP_INT_INT},
    "error getting ReadListMap int to int collection type: %d\n",
    "error getting WriteListMap int to int collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<int, cow_String>{
    {cls_MAP_INT_STRING, cls_MAP_INT_STRING, cls_MAP_INT_STRING},
    "error getting ReadListMap int to string collection type: %d\n",
    "error getting WriteListMap int to string collection type: %d\n"};
template <>
inline constexpr idb_CollectionKind idb_MapOf<int, unsigned>{
    {cls_MAP_INT_UINT, cls_MAP_INT_UINT, cls_MAP_INT_UINT},
    "error getting ReadListMap int to uint collection type: %d\n",
    "error getting WriteListMap int to uint collection type: %d\n"};

/// A run of raw bytes has no type number of its own.
inline constexpr idb_CollectionKind idb_Blob{
    {cls_NO_COLLECTION, cls_NO_COLLECTION, cls_NO_COLLECTION},
    "error getting ReadBlob collection type: %d\n",
    "error getting WriteBlob collection type: %d\n"};
