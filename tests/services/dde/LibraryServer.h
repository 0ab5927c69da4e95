#pragma once

#include <cstdarg>
#include <cstdio>
#include <memory>
#include <string>
#include <utility>

#include "Support/services/Services.h"

namespace vemra::test {

// A server that keeps what it was told by Status, without the service names that come and go.
class RecordingServer : public CDDEServer {
 public:
  ~RecordingServer() override { Shutdown(); }

  void Status(const char* format, ...) override SUPPORT_PRINTF(2, 3) {
    char line[600];
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    const std::string text = line;
    if (text != "Callback 80A2H" && text != "Callback 80D2H") log_ += text + ';';
  }
  // Each text with a semicolon after it.
  std::string TakeLog() { return std::exchange(log_, {}); }

 private:
  std::string log_;
};

// A row of bytes in three formats: as text (its parts separated by a tab), as SYLK, which can be
// set, and as it is, in "VemraRow", of which the first two bytes can be set.
class TableItem : public CDDEItem {
 public:
  TableItem() : CDDEItem("Table"), formats_{kDDEFormatText, kSylk, RegisterDDEFormat("VemraRow")} {}

  const std::uint16_t* GetFormatList() const override { return formats_; }
  int Request(std::uint16_t format, const void*& data, std::uint32_t& size) override {
    if (IsSupportedFormat(format) == 0) return 0;
    const std::string& bytes = format == kDDEFormatText ? text_ : format == kSylk ? sylk_ : row_;
    data = bytes.data();
    size = static_cast<std::uint32_t>(bytes.size());
    return 1;
  }
  int Poke(std::uint16_t format, const void* data, std::uint32_t size) override {
    const char* const bytes = static_cast<const char*>(data);
    if (format == kSylk) {
      sylk_.assign(bytes, size);
      return 1;
    }
    if (format != formats_[2] || size < 2) return 0;
    row_.assign(bytes, 2);
    return 1;
  }

 private:
  static constexpr std::uint16_t kSylk = 4;

  std::uint16_t formats_[4];
  std::string text_ = std::string("one\ttwo\0", 8);
  std::string sylk_ = "ID;";
  std::string row_ = std::string("1\0002", 3);
};

// A command as text, without its NUL.
inline std::string CommandOf(const void* data, std::uint32_t size) {
  return std::string(static_cast<const char*>(data), size).c_str();
}

// Executes "count N", which sets its item "Texts".
class BookTopic : public CDDETopic {
 public:
  BookTopic(const std::string& name, const std::string& texts) : CDDETopic(name) {
    AddItem(std::make_unique<CDDEStringItem>("Texts", texts));
  }
  int Exec(const void* data, std::uint32_t size) override {
    const std::string command = CommandOf(data, size);
    if (!command.starts_with("count ")) return CDDETopic::Exec(data, size);
    SetTexts(command.substr(6));
    return 1;
  }
  void SetTexts(const std::string& texts) {
    static_cast<CDDEStringItem*>(FindItem("Texts"))->SetData(texts);
  }
};

// What the script tests/data/dde/conversation.txt is about.
class LibraryServer : public RecordingServer {
 public:
  LibraryServer() {
    auto manuals = std::make_unique<BookTopic>("Manuals", "512");
    manuals->AddItem(std::make_unique<TableItem>());
    manuals->AddItem(std::make_unique<CDDESystemItem_ItemList>("Items"));
    manuals->AddItem(std::make_unique<CDDESystemItem_FormatList>("Formats"));
    AddTopic(std::move(manuals));
    AddTopic(std::make_unique<BookTopic>("Archive", "0"));
  }

  // An item that is no object.
  int Request(std::uint16_t format, const std::string& topic, const std::string& item,
              const void*& data, std::uint32_t& size) override {
    if (item != "Chapters" || format != kDDEFormatText) return 0;
    chapters_ = "chapter list of " + topic;
    data = chapters_.c_str();
    size = static_cast<std::uint32_t>(chapters_.size() + 1);
    return 1;
  }
  // "archive N" sets the texts of "Archive", whatever the topic.
  int Exec(const std::string& /*topic*/, const void* data, std::uint32_t size) override {
    const std::string command = CommandOf(data, size);
    if (!command.starts_with("archive ")) return 0;
    static_cast<BookTopic*>(FindTopic("Archive"))->SetTexts(command.substr(8));
    return 1;
  }

 private:
  std::string chapters_;
};

}  // namespace vemra::test
