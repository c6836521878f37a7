#include "omu/omu_PrimTuple.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

#include "omu/omu_ArgumentTypes.h"
#include "omu/omu_CmdExceptions.h"
#include "omu/omu_PrimArchive.h"
#include "omu/omu_PrimNone.h"
#include "omu/omu_PrimVisitor.h"
#include "omu/omu_TextRepr.h"
#include "omu/omu_TypeErrorException.h"

namespace {

constexpr cls_FieldHandle kPrimVector("primVector");
constexpr cls_FieldHandle kSize("size");
constexpr cls_FieldHandle kCursor("cursor");
constexpr cls_FieldHandle kReqcount("reqcount");
constexpr cls_FieldHandle kArgcount("argcount");
constexpr cls_FieldHandle kIsOptional("isOptional");
constexpr cls_FieldHandle kErrorArg("errorArg");
constexpr cls_FieldHandle kTypeFound("typeFound");
constexpr cls_FieldHandle kTypeExpected("typeExpected");
constexpr cls_FieldHandle kNumGets("numGets");

/// What records say where no type is known.
constexpr std::string_view kNoType = "Undetermined";

/// Room above every counter that a record may hold.
constexpr int kLargestCounter = std::numeric_limits<int>::max() / 2;

using Handles = cow_List<omu_PrimHandle>;

omu_PrimNesting NestingOf(const Handles& elements) {
    omu_PrimNesting nesting = omu_PrimNesting::OfEmptyContainer();
    for (const omu_PrimHandle& element : elements) {
        if (element.IsNull()) KTSBasThrow(omu_GenericTypeErrorException());
        nesting = nesting.With(element->Nesting());
        nesting.Require();
    }
    return nesting;
}

Handles ReadElements(cls_ReadVisitor& visitor) {
    Handles elements;
    const auto body = visitor.MakeReadObj(kPrimVector);
    const auto reader = body ? body->MakeReadListObj() : nullptr;
    while (reader && reader->Next()) {
        std::unique_ptr<omu_Primitive> element = omu_ReadElement(*reader);
        elements.Append(omu_PrimHandle(element ? element.release() : new omu_PrimNone));
    }
    return elements;
}

int ReadCounter(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    int counter = 0;
    visitor.Read(field, counter);
    return std::clamp(counter, 0, kLargestCounter);
}

cow_String ReadType(cls_ReadVisitor& visitor, const cls_FieldHandle& field) {
    cow_String type;
    visitor.Read(field, type);
    return type.View() == kNoType ? cow_String() : type;
}

void WriteType(cls_WriteVisitor& visitor, const cls_FieldHandle& field, const cow_String& type) {
    visitor.Write(field, type.IsEmpty() ? cow_String(kNoType) : type);
}

/// Takes the whole tuple as a `T` that arguments are read into; else answers the word for it.
template <class T>
bool ConvertWhole(const omu_PrimTuple& tuple, T& out, cow_String& expected,
                  const char* word = omu_ExpectedWord<T>) {
    const bool isTaken = omu_Convert(tuple, out);
    if (!isTaken) expected = word;
    return isTaken;
}

bool ConvertPair(const omu_Primitive& element, cow_String& name, float& number) {
    const auto* const pair = dynamic_cast<const omu_PrimSequence*>(&element);
    return pair && pair->Length() == 2 && omu_Convert(*pair->Index(0), name) &&
           omu_Convert(*pair->Index(1), number);
}

}  // namespace

/// How a text is made, and where it is cut.
struct omu_PrimTuple::TextRules {
    bool isRepr;
    int flag;
    int maxElements;
    std::size_t maxBytes;
};

omu_PrimTuple::omu_PrimTuple(char typeTag, const cow_List<omu_PrimHandle>& elements)
    : omu_PrimSequence(typeTag),
      size(elements.Length()),
      nesting(NestingOf(elements)),
      primVector(elements) {}

omu_PrimTuple::omu_PrimTuple(char typeTag, const omu_PrimTuple& other)
    : omu_PrimSequence(typeTag), primVector(other.primVector) {
    *this = other;
}

omu_PrimTuple::omu_PrimTuple(cls_ReadVisitor& visitor) : omu_PrimTuple(ReadElements(visitor)) {
    cursor = ReadCounter(visitor, kCursor);
    reqcount = ReadCounter(visitor, kReqcount);
    argcount = ReadCounter(visitor, kArgcount);
    numGets = ReadCounter(visitor, kNumGets);
    errorArg = ReadCounter(visitor, kErrorArg);
    visitor.Read(kIsOptional, isOptional);
    typeFound = ReadType(visitor, kTypeFound);
    typeExpected = ReadType(visitor, kTypeExpected);
}

void omu_PrimTuple::RequireIndex(int index, int end) const {
    if (index >= 0 && index < end) return;
    KTSBasThrow(omu_ValueErrorException(IsType(omu_PrimTag::kList) ? "List Index returned NULL"
                                                                   : "Tuple Index returned NULL"));
}

