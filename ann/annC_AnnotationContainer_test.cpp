#include "ann/annC_AnnotationContainer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <new>
#include <string>
#include <thread>
#include <vector>

#include "ann/annC_Arrow.h"
#include "ann/annC_Text.h"
#include "foundation/alloc/mem_Alloc.h"
#include "omu/omu_ChangeHistory.h"
#include "omu/omu_PrimNumber.h"
#include "omu/omu_PrimString.h"
#include "omu/omu_PrimTuple.h"
#include "testing/test_FailingAllocator.h"
#include "testing/test_Random.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Names = std::vector<std::string>;

std::string TextOf(const cow_String& text) { return std::string(text.View()); }

Names KeysOf(const annC_AnnotationContainer& container) {
    Names names;
    for (const cow_String& name : container.Keys()) names.push_back(TextOf(name));
    return names;
}

/// Follows the changes of the thread as long as it lives.
class Follower {
  public:
    Follower() { omu_ChangeHistory::Instance().StartRecording(); }
    ~Follower() { omu_ChangeHistory::Instance().StopRecording(); }

    /// The tuples since the last call as text.
    static Names Take() {
        Names texts;
        for (const omu_PrimHandle& change : omu_ChangeHistory::Instance().TakeChanges()) {
            texts.push_back(TextOf(change->AsString(0)));
        }
        return texts;
    }
    /// Applies the tuples since the last call to `names`.
    void Replay() {
        for (const omu_PrimHandle& change : omu_ChangeHistory::Instance().TakeChanges()) {
            Replay(dynamic_cast<const omu_PrimTuple&>(*change));
        }
    }

    Names names;

  private:
    void Replay(const omu_PrimTuple& change) {
        const auto text = [&change](int i) {
            return TextOf(dynamic_cast<const omu_PrimString&>(*change.Index(i)).Value());
        };
        const auto index = [&change](int i) {
            return dynamic_cast<const omu_PrimNumber&>(*change.Index(i)).AsInt();
        };
        const auto place = std::find(names.begin(), names.end(), text(1));
        if (text(0) == "Insert") {
            names.insert(names.begin() + index(2), text(1));
        } else if (text(0) == "Remove") {
            names.erase(place);
        } else {
            ASSERT_EQ(text(0), "Rename");
            ASSERT_EQ(place - names.begin(), index(3));
            *place = text(2);
        }
    }
};

/// A container of arrows whose drawing order is `names`.
annC_AnnotationContainer Filled(const Names& names) {
    annC_AnnotationContainer container;
    for (auto name = names.rbegin(); name != names.rend(); ++name) {
        container.Insert(name->c_str(), annC_Arrow());
    }
    return container;
}

TEST(annC_AnnotationContainer, PostsWhatItDoes) {
    Follower follower;
    annC_AnnotationContainer container = Filled({"c", "b", "a"});
    EXPECT_THAT(follower.Take(),
                ElementsAre("('Insert', 'a', 0)", "('Insert', 'b', 0)", "('Insert', 'c', 0)"));
    EXPECT_TRUE(container.SendToBack("c"));
    EXPECT_THAT(follower.Take(), ElementsAre("('Remove', 'c')", "('Insert', 'c', 2)"));
    EXPECT_TRUE(container.BringForward("b"));
    EXPECT_TRUE(container.SendBackward("c"));
    EXPECT_TRUE(container.ChangeKey("b", "b"));
    EXPECT_TRUE(container.Insert("a", annC_Text())) << "in place of the arrow";
    EXPECT_THAT(follower.Take(), IsEmpty());
    EXPECT_TRUE(container.ChangeKey("a", "x"));
    EXPECT_THAT(follower.Take(), ElementsAre("('Rename', 'a', 'x', 1)"));
    EXPECT_TRUE(container.Remove("b"));
    container.PostDeltaRename("no", "c");
    container.PostDeltaMove("c", 1);
    container.PostDeltaInsert("n");
    container.PostDeltaRemove("n");
    EXPECT_THAT(follower.Take(),
                ElementsAre("('Remove', 'b')", "('Rename', 'no', 'c', 1)", "('Remove', 'c')",
                            "('Insert', 'c', 1)", "('Insert', 'n', 0)", "('Remove', 'n')"));
    EXPECT_THAT(KeysOf(container), ElementsAre("x", "c"));
    container.Clear();
    EXPECT_THAT(follower.Take(), ElementsAre("('Remove', 'x')", "('Remove', 'c')"));
}

TEST(annC_AnnotationContainer, GivesNoHistoryToAThreadThatDoesNotFollow) {
    std::size_t left = 0;
    std::thread([&left] {
        const std::size_t before = mem_LiveBlocks();
        Filled({"a", "b"}).Clear();
        left = mem_LiveBlocks() - before;
    }).join();
    EXPECT_EQ(left, 0u);
}

