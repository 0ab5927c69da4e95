#include "Support/platform/PrivateProfile.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <thread>

#include "Support/foundation/File.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

using namespace std::string_literals;
using test::ReadHostFile;
using test::WriteHostFile;

// Printable, one line.
std::string Escape(const std::string& bytes) {
  std::string text;
  for (const unsigned char c : bytes) {
    char form[8] = {static_cast<char>(c)};
    if (c < 0x20 || c > 0x7e || c == '\\') std::snprintf(form, sizeof form, "\\x%02x", c);
    text += form;
  }
  return text;
}

// The one difference that is wanted: on Linux blank lines stay.
std::string DropBlankLines(std::string text) {
  for (std::size_t at = 0; (at = text.find("\r\n\r\n")) != std::string::npos;) text.erase(at, 2);
  return text.starts_with("\r\n") ? text.substr(2) : text;
}

const std::string kFiles[] = {
    "",
    "[A]\nk=v\nq=\n[B]\nx=1\n[A]\nk=2\nz=3\n",
    "  [ A ]  \n\t k\t = \t v x \t\nflag\n=no name\n;c=1\n ; d = 2\n#h=3\n[B\nb=1\n[C]x]y\nc=2\n",
    "k=0\n[A]\nk=\"x\"\nK='y'\nq=\"x'\nx=\"\nz='\"n\"'\nflag=\"x\" y\n",
    "; top\n\n[A]\n; ca\n  k = 1 \n\n junk\n\n[B]\n\nx=2",
    "[A]\r\nk=1\r\n\r\n\r\n[B]\r\nx=2\r\n",
    "[A]\rk=1\rx=2\r\r\n[B]\n\r\nx=1\r",
    "[]\nk=1\n[A]\n = 5\nk=\xe4\xf6\xfc\xff\n[\xc4]\nx=\xe4\n",
    "[A]\nk=a\0b\nx=1\x1a\n\v[B]\f\nk\v=\f v\v\n"s,
    "\xef\xbb\xbf[A]\nk=1\n[E]=1\nx[F]\ny=[G]\n[[D]]\nd=1\n",
    "[A]\nk=" + std::string(700, 'x') + "\n[A b]\nk k=1 2\n",
};
const char* const kSections[] = {"A", "A", "a", " A\t", "B", "b", "", "C]x", "[D]", "A b", "New"};
const char* const kKeys[] = {"k", "k", "K", " k ", "x", "z", "q", "", ";c", "; d", "flag", "k k"};
const char* const kValues[] = {"v",   "",         " 5 ", "\"q\"", "'q",
                               "x=y", "\t\xe4\t", "[v]", ";v",    "1\n2"};
const char* const kFallbacks[] = {"DEF", "", "\"d\" ", " 'd", "'d'", "\td \t"};

// A fixed sequence of calls on one file, with what each of them answered.
class Script {
 public:
  explicit Script(const test::TempFolder& folder)
      : path_(folder.Path("p.ini")), host_(folder.Host() / "p.ini") {}

  std::string Run() {
    for (const std::string& file : kFiles) {
      WriteHostFile(host_, file);
      transcript_ += "file " + Escape(file) + "\n";
      for (int call = 0; call < 64; call++) {
        random_() % 3 != 0 ? Read() : Write();
      }
    }
    return transcript_;
  }

 private:
  template <std::size_t N>
  const char* Pick(const char* const (&choices)[N]) {
    return choices[random_() % N];
  }

  static std::string Show(const char* text) { return text == nullptr ? "null" : Escape(text); }

  void Read() {
    const char* const section = random_() % 12 == 0 ? nullptr : Pick(kSections);
    const char* const key = random_() % 5 == 0 ? nullptr : Pick(kKeys);
    const char* const fallback = Pick(kFallbacks);
    constexpr std::uint32_t kSizes[] = {1, 3, 5, 6, 7, 8, 9, 12};
    const std::uint32_t size = random_() % 2 == 0 ? 1024 : kSizes[random_() % std::size(kSizes)];
    std::string buffer(1024, '#');
    const auto length = platform::QueryProfile(section, key, fallback, buffer.data(), size, path_);
    transcript_ += "read <" + Show(section) + "> <" + Show(key) + "> <" + Show(fallback) + "> " +
                   std::to_string(size) + ": " + std::to_string(length) + " " +
                   Escape(buffer.substr(0, length + 2)) + "\n";
  }

  void Write() {
    const char* const section = Pick(kSections);
    const char* const key = random_() % 10 == 0 ? nullptr : Pick(kKeys);
    const char* const value = key == nullptr || random_() % 6 == 0 ? nullptr : Pick(kValues);
    const bool written = platform::WriteProfile(section, key, value, path_);
    transcript_ += "write <" + Show(section) + "> <" + Show(key) + "> <" + Show(value) +
                   ">: " + std::to_string(int{written}) + " " +
                   Escape(DropBlankLines(ReadHostFile(host_))) + "\n";
  }

