#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include "foundation/shared/bio_Ofilter.h"
#include "foundation/shared/cls_ClassRegistrar.h"
#include "foundation/shared/cls_Visitors.h"
#include "idb/detail/idb_Section.h"

/// What a record is for; only objects count as nested in one another.
enum class idb_RecordRoleEnm : std::uint8_t { Object, Base, Collection };

/// A nested record to be written.
struct idb_NestedRecord {
    std::uint32_t classId = 0;
    bool hasValue = true;
    cls_Uid uid;
    idb_RecordRoleEnm role = idb_RecordRoleEnm::Object;
    cls_CollectionType type = cls_NO_COLLECTION;
    int depth = 1;  ///< object records up to and including this one
};

/// The writer of `record`, at the next place of `section`. Null when the stream has failed, and
/// when the record would be nested too deep or be one too many: that fails the stream.
[[nodiscard]] std::unique_ptr<cls_WriteVisitor> idb_NestRecord(idb_Section& section,
                                                               bio_Ofilter& filter,
                                                               const cls_ClassRegistrar& registrar,
                                                               const idb_NestedRecord& record);

/// Puts a null object at the next place of `section`.
void idb_NestNull(idb_Section& section);

/// A `Writer` whose bytes have a place in a section: its `CompleteInto` fills it.
template <class Writer>
class idb_NestedWriter final : public Writer, private idb_OpenWriter {
  public:
    template <class... Arguments>
    explicit idb_NestedWriter(idb_Section& places, Arguments&&... arguments)
        : Writer(std::forward<Arguments>(arguments)...), idb_OpenWriter(places) {}
    ~idb_NestedWriter() override { End(); }

  private:
    void Complete(idb_PendingBytes& out) override {
        if constexpr (requires { this->ByteSize(); }) {
            this->Put(out.Tail(this->ByteSize()));
        } else {
            this->CompleteInto(out);
        }
    }
};
