#include "programs/engine/Sqlite.h"

#include <sqlite3.h>

#include "programs/engine/EngineError.h"

namespace vemra::engine {
namespace {

constexpr int kBusyWaitMs = 5000;

Fault FaultOf(int code) {
  switch (code & 0xff) {
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return Fault::kLocked;
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_FORMAT:
      return Fault::kDamaged;
    case SQLITE_CANTOPEN:
      return Fault::kMissing;
    default:
      return Fault::kFailed;
  }
}

}  // namespace

void Connection::Closer::operator()(sqlite3* handle) const {
  sqlite3_close_v2(handle);
}

Connection::Connection(const std::string& hostPath, bool create) : path_(hostPath) {
  sqlite3* handle = nullptr;
  const int flags = SQLITE_OPEN_READWRITE | (create ? SQLITE_OPEN_CREATE : 0);
  const int code = sqlite3_open_v2(hostPath.c_str(), &handle, flags, nullptr);
  handle_.reset(handle);  // also a failed open gives a handle, which holds the error
  if (code != SQLITE_OK) Throw("cannot be opened");
  sqlite3_extended_result_codes(handle, 1);
  sqlite3_busy_timeout(handle, kBusyWaitMs);
}

void Connection::Execute(const std::string& sql) {
  if (sqlite3_exec(handle_.get(), sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    Throw("cannot be used");
  }
}

std::int64_t Connection::QueryNumber(const std::string& sql) {
  Statement statement(*this, sql);
  return statement.Step() ? statement.Number(0) : 0;
}

void Connection::Throw(const char* what) const {
  const int code = handle_ ? sqlite3_extended_errcode(handle_.get()) : SQLITE_NOMEM;
  const std::string reason = handle_ ? sqlite3_errmsg(handle_.get()) : "out of memory";
  throw EngineError(FaultOf(code), path_ + ": " + what + ": " + reason);
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

Statement::Statement(Connection& connection, const std::string& sql) : connection_(connection) {
  sqlite3_stmt* statement = nullptr;
  const int code = sqlite3_prepare_v3(connection.Get(), sql.c_str(), static_cast<int>(sql.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement, nullptr);
  handle_.reset(statement);
  Check(code);
}

void Statement::Check(int code) const {
  if (code != SQLITE_OK) connection_.Throw("cannot be read or written");
}

void Statement::Bind(int index, std::int64_t value) {
  Check(sqlite3_bind_int64(handle_.get(), index, value));
}

void Statement::BindText(int index, std::string_view bytes) {
  Check(sqlite3_bind_text64(handle_.get(), index, bytes.data(), bytes.size(), SQLITE_STATIC,
                            SQLITE_UTF8));
}

void Statement::BindBlob(int index, std::string_view bytes) {
  // A null pointer would bind NULL instead of an empty value.
  const char* data = bytes.empty() ? "" : bytes.data();
  Check(sqlite3_bind_blob64(handle_.get(), index, data, bytes.size(), SQLITE_STATIC));
}

void Statement::BindTerminated(int index, const char* text) {
  Check(sqlite3_bind_text(handle_.get(), index, text, -1, SQLITE_STATIC));
}

void Statement::BindNull(int index) {
  Check(sqlite3_bind_null(handle_.get(), index));
}

bool Statement::Step() {
  const int code = sqlite3_step(handle_.get());
  if (code != SQLITE_ROW && code != SQLITE_DONE) connection_.Throw("cannot be read or written");
  return code == SQLITE_ROW;
}

void Statement::Reset() {
  sqlite3_reset(handle_.get());
}

void Statement::Run() {
  const int code = sqlite3_step(handle_.get());
  const int result = sqlite3_reset(handle_.get());  // repeats the error of the step
  if (code != SQLITE_ROW && code != SQLITE_DONE) Check(result);
}

std::int64_t Statement::Number(int column) const {
  return sqlite3_column_int64(handle_.get(), column);
}

double Statement::Real(int column) const {
  return sqlite3_column_double(handle_.get(), column);
}

std::string_view Statement::Bytes(int column) const {
  const void* data = sqlite3_column_blob(handle_.get(), column);
  const int size = sqlite3_column_bytes(handle_.get(), column);
  return {static_cast<const char*>(data), data == nullptr ? 0 : static_cast<std::size_t>(size)};
}

Transaction::Transaction(Connection& connection) : connection_(connection) {
  connection.Execute("BEGIN IMMEDIATE");
}

Transaction::~Transaction() {
  // Nothing can be done about a failure: SQLite itself rolls back when the connection closes.
  if (open_) sqlite3_exec(connection_.Get(), "ROLLBACK", nullptr, nullptr, nullptr);
}

void Transaction::Commit() {
  connection_.Execute("COMMIT");
  open_ = false;
}

}  // namespace vemra::engine
