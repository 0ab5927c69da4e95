#include "Support/platform/RegistryKeys.h"

#include <pthread.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <mutex>
#include <string_view>
#include <utility>

namespace vemra::platform {

namespace {

constexpr int kBusyMilliseconds = 5000;
constexpr int kSchemaVersion = 1;
constexpr int kMaxDepth = 32;  // components of a path

// A key's path is its identity, so one look-up finds it. Numbers are never used again: a handle on
// a deleted key must not come to mean another one. A value keeps its number when it is set again,
// which keeps the order in which values were first set.
constexpr char kSchema[] =
    "CREATE TABLE key(id INTEGER PRIMARY KEY AUTOINCREMENT, parent INTEGER REFERENCES key,"
    "  name TEXT NOT NULL, path TEXT NOT NULL COLLATE NOCASE UNIQUE);"
    "CREATE INDEX key_parent ON key(parent);"
    "CREATE TABLE value(id INTEGER PRIMARY KEY AUTOINCREMENT,"
    "  key INTEGER NOT NULL REFERENCES key ON DELETE CASCADE,"
    "  name TEXT NOT NULL COLLATE NOCASE, type INTEGER NOT NULL, data BLOB NOT NULL,"
    "  UNIQUE(key, name));"
    "PRAGMA user_version = 1;";

struct CloseDatabase {
  void operator()(sqlite3* database) const { sqlite3_close_v2(database); }
};
using Database = std::unique_ptr<sqlite3, CloseDatabase>;

// One prepared statement in use: bound in order, stepped, and reset at the end.
class Query {
 public:
  explicit Query(sqlite3_stmt* statement) : statement_(statement) {}
  ~Query() {
    if (statement_ == nullptr) return;
    sqlite3_reset(statement_);
    sqlite3_clear_bindings(statement_);
  }
  Query(const Query&) = delete;
  Query& operator=(const Query&) = delete;

  Query& Bind(std::int64_t number) {
    if (statement_ != nullptr) sqlite3_bind_int64(statement_, ++bound_, number);
    return *this;
  }
  // The text lives until the query ends.
  Query& Bind(std::string_view text) {
    if (statement_ != nullptr)
      sqlite3_bind_text64(statement_, ++bound_, text.data(), text.size(), SQLITE_STATIC,
                          SQLITE_UTF8);
    return *this;
  }
  Query& BindBlob(std::string_view bytes) {
    if (statement_ != nullptr)
      sqlite3_bind_blob64(statement_, ++bound_, bytes.data(), bytes.size(), SQLITE_STATIC);
    return *this;
  }

  bool Row() { return Step() == SQLITE_ROW; }
  bool Done() { return Step() == SQLITE_DONE; }
  int Step() { return statement_ == nullptr ? SQLITE_ERROR : sqlite3_step(statement_); }

  std::int64_t Number(int column) const { return sqlite3_column_int64(statement_, column); }
  std::string Bytes(int column) const {
    const auto* data = static_cast<const char*>(sqlite3_column_blob(statement_, column));
    return data == nullptr
               ? std::string()
               : std::string(data, std::size_t(sqlite3_column_bytes(statement_, column)));
  }

 private:
  sqlite3_stmt* statement_;
  int bound_ = 0;
};

std::string FindStore() {
  if (const char* named = std::getenv("VEMRA_REGISTRY"); named != nullptr && *named != '\0')
    return named;
  if (access("/var/lib/vemra", W_OK) == 0) return "/var/lib/vemra/registry.db";
  if (const char* data = std::getenv("XDG_DATA_HOME"); data != nullptr && *data != '\0')
    return std::string(data) + "/vemra/registry.db";
  if (const char* home = std::getenv("HOME"); home != nullptr && *home != '\0')
    return std::string(home) + "/.local/share/vemra/registry.db";
  return {};
}

// The process's connection. Every use is under its mutex, and so is a fork: the connection is
// closed first, since neither it nor the locks that it stands for survive in the child.
class Store {
 public:
  static Store& Get() {
    static auto* const store = new Store;  // outlives every static object that reads settings
    return *store;
  }

  std::mutex& Mutex() { return mutex_; }

  std::string Path() const { return redirected_.empty() ? FindStore() : redirected_; }

