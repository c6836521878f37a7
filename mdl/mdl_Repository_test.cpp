#include "mdl/mdl_Repository.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "foundation/shared/cls_ClassRegistrar.h"
#include "mdl/mdl_Archive_test.h"
#include "omu/omu_PrimDictionary.h"
#include "omu/omu_PrimNumber.h"
#include "testing/test_Random.h"

namespace {

using Handle = mdl_ExtensionHandle;
using Value = mdl_Extension::Value;

Value Number(int number) { return Value(new omu_PrimNumber(number)); }

Handle Numbered(int number) { return Handle(new mdl_Extension(Number(number))); }

int NumberIn(const mdl_Extension* extension) {
    const auto* number =
        extension ? dynamic_cast<const omu_PrimNumber*>(extension->ConstGetValue()) : nullptr;
    return number ? std::stoi(number->AsString(0).Characters()) : -1;
}

mdl_Repository* AsRepository(mdl_Extension* extension) {
    return dynamic_cast<mdl_Repository*>(extension);
}

/// A dictionary in a dictionary ..., `depth` in all.
Value NestedValue(int depth) {
    auto value = std::make_unique<omu_PrimStringDictionary>();
    value->Insert("leaf", omu_PrimNumber(depth));
    for (int i = 1; i < depth; ++i) {
        auto outer = std::make_unique<omu_PrimStringDictionary>();
        outer->Insert("inner", value.release());
        value = std::move(outer);
    }
    return Value(value.release());
}

/// A repository in a repository ..., `depth` in all.
Handle NestedRepository(int depth) {
    Handle nested(new mdl_Repository);
    for (int i = 1; i < depth; ++i) {
        auto outer = std::make_unique<mdl_Repository>();
        EXPECT_TRUE(outer->Insert("inner", nested));
        nested = Handle(outer.release());
    }
    return nested;
}

/// A model that keeps extensions by name; of component 999.
struct Model {
    static constexpr std::uint32_t TypeId() { return typ_TypeId(999, 1); }

    Model() = default;
    explicit Model(cls_ReadVisitor& visitor)
        : extensions(mdl_ReadExtensions(visitor, "_extensions")) {}
    void DBWrite(cls_WriteVisitor& visitor) const {
        mdl_WriteExtensions(visitor, "_extensions", extensions);
    }
    static void Describe(cls_ClassRegistrar& registrar) {
        cls_ClassMetadata metadata("Model", TypeId());
        metadata.AddAttribute("_extensions", cls_KIND_COLLECTION, mdl_Extension::TypeId(),
                              cls_MAP_STRING_OBJ);
        registrar.AddClass(metadata);
    }

    mdl_ExtensionMap extensions;
};

class mdl_RepositoryTest : public testing::Test {
  protected:
    mdl_RepositoryTest() { Registrar().initClassMetadata(&Model::Describe, 2); }
    ~mdl_RepositoryTest() override { Registrar().withdrawClassMetadata(&Model::Describe); }