const omu_Primitive* omu_PrimTuple::Index(int index) const {
    RequireIndex(index, Length());
    return primVector.UncheckedConstGet(index).ConstGet();
}

bool omu_PrimTuple::ForEachElement(const ElementUse& use) const {
    int index = 0;
    for (const omu_PrimHandle& element : primVector) {
        if (!use(*element, index++)) return false;
    }
    return true;
}

omu_PrimTuple* omu_PrimTuple::Slice(int first, int last) const {
    return new omu_PrimTuple(primVector.Slice(first, last));
}

omu_PrimTuple* omu_PrimTuple::Concat(const omu_PrimSequence& other) const {
    return new omu_PrimTuple(Joined(other));
}

omu_PrimTuple* omu_PrimTuple::Repeat(int count) const { return new omu_PrimTuple(Repeated(count)); }

cow_List<omu_PrimHandle> omu_PrimTuple::Joined(const omu_PrimSequence& other) const {
    Handles elements = primVector;
    elements.Concatenate(other.Elements());
    return elements;
}

cow_List<omu_PrimHandle> omu_PrimTuple::Repeated(int count) const {
    if (count <= 0 || primVector.IsEmpty()) return {};
    omu_PrimNesting repeated = nesting;
    repeated.nodes = 1 + (nesting.nodes - 1) * count;
    repeated.Require();
    auto elements = Handles::WithSizeHint(Length() * count);
    for (int i = 0; i < count; ++i) elements.Concatenate(primVector);
    return elements;
}

void omu_PrimTuple::InsertElement(int index, const omu_PrimHandle& element) {
    if (element.IsNull()) KTSBasThrow(omu_GenericTypeErrorException());
    RequireIndex(index, Length() + 1);
    const omu_PrimNesting changed = nesting.With(element->Nesting());
    changed.Require();
    if (index == Length()) {
        primVector.Append(element);
    } else {
        Handles elements = primVector;  // an insertion that fails may leave elements moved
        elements.InsertIndex(index, element);
        primVector = elements;
    }
    nesting = changed;
    size = Length();
}

void omu_PrimTuple::SetElement(int index, const omu_PrimHandle& element) {
    if (element.IsNull()) KTSBasThrow(omu_GenericTypeErrorException());
    RequireIndex(index, Length());
    const omu_PrimNesting before = primVector[index]->Nesting();
    omu_PrimNesting changed = nesting.With(element->Nesting());
    changed.nodes -= before.nodes;
    changed.Require();
    primVector.Get(index) = element;
    const bool mayBeShallower = before.depth > 0 && before.depth + 1 == changed.depth &&
                                element->Nesting().depth < before.depth;
    nesting = mayBeShallower ? NestingOf(primVector) : changed;
}

void omu_PrimTuple::RemoveElement(int index) {
    RequireIndex(index, Length());
    const omu_PrimNesting before = primVector[index]->Nesting();
    if (index == Length() - 1) {
        primVector.RemoveLast();
    } else {
        Handles elements = primVector;
        elements.RemoveIndex(index);
        primVector = elements;
    }
    nesting.nodes -= before.nodes;
    if (before.depth > 0 && before.depth + 1 == nesting.depth) nesting = NestingOf(primVector);
    size = Length();
}

bool omu_PrimTuple::AsListInt(cow_List<int>& out, cow_String& expected) const {
    return ConvertWhole(*this, out, expected);
}

bool omu_PrimTuple::AsListFloat(cow_List<float>& out, cow_String& expected) const {
    return ConvertWhole(*this, out, expected);
}

bool omu_PrimTuple::AsListDouble(cow_List<double>& out, cow_String& expected) const {
    return ConvertWhole(*this, out, expected);
}

bool omu_PrimTuple::AsListBool(cow_List<bool>& out, cow_String& expected) const {
    auto list = cow_List<bool>::WithSizeHint(Length());
    const bool all = ForEachElement([&list](const omu_Primitive& element, int) {
        bool truth = false;
        if (!omu_Convert(element, truth)) return false;
        list.Append(truth);
        return true;
    });
    if (all) {
        out = list;
    } else {
        expected = "sequence of Bool";
    }
    return all;
}

bool omu_PrimTuple::AsListString(cow_List<cow_String>& out, cow_String& expected) const {
    return ConvertWhole(*this, out, expected);
}

bool omu_PrimTuple::AsListTranslatedString(cow_List<atr_String>& out, cow_String& expected) const {
    return ConvertWhole(*this, out, expected, "sequence of translated Strings");
}

bool omu_PrimTuple::As2DArrayDouble(cow_2DArray<double>& out, cow_String& expected) const {
    return ConvertWhole(*this, out, expected);
}

bool omu_PrimTuple::As2DArrayString(cow_2DArray<cow_String>& out, cow_String& expected) const {
    return ConvertWhole(*this, out, expected);
}

