#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>

#include "cow/cow_COW.h"
#include "cow/cow_List.h"
#include "cow/cow_Map.h"
#include "foundation/coreutils/typ_ArchCompTable.h"
#include "foundation/shared/bio_Ofilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"

/// Small persistent classes for testing mementos and their streams: together they use every kind of
/// field, every collection and every way of holding an object.

inline constexpr std::uint32_t test_Id(std::uint32_t row) { return typ_TypeId(0x7FF0, row); }

/// Every kind of number and text; the fields are declared out of the order of their names.
struct test_Mixed {
    static constexpr std::uint32_t TypeId() { return test_Id(1); }

    test_Mixed() = default;
    explicit test_Mixed(cls_ReadVisitor& visitor) {
        ForEachField(*this,
                     [&visitor](const char* name, int, auto& field) { visitor.Read(name, field); });
        mode = visitor.ReadEnumAsInt("_mode");
    }
    void DBWrite(cls_WriteVisitor& visitor) const {
        ForEachField(*this, [&visitor](const char* name, int, const auto& field) {
            visitor.Write(name, field);
        });
        visitor.WriteEnumAsInt("_mode", mode);
    }
    static void Describe(cls_ClassRegistrar& registrar) {
        cls_ClassMetadata metadata("test_Mixed", TypeId(),
                                   [](cls_ReadVisitor& v) -> void* { return new test_Mixed(v); });
        ForEachField(test_Mixed(), [&metadata](const char* name, int kind, const auto&) {
            metadata.AddAttribute(name, kind);
        });
        metadata.AddAttribute("_mode", cls_KIND_ENUM).SetCowDtor([](void* object) {
            delete static_cast<test_Mixed*>(object);
        });
        registrar.AddClass(metadata);
    }

    /// Calls `visit` with the name, the kind and the member of each field but the enumeration.
    template <class Mixed, class Visit>
    static void ForEachField(Mixed&& mixed, const Visit& visit) {
        visit("_text", cls_KIND_STRING, mixed.text);
        visit("_double", cls_KIND_DOUBLE, mixed.real);
        visit("_bool", cls_KIND_BOOL, mixed.flag);
        visit("_char", cls_KIND_CHAR, mixed.character);
        visit("_uchar", cls_KIND_UNSIGNED_CHAR, mixed.byte);
        visit("_short", cls_KIND_SHORT, mixed.small);
        visit("_ushort", cls_KIND_UNSIGNED_SHORT, mixed.unsignedSmall);
        visit("_int", cls_KIND_INT, mixed.number);
        visit("_uint", cls_KIND_UNSIGNED_INT, mixed.unsignedNumber);
        visit("_float", cls_KIND_FLOAT, mixed.single);
        visit("_label", cls_KIND_TRANSLATED_STRING, mixed.label);
    }

    friend bool operator==(const test_Mixed&, const test_Mixed&) = default;

    bool flag = false;
    char character = 0;
    unsigned char byte = 0;
    short small = 0;
    unsigned short unsignedSmall = 0;
    int number = 0;
    unsigned unsignedNumber = 0;
    float single = 0;
    double real = 0;
    cow_String text;
    cow_String label;
    int mode = 0;
};

/// A node of a chain or graph: a value, and the next node by handle; counts the living ones.
struct test_Node {
    using Handle = cow_COW<test_Node>;
    static constexpr std::uint32_t TypeId() { return test_Id(2); }

    explicit test_Node(int v = 0) : value(v) {}
    explicit test_Node(cls_ReadVisitor& visitor) {
        visitor.Read("_value", value);
        next = cls_ReadCow<Handle, test_Node>(visitor, "_next", TypeId());
    }
    void DBWrite(cls_WriteVisitor& visitor) const {
        visitor.Write("_value", value);
        cls_WriteCow(visitor, "_next", next, next.HasValue() ? next->uid : cls_Uid());
    }
    static void Describe(cls_ClassRegistrar& registrar) {
        cls_ClassMetadata metadata("test_Node", TypeId(),
                                   [](cls_ReadVisitor& v) -> void* { return new test_Node(v); });
        metadata.AddAttribute("_value", cls_KIND_INT)
            .AddAttribute("_next", cls_KIND_OBJ_POINTER, TypeId())
            .SetCowDtor([](void* object) { delete static_cast<test_Node*>(object); });
        registrar.AddClass(metadata);
    }

    struct Life {
        Life() noexcept { ++living; }
        Life(const Life&) noexcept { ++living; }
        Life& operator=(const Life&) noexcept = default;
        ~Life() { --living; }
    };

