#include "idb/idb_ReadObjCollections.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <type_traits>
#include <utility>
#include <vector>

#include "idb/detail/idb_ObjectReader.h"
#include "idb/idb_ElementCodec.h"

namespace {

/// A null object: class id and flag.
constexpr std::size_t kSmallestRecord = 5;

/// The order of the keys of a `cow_Map`: strings count up to their first zero byte.
template <class K>
int Compare(const K& a, const K& b) noexcept {
    if constexpr (std::is_same_v<K, cow_String>) {
        return std::strcmp(a.Characters(), b.Characters());
    } else {
        return a < b ? -1 : a > b;
    }
}

}  // namespace

/// The list grows with what it holds, whatever the count of the stream promises.
template <class Interface>
struct idb_ReadObjects<Interface>::Objects {
    idb_ObjectReader reader;
    cow_List<idb_BuiltObject> built;
};

template <class Interface>
idb_ReadObjects<Interface>::idb_ReadObjects(bio_Ifilter& stream, const cls_ClassRegistrar& classes)
    : objects(new Objects{idb_ObjectReader(stream, classes), {}}) {}

template <class Interface>
idb_ReadObjects<Interface>::~idb_ReadObjects() {
    Shrink(0);
}

template <class Interface>
int idb_ReadObjects<Interface>::ReadHead(bio_Ifilter& stream, std::size_t smallestElement) {
    const int count = stream.ReadCount(smallestElement, sizeof columns);
    columns = stream.ReadInt();
    return count;
}

template <class Interface>
void idb_ReadObjects<Interface>::ReadElement(std::uint32_t expectedClassId) {
    objects->built.Append(idb_BuiltObject());
    objects->built.UncheckedGet(Size() - 1) = objects->reader.Build(expectedClassId);
}

template <class Interface>
void idb_ReadObjects<Interface>::Swap(int a, int b) noexcept {
    std::swap(objects->built.UncheckedGet(a), objects->built.UncheckedGet(b));
}

template <class Interface>
void idb_ReadObjects<Interface>::Shrink(int newSize) noexcept {
    if (Size() <= newSize) return;
    for (int i = Size(); i > newSize;) {
        objects->reader.Destroy(objects->built.UncheckedGet(--i));
    }
    objects->built.Resize(newSize);
}

template <class Interface>
int idb_ReadObjects<Interface>::Size() const {
    return objects->built.Length();
}

template <class Interface>
bool idb_ReadObjects<Interface>::Next() {
    if (position < Size()) ++position;
    return position < Size();
}

template <class Interface>
idb_BuiltObject* idb_ReadObjects<Interface>::Current() const {
    if (position < 0 || position >= Size()) return nullptr;
    return &objects->built.UncheckedGet(position);
}

template <class Interface>
std::uint32_t idb_ReadObjects<Interface>::ClassId() const {
    const idb_BuiltObject* const current = Current();
    return current && current->object ? current->classId : 0;
}

template <class Interface>
const void* idb_ReadObjects<Interface>::ConstGet(std::uint32_t classId) const {
    const idb_BuiltObject* const current = Current();
    return current && objects->reader.IsA(*current, classId) ? current->object : nullptr;
}

template <class Interface>
void* idb_ReadObjects<Interface>::ReadObjPtr(std::uint32_t classId, bool& isFirst) {
    isFirst = false;
    idb_BuiltObject* const current = Current();
    return current ? objects->reader.TakePointer(*current, classId, isFirst) : nullptr;
}

template <class Interface>
void* idb_ReadObjects<Interface>::ReadObjValue(std::uint32_t classId) {
    idb_BuiltObject* const current = Current();
    return current ? objects->reader.TakeValue(*current, classId) : nullptr;
}

template <class Interface>
std::shared_ptr<cls_CowHolder> idb_ReadObjects<Interface>::ReadObjCow(std::uint32_t classId,
                                                                      cls_CowAdopt adopt) {
    idb_BuiltObject* const current = Current();
    return current ? objects->reader.TakeCow(*current, classId, adopt) : nullptr;
}

idb_ReadListObj::idb_ReadListObj(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                                 std::uint32_t expectedClassId)
    : idb_ReadObjects(stream, classes) {
    const int count = ReadHead(stream, kSmallestRecord);
    for (int i = 0; i < count && !stream.Failed(); ++i) ReadElement(expectedClassId);
}

template <class K>
idb_ReadMapObj<K>::idb_ReadMapObj(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                                  std::uint32_t expectedClassId)
    : idb_ReadObjects<cls_ReadMapObj<K>>(stream, classes) {
    const int count = this->ReadHead(stream, idb_ElementCodec<K>::kSmallestSize + kSmallestRecord);
    for (int i = 0; i < count && !stream.Failed(); ++i) {
        keys.Append(idb_ElementCodec<K>::Read(stream));
        this->ReadElement(expectedClassId);
    }
    UniteRepeated();
}

template <class K>
void idb_ReadMapObj<K>::UniteRepeated() {
    const auto keyAt = [this](int i) -> K& { return keys.UncheckedGet(i); };
    const int size = keys.Length();
    std::vector<int> order(static_cast<std::size_t>(size));
    std::iota(order.begin(), order.end(), 0);
    std::ranges::sort(order, [&keyAt](int a, int b) {
        const int compared = Compare(keyAt(a), keyAt(b));
        return compared != 0 ? compared < 0 : a < b;
    });

    std::vector<bool> isRepeated(order.size());
    for (std::size_t i = 0; i < order.size();) {
        std::size_t end = i + 1;
        for (; end < order.size() && Compare(keyAt(order[i]), keyAt(order[end])) == 0; ++end) {
            isRepeated[static_cast<std::size_t>(order[end])] = true;
        }
        if (end - i > 1) this->Swap(order[i], order[end - 1]);
        i = end;
    }

    int kept = 0;
    for (int i = 0; i < size; ++i) {
        if (isRepeated[static_cast<std::size_t>(i)]) continue;
        if (i != kept) {
            std::swap(keyAt(i), keyAt(kept));
            this->Swap(i, kept);
        }
        ++kept;
    }
    if (kept == size) return;
    keys.Resize(kept);
    this->Shrink(kept);
}

template <class K>
K idb_ReadMapObj<K>::Key() const {
    const int at = this->Position();
    return at >= 0 && at < this->Size() ? keys[at] : K();
}

idb_ReadProxy::idb_ReadProxy(bio_Ifilter& stream, const cls_ClassRegistrar& classes,
                             std::uint32_t expectedClassId)
    : idb_ReadObjects(stream, classes) {
    ReadElement(expectedClassId);
    MoveTo(0);
}

idb_ReadBlob::idb_ReadBlob(bio_Ifilter& stream) : size(stream.ReadCount(1, sizeof(int))) {
    static_cast<void>(stream.ReadInt());
    if (size > 0) data = stream.Take(static_cast<std::size_t>(size));
    if (!data) size = 0;
}

template class idb_ReadObjects<cls_ReadObjCollection>;
template class idb_ReadObjects<cls_ReadListObj>;
template class idb_ReadObjects<cls_ReadMapObj<int>>;
template class idb_ReadObjects<cls_ReadMapObj<cow_String>>;
template class idb_ReadMapObj<int>;
template class idb_ReadMapObj<cow_String>;