bool omu_PrimTuple::AsMapString2Float(cow_Map<cow_String, float>& out, cow_String& expected) const {
    cow_Map<cow_String, float> map;
    const bool all = ForEachElement([&map](const omu_Primitive& element, int) {
        cow_String name;
        float number = 0;
        if (!ConvertPair(element, name, number)) return false;
        map.Insert(name, number);
        return true;
    });
    if (all) {
        out = map;
    } else {
        expected = "2D sequence of Floats";
    }
    return all;
}

cow_String omu_PrimTuple::TypeString() const { return "tuple"; }

cow_String omu_PrimTuple::AsString(int flag) const {
    std::string text;
    AppendText(text, {false, flag, std::numeric_limits<int>::max(),
                      std::numeric_limits<std::size_t>::max()});
    return cow_String(text);
}

cow_String omu_PrimTuple::AsRepr() const {
    const omu_TextRepr& settings = omu_TextRepr::Instance();
    const auto megabytes = static_cast<std::size_t>(std::max(settings.GetMaxReprStringSizeMB(), 0));
    std::string text;
    AppendText(text, {true, 0, settings.GetMaxElementsInSequence(),
                      megabytes > 0 ? megabytes << 20 : std::numeric_limits<std::size_t>::max()});
    return cow_String(text);
}

void omu_PrimTuple::AppendText(std::string& text, const TextRules& rules) const {
    const bool isList = IsType(omu_PrimTag::kList);
    text += isList ? '[' : '(';
    int index = 0;
    for (const omu_PrimHandle& element : primVector) {
        if (index > 0) text += ", ";
        if (index >= rules.maxElements || text.size() > rules.maxBytes) {
            text += "...";
            break;
        }
        if (element->IsType(omu_PrimTag::kTuple) || element->IsType(omu_PrimTag::kList)) {
            static_cast<const omu_PrimTuple&>(*element).AppendText(text, rules);
        } else {
            text += (rules.isRepr ? element->AsRepr() : element->AsString(rules.flag)).View();
        }
        if (text.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) {
            throw std::length_error("text of a sequence");
        }
        ++index;
    }
    if (!isList && Length() == 1 && index == 1) text += ',';
    text += isList ? ']' : ')';
}

bool omu_PrimTuple::operator==(const omu_Primitive& other) const {
    if (!other.IsType(Type())) return false;
    const Handles& others = static_cast<const omu_PrimTuple&>(other).primVector;
    return primVector.Length() == others.Length() &&
           std::equal(primVector.begin(), primVector.end(), others.begin(),
                      [](const omu_PrimHandle& a, const omu_PrimHandle& b) { return *a == *b; });
}

void omu_PrimTuple::Accept(omu_PrimVisitor* visitor) const { visitor->Visit(*this); }

omu_PrimTuple* omu_PrimTuple::Copy() const { return new omu_PrimTuple(*this); }

std::uint32_t omu_PrimTuple::TypeId() const { return kTypeId; }

void omu_PrimTuple::DBWrite(cls_WriteVisitor& visitor) const {
    visitor.Write(kSize, size);
    visitor.Write(kCursor, cursor);
    visitor.Write(kReqcount, reqcount);
    visitor.Write(kArgcount, argcount);
    visitor.Write(kIsOptional, isOptional);
    visitor.Write(kErrorArg, errorArg);
    visitor.Write(kNumGets, numGets);
    WriteType(visitor, kTypeFound, typeFound);
    WriteType(visitor, kTypeExpected, typeExpected);
    const auto body = visitor.MakeWriteObj(kPrimVector, 0, cls_Uid());
    const auto writer = body ? body->MakeWriteListObj(1) : nullptr;
    if (!writer) return;
    for (const omu_PrimHandle& element : primVector) {
        const auto record = writer->MakeWriteObj(element->TypeId(), cls_Uid(), element.ConstGet());
        if (record) element->DBWrite(*record);
    }
}

void omu_PrimTuple::InitializeMetadata(cls_ClassRegistrar& registrar) {
    registrar.AddClass(omu_MetadataOf<omu_PrimTuple>("omu_PrimTuple", omu_PrimSequence::kTypeId)
                           .AddAttribute(kPrimVector.Name(), cls_KIND_COLLECTION, 0, cls_LIST_OBJ)
                           .AddAttribute(kSize.Name(), cls_KIND_INT)
                           .AddAttribute(kCursor.Name(), cls_KIND_INT)
                           .AddAttribute(kReqcount.Name(), cls_KIND_INT)
                           .AddAttribute(kArgcount.Name(), cls_KIND_INT)
                           .AddAttribute(kIsOptional.Name(), cls_KIND_BOOL)
                           .AddAttribute(kErrorArg.Name(), cls_KIND_INT)
                           .AddAttribute(kTypeFound.Name(), cls_KIND_STRING)
                           .AddAttribute(kTypeExpected.Name(), cls_KIND_STRING)
                           .AddAttribute(kNumGets.Name(), cls_KIND_INT));
}
