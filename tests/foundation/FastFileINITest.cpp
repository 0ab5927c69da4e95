#include "Support/foundation/FastFileINI.h"

#include <gtest/gtest.h>

#include "tests/TempFolder.h"

namespace vemra {
namespace {

// What a file gives is held against the plain rules by the replayed seeds of its reader.
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

TEST_F(FastFileINITest, SaveAppendsTheWholeContent) {
  Write("[B]\nk=1\n[A]\nz=-12x\na=2\n");
  const std::string before = Bytes();
  {
    CTavoFastFileINI ini;
    ini.Open(path_);
    EXPECT_EQ(ini.GetInt("A", "z", 5), unsigned(-12));
    EXPECT_EQ(ini.GetInt("A", "none", 5), 5U);
    EXPECT_EQ(ini.GetString("B", "k", ""), "1");
    EXPECT_EQ(ini.GetString("b", "k", "other"), "other");
    EXPECT_EQ(ini.GetString("B", "K", "other"), "other");
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
