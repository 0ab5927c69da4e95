#include "programs/registry/RegistryFile.h"

#include <gtest/gtest.h>

#include <random>

#include "programs/registry/Utf16.h"

namespace vemra {
namespace {

constexpr char kAnsi[] = "REGEDIT4\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO\\K]\n";
constexpr char kUnicode[] =
    "Windows Registry Editor Version 5.00\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO\\K]\n";

std::string Bytes(const char* text, std::size_t size) {
  return {text, size};
}

// "key: name type data;" of every change, with bytes in hexadecimal.
std::string Describe(const std::vector<RegistryChange>& changes) {
  std::string text;
  for (const RegistryChange& change : changes) {
    text += (change.isDeleted ? "-" : "") + change.key + ":";
    for (const RegistryValueChange& item : change.values) {
      text += " " + item.value.name + " ";
      text += item.isDeleted ? "-"
                             : std::to_string(unsigned(item.value.type)) + " " +
                                   FormatHexBytes(item.value.data);
      text += ";";
    }
    text += "\n";
  }
  return text;
}

TEST(RegistryFileTest, ReadsEveryFormOfAValue) {
  const struct {
    const char* text;
    std::string expected;
  } kRows[] = {
      {"\"n\"=\"\"", "K: n 1 00;\n"},
      {"\"a \\\"b\\\\\"=\"c\\\\\\\"\\n\\r\"", "K: a \"b\\ 1 63,5c,22,0a,0d,00;\n"},
      {"\"n\" = \"two\r\nlines\" ; comment", "K: n 1 74,77,6f,0d,0a,6c,69,6e,65,73,00;\n"},
      {"@=dword:8000000f", "K:  4 0f,00,00,80;\n"},
      {"\"n\"=dword:1", "K: n 4 01,00,00,00;\n"},
      {"\"n\"=hex:", "K: n 3 ;\n"},
      {"\"n\"=hex:00,f,\\\r\n  Ff , 1\t;x", "K: n 3 00,0f,ff,01;\n"},
      {"\"n\"=hex(2):41,00", "K: n 2 41,00;\n"},
      {"\"n\"=hex(4):41", "K: n 4 41;\n"},
      {"\"n\"=-", "K: n -;\n"},
      {"; \"n\"=1\n\n  \"n\"=-\n", "K: n -;\n"},
      {"[-hkey_local_machine\\Software\\Tavo]\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO\\a]b] ;",
       "K:\n-:\na]b:\n"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    const std::string text = std::string(kAnsi) + row.text;
    EXPECT_EQ(Describe(ParseRegistryFile(text)), row.expected);
    EXPECT_EQ(Describe(ParseRegistryFile("\xef\xbb\xbf" + text + "\r\n")), row.expected);
  }
  // The characters of the file are those of its bytes too.
  EXPECT_EQ(Describe(ParseRegistryFile(std::string(kUnicode) + "\"\xc3\xa4\"=hex(1):e4,00,00,00")),
            "K: \xc3\xa4 1 c3,a4,00;\n");
  EXPECT_EQ(Describe(ParseRegistryFile("REGEDIT4")), "");
}

TEST(RegistryFileTest, NamesTheLineThatIsWrong) {
  const struct {
    std::string text;
    std::size_t line;
    const char* says;
  } kRows[] = {
      {"", 1, "the first line is"},
      {"REGEDIT5\n", 1, "the first line is"},
      {Bytes("\xff\xfeR\0E", 5), 1, "UTF-16"},
      {"REGEDIT4\n\n\"n\"=-", 3, "before the first key"},
      {"REGEDIT4\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVOX]", 2, "not below"},
      {"REGEDIT4\n[HKEY_CURRENT_USER\\SOFTWARE\\TAVO]", 2, "not below"},
      {"REGEDIT4\n[-HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO\\K]\n;\n@=-", 4, "key that is deleted"},
      {std::string(kAnsi) + "[HKEY", 3, "ends with"},
      {std::string(kAnsi) + "[HKEY_LOCAL_MACHINE\\SOFTWARE\\TAVO] x", 3, "line for itself"},
      {std::string(kAnsi) + "n=1", 3, "is expected"},
      {std::string(kAnsi) + "\"n\"\n=1", 3, "\"=\" is expected"},
      {std::string(kAnsi) + "\"n\"=", 3, "after \"=\""},
      {std::string(kAnsi) + "\"n\"=\"x\n\n", 3, "not closed"},
      {std::string(kAnsi) + "\"n\"=\"x\n\\z\"", 4, "written twice"},
      {std::string(kAnsi) + "\"n\"=dword:", 3, "hexadecimal digits"},
      {std::string(kAnsi) + "\"n\"=dword:123456789", 3, "nothing may follow"},
      {std::string(kAnsi) + "\"n\"=hex1", 3, "\":\" is expected"},
      {std::string(kAnsi) + "\"n\"=hex(1:", 3, "\")\" is expected"},
      {std::string(kAnsi) + "\"n\"=hex:1,\\\n2,\\x\n3", 4, "after the backslash"},
      {std::string(kAnsi) + "\"n\"=hex:1,", 3, "after a comma"},
      {std::string(kAnsi) + "\"n\"=hex:123", 3, "comma is expected"},
      {std::string(kUnicode) + "\"n\"=hex(1):41", 3, "UTF-16"},
      {std::string(kUnicode) + "\"n\"=hex(1):00,d8", 3, "UTF-16"},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.text);
    try {
      ParseRegistryFile(row.text);
      ADD_FAILURE() << "was read";
    } catch (const RegistryFileError& error) {
      EXPECT_EQ(error.GetLine(), row.line) << error.what();
      EXPECT_NE(std::string(error.what()).find(row.says), std::string::npos) << error.what();
    }
  }
}

RegistryValueChange RandomValue(std::mt19937& random) {
  static const char* const kPieces[] = {
      "a", "\\", "\"", "\n", "\r", "\xc3\xa4", "\xf0\x9f\x98\x80", ";", "]", "=", " ", "x,\\"};
  RegistryValueChange item;
  for (auto n = random() % 5; n > 0; n--) item.value.name += kPieces[random() % 12];
  item.value.type = static_cast<RegistryType>(random() % 12);
  for (auto n = random() % 60; n > 0; n--) item.value.data += kPieces[random() % 12];
  if (random() % 2 == 0) item.value.data += '\0';
  item.isDeleted = random() % 9 == 0;
  return item;
}

TEST(RegistryFileTest, ReadsBackWhatItWrites) {
  std::mt19937 random(4);
  for (int round = 0; round < 500; round++) {
    std::vector<RegistryChange> changes(random() % 3);
    for (RegistryChange& change : changes) {
      change.key = random() % 4 == 0 ? "" : "Vemra Server\\[x] \xc3\xa4";
      change.isDeleted = random() % 5 == 0;
      for (auto n = change.isDeleted ? 0 : random() % 4; n > 0; n--)
        change.values.push_back(RandomValue(random));
    }
    for (const auto form : {RegistryForm::kUnicode, RegistryForm::kAnsi}) {
      const std::string bytes = FormatRegistryFile(changes, form);
      ASSERT_EQ(Describe(ParseRegistryFile(bytes)), Describe(changes)) << bytes;
    }
    // A file that was damaged on its way is refused or read, and nothing else.
    std::string damaged = FormatRegistryFile(changes, RegistryForm::kAnsi);
    damaged[random() % damaged.size()] = char(random());
    try {
      ParseRegistryFile(damaged);
    } catch (const RegistryFileError& error) {
      EXPECT_GT(error.GetLine(), 0U);
    }
  }
}

TEST(RegistryFileTest, RefusesWhatTheFormCannotSay) {
  const RegistryValueChange latin{{"n", RegistryType::kString, Bytes("\xe4", 2)}, false};
  const RegistryValueChange list{{"n", static_cast<RegistryType>(7), "\xe4"}, false};
  for (const auto& item : {latin, list}) {
    EXPECT_THROW(FormatRegistryFile({{"K", false, {item}}}, RegistryForm::kUnicode),
                 RegistryFileError);
    EXPECT_NO_THROW(FormatRegistryFile({{"K", false, {item}}}, RegistryForm::kAnsi));
  }
  EXPECT_THROW(FormatRegistryFile({{"a\nb", false, {}}}, RegistryForm::kAnsi), RegistryFileError);
}

}  // namespace
}  // namespace vemra
