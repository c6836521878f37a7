// Annotations through the records of the archive, with the library as it is loaded.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "ann/annC_AnnotationContainer.h"
#include "ann/annC_Arrow.h"
#include "ann/annC_NamedAnchor.h"
#include "ann/annC_Point3DAnchor.h"
#include "ann/annC_Text.h"
#include "ann/annC_ViewportAnchor.h"
#include "foundation/shared/bio_Ofilter.h"
#include "idb/idb_Archive.h"
#include "mdl/mdl_Repository.h"
#include "omu/omu_ChangeHistory.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Names = std::vector<std::string>;

template <class T>
std::string Save(const T& object) {
    bio_Ofilter out;
    idb_SaveObject(out, object);
    return std::string(reinterpret_cast<const char*>(out.Data()), out.Size());
}

/// What `base` stands for in an archive; null when the record is refused.
template <class Base>
std::unique_ptr<Base> Load(const std::string& bytes) {
    idb_LoadFault fault;
    idb_ObjectPtr object = idb_LoadAnyObject(bytes.data(), bytes.size(), Base::kTypeId, fault);
    return std::unique_ptr<Base>(static_cast<Base*>(object.release()));
}

template <class Base>
void ExpectRoundTrip(const Base& object, std::size_t size) {
    const std::string bytes = Save(object);
    EXPECT_EQ(bytes.size(), size);
    const std::unique_ptr<Base> loaded = Load<Base>(bytes);
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == object);
    EXPECT_EQ(Save(*loaded), bytes);
}

/// The bytes with `replacement` in place of the one place where `sought` stands.
std::string Replaced(std::string bytes, const std::string& sought, const std::string& replacement) {
    const std::size_t at = bytes.find(sought);
    EXPECT_NE(at, std::string::npos);
    return bytes.replace(at, sought.size(), replacement);
}

std::string Text(const std::string& text) {
    return std::string{static_cast<char>(text.size()), 0, 0, 0} + text;
}

template <class T>
std::unique_ptr<annC_Annotation> LoadDamaged(const std::string& bytes, std::string& printed) {
    testing::internal::CaptureStderr();
    bio_Ofilter out;
    idb_LoadFault fault;
    std::unique_ptr<annC_Annotation> loaded;
    const auto read = [&loaded](cls_ReadVisitor& visitor) {
        loaded = std::make_unique<T>(visitor);
    };
    static_cast<void>(idb_LoadRecord(bytes.data(), bytes.size(), T::kTypeId, read, fault));
    printed = testing::internal::GetCapturedStderr();
    return loaded;
}

TEST(annC_Archive, RecordsArePinned) {
    ExpectRoundTrip<annC_Anchor>(annC_NamedAnchor(), 14);
    ExpectRoundTrip<annC_Anchor>(annC_ViewportAnchor(1.5, -2), 25);
    ExpectRoundTrip<annC_Anchor>(annC_Point3DAnchor(1, 2, 3), 33);
    ExpectRoundTrip<annC_Annotation>(annC_Annotation(), 9);
    ExpectRoundTrip<annC_Annotation>(annC_Arrow(), 148);
    ExpectRoundTrip<annC_Annotation>(annC_Text(), 153);
    const std::string head("\x06\x00\x50\x03\x01\x00\x00\x00\x00", 9);
    const std::string strings = Text("White") + Text("0") + Text("0") + Text("1") + Text("8");
    EXPECT_EQ(Save(annC_Arrow()).substr(0, 54), head + std::string(16, '\0') + strings);
    EXPECT_EQ(Save(annC_Text()).substr(9, 12), std::string(12, '\0')) << "box, rotationAngle";
    EXPECT_THAT(Save(annC_Text()), HasSubstr(Text("Black") + Text("0") + Text(annC_Font::kDefault) +
                                             Text("0") + Text("") + Text("White")));
}

TEST(annC_Archive, EveryFieldComesBack) {
    annC_Arrow arrow;
    arrow.SetStartPoint({1.5, -2});
    arrow.SetEndPoint({3, 4.25});
    arrow.SetStartAnchor(annC_Point3DAnchor(1, 2, 3));
    arrow.SetEndAnchor(annC_ViewportAnchor(10, 20));
    arrow.SetStartHeadStyle("HOLLOW_SQUARE");
    arrow.SetEndHeadStyle("ARROW");
    arrow.SetStartGap(0.25);
    arrow.SetEndGap(0.5);
    arrow.SetColor("Red");
    arrow.SetLineStyle("DASHED");
    arrow.SetLineThickness("THICK");
    ExpectRoundTrip<annC_Annotation>(arrow, 148 - 2 - 28 + 33 + 25);
    EXPECT_THAT(Save(arrow),
                HasSubstr(Text("Red") + Text("2") + Text("3") + Text("0") + Text("6")));

    annC_Text text;
    text.SetText("two\nlines");
    text.SetOffset({-1, 1});
    text.SetAnchor(annC_NamedAnchor(annC_POSITION_TOP_RIGHT));
    text.SetReferencePoint(annC_NamedAnchor(annC_POSITION_CENTER));
    text.SetRotationAngle(30);
    text.SetFont("-*-courier-");
    text.SetColor("#FF0000");
    text.SetBackgroundStyle("OTHER");
    text.SetBackgroundColor("no colour");
    text.SetBox(true);
    text.SetJustification("RIGHT");
    const std::unique_ptr<annC_Annotation> loaded = Load<annC_Annotation>(Save(text));
    ASSERT_NE(loaded, nullptr);
    EXPECT_TRUE(*loaded == text);
    EXPECT_EQ(Save(*loaded), Save(text));
}