    static inline int living = 0;
    Life life;
    int value = 0;
    cls_Uid uid;
    Handle next;
};

/// One of every collection. The objects are nodes.
struct test_Bag {
    static constexpr std::uint32_t TypeId() { return test_Id(3); }

    test_Bag() = default;
    explicit test_Bag(cls_ReadVisitor& visitor) {
        ReadList(visitor, "_bools", bools);
        ReadList(visitor, "_ints", ints);
        ReadList(visitor, "_uints", uints);
        ReadList(visitor, "_floats", floats);
        ReadList(visitor, "_doubles", doubles);
        ReadList(visitor, "_strings", strings);
        ReadMap(visitor, "_s2d", s2d, [](auto& v) { return v.MakeReadMapString2Prim(0.0); });
        ReadMap(visitor, "_s2s", s2s,
                [](auto& v) { return v.MakeReadMapString2Prim(cow_String()); });
        ReadMap(visitor, "_i2f", i2f, [](auto& v) { return v.MakeReadMapInt2Prim(0.0f); });
        ReadMap(visitor, "_i2u", i2u, [](auto& v) { return v.MakeReadMapInt2Prim(0u); });
        ReadMap(visitor, "_table", table, [](auto& v) { return v.MakeReadIntTableInt(0); });
        if (const auto body = visitor.MakeReadObj("_nodes")) {
            const auto reader = body->MakeReadListObj();
            while (reader && reader->Next()) {
                nodes.Append(NodeOf(reader->ReadObjCow(test_Node::TypeId(), AdoptNode)));
            }
        }
        if (const auto body = visitor.MakeReadObj("_named")) {
            const auto reader = body->MakeReadMapString2Obj();
            while (reader && reader->Next()) {
                named.Insert(reader->Key(),
                             NodeOf(reader->ReadObjCow(test_Node::TypeId(), AdoptNode)));
            }
        }
        if (const auto body = visitor.MakeReadObj("_numbered")) {
            const auto reader = body->MakeReadMapInt2Obj();
            while (reader && reader->Next()) {
                const auto* node =
                    static_cast<const test_Node*>(reader->ConstGet(test_Node::TypeId()));
                numbered.Insert(reader->Key(), node ? node->value : -1);
            }
        }
        if (const auto body = visitor.MakeReadObj("_blob")) {
            const auto reader = body->MakeAgentBlob();
            if (reader) {
                blob.assign(reinterpret_cast<const char*>(reader->Data()),
                            static_cast<std::size_t>(reader->Size()));
            }
        }
    }
    void DBWrite(cls_WriteVisitor& visitor) const {
        WriteList(visitor, "_bools", bools);
        WriteList(visitor, "_ints", ints);
        WriteList(visitor, "_uints", uints);
        WriteList(visitor, "_floats", floats);
        WriteList(visitor, "_doubles", doubles);
        WriteList(visitor, "_strings", strings);
        WriteMap(visitor, "_s2d", s2d, [](auto& v) { return v.MakeWriteMapString2Prim(0.0, 1); });
        WriteMap(visitor, "_s2s", s2s,
                 [](auto& v) { return v.MakeWriteMapString2Prim(cow_String(), 1); });
        WriteMap(visitor, "_i2f", i2f, [](auto& v) { return v.MakeWriteMapInt2Prim(0.0f, 1); });
        WriteMap(visitor, "_i2u", i2u, [](auto& v) { return v.MakeWriteMapInt2Prim(0u, 1); });
        WriteMap(visitor, "_table", table, [](auto& v) { return v.MakeWriteIntTableInt(1); });
        if (const auto body = visitor.MakeWriteObj("_nodes", 0, cls_Uid())) {
            const auto writer = body->MakeWriteListObj(1);
            for (const auto& node : nodes) {
                WriteNode(node, [&](const cls_Uid& uid, const void* object) {
                    return writer->MakeWriteObj(test_Node::TypeId(), uid, object);
                });
            }
        }
        if (const auto body = visitor.MakeWriteObj("_named", 0, cls_Uid())) {
            const auto writer = body->MakeWriteMapString2Obj(1);
            for (const auto& [key, node] : named) {
                WriteNode(node, [&, &name = key](const cls_Uid& uid, const void* object) {
                    return writer->MakeWriteObj(name, test_Node::TypeId(), uid, object);
                });
            }
        }
        if (const auto body = visitor.MakeWriteObj("_numbered", 0, cls_Uid())) {
            const auto writer = body->MakeWriteMapInt2Obj(1);
            for (const auto& [key, value] : numbered) {
                const test_Node node(value);
                node.DBWrite(*writer->MakeWriteObj(key, test_Node::TypeId(), cls_Uid(), &node));
            }
        }
        if (const auto body = visitor.MakeWriteObj("_blob", 0, cls_Uid())) {
            body->MakeAgentBlob()->Write(blob.data(), static_cast<int>(blob.size()));
        }
    }
    static void Describe(cls_ClassRegistrar& registrar) {
        cls_ClassMetadata metadata("test_Bag", TypeId(),
                                   [](cls_ReadVisitor& v) -> void* { return new test_Bag(v); });
        const auto add = [&metadata](const char* name, cls_CollectionType type,
                                     std::uint32_t classId = 0) {
            metadata.AddAttribute(name, cls_KIND_COLLECTION, classId, type);
        };
        add("_bools", cls_LIST_BOOL);
        add("_ints", cls_ALT_LIST_INT);
        add("_uints", cls_LIST_UINT);
        add("_floats", cls_ALT_LIST_FLOAT);
        add("_doubles", cls_LIST_DOUBLE);
        add("_strings", cls_ALT_LIST_STRING);
        add("_s2d", cls_MAP_STRING_DOUBLE);
        add("_s2s", cls_MAP_STRING_STRING);
        add("_i2f", cls_MAP_INT_FLOAT);
        add("_i2u", cls_MAP_INT_UINT);
        add("_table", cls_MAP_INT_INT);
        add("_nodes", cls_LIST_OBJ, test_Node::TypeId());
        add("_named", cls_ALT_MAP_STRING_OBJ);
        add("_numbered", cls_MAP_INT_OBJ);
        add("_blob", cls_NO_COLLECTION);
        metadata.SetCowDtor([](void* object) { delete static_cast<test_Bag*>(object); });
        registrar.AddClass(metadata);
    }