  // Opens the store when it is not open. Only a caller that creates makes a new one.
  bool Open(bool create) {
    if (database_) return true;
    const std::string path = Path();
    if (path.empty()) return false;
    if (create) {
      std::error_code ignored;  // shows when the file cannot be opened
      std::filesystem::create_directories(std::filesystem::path(path).parent_path(), ignored);
    }
    if (!Connect(path, create)) Close();
    return database_ != nullptr;
  }

  void Close() {
    for (sqlite3_stmt*& statement : statements_) {
      sqlite3_finalize(statement);
      statement = nullptr;
    }
    database_.reset();
  }

  void Redirect(const std::string& path) {
    Close();
    redirected_ = path;
  }

  enum Statement {
    kBegin,
    kCommit,
    kRollback,
    kFindKey,
    kAddKey,
    kDeleteKey,
    kHasChildren,
    kGetChildren,
    kGetValue,
    kFindValue,
    kGetValues,
    kSetValue,
    kDeleteValue,
    kStatementCount,
  };

  Query Use(Statement which) {
    static constexpr const char* kTexts[kStatementCount] = {
        "BEGIN IMMEDIATE",
        "COMMIT",
        "ROLLBACK",
        "SELECT id FROM key WHERE path = ?",
        "INSERT INTO key(parent, name, path) VALUES(nullif(?, 0), ?, ?)",
        "DELETE FROM key WHERE id = ?",
        "SELECT 1 FROM key WHERE parent = ?",
        "SELECT name FROM key WHERE parent = ? ORDER BY name COLLATE NOCASE",
        "SELECT name, type, data FROM value WHERE key = ? AND name = ?",
        R"(SELECT value.name, type, data FROM key JOIN value ON value.key = key.id
           WHERE path = ? AND value.name = ?)",
        "SELECT name, type, data FROM value WHERE key = ? ORDER BY id",
        R"(INSERT INTO value(key, name, type, data) VALUES(?, ?, ?, ?)
           ON CONFLICT(key, name) DO UPDATE SET type = excluded.type, data = excluded.data)",
        "DELETE FROM value WHERE key = ? AND name = ?",
    };
    sqlite3_stmt*& statement = statements_[which];
    if (statement == nullptr) {
      sqlite3_prepare_v3(database_.get(), kTexts[which], -1, SQLITE_PREPARE_PERSISTENT, &statement,
                         nullptr);
    }
    return Query(statement);
  }

  std::int64_t LastId() const { return sqlite3_last_insert_rowid(database_.get()); }
  int Changes() const { return sqlite3_changes(database_.get()); }

 private:
  Store() {
    pthread_atfork(
        [] {
          Get().mutex_.lock();
          Get().Close();
        },
        [] { Get().mutex_.unlock(); }, [] { Get().mutex_.unlock(); });
  }

