#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/foundation/DateTime.h"

namespace vemra {

// Reads and writes typed values in one settings file: bracketed section titles and key=value lines
// (the .cfg, .ini and .lcl files of a database). Names are found without regard to ASCII case;
// writing creates the file, the section and the key where they are missing; values are of a single
// line, and lose surrounding blanks and one pair of enclosing quotes when they are read.
//
// Each call goes to the file: a change by another process is seen by the next call, and a write is
// stored when the call returns. A Batch puts many writes into one replacement of the file.
//
// Results are 1 for success and 0 for failure unless stated. With the throw flag set, a failed
// write, and a read that gives no text, throw TavoINIException holding the path instead; a missing
// key does not throw in GetString (nor does a missing array element), since the default text stood
// in for it, and a getter that is given a default never throws. A failed getter leaves the caller's
// variable as it was, except as GetString says.
//
// One worker is used by one thread at a time; workers on the same file may run in any number of
// threads and processes.
class SUPPORT_API INIWorker {
 public:
  class Batch;

  // path in the Windows form; without a folder it means the current folder at each call.
  explicit INIWorker(const std::string& path, int throwOnFailure = 0);
  // Every field is copied; a batch stays with the worker that it was opened on.
  INIWorker(const INIWorker& other);
  INIWorker& operator=(const INIWorker& other);
  virtual ~INIWorker();

  const std::string& GetPath() const { return path_; }
  void SetPath(const std::string& path) { path_ = path; }
  void SetSection(const std::string& name) { section = name; }
  // Replaces the text that marks a missing key, or restores "NONE-000". A key whose stored text is
  // this very text reads as missing.
  void SetDefault(const std::string& text) { defaultText_ = text; }
  void SetDefault();
  int IsDefString(const std::string& text) const { return text == defaultText_; }

  // Without a section argument every operation uses the current section.

  // "%d". Reading takes up to 18 characters and converts them as atoi does.
  int PutNum(const std::string& key, int value);
  int PutNum(const std::string& sectionName, const std::string& key, int value);
  // The number; 0 for a missing or empty key, which throws when the flag is set.
  int GetNum(const std::string& key);
  int GetNum(const std::string& sectionName, const std::string& key);
  // 1 when the key has text.
  int GetNum(const std::string& key, int& value);
  int GetNum(const std::string& sectionName, const std::string& key, int& value);
  // Stores the default and gives 0 when the key is missing or empty.
  int GetNum(const std::string& key, int& value, int fallback);
  int GetNum(const std::string& sectionName, const std::string& key, int& value, int fallback);

  int PutString(const std::string& key, const std::string& value);
  int PutString(const std::string& sectionName, const std::string& key, const std::string& value);
  // Up to 256 characters; returns their number. A missing key empties value and gives 0; so does a
  // key that is present with an empty value, which throws when the flag is set.
  int GetString(const std::string& key, std::string& value);
  int GetString(const std::string& sectionName, const std::string& key, std::string& value);
  // A missing key stores the default and gives 0.
  int GetStringWithDefault(const std::string& key, std::string& value, const std::string& fallback);
  int GetStringWithDefault(const std::string& sectionName, const std::string& key,
                           std::string& value, const std::string& fallback);
  // As GetString, without the limit: for lists of fields and rules.
  int GetWholeString(const std::string& key, std::string& value);
  int GetWholeString(const std::string& sectionName, const std::string& key, std::string& value);

  // "YES" or "NO", compared exactly; any other text fails. A form with a default stores it on
  // failure.
  int PutBoolean(const std::string& key, int value);
  int PutBoolean(const std::string& sectionName, const std::string& key, int value);
  int GetBoolean(const std::string& key, int& value);
  int GetBoolean(const std::string& sectionName, const std::string& key, int& value);
  int GetBoolean(const std::string& key, int& value, int fallback);
  int GetBoolean(const std::string& sectionName, const std::string& key, int& value, int fallback);