    cow_List<bool> bools;
    cow_List<int> ints;
    cow_List<unsigned> uints;
    cow_List<float> floats;
    cow_List<double> doubles;
    cow_List<cow_String> strings;
    cow_Map<cow_String, double> s2d;
    cow_Map<cow_String, cow_String> s2s;
    cow_Map<int, float> i2f;
    cow_Map<int, unsigned> i2u;
    cow_Map<int, int> table;
    cow_List<test_Node::Handle> nodes;
    cow_Map<cow_String, test_Node::Handle> named;
    cow_Map<int, int> numbered;
    std::string blob;

  private:
    static constexpr cls_CowAdopt AdoptNode = &cls_AdoptCow<test_Node::Handle, test_Node>;
    static test_Node::Handle NodeOf(const std::shared_ptr<cls_CowHolder>& holder) {
        return cls_HandleOf<test_Node::Handle>(holder);
    }
    template <class Make>
    static void WriteNode(const test_Node::Handle& node, const Make& make) {
        const auto record = make(node.HasValue() ? node->uid : cls_Uid(), node.ConstGet());
        if (node.HasValue() && record) node->DBWrite(*record);
    }
    template <class T>
    static void ReadList(cls_ReadVisitor& visitor, const char* field, cow_List<T>& list) {
        const auto body = visitor.MakeReadObj(field);
        const auto reader = body ? body->MakeReadListPrim(T()) : nullptr;
        while (reader && reader->Next()) list.Append(reader->Read());
    }
    template <class T>
    static void WriteList(cls_WriteVisitor& visitor, const char* field, const cow_List<T>& list) {
        const auto body = visitor.MakeWriteObj(field, 0, cls_Uid());
        if (body) body->MakeWriteListPrim(T(), 1)->Write(list);
    }
    template <class Map, class Make>
    static void ReadMap(cls_ReadVisitor& visitor, const char* field, Map& map, const Make& make) {
        const auto body = visitor.MakeReadObj(field);
        const auto reader = body ? make(*body) : nullptr;
        while (reader && reader->Next()) map.Insert(reader->Key(), reader->Read());
    }
    template <class Map, class Make>
    static void WriteMap(cls_WriteVisitor& visitor, const char* field, const Map& map,
                         const Make& make) {
        const auto body = visitor.MakeWriteObj(field, 0, cls_Uid());
        if (body) make(*body)->Write(map);
    }
};

/// A class derived from `test_Mixed` in the metadata: its base part is the first nested record.
/// Holds an embedded node and two pointers.
struct test_Owner {
    static constexpr std::uint32_t TypeId() { return test_Id(4); }

