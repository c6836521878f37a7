// The record of an array.

#include <cstdio>
#include <cstring>

#include "omu/detail/omu_ArrayElements.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimArray.h"

using namespace omu_array;

namespace {

constexpr cls_FieldHandle kDataType("_dataType");
constexpr cls_FieldHandle kPyType("_pyType");
constexpr cls_FieldHandle kDims("_dims");

/// The collection of elements of type `T` in records.
template <class T>
struct Stored;
template <>
struct Stored<int> {
    static constexpr DataTypeEnm kType = omu_PrimNumber::INT;
    static constexpr cls_FieldHandle kField{"_ints"};
};
template <>
struct Stored<float> {
    static constexpr DataTypeEnm kType = omu_PrimNumber::FLOAT;
    static constexpr cls_FieldHandle kField{"_floats"};
};
template <>
struct Stored<double> {
    static constexpr DataTypeEnm kType = omu_PrimNumber::DOUBLE;
    static constexpr cls_FieldHandle kField{"_doubles"};
};

template <class T>
cow_List<T> ReadList(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    const auto body = visitor.MakeReadObj(field);
    const auto reader = body ? body->MakeReadListPrim(T{}) : nullptr;
    return reader ? reader->ConstGetList() : cow_List<T>();
}

}  // namespace

// The form must be that of the elements which are there, before anything is made of it.
template <class T>
void omu_PrimArray::ReadElements(cls_ReadVisitor& visitor, std::span<const int> dimensions) {
    const cow_List<T> elements = ReadList<T>(visitor, Stored<T>::kField);
    if (BytesOf(dimensions, StridesOf(dimensions, sizeof(T))) !=
        std::int64_t{elements.Length()} * std::int64_t{sizeof(T)}) {
        Fail(atr("%d elements do not fill the extents", elements.Length()));
    }
    FromDimsAndData(dimensions, Stored<T>::kType, nullptr);
    char* target = data.GetPtr()->Get();
    elements.ForEachSpan([&target](std::span<const T> part) {
        std::memcpy(target, part.data(), part.size_bytes());
        target += part.size_bytes();
    });
}

omu_PrimArray omu_PrimArray::FromRecord(cls_ReadVisitor& visitor) {
    const int type = visitor.ReadEnumAsInt(kDataType);
    omu_PrimArray array;
    char code = array.pyType;
    visitor.Read(kPyType, code);
    const std::vector<int> dimensions = ToVector(ReadList<int>(visitor, kDims));
    try {
        if (type == omu_PrimNumber::INT) {
            array.ReadElements<int>(visitor, dimensions);
        } else if (type == omu_PrimNumber::FLOAT) {
            array.ReadElements<float>(visitor, dimensions);
        } else if (type == omu_PrimNumber::DOUBLE) {
            array.ReadElements<double>(visitor, dimensions);
        } else {
            Fail(kForeignType);
        }
    } catch (const omu_ValueErrorException& refused) {
        const cow_String text = refused.JournalMessage(KTSBasStringMode::Untranslated);
        std::fprintf(stderr, "omu_PrimArray record refused: %s\n", text.Characters());
        return {};
    }
    array.pyType = code;
    return array;
}

omu_PrimArray::omu_PrimArray(cls_ReadVisitor& visitor) : omu_PrimArray(FromRecord(visitor)) {}

template <class T>
void omu_PrimArray::WriteElements(cls_WriteVisitor& visitor) const {
    const auto body = visitor.MakeWriteObj(Stored<T>::kField, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListPrim(T{}, 1) : nullptr;
    if (writer) writer->Write(reinterpret_cast<const T*>(ConstGetData()), numElements);
}

void omu_PrimArray::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.WriteEnumAsInt(kDataType, elementType);
    visitor.Write(kPyType, pyType);
    if (const auto body = visitor.MakeWriteObj(kDims, 0, cls_Uid())) {
        const auto writer = body->MakeWriteListPrim(int{}, 1);
        if (writer) writer->Write(extents);
    }
    if (elementType == omu_PrimNumber::INT) {
        WriteElements<int>(visitor);
    } else if (elementType == omu_PrimNumber::FLOAT) {
        WriteElements<float>(visitor);
    } else {
        WriteElements<double>(visitor);
    }
}

void omu_PrimArray::InitializeMetadata(cls_ClassRegistrar& registrar) {
    const auto list = [](cls_ClassMetadata& metadata, const cls_FieldHandle& field,
                         cls_CollectionType type) {
        metadata.AddAttribute(field.Name(), cls_KIND_COLLECTION, 0, type);
    };
    cls_ClassMetadata metadata =
        omu_MetadataOf<omu_PrimArray>("omu_PrimArray", omu_PrimSequence::kTypeId);
    metadata.AddAttribute(kDataType.Name(), cls_KIND_ENUM);
    metadata.AddAttribute(kPyType.Name(), cls_KIND_CHAR);
    list(metadata, kDims, cls_LIST_INT);
    list(metadata, Stored<int>::kField, cls_LIST_INT);
    list(metadata, Stored<float>::kField, cls_LIST_FLOAT);
    list(metadata, Stored<double>::kField, cls_LIST_DOUBLE);
    registrar.AddClass(metadata);
}