  // A colour is written as the decimal text of its 32 bits. Only such a text is read.
  int PutColor(const std::string& key, std::uint32_t value);
  int PutColor(const std::string& sectionName, const std::string& key, std::uint32_t value);
  int GetColor(const std::string& key, std::uint32_t& value);
  int GetColor(const std::string& sectionName, const std::string& key, std::uint32_t& value);

  // Stored at once: the count under "<key> Size" and the elements under "<key> Item 1", "<key> Item
  // 2", ... An element holds up to 256 characters and may be empty. Writing fewer elements than
  // before leaves the surplus in the file, out of reach of the count. Reading replaces the array;
  // it fails when the count or an element is missing or the count is negative.
  int PutStringArray(const std::string& key, const std::vector<std::string>& values);
  int PutStringArray(const std::string& sectionName, const std::string& key,
                     const std::vector<std::string>& values);
  int GetStringArray(const std::string& key, std::vector<std::string>& values);
  int GetStringArray(const std::string& sectionName, const std::string& key,
                     std::vector<std::string>& values);

  // Local time as "HH:MM:SS dd/mm/yyyy". Reading needs all six numbers. A form with a default
  // stores it otherwise.
  int PutTime(const std::string& key, DateTime value);
  int PutTime(const std::string& sectionName, const std::string& key, DateTime value);
  int GetTime(const std::string& key, DateTime& value);
  int GetTime(const std::string& sectionName, const std::string& key, DateTime& value);
  int GetTime(const std::string& key, DateTime& value, DateTime fallback);
  int GetTime(const std::string& sectionName, const std::string& key, DateTime& value,
              DateTime fallback);

  // Whole seconds, read like a number but in 64 bits.
  int PutTimeSpan(const std::string& key, TimeSpan value);
  int PutTimeSpan(const std::string& sectionName, const std::string& key, TimeSpan value);
  int GetTimeSpan(const std::string& key, TimeSpan& value);
  int GetTimeSpan(const std::string& sectionName, const std::string& key, TimeSpan& value);
  int GetTimeSpan(const std::string& key, TimeSpan& value, TimeSpan fallback);
  int GetTimeSpan(const std::string& sectionName, const std::string& key, TimeSpan& value,
                  TimeSpan fallback);

  // Empties the file, creating it when it is missing. 0 when the worker has no path or the file
  // cannot be opened. In a batch the file is emptied when the batch is stored, and what the batch
  // wrote so far is dropped.
  int DeleteContents();

 private:
  // Up to limit characters of the stored text, else of fallback. Throws on an empty read when
  // mayThrow and the throw flag are set.
  std::string Read(const std::string& sectionName, const std::string& key,
                   const std::string& fallback, std::size_t limit, bool mayThrow) const;
  int Write(const std::string& sectionName, const std::string& key, const std::string& value);
  int ReadText(const std::string& sectionName, const std::string& key, std::string& value,
               std::size_t limit);

  std::string path_;

 public:
  // The current section. Callers may assign it directly.
  std::string section;

 private:
  std::string defaultText_;
  int throwOnFailure_;
  Batch* batch_ = nullptr;  // the open batch, a loan
};

// Holds the writes of one worker back while it lives, and then applies them to the file in one
// replacement. The worker reads its own held-back writes; everybody else sees all of them or none.
// The file is read when the batch opens, and other changes that it undergoes meanwhile are kept:
// the writes are applied to what it then holds.
//
// Opened and closed in the worker's thread; the worker outlives it and does not change its path
// meanwhile. A batch opened on a worker that already has one belongs to the outer one.
class SUPPORT_API INIWorker::Batch {
 public:
  explicit Batch(INIWorker& worker);
  // Commits what is still held back; a failure is then lost.
  ~Batch();
  Batch(const Batch&) = delete;
  Batch& operator=(const Batch&) = delete;

  // Applies the writes so far; the batch stays open. 0, or TavoINIException with the worker's
  // throw flag, when the file cannot be written; the writes are then still held.
  int Commit();

 private:
  friend class INIWorker;
  struct State;

  INIWorker& worker_;
  std::unique_ptr<State> state_;  // null inside an outer batch
};

}  // namespace vemra