TEST(annC_Archive, DamagedFieldsTakeTheirDefaults) {
    std::string printed;
    annC_Arrow arrow;
    arrow.SetEndHeadStyle("HOLLOW_CIRCLE");
    for (const char* const damaged : {"9", "-", "x"}) {
        const std::string bytes =
            Replaced(Save(arrow), Text("2") + Text("8"), Text(damaged) + Text("7"));
        const auto loaded = LoadDamaged<annC_Arrow>(bytes, printed);
        ASSERT_NE(loaded, nullptr);
        EXPECT_EQ(printed, std::string("Error reading annotation: endHeadStyle has no value \"") +
                               damaged + "\"\n");
        const auto& read = dynamic_cast<const annC_Arrow&>(*loaded);
        EXPECT_EQ(read.GetEndHeadStyle(), annC_HEAD_FILLED_ARROW);
        EXPECT_EQ(read.GetStartHeadStyle(), annC_HEAD_FILLED_SQUARE) << "what follows is read";
    }

    // No start anchor; then one whose class no object is of, where the stream ends.
    const std::string named = Save(annC_NamedAnchor());
    const std::string null("\x01\x00\x00\x00\x00", 5);
    const std::string base("\x01\x00\x50\x03\x01\x00\x00\x00\x00", 9);
    arrow.SetEndAnchor(annC_ViewportAnchor(1, 2));
    for (const std::string& record : {null, base, Save(annC_Annotation())}) {
        const auto loaded = LoadDamaged<annC_Arrow>(Replaced(Save(arrow), named, record), printed);
        ASSERT_NE(loaded, nullptr);
        const auto& read = dynamic_cast<const annC_Arrow&>(*loaded);
        EXPECT_TRUE(read.ConstGetStartAnchor() == annC_NamedAnchor());
        EXPECT_EQ(read.ConstGetEndAnchor() == annC_ViewportAnchor(1, 2), record == null);
        EXPECT_EQ(printed == "", record == null);
    }

    // One coordinate too few, and a flag that is neither 0 nor 1.
    const std::string point = std::string{2, 0, 0, 0, 1, 0, 0, 0} + std::string(16, '\0');
    const std::string shorter =
        std::string{1, 0, 0, 0, 1, 0, 0, 0} + std::string(6, '\0') + "\xF0?";
    const auto loaded =
        LoadDamaged<annC_Text>(Replaced(Save(annC_Text()), point, shorter), printed);
    EXPECT_EQ(dynamic_cast<const annC_Text&>(*loaded).GetOffset(), (annC_Point2D{1, 0}));
    std::string boxed = Save(annC_Text());
    boxed[10] = 4;
    const auto withBox = LoadDamaged<annC_Text>(boxed, printed);
    EXPECT_TRUE(dynamic_cast<const annC_Text&>(*withBox).HasBox());
    EXPECT_EQ(Save(*withBox), boxed);
}

Names KeysOf(const annC_AnnotationContainer& container) {
    Names names;
    for (const cow_String& name : container.Keys()) names.emplace_back(name.View());
    return names;
}

annC_AnnotationContainer Example() {
    annC_AnnotationContainer container;
    annC_Arrow arrow;
    container.Insert("white", arrow);
    arrow.SetColor("Red");
    arrow.SetStartAnchor(annC_Point3DAnchor(1, 2, 3));
    container.Insert("red", arrow);
    container.Insert("plain", annC_Annotation());
    container.Insert("", annC_Text());
    return container;
}