  bool Run(const char* sql) {
    return sqlite3_exec(database_.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
  }

  bool Connect(const std::string& path, bool create) {
    sqlite3* opened = nullptr;
    const int flags = SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE |
                      (create ? SQLITE_OPEN_CREATE : 0);
    const int result = sqlite3_open_v2(path.c_str(), &opened, flags, nullptr);
    database_.reset(opened);
    if (result != SQLITE_OK) return false;
    sqlite3_busy_timeout(opened, kBusyMilliseconds);
    if (!IsStore()) return false;
    // Readers never wait for a writer, and a kill at any moment loses nothing that was committed.
    // A loss of power may take the last writes, as it may with a registry.
    Run("PRAGMA journal_mode = WAL");  // what a file system without it has instead serves as well
    return Run("PRAGMA synchronous = NORMAL; PRAGMA foreign_keys = ON") && Prepare();
  }

  bool ReadNumber(const char* sql, int& number) {
    sqlite3_stmt* statement = nullptr;
    sqlite3_prepare_v2(database_.get(), sql, -1, &statement, nullptr);
    const bool read = statement != nullptr && sqlite3_step(statement) == SQLITE_ROW;
    if (read) number = sqlite3_column_int(statement, 0);
    sqlite3_finalize(statement);
    return read;
  }
  bool ReadVersion(int& version) { return ReadNumber("PRAGMA user_version", version); }

  // Whether the file is a store or can become one. One of a later version is left alone, and so is
  // the database of another program.
  bool IsStore() {
    int tables = 0;
    int version = 0;  // read last: another process may make the store meanwhile
    return ReadNumber("SELECT count(*) FROM sqlite_master", tables) && ReadVersion(version) &&
           (version == kSchemaVersion || (version == 0 && tables == 0));
  }

  // Makes the tables in a new file, unless another process was faster.
  bool Prepare() {
    int version = 0;
    if (!ReadVersion(version)) return false;
    if (version == kSchemaVersion) return true;
    return Run("BEGIN IMMEDIATE") && ReadVersion(version) && (version != 0 || Run(kSchema)) &&
           Run("COMMIT") && ReadVersion(version) && version == kSchemaVersion;
  }

  std::mutex mutex_;
  std::string redirected_;
  Database database_;
  sqlite3_stmt* statements_[kStatementCount] = {};
};

// A change of several steps. What is not committed is undone.
class Transaction {
 public:
  explicit Transaction(Store& store) : store_(store), open_(store.Use(Store::kBegin).Done()) {}
  ~Transaction() {
    if (open_) store_.Use(Store::kRollback).Step();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  explicit operator bool() const { return open_; }
  bool Commit() {
    if (!store_.Use(Store::kCommit).Done()) return false;
    open_ = false;
    return true;
  }

 private:
  Store& store_;
  bool open_;
};

// Names end at a NUL, as for the system's own calls.
std::string_view UpToNul(const std::string& text) {
  return text.c_str();
}

// Single backslashes between components, none at the ends.
std::string Tidy(const std::string& path) {
  std::string tidy;
  std::string_view rest = UpToNul(path);
  while (!rest.empty()) {
    const std::string_view name = rest.substr(0, rest.find('\\'));
    rest.remove_prefix(std::min(name.size() + 1, rest.size()));
    if (name.empty()) continue;
    if (!tidy.empty()) tidy += '\\';
    tidy += name;
  }
  return tidy;
}

// 0 when there is none.
std::int64_t FindKey(Store& store, std::string_view path) {
  Query query = store.Use(Store::kFindKey);
  return query.Bind(path).Row() ? query.Number(0) : 0;
}

// Finds or makes every key along the path. 0 on failure.
std::int64_t MakeKey(Store& store, const std::string& path, int depth = 0) {
  if (const std::int64_t id = FindKey(store, path); id != 0) return id;
  if (depth == kMaxDepth) return 0;
  const std::size_t slash = path.rfind('\\');
  std::int64_t parent = 0;
  if (slash != std::string::npos) {
    parent = MakeKey(store, path.substr(0, slash), depth + 1);
    if (parent == 0) return 0;
  }
  const std::string name = path.substr(slash == std::string::npos ? 0 : slash + 1);
  return store.Use(Store::kAddKey).Bind(parent).Bind(name).Bind(path).Done() ? store.LastId() : 0;
}

RegistryValue ReadRow(const Query& query) {
  return {query.Bytes(0), static_cast<RegistryType>(query.Number(1)), query.Bytes(2)};
}

class StoredKey : public RegistryKey {
 public:
  StoredKey(std::int64_t id, std::string path, RegistryAccess access)
      : id_(id), path_(std::move(path)), access_(access) {}

  int GetValue(const std::string& name, RegistryValue& value) const override {
    const Use use(access_ != RegistryAccess::kWrite);
    if (!use) return 0;
    Query query = use.store.Use(Store::kGetValue);
    if (!query.Bind(id_).Bind(UpToNul(name)).Row()) return 0;
    value = ReadRow(query);
    return 1;
  }

  int GetValues(std::vector<RegistryValue>& values) const override {
    const Use use(access_ != RegistryAccess::kWrite);
    if (!use || !Exists(use.store)) return 0;
    Query query = use.store.Use(Store::kGetValues);
    query.Bind(id_);
    std::vector<RegistryValue> read;
    int result = query.Step();
    for (; result == SQLITE_ROW; result = query.Step()) read.push_back(ReadRow(query));
    if (result != SQLITE_DONE) return 0;
    values = std::move(read);
    return 1;
  }

