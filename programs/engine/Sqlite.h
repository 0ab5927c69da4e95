#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace vemra::engine {

class Statement;

// An open SQLite database. Used by one thread. Every failure is thrown as EngineError; a busy
// database is waited for, up to five seconds.
class Connection {
 public:
  // hostPath: a path of the host. With create a missing file is made; without, it is kMissing.
  Connection(const std::string& hostPath, bool create);

  // Runs statements that give no rows, or whose rows do not matter.
  void Execute(const std::string& sql);
  // The first column of the first row, 0 when there is none.
  std::int64_t QueryNumber(const std::string& sql);
  // Throws the last error of the connection; what: the activity that failed, for the message.
  [[noreturn]] void Throw(const char* what) const;

  sqlite3* Get() const { return handle_.get(); }

 private:
  struct Closer {
    void operator()(sqlite3* handle) const;
  };

  std::string path_;
  std::unique_ptr<sqlite3, Closer> handle_;
};

// A prepared statement. Parameters are counted from 1, columns from 0. Ends before its connection.
class Statement {
 public:
  Statement(Connection& connection, const std::string& sql);

  // Numbers and NULL are kept by the statement; bytes are loans until it is reset.
  void Bind(int index, std::int64_t value);
  void BindText(int index, std::string_view bytes);
  void BindBlob(int index, std::string_view bytes);
  // A text that ends with a NUL; it saves SQLite a copy.
  void BindTerminated(int index, const char* text);
  void BindNull(int index);

  // True for a row, false at the end.
  bool Step();
  void Reset();
  // Runs a statement without rows and resets it, also when it throws.
  void Run();

  std::int64_t Number(int column) const;
  double Real(int column) const;
  // Valid until the next step.
  std::string_view Bytes(int column) const;

 private:
  struct Finalizer {
    void operator()(sqlite3_stmt* statement) const;
  };

  void Check(int code) const;

  Connection& connection_;
  std::unique_ptr<sqlite3_stmt, Finalizer> handle_;
};

// BEGIN IMMEDIATE at construction, ROLLBACK at destruction unless committed.
class Transaction {
 public:
  explicit Transaction(Connection& connection);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit();

 private:
  Connection& connection_;
  bool open_ = true;
};

}  // namespace vemra::engine
