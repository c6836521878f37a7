#pragma once

#include <cstddef>
#include <vector>

#include "idb/detail/idb_PendingBytes.h"

class idb_Section;

/// A writer whose bytes have their place in a section since it was made and are filled in when it
/// ends.
class idb_OpenWriter {
  public:
    /// Takes the next place of `target`.
    explicit idb_OpenWriter(idb_Section& target);
    idb_OpenWriter(const idb_OpenWriter&) = delete;
    idb_OpenWriter& operator=(const idb_OpenWriter&) = delete;

    /// Appends the writer's bytes to `out`; asked once.
    virtual void Complete(idb_PendingBytes& out) = 0;

  protected:
    ~idb_OpenWriter() = default;
    /// Fills the writer's place; nothing when the section went ahead or is gone. What fails is kept
    /// in the stream's filter. The destructor of every writer ends with it.
    void End() noexcept;
    [[nodiscard]] bool IsOpen() const noexcept { return section != nullptr; }

  private:
    friend class idb_Section;
    idb_Section* section;
    std::size_t place;
};

/// The nested records of one record, in the order in which their writers were made, whatever order
/// the writers end in.
class idb_Section {
  public:
    explicit idb_Section(bio_Ofilter& stream) : filter(stream) {}
    /// Writers still open then write nothing.
    ~idb_Section();
    idb_Section(const idb_Section&) = delete;
    idb_Section& operator=(const idb_Section&) = delete;

    /// The next place, for bytes that need no writer; valid until the next call.
    [[nodiscard]] idb_PendingBytes& Next();
    /// Completes the writers that are still open, which write nothing afterwards, and returns all
    /// bytes.
    [[nodiscard]] idb_PendingBytes& Complete();

  private:
    friend class idb_OpenWriter;
    struct Place {
        idb_OpenWriter* writer = nullptr;  ///< null: filled
        idb_PendingBytes bytes;
    };

    void Fill(Place& place);
    void MoveFilled();

    bio_Ofilter& filter;
    idb_PendingBytes filled;    ///< all places before the first open one
    std::vector<Place> places;  ///< those since all were filled last
    std::size_t firstOpen = 0;  ///< its index in `places`
    std::size_t cleared = 0;    ///< places that were filled and dropped from `places`
};
