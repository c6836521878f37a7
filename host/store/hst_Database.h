#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "host/model/hst_Part.h"

struct sqlite3;

/// A file of named persistent objects: an SQLite database with one row an object, that holds its
/// name, its class id and its memento. A save is one transaction, so that a crash at any moment
/// leaves the content before it or the one after it.
///
/// A mark in the file's header tells databases of this program. A file that is none is refused and
/// never changed. Parts are kept under names that begin with "part/"; rows of other names are left
/// alone. Every failure is an `hst_Error` that names the file.
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

    /// Saves `parts`, whose names differ, in place of all parts saved before. `onSaved` hears how
    /// many are done.
    void ReplaceParts(const std::vector<hst_Part>& parts,
                      const std::function<void(std::size_t)>& onSaved);
    /// The saved parts in the order in which they were saved, at least one, each of them sound.
    [[nodiscard]] std::vector<hst_Part> LoadParts();

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
    [[nodiscard]] hst_Part LoadPart(const Statement& row);
    [[noreturn]] void Refuse(const std::string& cause) const;
    [[noreturn]] void RefuseByState() const;

    std::string path;
    bool isMissing = false;  ///< no file when it was opened
    bool isNew = false;      ///< no bytes in it when it was opened
    std::unique_ptr<sqlite3, Close> connection;
};