TEST(annC_AnnotationContainer, RefusesWhatIsNotThereOrTaken) {
    annC_AnnotationContainer container = Filled({"a", "b", "c"});
    Follower follower;
    EXPECT_FALSE(container.MoveAfter("a", "no") || container.MoveAfter("no", "a") ||
                 container.MoveBefore("a", "no") || container.MoveBefore("no", "a") ||
                 container.BringToFront("no") || container.BringForward("no") ||
                 container.SendBackward("no") || container.SendToBack("no") ||
                 container.Remove("no") || container.ChangeKey("no", "x") ||
                 container.ChangeKey("a", "b") || container.Insert("x", nullptr));
    EXPECT_EQ(container.Get("no"), nullptr);
    EXPECT_EQ(container.ConstGet("no"), nullptr);
    EXPECT_EQ(container.Get(0), nullptr);
    EXPECT_EQ(container.ConstGet(-1), nullptr);
    EXPECT_EQ(container.IndexOf("no"), -1);
    EXPECT_EQ(container.GetName(4), "");
    EXPECT_THAT(follower.Take(), IsEmpty());
    EXPECT_THAT(KeysOf(container), ElementsAre("a", "b", "c"));
}

TEST(annC_AnnotationContainer_Kept, TuplesDoNotNameTheirContainer) {
    Follower follower;
    Filled({"a"});
    Filled({"a"});
    EXPECT_THAT(follower.Take(), ElementsAre("('Insert', 'a', 0)", "('Insert', 'a', 0)"));
}

TEST(annC_AnnotationContainer_Kept, MovesToTheSamePlaceArePosted) {
    annC_AnnotationContainer container = Filled({"a", "b"});
    Follower follower;
    EXPECT_TRUE(container.BringToFront("a"));
    EXPECT_TRUE(container.SendToBack("b"));
    EXPECT_TRUE(container.MoveBefore("a", "a"));
    EXPECT_TRUE(container.MoveAfter("b", "b"));
    EXPECT_THAT(follower.Take(),
                ElementsAre("('Remove', 'a')", "('Insert', 'a', 0)", "('Remove', 'b')",
                            "('Insert', 'b', 1)", "('Remove', 'a')", "('Insert', 'a', 0)",
                            "('Remove', 'b')", "('Insert', 'b', 1)"));
}

/// The container's operations on a plain list of names, with the id of each.
struct Model {
    Names names;
    std::map<std::string, int> ids;
    int lastId = 0;

    [[nodiscard]] bool Has(const std::string& name) const { return ids.contains(name); }
    auto Place(const std::string& name) { return std::find(names.begin(), names.end(), name); }
    void Insert(const std::string& name) {
        if (Has(name)) return;
        names.insert(names.begin(), name);
        ids[name] = ++lastId;
    }
    void Remove(const std::string& name) {
        if (ids.erase(name)) names.erase(Place(name));
    }
    void Rename(const std::string& from, const std::string& to) {
        if (!Has(from) || Has(to)) return;
        *Place(from) = to;
        ids[to] = ids[from];
        ids.erase(from);
    }
    /// Puts `name` at `step` places behind where `other` is once `name` is taken out.
    void Move(const std::string& name, const std::string& other, int step) {
        if (!Has(name) || !Has(other) || name == other) return;
        names.erase(Place(name));
        names.insert(Place(other) + step, name);
    }
};

bool Step(annC_AnnotationContainer& container, Model& model, test_Random& random) {
    const std::string a(1, static_cast<char>('a' + random.Below(7)));
    const std::string b(1, static_cast<char>('a' + random.Below(7)));
    const cow_String nameA(a.c_str());
    const cow_String nameB(b.c_str());
    const Names before = model.names;
    const auto at = [&before](std::ptrdiff_t i) {
        const auto last = static_cast<std::ptrdiff_t>(before.size()) - 1;
        return last < 0 ? std::string()
                        : before[static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(i, 0, last))];
    };
    const auto place = std::find(before.begin(), before.end(), a) - before.begin();
    switch (random.Below(12)) {
        case 0:
        case 1:
        case 2:
            model.Insert(a);
            return container.Insert(nameA, annC_Arrow());
        case 3:
            model.Remove(a);
            return container.Remove(nameA);
        case 4:
            model.Rename(a, b);
            return container.ChangeKey(nameA, nameB);
        case 5:
            model.Move(a, at(0), 0);
            return container.BringToFront(nameA);
        case 6:
            model.Move(a, at(place - 1), 0);
            return container.BringForward(nameA);
        case 7:
            model.Move(a, at(place + 1), 1);
            return container.SendBackward(nameA);
        case 8:
            model.Move(a, before.empty() ? a : before.back(), 1);
            return container.SendToBack(nameA);
        case 9:
            model.Move(a, b, 0);
            return container.MoveBefore(nameA, nameB);
        case 10:
            model.Move(a, b, 1);
            return container.MoveAfter(nameA, nameB);
        default:
            if (random.Below(10) > 0) return false;
            while (!model.names.empty()) model.Remove(model.names.front());
            container.Clear();
            return true;
    }
}