TEST(annC_AnnotationContainerArchive, ComesBackInOrderAndSilently) {
    const annC_AnnotationContainer container = Example();
    omu_ChangeHistory::Instance().StartRecording();
    const std::string bytes = Save(container);
    idb_LoadFault fault;
    const auto loaded = idb_LoadObject<annC_AnnotationContainer>(
        bytes.data(), bytes.size(), annC_AnnotationContainer::TypeId(), fault);
    ASSERT_NE(loaded, nullptr) << fault.text.Characters();
    EXPECT_TRUE(*loaded == container);
    EXPECT_THAT(KeysOf(*loaded), ElementsAre("", "plain", "red", "white"));
    EXPECT_EQ(loaded->GetId("white"), 4);
    EXPECT_EQ(Save(*loaded), bytes);
    EXPECT_EQ(omu_ChangeHistory::Instance().TakeChanges().Length(), 0);
    omu_ChangeHistory::Instance().StopRecording();

    // Base part, names, annotations: the heads are each 9 bytes, and a null value is 5.
    EXPECT_EQ(Save(annC_AnnotationContainer()).size(), 9u + 9 + 5 + 2 * (9 + 8));
}

TEST(annC_AnnotationContainerArchive, StandsAmongTheExtensionsOfAModel) {
    mdl_Repository model;
    EXPECT_TRUE(model.Insert("annotations", mdl_ExtensionHandle(Example().Copy())));
    const std::string bytes = Save(model);
    idb_LoadFault fault;
    const auto loaded =
        idb_LoadObject<mdl_Repository>(bytes.data(), bytes.size(), mdl_Repository::TypeId(), fault);
    ASSERT_NE(loaded, nullptr) << fault.text.Characters();
    const auto* const container =
        dynamic_cast<const annC_AnnotationContainer*>(loaded->ConstGet("annotations"));
    ASSERT_NE(container, nullptr);
    EXPECT_TRUE(*container == Example());
}

/// A container as a record of other names and annotations than a container has.
struct Records {
    cow_List<cow_String> names;
    std::vector<const annC_Annotation*> annotations;  ///< null: a null record

    void DBWrite(cls_WriteVisitor& visitor) const {
        if (const auto base = visitor.MakeBaseWriteObj(mdl_Extension::TypeId(), cls_Uid())) {
            mdl_Extension().DBWrite(*base);
        }
        if (const auto body = visitor.MakeWriteObj("names", 0, cls_Uid())) {
            body->MakeWriteListPrim(cow_String(), 1)->Write(names);
        }
        const auto body = visitor.MakeWriteObj("annotations", 0, cls_Uid());
        const auto writer = body->MakeWriteListObj(1);
        for (const annC_Annotation* const annotation : annotations) {
            if (!annotation) {
                writer->WriteNullObj();
                continue;
            }
            annotation->DBWrite(*writer->MakeWriteObj(annotation->TypeId(), cls_Uid(), annotation));
        }
    }
    [[nodiscard]] static std::uint32_t TypeId() { return annC_AnnotationContainer::TypeId(); }
};

/// Stands in the place of an annotation with the class of an anchor.
struct Anchor : annC_Annotation {
    [[nodiscard]] std::uint32_t TypeId() const override { return annC_Anchor::kTypeId; }
};

TEST(annC_AnnotationContainerArchive, DamagedRecordsKeepWhatIsWhole) {
    const annC_Arrow arrow;
    const annC_Text text;
    const Anchor anchor;
    const struct {
        Records records;
        Names kept;
        std::string printed;
    } cases[] = {
        {{{"a", "b", "c"}, {&arrow, &text}},
         {"a", "b"},
         "Error reading annotations: 1 names without one\n"},
        {{{"a", "b", "a"}, {&arrow, nullptr, &text}},
         {"a"},
         "Error reading annotations: 1 names without one\n"
         "Error reading annotations: 1 repeated names\n"},
        {{cow_List<cow_String>("a"), {&arrow, &text, &text}},
         {"a"},
         "Error reading annotations: 2 without a name\n"},
        // What is none of an annotation's classes is read as an annotation without fields.
        {{{"a", "b", "c"}, {&arrow, &anchor, &text}},
         {"a", "b", "c"},
         "Error constructing object for 3500001 does not inherit from 3500002\n"
         "Error constructing object for annC_Anchor does not inherit from annC_Annotation\n"},
    };
    for (const auto& damaged : cases) {
        const std::string bytes = Save(damaged.records);
        std::unique_ptr<annC_AnnotationContainer> loaded;
        idb_LoadFault fault;
        testing::internal::CaptureStderr();
        static_cast<void>(idb_LoadRecord(
            bytes.data(), bytes.size(), Records::TypeId(),
            [&](cls_ReadVisitor& visitor) {
                loaded = std::make_unique<annC_AnnotationContainer>(visitor);
            },
            fault));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), damaged.printed);
        ASSERT_NE(loaded, nullptr);
        EXPECT_EQ(KeysOf(*loaded), damaged.kept);
        const auto& records = damaged.records.annotations;
        for (int i = 0; i < loaded->Size(); ++i) {
            const auto* const record = records[static_cast<std::size_t>(i)];
            EXPECT_EQ(*loaded->ConstGet(loaded->Keys()[i]) == annC_Annotation(), record == &anchor);
        }
    }
}

}  // namespace