  private:
    static cls_MetadataRegistrar& Registrar() {
        return omi_Singleton<cls_MetadataRegistrar>::Instance();
    }
    test_MdlModule module;
};

TEST_F(mdl_RepositoryTest, EntriesAreSharedAndCopiedOnWrite) {
    mdl_Repository repository;
    repository.Insert("a", Numbered(1));
    repository.Insert("none", Handle());
    EXPECT_TRUE(repository.IsMember("none"));
    EXPECT_FALSE(repository.Get("none") || repository.Get("absent"));
    mdl_Repository copy(repository);
    EXPECT_NE(copy.GetUid(), repository.GetUid());
    copy.Get("a")->SetValue(Number(2));
    EXPECT_EQ(NumberIn(repository.ConstGet("a")), 1);
    EXPECT_EQ(copy.ConstGet("a")->GetUid(), repository.ConstGet("a")->GetUid());
    EXPECT_EQ(std::unique_ptr<mdl_Extension>(copy.Copy())->GetUid(), copy.GetUid());
}

TEST_F(mdl_RepositoryTest, NoMoreThanTheLimitIsNested) {
    mdl_Repository outermost;
    EXPECT_FALSE(outermost.Insert("a", NestedRepository(256)));

    // Through the pointers, level by level.
    mdl_Repository root;
    mdl_Repository* innermost = &root;
    while (innermost->Insert("next", Handle(new mdl_Repository))) {
        innermost = AsRepository(innermost->Get("next"));
    }
    EXPECT_FALSE(innermost->SetValue(NestedValue(1)));
    EXPECT_TRUE(innermost->SetValue(Number(1)));
    EXPECT_EQ(root.Depth(), 256);

    EXPECT_FALSE(outermost.Insert("a", Handle(new mdl_Extension(NestedValue(255)))));
    EXPECT_TRUE(outermost.Insert("a", Handle(new mdl_Extension(NestedValue(254)))));
}

TEST_F(mdl_RepositoryTest, NeverStandsInItself) {
    Handle handle(new mdl_Repository);
    mdl_Repository* const root = AsRepository(handle.Get());
    EXPECT_FALSE(root->Insert("self", handle));
    EXPECT_TRUE(root->Insert("a", Handle(new mdl_Repository)));
    mdl_Repository* const inner = AsRepository(root->Get("a"));
    EXPECT_FALSE(inner->Insert("root", handle));
    EXPECT_FALSE(inner->Insert("copy", Handle(new mdl_Repository(*root)))) << "it shares `inner`";

    // A copy of itself as it was is another object, and keeps its content in an archive.
    mdl_Repository repository;
    repository.Insert("x", Numbered(1));
    repository.Insert("before", Handle(repository.Copy()));
    repository.Remove("x");
    const auto loaded = test_Load<mdl_Repository>(test_Save(repository, repository.GetUid()));
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(NumberIn(AsRepository(loaded->Get("before"))->ConstGet("x")), 1);
}

/// The depth as a walk over everything gives it.
int WalkedDepth(const mdl_Extension& extension) {
    int deepest = 0;
    if (const auto* repository = dynamic_cast<const mdl_Repository*>(&extension)) {
        for (const cow_String& name : repository->Keys()) {
            const mdl_Extension* const entry = repository->ConstGet(name);
            if (entry) deepest = std::max(deepest, WalkedDepth(*entry));
        }
    }
    const omu_Primitive* const value = extension.ConstGetValue();
    return 1 + std::max(deepest, value ? value->Nesting().depth : 0);
}

/// Each identity stands for one object.
void ExpectOneObjectForEachIdentity(const mdl_Repository& repository) {
    std::map<std::uint64_t, const mdl_Extension*> known;
    for (const cow_String& name : repository.Keys()) {
        const mdl_Extension* const entry = repository.ConstGet(name);
        if (!entry) continue;
        EXPECT_EQ(known.emplace(entry->GetUid().Number(), entry).first->second, entry);
        if (const auto* inner = dynamic_cast<const mdl_Repository*>(entry)) {
            ExpectOneObjectForEachIdentity(*inner);
        }
    }
}

TEST_F(mdl_RepositoryTest, DepthAndIdentitiesHoldUnderRandomChanges) {
    for (std::uint64_t seed = 1; seed <= 40; ++seed) {
        SCOPED_TRACE(seed);
        test_Random random(seed);
        const auto name = [&random] { return cow_String(std::string(1, "abcd"[random.Below(4)])); };
        mdl_Repository root;
        std::vector<Handle> seen = {Numbered(0)};
        for (int step = 0; step < 150; ++step) {
            mdl_Repository* at = &root;
            while (random.Below(3) != 0) {
                mdl_Repository* const inner = AsRepository(at->Get(name()));
                if (!inner) break;
                at = inner;
            }
            const int change = random.Below(7);
            if (change < 2) {
                const auto chosen = random.Below(static_cast<int>(seen.size()));
                at->Insert(name(), change == 0 ? Handle(new mdl_Repository)
                                               : seen[static_cast<std::size_t>(chosen)]);
            } else if (change == 2) {
                at->Remove(name());
            } else if (change == 3) {
                at->SetValue(NestedValue(1 + random.Below(6)));
            } else if (change == 4) {
                seen.push_back(Handle(at->Copy()));
                seen.back().Get()->SetValue(Value());
            } else if (mdl_Extension* const entry = at->Get(name())) {
                entry->NewUid();
            }
            if (random.Below(2) != 0) continue;
            ASSERT_EQ(root.Depth(), WalkedDepth(root)) << step;
        }
        ASSERT_EQ(root.Depth(), WalkedDepth(root));
        ExpectOneObjectForEachIdentity(root);
        // Objects of one identity become one: what is read then comes back as it is.
        const auto loaded = test_Load<mdl_Repository>(test_Save(root, root.GetUid()));
        ASSERT_NE(loaded, nullptr);
        const test_Stream bytes = test_Save(*loaded, loaded->GetUid());
        const auto again = test_Load<mdl_Repository>(bytes);
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(test_Save(*again, again->GetUid()), bytes);
    }
}

TEST_F(mdl_RepositoryTest, RecordsArePinned) {
    mdl_Repository repository;
    const Handle shared = Handle(new mdl_Extension);
    repository.Insert("a", shared);
    repository.Insert("b", Handle());
    repository.Insert("c", shared);
    std::string stated =
        "0d000a00 01 01000000"              // the repository, the first identity
        "01000a00 01 00000000 01000000 00"  // its base part, without a value
        "01000a00 01 00000000 03000000 01000000";
    for (const cow_String& name : repository.Keys()) {
        stated += "01000000 '" + std::string(name.View()) + "'" +
                  (name == "b" ? "01000000 00" : "01000a00 01 02000000 01000000 00");
    }
    const test_Stream golden = test_Bytes(stated);
    EXPECT_EQ(test_Save(repository, repository.GetUid()), golden);

    const auto loaded = test_Load<mdl_Repository>(golden);
    ASSERT_NE(loaded, nullptr);
    EXPECT_NE(loaded->ConstGet("a"), nullptr);
    EXPECT_EQ(loaded->ConstGet("a"), loaded->ConstGet("c"));
    EXPECT_TRUE(loaded->IsMember("b"));
    loaded->Get("a")->SetValue(Number(4));
    EXPECT_NE(loaded->ConstGet("a")->GetUid(), loaded->ConstGet("c")->GetUid());
}

TEST_F(mdl_RepositoryTest, WhateverCouldBeBuiltReadsBack) {
    Handle deepest = NestedRepository(256);
    EXPECT_TRUE(deepest.Get()->SetValue(Number(1)));
    Model model;
    model.extensions.Insert("list", Handle(new mdl_Extension(NestedValue(256))));
    model.extensions.Insert("repository", deepest);
    const auto loaded = test_Load<Model>(test_Save(model));
    ASSERT_NE(loaded, nullptr);
    EXPECT_EQ(loaded->extensions.ConstGet("list")->Depth(), 257);
    EXPECT_EQ(loaded->extensions.ConstGet("repository")->Depth(), 256);
    EXPECT_EQ(NumberIn(loaded->extensions.ConstGet("repository").ConstGet()), 1);
}

std::string Word(int number) {
    bio_Ofilter out;
    out.Write(number);
    return test_Hex(out);
}

/// The record of a repository with the identity `number` and, unless it is empty, one entry.
std::string RepositoryRecord(int number, const std::string& entry) {
    return "0d000a00 01" + Word(number) +
           "01000a00 01 00000000 01000000 00"
           "01000a00 01 00000000" +
           (entry.empty() ? Word(0) + Word(1) : Word(1) + Word(1) + "01000000'a'" + entry);
}

// In each entry of the model a repository whose entry is a reference to the one before.
TEST_F(mdl_RepositoryTest, ReferencesDoNotNestWithoutEnd) {
    std::string record = Word(static_cast<int>(Model::TypeId())) +
                         "01 00000000 01000a00 01 00000000" + Word(1000) + Word(1);
    for (int i = 1; i <= 1000; ++i) {
        const std::string own = RepositoryRecord(i + 1, RepositoryRecord(i, ""));
        record += "04000000'" + std::to_string(1000 + i) + "'" + RepositoryRecord(0, own);
    }
    std::string lines;
    const auto loaded = test_LoadDamaged<Model>(test_Bytes(record), lines);
    int deepest = 0;
    for (const auto& [name, extension] : loaded->extensions) {
        deepest = std::max(deepest, extension->Depth());
    }
    EXPECT_EQ(deepest, 257);
    EXPECT_NE(lines.find("Error reading extensions: 1 nested too deep\n"), std::string::npos);
}

using mdl_Extension_Kept = mdl_RepositoryTest;

TEST_F(mdl_Extension_Kept, OneIdentityIsReadBackAsTheFirstOfItsObjects) {
    Model model;
    model.extensions.Insert("a", Handle(new mdl_Repository));
    const Handle kept = model.extensions.ConstGet("a");
    Handle& changed = model.extensions.Get("a");
    AsRepository(changed.Get())->Insert("x", Numbered(2));
    EXPECT_EQ(changed->DynTypeId(), mdl_Repository::TypeId());
    EXPECT_EQ(changed->GetUid(), kept->GetUid());

    const auto sizeOfB = [](const Model& saved) {
        const auto loaded = test_Load<Model>(test_Save(saved));
        return dynamic_cast<const mdl_Repository&>(*loaded->extensions.ConstGet("b")).Size();
    };
    model.extensions.Insert("b", kept);
    EXPECT_EQ(sizeOfB(model), 1) << "the second is the first";
    model.extensions.Get("b").Get()->NewUid();
    EXPECT_EQ(sizeOfB(model), 0);
}

}  // namespace