TEST(annC_AnnotationContainer, KeepsOrderIdsAndFollowersInStep) {
    Follower follower;
    annC_AnnotationContainer container;
    Model model;
    test_Random random(20);
    for (int i = 0; i < 3000; ++i) {
        const annC_AnnotationContainer old = container;
        const Names oldNames = model.names;
        Step(container, model, random);
        follower.Replay();
        ASSERT_EQ(KeysOf(container), model.names) << i;
        ASSERT_EQ(follower.names, model.names) << i;
        ASSERT_EQ(KeysOf(old), oldNames) << i;
        ASSERT_EQ(container.Size(), static_cast<int>(model.names.size()));
        for (const auto& [name, id] : model.ids) {
            ASSERT_EQ(container.GetId(name.c_str()), id) << i;
            ASSERT_EQ(container.GetName(id), name.c_str()) << i;
            ASSERT_EQ(model.names[static_cast<std::size_t>(container.IndexOf(name.c_str()))], name);
        }
    }
}

TEST(annC_AnnotationContainer, ChangesAndPostsAllOrNothing) {
    Follower follower;
    annC_AnnotationContainer container = Filled({"a", "b", "c", "d", "e"});
    follower.Replay();
    Model model;
    for (const char* const name : {"e", "d", "c", "b", "a"}) model.Insert(name);
    test_Random random(21);
    int failures = 0;
    for (int i = 0; i < 400; ++i) {
        const Model before = model;
        try {
            const test_FailingAllocator failing(1 + random.Below(40));
            Step(container, model, random);
        } catch (const std::bad_alloc&) {
            ++failures;
            model = before;
        }
        follower.Replay();
        ASSERT_EQ(KeysOf(container), model.names) << i;
        ASSERT_EQ(follower.names, model.names) << i;
    }
    EXPECT_GT(failures, 50);
}

TEST(annC_AnnotationContainer, CopiesAndAssignment) {
    annC_AnnotationContainer container = Filled({"a", "b"});
    const Follower follower;
    const annC_AnnotationContainer copy(container);
    EXPECT_FALSE(copy.GetUid() == container.GetUid());
    const std::unique_ptr<mdl_Extension> sameObject(container.Copy());
    EXPECT_EQ(sameObject->GetUid(), container.GetUid());
    EXPECT_TRUE(dynamic_cast<const annC_AnnotationContainer&>(*sameObject) == container);

    dynamic_cast<annC_Arrow&>(*container.Get("a")).SetColor("Red");
    EXPECT_EQ(dynamic_cast<const annC_Arrow&>(*copy.ConstGet("a")).GetColor(), "White");
    EXPECT_FALSE(copy == container);
    EXPECT_THAT(follower.Take(), IsEmpty());

    const cls_Uid uid = container.GetUid();
    const annC_AnnotationContainer other = Filled({"x", "b", "y"});
    follower.Take();
    container = other;
    EXPECT_THAT(follower.Take(),
                ElementsAre("('Remove', 'a')", "('Remove', 'b')", "('Insert', 'y', 0)",
                            "('Insert', 'b', 0)", "('Insert', 'x', 0)"));
    EXPECT_TRUE(container == other);
    EXPECT_EQ(container.GetUid(), uid);
    EXPECT_EQ(container.GetId("b"), 4) << "the ids of what was there are not given again";
    annC_AnnotationContainer again(container);
    again = container;
    EXPECT_THAT(follower.Take(), IsEmpty());

    EXPECT_TRUE(container.Insert("z", *container.ConstGet("x"))) << "from within";
    EXPECT_TRUE(container.Insert("x", new annC_Text));
    EXPECT_EQ(container.ConstGet("x")->TypeId(), annC_Text::kTypeId);
    EXPECT_EQ(container.ConstGet("z")->TypeId(), annC_Arrow::kTypeId);
}

TEST(annC_AnnotationContainer, IsWalkedAsItWas) {
    annC_AnnotationContainer container = Filled({"a", "b", "c"});
    Names walked;
    annC_AnnotationContainerIT walk(container);
    for (; !walk.IsDone(); walk.Next()) {
        walked.push_back(TextOf(walk.CurrentKey()));
        EXPECT_EQ(walk.CurrentId(), container.GetId(walk.CurrentKey()));
        EXPECT_TRUE(walk.CurrentValue() == annC_Arrow());
        container.Remove(walk.CurrentKey());
        container.Insert("new", annC_Text());
    }
    walk.Next();
    EXPECT_TRUE(walk.IsDone());
    EXPECT_THAT(walked, ElementsAre("a", "b", "c"));
    EXPECT_THAT(KeysOf(container), ElementsAre("new"));
}

TEST(annC_AnnotationContainer, FindsNamesWithoutComparingMany) {
    annC_MapString2AnnotationCowImpl table;
    const annC_AnnotationCow arrow(new annC_Arrow);
    for (int i = 1; i <= 10000; ++i) table.Append(atr("Arrow-%d", i), arrow);
    int most = 0;
    for (int i = 1; i <= 10000; ++i) {
        const cow_String name = atr("Arrow-%d", i);
        ASSERT_EQ(table.GetId(name), i);
        most = std::max(most, table.NamesCompared(name));
    }
    EXPECT_LE(most, 4);
    EXPECT_EQ(table.GetId("Arrow-0"), 0);
}

}  // namespace
