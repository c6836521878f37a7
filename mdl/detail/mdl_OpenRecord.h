#pragma once

#include "foundation/shared/cls_Uid.h"

/// An identity whose record this thread is writing, as long as the object lives. A record inside it
/// must not refer to the same identity: a reader would look for an object that is not yet whole.
class mdl_OpenRecord {
  public:
    explicit mdl_OpenRecord(const cls_Uid& identity) noexcept : uid(identity), outer(innermost) {
        innermost = this;
    }
    ~mdl_OpenRecord() { innermost = outer; }
    mdl_OpenRecord(const mdl_OpenRecord&) = delete;
    mdl_OpenRecord& operator=(const mdl_OpenRecord&) = delete;

    /// True when a record of `identity` is being written.
    [[nodiscard]] static bool IsOpen(const cls_Uid& identity) noexcept {
        for (const mdl_OpenRecord* open = innermost; open; open = open->outer) {
            if (open->uid == identity) return true;
        }
        return false;
    }

  private:
    static inline constinit thread_local const mdl_OpenRecord* innermost = nullptr;

    cls_Uid uid;
    const mdl_OpenRecord* outer;
};
