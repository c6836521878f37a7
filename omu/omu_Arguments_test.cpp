#include "omu/omu_Arguments.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <typeinfo>
#include <utility>
#include <vector>

#include "omu/omu_Get.h"
#include "omu/omu_PrimEnum.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_TypeErrorException.h"
#include "omu/omu_Values_test.h"
#include "testing/test_Environment.h"
#include "testing/test_Random.h"
#include "testing/test_Rounds.h"

namespace {

using namespace omu_test;

/// The message that `arguments` end with, "" for none.
template <class Reader>
std::string EndOf(const Reader& arguments, const char* context = "") {
    try {
        arguments.End(context);
        return "";
    } catch (const omu_TypeErrorException& caught) {
        EXPECT_STREQ(caught.PythonType(), "TypeError");
        return caught.what();
    }
}

/// Values of a call: 'i' the int 7, 'f' the float 2.5, 's' the string "text".
omu_NewPrim ValueOf(char kind) {
    return kind == 'i'   ? omu_NewPrimitive(7)
           : kind == 'f' ? omu_NewPrimitive(2.5)
                         : omu_NewPrimitive("text");
}

/// A call written as in a script, each value by its kind: Call("is", {{"a", 'i'}}).
omu_Arguments Call(const std::string& positional,
                   const std::vector<std::pair<const char*, char>>& keywords = {}) {
    omu_Arguments arguments;
    for (const char kind : positional) arguments.Put(ValueOf(kind));
    for (const auto& [keyword, kind] : keywords) arguments.Put(ValueOf(kind), keyword);
    return arguments;
}

/// The reading of arguments once more, in the plainest terms: lists of names, and a copy of
/// everything for each step that may be withdrawn.
class Model {
  public:
    using Keywords = std::vector<std::pair<std::string, char>>;

    Model(std::string positionalKinds, Keywords keywordKinds)
        : positional(std::move(positionalKinds)), keywords(std::move(keywordKinds)) {
        for (const auto& keyword : keywords) now.unread.push_back(keyword.first);
    }

    void Optional() { now.optional = true; }

    /// Reads a `wanted` ('i', 'f' or 's'); true when the variable was set. No name: by position.
    bool Get(char wanted, const std::optional<std::string>& name) {
        before = now;
        before->optional = false;  // not part of what is withdrawn
        now.faultNow = false;
        const std::size_t position = now.gets++;
        const bool named = name && IsUnread(*name);
        const char given = position < positional.size() ? positional[position]
                           : named                      ? KindOf(*name)
                                                        : '\0';
        const bool byName = position >= positional.size();
        if (!now.optional) ++now.required;
        if (!now.optional && !given) ++now.unset;
        const bool reads = !now.fault;
        if (named) Consume(*name);
        if (!reads) return false;
        if (!given) {
            if (name) now.faultNow = true;
            if (name && !now.optional) now.fault = "";
            return false;
        }
        if (given == wanted || (wanted == 'f' && given == 'i')) return true;
        now.faultNow = true;
        now.fault = (byName ? *name : "arg" + std::to_string(position + 1)) + "; found " +
                    WordOf(given) + ", expecting " + WordOf(wanted);
        return false;
    }

    bool Alternative() {
        if (!before) return false;
        if (!now.faultNow && (now.fault || now.gets > positional.size())) return false;
        const bool optional = now.optional;
        now = *before;
        now.optional = optional;
        now.faultNow = false;
        before.reset();
        return true;
    }

    bool ErrorOnPrevious() const { return before && now.faultNow; }

    std::string End() const {
        if (!now.unread.empty()) return "keyword error on " + now.unread.front();
        if (now.fault && !now.fault->empty()) return *now.fault;
        const std::size_t given = positional.size() + now.requiredByName;
        if (given < now.required) return Missing(given);
        const std::size_t all = positional.size() + keywords.size();
        if (all > now.gets) {
            return "too many arguments; expected " + std::to_string(now.gets) + ", got " +
                   std::to_string(all);
        }
        return now.unset > 0 ? Missing(now.required - now.unset) : "";
    }

  private:
    struct State {
        std::size_t gets = 0, required = 0, requiredByName = 0, unset = 0;
        bool optional = false;
        bool faultNow = false;             ///< the last read failed, or found nothing optional
        std::optional<std::string> fault;  ///< "" for a required keyword that is missing
        std::vector<std::string> unread;
    };

