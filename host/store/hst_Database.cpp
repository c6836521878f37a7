#include "host/store/hst_Database.h"

#include <sqlite3.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include "host/model/hst_Classes.h"
#include "host/model/hst_Error.h"
#include "host/model/hst_PartName.h"
#include "idb/idb_Archive.h"

namespace {

// The mark in the header of the file ("KOvu") and the version of the tables.
constexpr int kApplicationId = 0x4B4F7675;
constexpr int kVersion = 1;

constexpr const char* kCreateObjects =
    "CREATE TABLE objects (id INTEGER PRIMARY KEY, name TEXT NOT NULL UNIQUE, "
    "class_id INTEGER NOT NULL, memento BLOB NOT NULL)";

constexpr std::string_view kPartPrefix = "part/";
constexpr const char* kCheckRecord = "check/record";
constexpr const char* kCheckResults = "check/results";
constexpr const char* kCheckAnnotations = "check/annotations";
constexpr const char* kDeleteSaved =
    "DELETE FROM objects WHERE substr(name, 1, 5) = 'part/' OR substr(name, 1, 6) = 'check/'";
constexpr const char* kSelectParts =
    "SELECT name, class_id, memento FROM objects WHERE substr(name, 1, 5) = 'part/' ORDER BY id";
constexpr const char* kSelectCheck =
    "SELECT name, class_id, memento FROM objects WHERE substr(name, 1, 6) = 'check/'";
constexpr const char* kInsert = "INSERT INTO objects (name, class_id, memento) VALUES (?, ?, ?)";

/// SQLite gives some names a meaning of their own; none begins with a directory.
std::string AsFileName(const std::string& path) {
    return path.starts_with('/') ? path : "./" + path;
}

}  // namespace

void hst_Database::Close::operator()(sqlite3* open) const { sqlite3_close_v2(open); }

/// One prepared statement, walked row by row.
class hst_Database::Statement {
  public:
    Statement(const hst_Database& owner, const char* sql) : database(owner) {
        if (sqlite3_prepare_v2(owner.connection.get(), sql, -1, &statement, nullptr) != SQLITE_OK) {
            owner.RefuseByState();
        }
    }
    ~Statement() { sqlite3_finalize(statement); }
    Statement(const Statement&) = delete;
    Statement& operator=(const Statement&) = delete;

    /// Goes to the next row; false behind the last.
    bool Next() {
        const int code = sqlite3_step(statement);
        if (code != SQLITE_ROW && code != SQLITE_DONE) database.RefuseByState();
        return code == SQLITE_ROW;
    }
    void Reset() { sqlite3_reset(statement); }

    [[nodiscard]] std::int64_t Integer(int column) const {
        return sqlite3_column_int64(statement, column);
    }
    /// The bytes of a text or a blob, valid until the next row.
    [[nodiscard]] std::string_view Bytes(int column) const {
        const auto* bytes = static_cast<const char*>(sqlite3_column_blob(statement, column));
        return {bytes ? bytes : "",
                static_cast<std::size_t>(sqlite3_column_bytes(statement, column))};
    }

    void Bind(int place, std::int64_t value) { sqlite3_bind_int64(statement, place, value); }
    /// The text and the blob have to live until the statement is reset.
    void BindText(int place, std::string_view text) {
        sqlite3_bind_text64(statement, place, text.data(), text.size(), SQLITE_STATIC, SQLITE_UTF8);
    }
    [[nodiscard]] bool BindBlob(int place, const void* bytes, std::size_t size) {
        return sqlite3_bind_blob64(statement, place, bytes, size, SQLITE_STATIC) == SQLITE_OK;
    }

  private:
    const hst_Database& database;
    sqlite3_stmt* statement = nullptr;
};

hst_Database::hst_Database(const std::string& databasePath, Access access) : path(databasePath) {
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::is_directory(status)) Refuse("is a directory");
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        Refuse("is no regular file");
    }
    isMissing = !std::filesystem::exists(status);
    if (isMissing && access == Access::Read) {
        Refuse(status.type() == std::filesystem::file_type::not_found ? "no such file"
                                                                      : error.message());
    }
    isNew = isMissing || std::filesystem::file_size(path, error) == 0;
    Open(access);
    RequireOwn(access);
}

