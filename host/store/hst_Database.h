#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "ann/annC_AnnotationContainer.h"
#include "host/model/hst_CheckRecord.h"
#include "host/model/hst_Part.h"
#include "mdl/mdl_PropertyTable.h"

struct sqlite3;

/// A clearance check as a database keeps it.
struct hst_SavedCheck {
    hst_CheckRecord record;
    mdl_PropertyTable results;  ///< a row for each pair
    annC_AnnotationContainer annotations;
};

/// The content of a database: an assembly, and what a check of it found.
struct hst_SavedModel {
    std::vector<hst_Part> parts;
    std::optional<hst_SavedCheck> check;
};

/// A file of named persistent objects: an SQLite database with one row an object, that holds its
/// name, its class id and its memento. A save is one transaction, so that a crash at any moment
/// leaves the content before it or the one after it.
///
/// A mark in the file's header tells databases of this program. A file that is none is refused and
/// never changed. Parts are kept under names that begin with "part/", a check under names that
/// begin with "check/"; rows of other names are left alone. Every failure is an `hst_Error` that
/// names the file.
class hst_Database {
  public:
    enum class Access {
        Read,   ///< an existing database
        Write,  ///< created with the first save where there is no file yet
    };

    hst_Database(const std::string& path, Access access);
    ~hst_Database();
    hst_Database(const hst_Database&) = delete;
    hst_Database& operator=(const hst_Database&) = delete;

    /// Throws unless `path` is a database of this program, or can become one. Creates nothing.
    static void RequireWritable(const std::string& path);

    /// Saves parts, whose names differ, and a check where there is one, in place of all that were
    /// saved before. `onSaved` hears how many parts are done.
    void Replace(const std::vector<hst_Part>& parts, const hst_SavedCheck* check,
                 const std::function<void(std::size_t)>& onSaved);
    /// The saved parts in the order in which they were saved, at least one, and the check; each of
    /// them sound.
    [[nodiscard]] hst_SavedModel Load();

  private:
    class Statement;
    struct Close {
        void operator()(sqlite3* open) const;
    };

    void Open(Access access);
    void RequireOwn(Access access);
    void RequireOwnTables();
    void CreateTables();
    /// Takes away the file that a save without success created.
    void RemoveIfEmpty() const;
    void Execute(const std::string& sql);
    [[nodiscard]] int Number(const char* sql);
    /// Inserts a row for an object of any persistent class.
    template <class T>
    void Save(Statement& insert, const std::string& name, const T& object);
    void SaveCheck(Statement& insert, const hst_SavedCheck& check);
    /// The object of the row, when it is a sound record of a T.
    template <class T>
    [[nodiscard]] std::unique_ptr<T> LoadObject(const Statement& row, const std::string& object);
    [[nodiscard]] hst_Part LoadPart(const Statement& row);
    [[nodiscard]] std::optional<hst_SavedCheck> LoadCheck();
    [[noreturn]] void Refuse(const std::string& cause) const;
    [[noreturn]] void RefuseByState() const;

    std::string path;
    bool isMissing = false;  ///< no file when it was opened
    bool isNew = false;      ///< no bytes in it when it was opened
    std::unique_ptr<sqlite3, Close> connection;
};
