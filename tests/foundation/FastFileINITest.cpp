#include "Support/foundation/FastFileINI.h"

#include <gtest/gtest.h>

#include "tests/TempFolder.h"

namespace vemra {
namespace {

class FastFileINITest : public testing::Test {
 protected:
  std::string Bytes() const {  // as text
    std::string bytes = test::ReadHostFile(folder_.Host() / "a.ini");
    std::erase(bytes, '\r');
    return bytes;
  }
  void Write(const std::string& bytes) { test::WriteHostFile(folder_.Host() / "a.ini", bytes); }

  test::TempFolder folder_;
  const std::string path_ = folder_.Path("a.ini");
};

TEST_F(FastFileINITest, ReadsLines) {
  const struct {
    const char* file;
    const char* section;
    const char* key;
    const char* value;  // null: missing
  } kRows[] = {
      {"[A]\nk=v\n", "A", "k", "v"},
      {"[A]\nk=v", "a", "k", nullptr},
      {"[A]\nk=v", "A", "K", nullptr},
      {"[A]\r\n  k =  v x \r\n", "A", "k ", "v x "},
      {"[A]\nk=v\n[A]\nj=w\n", "A", "k", nullptr},  // read again: replaced whole
      {"[A]\n[B]\nk=v\n", "AB", "k", "v"},
      {"k=v\n[A]\n", "", "k", "v"},
      {"[A\nk=v\n", "A", "k", "v"},
      {"x[A]y]\nk=v\n", "A", "k", "v"},
      {"[A]\nk=1\nk=2\n", "A", "k", "2"},
      {"[A]\n;k=v\nx;k=v\n", "A", "x;k", nullptr},
      {"[A]\nk=[x];y=z\n", "A", "k", "[x];y=z"},
      {"[A]\n=v\n\nnone\n", "A", "", "v"},
      {"[A]\nk=\t\xe4 \n", "A", "k", "\t\xe4 "},
  };
  for (const auto& row : kRows) {
    SCOPED_TRACE(row.file);
    Write(row.file);
    CTavoFastFileINI ini;
    ini.Open(path_);
    EXPECT_EQ(ini.GetString(row.section, row.key, "missing"),
              row.value == nullptr ? "missing" : row.value);
  }
}

TEST_F(FastFileINITest, SaveAppendsTheWholeContent) {
  Write("[B]\nk=1\n[A]\nz=-12x\na=2\n");
  const std::string before = Bytes();
  {
    CTavoFastFileINI ini;
    ini.Open(path_);
    EXPECT_EQ(ini.GetInt("A", "z", 5), unsigned(-12));
    EXPECT_EQ(ini.GetInt("A", "none", 5), 5U);
    ini.SetInt("A", "z", -3);
    ini.SetString("A", "new", "x");
    ini.SetString("C", "z", "x");
    ini.Save();  // and so not again at the end
  }
  EXPECT_EQ(Bytes(), before + "[A]\na=2\nz=-3\n[B]\nk=1\n");
  {
    CTavoFastFileINI ini;
    ini.Open(path_);
    EXPECT_EQ(ini.GetString("A", "z", ""), "-3");
    ini.SetString("none", "none", "");
  }
  EXPECT_EQ(Bytes(), before + "[A]\na=2\nz=-3\n[B]\nk=1\n[A]\na=2\nz=-3\n[B]\nk=1\n");
}

TEST_F(FastFileINITest, NeverCreatesTheFile) {
  {
    CTavoFastFileINI ini;
    ini.Open(path_);
    ini.SetString("A", "k", "v");
    ini.Save();
  }
  EXPECT_FALSE(std::filesystem::exists(folder_.Host() / "a.ini"));
}

}  // namespace
}  // namespace vemra