hst_Database::~hst_Database() = default;

void hst_Database::RequireWritable(const std::string& path) {
    if (std::filesystem::exists(path)) {
        const hst_Database existing(path, Access::Write);
        if (sqlite3_db_readonly(existing.connection.get(), "main") == 1) {
            existing.Refuse("cannot be written");
        }
    }
    const std::filesystem::path folder = std::filesystem::path(AsFileName(path)).parent_path();
    if (!std::filesystem::is_directory(folder)) {
        throw hst_Error(path, "there is no folder '" + folder.string() + "'");
    }
    // A save writes a journal beside the file.
    if (access(folder.c_str(), W_OK | X_OK) != 0) {
        throw hst_Error(path, "cannot be written: " + std::generic_category().message(errno));
    }
}

void hst_Database::Open(Access access) {
    // A database that a crash left half-way is put right by whoever opens it next, so reading opens
    // for writing too where the file allows it.
    const int flags = SQLITE_OPEN_READWRITE | (access == Access::Write ? SQLITE_OPEN_CREATE : 0);
    sqlite3* opened = nullptr;
    const int code = sqlite3_open_v2(AsFileName(path).c_str(), &opened, flags, nullptr);
    connection.reset(opened);
    if (code != SQLITE_OK) RefuseByState();
    constexpr int kWaitMilliseconds = 5000;
    sqlite3_busy_timeout(connection.get(), kWaitMilliseconds);
    sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection.get(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
}

void hst_Database::RequireOwn(Access access) {
    if (isNew) {
        if (access == Access::Read) Refuse("is no database of ktsovu: it is empty");
        return;
    }
    if (Number("PRAGMA application_id") != kApplicationId) {
        Refuse("is a database, but none of ktsovu");
    }
    const int version = Number("PRAGMA user_version");
    if (version != kVersion) {
        Refuse("is a database of ktsovu in version " + std::to_string(version) +
               ", which this program does not know");
    }
    RequireOwnTables();
}

void hst_Database::RequireOwnTables() {
    Statement objects(*this, "SELECT type, name, coalesce(sql, '') FROM sqlite_master");
    bool found = false;
    while (objects.Next()) {
        const bool isTable = objects.Bytes(0) == "table" && objects.Bytes(1) == "objects" &&
                             objects.Bytes(2) == kCreateObjects;
        const bool isItsIndex = objects.Bytes(0) == "index" && objects.Bytes(2).empty();
        if (!isTable && !isItsIndex) Refuse("is a garbled database: its tables are not ours");
        found = found || isTable;
    }
    if (!found) Refuse("is a garbled database: its table is gone");
}

void hst_Database::CreateTables() {
    if (Number("SELECT count(*) FROM sqlite_master") != 0) {
        Refuse("was written by another program meanwhile");
    }
    Execute("PRAGMA application_id = " + std::to_string(kApplicationId));
    Execute("PRAGMA user_version = " + std::to_string(kVersion));
    Execute(kCreateObjects);
}

void hst_Database::Execute(const std::string& sql) {
    Statement statement(*this, sql.c_str());
    while (statement.Next()) {
    }
}

int hst_Database::Number(const char* sql) {
    Statement statement(*this, sql);
    return statement.Next() ? static_cast<int>(statement.Integer(0)) : 0;
}

void hst_Database::Refuse(const std::string& cause) const { throw hst_Error(path, cause); }

void hst_Database::RefuseByState() const {
    switch (sqlite3_errcode(connection.get())) {
        case SQLITE_NOTADB:
            Refuse("is no database");
        case SQLITE_CORRUPT:
            Refuse("is a garbled database");
        default:
            Refuse(std::string("the database fails: ") + sqlite3_errmsg(connection.get()));
    }
}

void hst_Database::Replace(const std::vector<hst_Part>& parts, const hst_SavedCheck* check,
                           const std::function<void(std::size_t)>& onSaved) {
    Execute("BEGIN IMMEDIATE");
    try {
        if (isNew) CreateTables();
        Execute(kDeleteSaved);
        Statement insert(*this, kInsert);
        std::size_t saved = 0;
        for (const hst_Part& part : parts) {
            Save(insert, std::string(kPartPrefix) + part.Name(), part);
            onSaved(++saved);
        }
        if (check) SaveCheck(insert, *check);
        Execute("COMMIT");
        isNew = false;
    } catch (...) {
        sqlite3_exec(connection.get(), "ROLLBACK", nullptr, nullptr, nullptr);
        connection.reset();
        RemoveIfEmpty();
        throw;
    }
}

template <class T>
void hst_Database::Save(Statement& insert, const std::string& name, const T& object) {
    bio_Ofilter memento;
    idb_SaveObject(memento, object);
    insert.BindText(1, name);
    insert.Bind(2, object.DynTypeId());
    if (!insert.BindBlob(3, memento.Data(), memento.Size())) {
        throw hst_Error(path, name, "it is too large for a row of the database");
    }
    insert.Next();
    insert.Reset();
}

void hst_Database::SaveCheck(Statement& insert, const hst_SavedCheck& check) {
    Save(insert, kCheckRecord, check.record);
    Save(insert, kCheckResults, check.results);
    Save(insert, kCheckAnnotations, check.annotations);
}

void hst_Database::RemoveIfEmpty() const {
    std::error_code error;
    if (isMissing && std::filesystem::file_size(path, error) == 0 && !error) {
        std::filesystem::remove(path, error);
    }
}

hst_SavedModel hst_Database::Load() {
    hst_SavedModel model;
    Statement rows(*this, kSelectParts);
    while (rows.Next()) model.parts.push_back(LoadPart(rows));
    if (model.parts.empty()) Refuse("holds no parts");
    model.check = LoadCheck();
    return model;
}

template <class T>
std::unique_ptr<T> hst_Database::LoadObject(const Statement& row, const std::string& object) {
    if (row.Integer(1) != T::TypeId()) Refuse(object + " is of another class");
    const std::string_view memento = row.Bytes(2);
    idb_LoadFault loadFault;
    auto loaded = idb_LoadObject<T>(memento.data(), memento.size(), T::TypeId(), loadFault);
    if (!loaded) Refuse(object + ": " + std::string(loadFault.text.View()));
    // What no field shows (a flag, a number that is not used here) shows in the bytes: an object's
    // record is the same whenever it is saved.
    bio_Ofilter again(memento.size());
    idb_SaveObject(again, *loaded);
    if (again.Size() != memento.size() ||
        std::memcmp(again.Data(), memento.data(), memento.size()) != 0) {
        Refuse(object + ": its saved bytes are garbled");
    }
    return loaded;
}

hst_Part hst_Database::LoadPart(const Statement& row) {
    const std::string name(row.Bytes(0).substr(kPartPrefix.size()));
    auto part = LoadObject<hst_Part>(row, "part '" + name + "'");
    if (const std::string fault = part->Fault(); !fault.empty()) {
        throw hst_Error(path, name, fault);
    }
    if (part->Name() != name) throw hst_Error(path, name, "it was saved as another part");
    return *std::move(part);
}

std::optional<hst_SavedCheck> hst_Database::LoadCheck() {
    std::unique_ptr<hst_CheckRecord> record;
    std::unique_ptr<mdl_PropertyTable> results;
    std::unique_ptr<annC_AnnotationContainer> annotations;
    Statement rows(*this, kSelectCheck);
    while (rows.Next()) {
        const std::string_view name = rows.Bytes(0);
        if (name == kCheckRecord) {
            record = LoadObject<hst_CheckRecord>(rows, "the check");
        } else if (name == kCheckResults) {
            results = LoadObject<mdl_PropertyTable>(rows, "the results of the check");
        } else if (name == kCheckAnnotations) {
            annotations = LoadObject<annC_AnnotationContainer>(rows, "the annotations");
        }
    }
    if (!record && !results && !annotations) return std::nullopt;
    if (!record || !results || !annotations) Refuse("holds a part of a check only");
    if (!record->IsSound()) Refuse("the check has lengths that are none");
    return hst_SavedCheck{*record, *results, *annotations};
}