    test_Owner() = default;
    test_Owner(const test_Owner&) = delete;
    test_Owner& operator=(const test_Owner&) = delete;
    explicit test_Owner(cls_ReadVisitor& visitor) {
        if (const auto part = visitor.MakeBaseReadObj()) base = test_Mixed(*part);
        visitor.Read("_id", id);
        embedded = cls_ReadEmbedded<test_Node>(visitor, "_embedded");
        owned.reset(static_cast<test_Node*>(visitor.ReadObjValue("_owned", test_Node::TypeId())));
        bool isFirst = false;
        for (std::size_t i = 0; i < seen.size(); ++i) {
            seen[i] = static_cast<test_Node*>(
                visitor.ReadObjPtr(i == 0 ? "_first" : "_second", test_Node::TypeId(), isFirst));
            if (isFirst) handedOver[i].reset(seen[i]);
        }
    }
    void DBWrite(cls_WriteVisitor& visitor) const {
        if (const auto part = visitor.MakeBaseWriteObj(test_Mixed::TypeId(), uid)) {
            base.DBWrite(*part);
        }
        visitor.Write("_id", id);
        cls_WriteEmbedded(visitor, "_embedded", embedded);
        WriteNode(visitor, "_owned", owned.get());
        WriteNode(visitor, "_first", seen[0]);
        WriteNode(visitor, "_second", seen[1]);
    }
    static void WriteNode(cls_WriteVisitor& visitor, const char* field, const test_Node* node) {
        if (!node) return visitor.WriteNullObj(field);
        const auto record =
            visitor.MakeWriteObjWithPtr(field, test_Node::TypeId(), node->uid, node);
        if (record) node->DBWrite(*record);
    }
    static void Describe(cls_ClassRegistrar& registrar) {
        cls_ClassMetadata metadata(
            "test_Owner", TypeId(), [](cls_ReadVisitor& v) -> void* { return new test_Owner(v); },
            test_Mixed::TypeId());
        metadata.AddAttribute("_id", cls_KIND_INT)
            .AddAttribute("_embedded", cls_KIND_EMBEDDED_OBJ, test_Node::TypeId())
            .AddAttribute("_owned", cls_KIND_OBJ_POINTER, test_Node::TypeId())
            .AddAttribute("_first", cls_KIND_OBJ_POINTER, test_Node::TypeId())
            .AddAttribute("_second", cls_KIND_OBJ_POINTER, test_Node::TypeId())
            .SetCowDtor([](void* object) { delete static_cast<test_Owner*>(object); });
        registrar.AddClass(metadata);
    }

    test_Mixed base;
    int id = 0;
    cls_Uid uid;
    test_Node embedded;
    std::unique_ptr<test_Node> owned;
    std::array<std::unique_ptr<test_Node>, 2> handedOver;
    std::array<test_Node*, 2> seen{};
};

/// A registrar with all of them.
struct test_Classes : cls_ClassRegistrar {
    test_Classes() {
        test_Mixed::Describe(*this);
        test_Node::Describe(*this);
        test_Bag::Describe(*this);
        test_Owner::Describe(*this);
    }
};

/// A bag with something in every collection; two of its nodes are one object.
inline test_Bag test_FullBag() {
    test_Bag bag;
    bag.bools = cow_List<bool>(true, false, true);
    bag.ints = cow_List<int>(1, -2, 3);
    bag.uints = cow_List<unsigned>(4000000000u);
    bag.floats = cow_List<float>(0.5f, -1.5f);
    bag.doubles = cow_List<double>(0.1, 1e300);
    bag.strings = cow_List<cow_String>("one", "", "three");
    bag.s2d.Insert("pi", 3.25);
    bag.s2d.Insert("e", 2.75);
    bag.s2s.Insert("key", "value");
    bag.i2f.Insert(7, 0.25f);
    bag.i2f.Insert(-7, 0.75f);
    bag.i2u.Insert(1, 2u);
    bag.table.Insert(5, 25);
    test_Node::Handle shared(new test_Node(11));
    shared.Get()->uid = cls_Uid::AllocateUid();
    bag.nodes = cow_List<test_Node::Handle>(shared, test_Node::Handle(), shared);
    bag.named.Insert("shared", shared);
    bag.named.Insert("other", test_Node::Handle(new test_Node(12)));
    bag.numbered.Insert(3, 33);
    bag.blob = std::string("\x01\x00\xFF", 3);
    return bag;
}