  int GetChildren(std::vector<std::string>& names) const override {
    const Use use(access_ != RegistryAccess::kWrite);
    if (!use || !Exists(use.store)) return 0;
    Query query = use.store.Use(Store::kGetChildren);
    query.Bind(id_);
    std::vector<std::string> read;
    int result = query.Step();
    for (; result == SQLITE_ROW; result = query.Step()) read.push_back(query.Bytes(0));
    if (result != SQLITE_DONE) return 0;
    names = std::move(read);
    return 1;
  }

  int SetValue(const RegistryValue& value) override {
    const Use use(access_ != RegistryAccess::kRead);
    if (!use) return 0;
    // A deleted key refuses the value by the reference from value to key.
    Query query = use.store.Use(Store::kSetValue);
    query.Bind(id_).Bind(UpToNul(value.name)).Bind(std::int64_t(value.type)).BindBlob(value.data);
    return query.Done() ? 1 : 0;
  }

  int DeleteValue(const std::string& name) override {
    const Use use(access_ != RegistryAccess::kRead);
    if (!use) return 0;
    const bool done = use.store.Use(Store::kDeleteValue).Bind(id_).Bind(UpToNul(name)).Done();
    return done && use.store.Changes() == 1 ? 1 : 0;
  }

  int DeleteChild(const std::string& name) override {
    const Use use(access_ != RegistryAccess::kRead);
    const std::string below = Tidy(name);
    if (!use || below.empty()) return 0;
    Transaction transaction(use.store);
    if (!transaction || !Exists(use.store)) return 0;
    const std::int64_t child = FindKey(use.store, path_ + "\\" + below);
    if (child == 0 || use.store.Use(Store::kHasChildren).Bind(child).Row()) return 0;
    return use.store.Use(Store::kDeleteKey).Bind(child).Done() && transaction.Commit() ? 1 : 0;
  }

 private:
  // The store for the length of one operation; none when the access forbids it.
  struct Use {
    explicit Use(bool allowed)
        : store(Store::Get()), lock(store.Mutex()), open(allowed && store.Open(false)) {}
    explicit operator bool() const { return open; }

    Store& store;
    std::lock_guard<std::mutex> lock;
    bool open;
  };

  bool Exists(Store& store) const { return FindKey(store, path_) == id_; }

  std::int64_t id_;
  std::string path_;
  RegistryAccess access_;
};

}  // namespace

std::unique_ptr<RegistryKey> OpenRegistryKey(const std::string& path, RegistryAccess access) {
  Store& store = Store::Get();
  const std::lock_guard lock(store.Mutex());
  const std::string tidy = Tidy(path);
  const std::int64_t id = store.Open(false) ? FindKey(store, tidy) : 0;
  return id == 0 ? nullptr : std::make_unique<StoredKey>(id, tidy, access);
}

std::unique_ptr<RegistryKey> CreateRegistryKey(const std::string& path, RegistryAccess access) {
  Store& store = Store::Get();
  const std::lock_guard lock(store.Mutex());
  const std::string tidy = Tidy(path);
  if (tidy.empty() || !store.Open(true)) return nullptr;
  std::int64_t id = FindKey(store, tidy);
  if (id == 0) {
    Transaction transaction(store);
    if (!transaction) return nullptr;
    id = MakeKey(store, tidy);
    if (id == 0 || !transaction.Commit()) return nullptr;
  }
  return std::make_unique<StoredKey>(id, tidy, access);
}

// One statement: each is a transaction of its own, which costs more than the look-up.
int ReadRegistryValue(const std::string& path, const std::string& name, RegistryValue& value) {
  Store& store = Store::Get();
  const std::lock_guard lock(store.Mutex());
  if (!store.Open(false)) return 0;
  const std::string tidy = Tidy(path);
  Query query = store.Use(Store::kFindValue);
  if (!query.Bind(tidy).Bind(UpToNul(name)).Row()) return 0;
  value = ReadRow(query);
  return 1;
}

std::string GetRegistryLocation() {
  Store& store = Store::Get();
  const std::lock_guard lock(store.Mutex());
  return store.Path();
}

void RedirectRegistry(const std::filesystem::path& folder) {
  Store& store = Store::Get();
  const std::lock_guard lock(store.Mutex());
  store.Redirect(folder.empty() ? "" : (folder / "registry.db").string());
}

}  // namespace vemra::platform