  std::string path_;
  std::filesystem::path host_;
  std::string transcript_;
  std::minstd_rand random_;
};

// The golden transcript was written by the system's own calls: run this test on Windows with
// VEMRA_WRITE_GOLDEN set to a file name to write it anew.
TEST(PrivateProfileTest, AnswersAsTheSystemDoes) {
  const test::TempFolder folder;
  const std::string transcript = Script(folder).Run();
  if (const char* const name = std::getenv("VEMRA_WRITE_GOLDEN")) WriteHostFile(name, transcript);
  std::istringstream expected(ReadHostFile(VEMRA_TEST_DATA "/profile/transcript.txt"));
  std::istringstream actual(transcript);
  std::string want;
  std::string got;
  for (int line = 1; std::getline(expected, want); line++) {
    ASSERT_TRUE(std::getline(actual, got)) << "line " << line;
    ASSERT_EQ(got, want) << "line " << line;
  }
  EXPECT_FALSE(std::getline(actual, got));
}

TEST(PrivateProfileTest, NoticesEveryChangeOfTheFile) {
  const test::TempFolder folder;
  const std::string path = folder.Path("p.ini");
  for (int i = 0; i < 200; i++) {
    const std::string digit(1, char('0' + i % 10));
    if (i % 3 == 0) {
      ASSERT_TRUE(platform::WriteProfile("A", "k", digit.c_str(), path));
    } else {
      WriteHostFile(folder.Host() / "p.ini", "[A]\r\nk=" + digit + "\r\n");
    }
    ASSERT_EQ(platform::ReadProfileString("A", "k", "", 9, path), digit) << i;
  }
}

TEST(PrivateProfileTest, WritersLoseNothing) {
  constexpr int kWriters = 4;
  constexpr int kWrites = 40;
  const test::TempFolder folder;
  const std::string path = folder.Path("p.ini");
  std::vector<std::thread> writers;
  writers.reserve(kWriters);
  for (int writer = 0; writer < kWriters; writer++) {
    writers.emplace_back([&path, writer] {
      for (int i = 0; i < kWrites; i++) {
        const std::string key = std::to_string(writer) + "-" + std::to_string(i);
        EXPECT_TRUE(platform::WriteProfile("A", key.c_str(), "v", path));
      }
    });
  }
  for (std::thread& writer : writers) writer.join();
  EXPECT_EQ(platform::ReadProfileKeys("a", path).size(), std::size_t{kWriters * kWrites});
  EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Host()), {}), 1);
}

TEST(PrivateProfileTest, RespectsOtherOpeners) {
  const test::TempFolder folder;
  const std::string path = folder.Path("p.ini");
  ASSERT_TRUE(platform::WriteProfile("A", "k", "1", path));
  {
    const TavoFile held(path, TavoFile::Access::kWrite, TavoFile::Creation::kOpenExisting,
                        TavoFile::Share::kDenyWrite);
    EXPECT_FALSE(platform::WriteProfile("A", "k", "2", path));
    EXPECT_FALSE(platform::EditProfile({{"A", "k", "3"}, {"A", "x", "3"}}, path));
    EXPECT_EQ(platform::ReadProfileString("A", "k", "", 9, path), "1");
  }
  EXPECT_TRUE(platform::WriteProfile("A", "k", "2", path));
  EXPECT_FALSE(platform::WriteProfile("A", "k", "1", folder.Path("missing\\p.ini")));
}

// Long sections are indexed: the first of several equal names must still be the one that is found.
TEST(ProfileTextTest, FindsTheFirstOfEqualNames) {
  std::string bytes = "[S]\n";
  for (int i = 0; i < 300; i++) {
    bytes +=
        (i % 2 == 0 ? "key" : "KEY") + std::to_string(i % 100) + "=" + std::to_string(i) + "\n\n";
  }
  platform::ProfileText text(bytes);
  for (int round = 0; round < 3; round++) {
    for (int i = 0; i < 100; i++) {
      const std::string key = "Key" + std::to_string(i);
      ASSERT_EQ(text.Find("s", key), std::to_string(100 * round + i));
      ASSERT_TRUE(text.Apply({"S", key, std::nullopt}));
    }
  }
  EXPECT_EQ(text.Find("s", "key0"), std::nullopt);
  for (int i = 0; i < 300; i++) text.Apply({"S", "n" + std::to_string(i % 150), std::to_string(i)});
  EXPECT_EQ(text.GetKeys("S").size(), 150U);
  EXPECT_EQ(text.Find("s", "N149"), "299");
}

}  // namespace
}  // namespace vemra