    static std::string WordOf(char kind) {
        return kind == 'i' ? "int" : kind == 'f' ? "float" : "string";
    }
    std::string Missing(std::size_t got) const {
        return "not all required arguments specified; expected " + std::to_string(now.required) +
               ", got " + std::to_string(got);
    }
    bool IsUnread(const std::string& name) const {
        return std::find(now.unread.begin(), now.unread.end(), name) != now.unread.end();
    }
    char KindOf(const std::string& name) const {
        for (const auto& keyword : keywords) {
            if (keyword.first == name) return keyword.second;
        }
        return '\0';
    }
    void Consume(const std::string& name) {
        now.unread.erase(std::find(now.unread.begin(), now.unread.end(), name));
        if (!now.optional) ++now.requiredByName;
    }

    std::string positional;
    Keywords keywords;
    State now;
    std::optional<State> before;
};

/// Reads one argument of kind `wanted`; true when the variable was set.
template <class Reader, class... Keyword>
bool Get(Reader& reader, char wanted, const Keyword&... keyword) {
    const auto read = [&](auto untouched, auto isGiven) {
        auto value = untouched;
        reader.Get(value, keyword...);
        EXPECT_TRUE(value == untouched || isGiven(value));
        return !(value == untouched);
    };
    if (wanted == 'i') return read(-1, [](int v) { return v == 7; });
    if (wanted == 'f') return read(-1.0, [](double v) { return v == 7.0 || v == 2.5; });
    return read(cow_String("none"), [](const cow_String& v) { return v == "text"; });
}

TEST(omu_Arguments, ReadsEveryCallAsTheModelDoes) {
    test_Random random(54);
    const char kinds[] = {'i', 'i', 'i', 'f', 's'};
    const char* const names[] = {"a", "b", "c", "d", "e", "zz"};
    std::map<std::string, int> outcomes;
    for (int i = 0; i < test_Rounds(60000); ++i) {
        std::string positional;
        for (int n = random.Below(5); n > 0; --n) positional += kinds[random.Below(5)];
        Model::Keywords keywords;
        for (int n = 0; n < 6; ++n) {
            if (random.Below(n == 5 ? 12 : 3) == 0)
                keywords.emplace_back(names[n], kinds[random.Below(5)]);
        }
        if (random.Below(2) == 0) std::reverse(keywords.begin(), keywords.end());
        Model model(positional, keywords);
        omu_Arguments arguments = Call(positional);
        for (const auto& [name, kind] : keywords) arguments.Put(ValueOf(kind), name.c_str());

        const int count = random.Below(6);
        const int firstOptional = random.Below(8);
        bool allRequiredSet = true;
        std::string trace;
        for (int n = 0; n < count; ++n) {
            if (n == firstOptional) {
                model.Optional();
                arguments.Optional();
                trace += " optional";
            }
            std::optional<std::string> name;
            if (random.Below(8) != 0) name = names[n];
            bool isSet = false;
            // Tries types one after the other, now and then another name, or reads a good one anew.
            for (int tries = 1 + random.Below(3); tries > 0; --tries) {
                const char wanted = kinds[random.Below(5)];
                isSet = model.Get(wanted, name);
                trace += std::string(" ") + wanted + name.value_or("-");
                ASSERT_EQ(name ? Get(arguments, wanted, cow_String(name->c_str()))
                               : Get(arguments, wanted),
                          isSet)
                    << trace;
                ASSERT_EQ(arguments.ErrorOnPrevious(), model.ErrorOnPrevious()) << trace;
                if (tries == 1 || random.Below(4) == 0) break;
                const bool withdrawn = model.Alternative();
                trace += " alternative";
                ASSERT_EQ(arguments.Alternative(), withdrawn) << trace;
                ASSERT_FALSE(arguments.ErrorOnPrevious());
                ASSERT_FALSE(arguments.Alternative()) << trace;
                if (!withdrawn) break;
                if (random.Below(4) == 0) name = names[random.Below(6)];
            }
            allRequiredSet = allRequiredSet && (isSet || n >= firstOptional);
        }
        const std::string message = EndOf(arguments);
        ASSERT_EQ(message, model.End()) << positional << "," << keywords.size() << trace;
        ASSERT_EQ(EndOf(arguments), message);
        const std::unique_ptr<nex_Exception> fault = arguments.Fault();
        ASSERT_EQ(fault ? fault->what() : std::string(), message) << trace;
        ASSERT_EQ(arguments.Error(), !message.empty()) << trace;
        ASSERT_TRUE(!message.empty() || allRequiredSet) << trace;
        ++outcomes[message.empty() ? "passes"
                   : message.find("; found") != std::string::npos
                       ? (message.rfind("arg", 0) == 0 ? "arg" : "keyword type")
                       : message.substr(0, 9)];
    }
    for (const char* outcome :
         {"passes", "arg", "keyword type", "keyword e", "not all r", "too many "}) {
        EXPECT_GT(outcomes[outcome], test_Rounds(500)) << outcome;
    }
}

TEST(omu_Arguments, PutsTheFirstFaultFirst) {
    const auto end = [](const char* names, omu_Arguments call, const char* context = "") {
        int value = 0;
        for (const char* name = names; *name; ++name) {
            call.Get(value, cow_String(std::string_view(name, 1)));
        }
        return EndOf(call, context);
    };
    const std::string missing = "not all required arguments specified; expected ";
    EXPECT_EQ(end("ab", Call("is"), "Part"), "arg2; found string, expecting int");
    EXPECT_EQ(end("ab", Call("s", {{"zz", 'i'}})), "keyword error on zz");
    EXPECT_EQ(end("ab", Call("", {{"b", 's'}, {"a", 'i'}})), "b; found string, expecting int");
    EXPECT_EQ(end("ab", Call(""), "f"), "f; " + missing + "2, got 0");
    EXPECT_EQ(end("ab", Call("", {{"%s%n", 'i'}})), "keyword error on %s%n");
    EXPECT_EQ(end("ab", Call("", {{"", 's'}, {"a", 'i'}})), "keyword error on ");
    EXPECT_EQ(end("ab", Call("iii")), "too many arguments; expected 2, got 3");
    // An argument given twice counts as one.
    EXPECT_EQ(end("ab", Call("i", {{"a", 'i'}})), missing + "2, got 1");
    EXPECT_EQ(end("abcd", Call("ii", {{"a", 'i'}, {"b", 'i'}})), missing + "4, got 2");
}

TEST(omu_Arguments, WithdrawsOnlyTheLastGet) {
    int number = 0;
    cow_String text;
    omu_Arguments keywords = Call("", {{"a", 's'}, {"zz", 'i'}});
    EXPECT_FALSE(keywords.ErrorOnPrevious());
    EXPECT_FALSE(keywords.Alternative());
    keywords.Get(number, "a");
    EXPECT_TRUE(keywords.Alternative());
    EXPECT_EQ(EndOf(keywords), "keyword error on a");
    keywords.Get(text, "a");
    EXPECT_EQ(EndOf(keywords), "keyword error on zz");

    omu_Arguments optional = Call("i", {{"b", 's'}});
    optional.Get(number, "a");
    optional.Get(number, "b");
    optional.Optional();
    EXPECT_TRUE(optional.Alternative());
    optional.Get(text, "b");
    EXPECT_EQ(EndOf(optional), "");
}

TEST(omu_Arguments, NamesTheTypesFoundAndExpected) {
    const auto refused = [](const auto& given, auto variable, const std::string& fault) {
        omu_Arguments call;
        call.Put(given, "v");
        call.Get(variable, "v");
        EXPECT_EQ(EndOf(call), "v; found " + fault);
    };
    refused(2.0, 0u, "float, expecting int");
    refused(true, 0.0, "Boolean, expecting float");
    refused(2, false, "int, expecting Boolean");
    refused("1", omi_complex(), "string, expecting complex");
    refused(omu_PrimNone(), cow_String(), "primitive, expecting string");
    refused(1, atr_String(), "int, expecting tran_string");
    refused(cow_List<double>(1, 2), cow_List<int>(), "tuple, expecting sequence of Integers");
    refused("x", cow_List<float>(), "string, expecting sequence of Floats");
    refused(1, cow_List<double>(), "int, expecting sequence of Doubles");
    refused(1, cow_List<cow_String>(), "int, expecting sequence of Strings");
    refused(true, cow_List<atr_String>(), "Boolean, expecting sequence of Translated Strings");
    refused(cow_List<int>(1, 2), cow_2DArray<double>(), "tuple, expecting 2D sequence of Doubles");
    refused(3, cow_2DArray<cow_String>(), "int, expecting 2D sequence of Strings");
    refused(1, cow_Map<cow_String, float>(), "int, expecting dictionary");
    refused(omu_PrimNone(), omu_PrimIntDictionary(), "primitive, expecting dictionary");
    refused(cow_List<cow_String>("x"), omu_PrimArray(), "tuple, expecting omu_PrimArray");
    refused(1, omu_PrimTuple(), "int, expecting tuple");
    refused(1, omu_PrimNone(), "int, expecting primitive");
    refused("p", omu_PrimPath(), "string, expecting path");
    refused("Part", omu_PrimType("Part"), "string, expecting type");
    refused("on", omu_OnOffConst(), "string, expecting ON or OFF");
    refused(omu_PrimEnumBase(), 0, "_UNSPECIFIED, expecting int");
    refused(1, omu_CorvixName(), "int, expecting string");
    refused(1, KTSBasUtlFilePathCae(), "int, expecting string");
}

TEST(omu_Arguments, TakesWhatIsLikeTheTypeWanted) {
    omu_Arguments call;
    call.Put(4000000000u);
    call.Put(1);
    call.Put(omu_OnOffConst("OFF"));
    call.Put("OFF");
    const int extents[] = {2, 2};
    const double numbers[] = {1, 2, 3, 4};
    for (int i = 0; i < 3; ++i) call.Put(omu_PrimArray(2, extents, numbers));
    call.Put(omu_PrimStringDictionary());
    call.Put(cow_2DArray<int>(2, 3));
    double real = 0;
    bool flag = false;
    omu_OnOffConst state("ON"), stateByName("ON");
    cow_2DArray<double> table;
    omu_PrimArray array, nested;
    omu_PrimTuple tuple;
    omu_PrimIntDictionary empty;
    call.Get(real);
    call.Get(flag);
    call.Get(state);
    call.Get(stateByName);
    call.Get(table);
    call.Get(array);
    call.Get(tuple);
    call.Get(empty);
    call.Get(nested);
    EXPECT_EQ(EndOf(call), "");
    EXPECT_EQ(real, 4000000000.0);
    EXPECT_TRUE(flag);
    EXPECT_TRUE(state == omu_OnOffConst("OFF") && stateByName == state);
    EXPECT_TRUE(table.Rows() == 2 && table.ConstGet(1, 0) == 3);
    EXPECT_EQ(array.ConstGetData(),
              static_cast<const omu_PrimArray*>(call.Index(5))->ConstGetData());
    EXPECT_EQ(tuple.AsRepr(), "(array([1.0, 2.0], 'd'), array([3.0, 4.0], 'd'))");
    EXPECT_EQ(nested.AsString(0), "array([[0, 0, 0], [0, 0, 0]], 'i')");
}

/// Puts `value` by position and by keyword and reads both back.
template <class T, class Same>
void ExpectPutAndGot(const T& value, Same same) {
    omu_Arguments call;
    call.Put(value);
    call.Put(value, "k");
    T byPosition{}, byKeyword{};
    call.Get(byPosition);
    call.Get(byKeyword, "k");
    EXPECT_EQ(EndOf(call), "");
    EXPECT_TRUE(same(byPosition) && same(byKeyword)) << typeid(T).name();
}
template <class T>
void ExpectPutAndGot(const T& value) {
    ExpectPutAndGot(value, [&value](const T& got) { return got == value; });
}

TEST(omu_Arguments, ReadsBackWhatWasPut) {
    ExpectPutAndGot(static_cast<signed char>(-5));
    ExpectPutAndGot(static_cast<short>(-300));
    ExpectPutAndGot(-70000);
    ExpectPutAndGot(4000000000u);
    ExpectPutAndGot(true);
    ExpectPutAndGot(0.1);
    ExpectPutAndGot(cow_String("text"));
    ExpectPutAndGot(atr_String("text"));
    ExpectPutAndGot(omi_complex(1, -2));
    ExpectPutAndGot(KTSBasUtlFilePath("a/b"));
    ExpectPutAndGot(KTSBasUtlFilePathCae("a.b"));
    const auto list = [](const auto& elements) {
        ExpectPutAndGot(elements, [&](const auto& got) { return got.IsEqual(elements); });
    };
    list(cow_List<int>(1, -2, 3));
    list(cow_List<float>(0.5f));
    list(cow_List<double>(0.1, 2));
    list(cow_List<cow_String>("a", ""));
    list(cow_List<atr_String>("a"));
    const auto table = [](const auto& last) {
        cow_2DArray<std::decay_t<decltype(last)>> elements(2, 3);
        elements.Get(1, 2) = last;
        ExpectPutAndGot(elements, [&](const auto& got) {
            return got.Rows() == 2 && got.Cols() == 3 && got.ConstGet(1, 2) == last;
        });
    };
    table(0.5);
    table(cow_String("last"));
    cow_Map<cow_String, float> map;
    map.Insert("x", 0.5f);
    ExpectPutAndGot(map,
                    [](const auto& got) { return got.Size() == 1 && got.ConstGet("x") == 0.5f; });
    omu_PrimDictionary<int> numbered;
    numbered.Insert(3, omu_PrimNumber(4));
    ExpectPutAndGot(numbered);
    omu_PrimDictionary<cow_String> named;
    named.Insert("k", omu_PrimNone());
    ExpectPutAndGot(named);
    ExpectPutAndGot(omu_PrimNone());
    ExpectPutAndGot(omu_PrimPath(cow_List<cow_String>("a", "b")));
    ExpectPutAndGot(omu_PrimType("Part"));
    ExpectPutAndGot(omu_CorvixName("-Part", omu_UNTESTED_NAME),
                    [](const omu_CorvixName& got) { return got.AsString() == "-Part"; });
    omu_Arguments text;
    text.Put("literal");
    cow_String got;
    text.Get(got);
    EXPECT_EQ(got, "literal");
    EXPECT_THROW(text.Put(omu_NewPrim()), omu_GenericTypeErrorException);
}

/// A nested argument: the kind of a scalar, or 't' and its elements.
struct Nested {
    char kind = 't';
    std::vector<Nested> elements;
};

omu_NewPrim ValueOf(const Nested& nested) {
    if (nested.kind != 't') return ValueOf(nested.kind);
    auto list = std::make_unique<omu_PrimList>();
    for (const Nested& element : nested.elements) list->Append(ValueOf(element).release());
    return list;
}

/// Reads `elements` as nested as `wanted` is; the message of the first fault.
template <class Reader>
std::string ReadNested(Reader& elements, const Nested& wanted) {
    std::vector<omu_PrimTuple> inner(wanted.elements.size());
    for (std::size_t i = 0; i < inner.size(); ++i) {
        const char kind = wanted.elements[i].kind;
        if (kind == 't') {
            elements.Get(inner[i]);
        } else {
            Get(elements, kind);
        }
    }
    std::string message = EndOf(elements, elements.ConstGetNestedErrorStr().Characters());
    for (std::size_t i = 0; i < inner.size() && message.empty(); ++i) {
        if (wanted.elements[i].kind == 't') message = ReadNested(inner[i], wanted.elements[i]);
    }
    return message;
}

/// What `ReadNested` answers for the elements of `given`, which stand at `place`.
std::string ModelOfNested(const Nested& given, const Nested& wanted, const std::string& place) {
    const auto wordOf = [](char kind, const char* sequence) -> std::string {
        return kind == 't' ? sequence : kind == 'i' ? "int" : kind == 'f' ? "float" : "string";
    };
    const std::size_t got = given.elements.size(), expected = wanted.elements.size();
    for (std::size_t i = 0; i < std::min(got, expected); ++i) {
        const char found = given.elements[i].kind, kind = wanted.elements[i].kind;
        if (found == kind || (kind == 'f' && found == 'i')) continue;
        return place + "[" + std::to_string(i) + "]; found " + wordOf(found, "list") +
               ", expecting " + wordOf(kind, "tuple");
    }
    if (got != expected) {
        return place + "; " +
               (got < expected ? "not all required arguments specified" : "too many arguments") +
               "; expected " + std::to_string(expected) + ", got " + std::to_string(got);
    }
    for (std::size_t i = 0; i < got; ++i) {
        const std::string message = wanted.elements[i].kind != 't'
                                        ? ""
                                        : ModelOfNested(given.elements[i], wanted.elements[i],
                                                        place + "[" + std::to_string(i) + "]");
        if (!message.empty()) return message;
    }
    return "";
}

Nested RandomNested(test_Random& random, int depth) {
    Nested made;
    for (int n = random.Below(4); n > 0; --n) {
        const bool isScalar = depth == 0 || random.Below(2) == 0;
        made.elements.push_back(isScalar ? Nested{"iifs" [random.Below(4)], {}}
                                         : RandomNested(random, depth - 1));
    }
    return made;
}

/// `nested` with a change here and there.
Nested Changed(test_Random& random, Nested nested) {
    for (Nested& element : nested.elements) {
        if (random.Below(12) == 0) element = {"ifst" [random.Below(4)], {}};
        element = Changed(random, element);
    }
    const int change = random.Below(24);
    if (change == 0 && !nested.elements.empty()) nested.elements.pop_back();
    if (change == 1 && nested.kind == 't') nested.elements.push_back({'i', {}});
    return nested;
}

TEST(omu_Arguments, ReadsNestedArgumentsAsTheModelDoes) {
    test_Random random(55);
    int passed = 0, atDepth = 0;
    for (int i = 0; i < test_Rounds(8000); ++i) {
        const Nested given = RandomNested(random, 3);
        const Nested wanted = Changed(random, given);
        const bool byKeyword = i % 2 == 0;
        const std::string message = ModelOfNested(given, wanted, byKeyword ? "points" : "arg1");
        omu_Arguments call;
        if (byKeyword) {
            call.Put(ValueOf(given), "points");
        } else {
            call.Put(ValueOf(given));
        }
        for (int reading = 0; reading < 2; ++reading) {
            omu_PrimTuple points;
            call.Get(points, "points");
            ASSERT_EQ(EndOf(call), "");
            ASSERT_EQ(ReadNested(points, wanted), message);
            call.Begin();
        }
        passed += message.empty();
        atDepth += message.find("][") != std::string::npos;
    }
    EXPECT_GT(passed, test_Rounds(1000));
    EXPECT_GT(atDepth, test_Rounds(500));
}

/// Points of which the second has a text in the middle.
omu_PrimList Points() { return List(List(I(0), I(0), I(7)), List(I(1), S("x"), I(2))); }

TEST(omu_Arguments, ReadsTuplesLikeArguments) {
    omu_Arguments call;
    call.Put(Points(), "points");
    omu_PrimTuple points;
    call.DeprecatedGet(points, "points", "vertices");
    EXPECT_EQ(EndOf(call), "");
    double number = -1;
    EXPECT_FALSE(points.ErrorOnPrevious());
    EXPECT_FALSE(points.Alternative());
    points.Get(number);
    EXPECT_TRUE(points.ErrorOnPrevious());
    EXPECT_TRUE(points.Alternative());
    EXPECT_FALSE(points.Alternative());
    omu_PrimTuple row;
    points.Get(row);
    cow_2DArray<double> table;
    omu_Get(points, table);
    EXPECT_EQ(EndOf(points), "points[1][0]; found int, expecting sequence of Doubles");
    omu_Arguments byPosition;
    byPosition.Put(Points());
    omu_Get(byPosition, table);
    EXPECT_EQ(EndOf(byPosition), "arg1[1][1]; found string, expecting float");
    row.Get(number);
    row.Optional();
    EXPECT_FALSE(row.ErrorOnPrevious());
    EXPECT_EQ(EndOf(row, "row"), "row; too many arguments; expected 1, got 3");
    for (int i = 0; i < 4; ++i) row.Get(number);
    EXPECT_EQ(EndOf(row), "");
    EXPECT_EQ(number, 7);
}

TEST(omu_Get, NamesTheElementOfATable) {
    const auto end = [](auto read, const auto& value) {
        omu_Arguments call;
        call.Put(value, "points");
        read(call);
        return EndOf(call);
    };
    cow_2DArray<double> table;
    cow_2DArray<int> integers;
    cow_List<cow_List<int>> rows;
    const auto readTable = [&](omu_Arguments& call) { omu_Get(call, table, "points"); };
    const auto readIntegers = [&](omu_Arguments& call) { omu_Get(call, integers, "points"); };
    const auto readRows = [&](omu_Arguments& call) { omu_GetIrregular(call, rows, "points"); };
    EXPECT_EQ(end(readTable, Points()), "points[1][1]; found string, expecting float");
    EXPECT_EQ(end(readIntegers, Points()), "points[1][1]; found string, expecting int");
    EXPECT_EQ(end(readRows, Points()), "points[1][1]; found string, expecting int");
    EXPECT_EQ(end(readTable, 1), "points; found int, expecting 2D sequence of Doubles");
    EXPECT_EQ(end(readIntegers, cow_List<int>(1, 2)),
              "points[0]; found int, expecting sequence of Integers");
    const omu_PrimList ragged = List(List(I(1), I(2)), List(I(3)));
    EXPECT_EQ(end(readIntegers, ragged), "points; found list, expecting 2D sequence of Integers");
    EXPECT_EQ(end(readRows, ragged), "");
    EXPECT_TRUE(rows.Length() == 2 && rows[0][1] == 2 && rows[1][0] == 3);
    EXPECT_EQ(integers.Rows(), 0);

    test_SetVariable("ZRX_DBG_PRIMARRAY", "1");
    EXPECT_EQ(PrintedBy([&] { EXPECT_NE(end(readTable, 1), ""); }),
              "error getting 2D sequence of Doubles\n");
    test_SetVariable("ZRX_DBG_PRIMARRAY", nullptr);
}

TEST(omu_Arguments, AnswersObjectsOrTheDefault) {
    omu_Arguments call;
    call.Put(Arrow());
    call.Put(Arrow());
    call.Put(3, "third");
    const Arrow byDefault;
    const omu_InterfaceObj* first = call.Get("Arrow", "first", &byDefault);
    ASSERT_NE(first, &byDefault);
    EXPECT_EQ(first->TypeString(), "Arrow");
    EXPECT_EQ(call.Get("Text", "second", &byDefault), &byDefault);
    EXPECT_EQ(call.Get("third", nullptr), nullptr);
    EXPECT_EQ(EndOf(call), "arg2; found Arrow, expecting Text");
    call.Begin();
    call.Get("Arrow", "first", nullptr);
    call.Get("Arrow", "second", nullptr);
    EXPECT_EQ(call.Get("third", nullptr), nullptr);
    EXPECT_EQ(EndOf(call), "third; found int, expecting primitive");
}

TEST(omu_Arguments, NotesDeprecatedNames) {
    int value = 0;
    omu_Arguments alias = Call("", {{"length", 'i'}});
    alias.Get(value, "size");
    EXPECT_TRUE(alias.ErrorOnPrevious() && alias.DeprecatedAlternative("length"));
    alias.Get(value, "length");
    EXPECT_EQ(EndOf(alias), "");
    EXPECT_EQ(value, 7);
    EXPECT_FALSE(alias.DeprecatedAlternative("length"));
    EXPECT_TRUE(alias.DeprecatedCheck("length"));
    EXPECT_FALSE(alias.DeprecatedCheck("width"));
    EXPECT_TRUE(alias.DeprecatedArgsUsed().IsEqual(cow_List<cow_String>("length")));

    omu_Arguments mixed = Call("i", {{"b", 'i'}, {"c", 's'}});
    mixed.DeprecatedGet(value, "a", "x");
    mixed.DeprecatedGet(value, "b", "y");
    mixed.DeprecatedGet(value, "c", "z");
    EXPECT_EQ(EndOf(mixed), "c; found string, expecting int");
    EXPECT_TRUE(mixed.DeprecatedArgsUsed().IsEqual(cow_List<cow_String>("b")));
    mixed.Begin();
    EXPECT_EQ(mixed.DeprecatedArgsUsed().Length(), 1);
}

TEST(omu_Arguments_Kept, AMissingKeywordHidesWrongTypes) {
    omu_Arguments call = Call("", {{"b", 's'}});
    int a = 0, b = 0;
    call.Get(a, "a");
    call.Get(b, "b");
    EXPECT_EQ(EndOf(call), "not all required arguments specified; expected 2, got 1");
}

TEST(omu_Arguments_Kept, IntegersOutOfRangeAreOfTheWrongType) {
    omu_Arguments call;
    call.Put(300);
    signed char small = 5;
    call.Get(small);
    EXPECT_EQ(EndOf(call), "arg1; found int, expecting int");
    EXPECT_EQ(small, 5);
}

TEST(omu_Arguments_Kept, ARepeatedArgumentTakesAFreeOptionalPlace) {
    omu_Arguments call = Call("i", {{"a", 'f'}});
    int a = 0, b = 1;
    call.Get(a, "a");
    call.Optional();
    call.Get(b, "b");
    EXPECT_EQ(EndOf(call), "");
    EXPECT_EQ(a, 7);
    EXPECT_EQ(b, 1);
}

}  // namespace
