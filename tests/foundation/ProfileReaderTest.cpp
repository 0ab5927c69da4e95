#include "Support/foundation/ProfileReader.h"

#include <gtest/gtest.h>

#include <optional>

#include "Support/foundation/ProfileWriter.h"
#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

class ProfileReaderTest : public testing::Test {
 protected:
  CTavoProfileReader& Read(const std::string& text) {
    WriteHostFile(folder_.Host() / "f", text);
    EXPECT_TRUE(reader_.emplace().Open(folder_.Path("f")));
    return *reader_;
  }

  TempFolder folder_;
  std::optional<CTavoProfileReader> reader_;
};

TEST_F(ProfileReaderTest, ReadsManyBlocks) {
  std::string text;
  std::string expected;
  for (int i = 0; i < 20000; ++i) {
    const std::string line = std::string(static_cast<std::size_t>(i % 40), '.') + std::to_string(i);
    text += line + (i % 2 == 0 ? "\r\n" : "\n");
    expected += line + "|";
  }
  CTavoProfileReader& reader = Read(text);
  std::string lines;
  for (std::string line; reader.ReadLine(line, 1) != 0; reader.GotoNextLine()) lines += line + "|";
  EXPECT_EQ(lines, expected);
}

TEST_F(ProfileReaderTest, MatchesTitlesStrictly) {
  for (const char* line : {"[Title]", "[Title]  \t", "[Title]\r"}) {
    EXPECT_TRUE(Read(std::string(line) + "\n").ReadSectionTitle("Title")) << line;
  }
  for (const char* line : {"[ Title]", "[title]", "  [Title]", "[Title] x", "[Title", "[Titles]"}) {
    CTavoProfileReader& reader = Read(std::string(line) + "\n");
    std::string pending;
    EXPECT_FALSE(reader.ReadSectionTitle("Title")) << line;
    EXPECT_TRUE(reader.ReadLine(pending, 0));
    EXPECT_EQ(pending, line);
  }
}

TEST_F(ProfileReaderTest, ReadsIntegersAsTheFormatDoes) {
  const std::pair<const char*, std::int32_t> kRead[] = {{"N= 42", 42},
                                                        {"N=-7 \t", -7},
                                                        {"N=\t+5", 5},
                                                        {"N=007", 7},
                                                        {"N=2147483647", INT32_MAX},
                                                        {"N=-2147483648", INT32_MIN}};
  std::int32_t value = -1;
  std::string pending;
  for (const auto& [line, number] : kRead) {
    EXPECT_TRUE(Read(line).ReadInt("N", value)) << line;
    EXPECT_EQ(value, number);
    EXPECT_FALSE(reader_->ReadLine(pending, 1));
  }
  value = -1;
  for (const char* line : {"N=2147483648", "N=99999999999999999999", "N=12abc", "N=", "N=5 ;x",
                           "N=+-5", "N=- 5", "N =42", "NN=3", "n=3", " N=3"}) {
    EXPECT_FALSE(Read(line).ReadInt("N", value)) << line;
    EXPECT_EQ(value, -1);
    EXPECT_TRUE(reader_->ReadLine(pending, 1));
    EXPECT_EQ(pending, line);
  }
}

TEST_F(ProfileReaderTest, LeavesALinePendingUntilItsKeyIsAskedFor) {
  CTavoProfileReader& reader =
      Read("x\n[A]\n; c\nName=  a b  \n\nSize=3\nEmpty=\nunknown\n[B]\nKey=v ;x");
  std::string text = "old";
  std::int32_t number = 0;
  EXPECT_TRUE(reader.GotoNextSection() && reader.ReadSectionTitle("A"));
  EXPECT_FALSE(reader.ReadInt("Name", number) || reader.ReadString("Nam", text));
  EXPECT_EQ(text, "old");
  EXPECT_TRUE(reader.ReadString("Name", text));
  EXPECT_EQ(text, "  a b  ");
  EXPECT_FALSE(reader.ReadInt("Other", number));
  EXPECT_TRUE(reader.ReadInt("Size", number));
  EXPECT_EQ(number, 3);
  EXPECT_TRUE(reader.ReadString("Empty", text));
  EXPECT_EQ(text, "");
  EXPECT_TRUE(reader.ReadLine(text, 1) && reader.ReadLine(text, 1));
  EXPECT_EQ(text, "unknown");
  EXPECT_TRUE(reader.GotoNextSection() && reader.GotoNextSection());
  EXPECT_TRUE(reader.ReadSectionTitle("B") && reader.ReadString("Key", text));
  EXPECT_EQ(text, "v ;x");
  EXPECT_FALSE(reader.GotoNextSection() || reader.ReadLine(text, 1));
  EXPECT_EQ(text, "v ;x");
}

TEST_F(ProfileReaderTest, ReadsNothingWithoutAStream) {
  CTavoProfileReader reader(folder_.Path("none"));
  std::string text;
  EXPECT_FALSE(reader.IsOpen());
  EXPECT_FALSE(reader.ReadLine(text, 1));
  EXPECT_FALSE(reader.GotoNextSection());
}

TEST_F(ProfileReaderTest, LeavesTheCallersStreamBehindTheLineInHand) {
  WriteHostFile(folder_.Host() / "f", "a=1\nrest\n");
  std::FILE* const stream = std::fopen((folder_.Host() / "f").string().c_str(), "rb");
  std::int32_t number = 0;
  EXPECT_TRUE(CTavoProfileReader(stream).ReadInt("a", number));
  char rest[16] = "";
  EXPECT_NE(std::fgets(rest, sizeof rest, stream), nullptr);
  EXPECT_STREQ(rest, "rest\n");
  std::fclose(stream);
}

TEST_F(ProfileReaderTest, APendingLineOutlivesItsFile) {
  CTavoProfileReader& reader = Read("a=1\nb=2\n");
  WriteHostFile(folder_.Host() / "g", "c=3\n");
  std::string text;
  EXPECT_FALSE(reader.ReadString("c", text));  // the first line is pending
  reader.Close();
  EXPECT_TRUE(reader.Open(folder_.Path("g")));
  EXPECT_TRUE(reader.ReadString("a", text));
  EXPECT_EQ(text, "1");
  EXPECT_TRUE(reader.ReadString("c", text));
  EXPECT_EQ(text, "3");
}

TEST_F(ProfileReaderTest, ReadsOnFromWhereAnOpenFileStands) {
  WriteHostFile(folder_.Host() / "f", "skipped\na=1\n");
  TavoFile file(folder_.Path("f"), TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  file.Seek(8, TavoFile::Origin::kBegin);
  std::int32_t number = 0;
  EXPECT_TRUE(CTavoProfileReader(file).ReadInt("a", number));
  EXPECT_EQ(file.Seek(0, TavoFile::Origin::kBegin), 0);  // still open
}

class ProfileWriterTest : public testing::Test {
 protected:
  std::string Written() const {
    std::string text = ReadHostFile(folder_.Host() / "f");
    std::erase(text, '\r');
    return text;
  }

  TempFolder folder_;
};

TEST_F(ProfileWriterTest, WritesWhatTheReaderReads) {
  CTavoProfileWriter writer(folder_.Path("f"));
  EXPECT_TRUE(writer.WriteSectionTitle("A"));
  EXPECT_TRUE(writer.WriteInt("N", 3));
  EXPECT_TRUE(writer.WriteString("S", "x\xFF y "));
  EXPECT_TRUE(writer.WriteNewline());
  EXPECT_TRUE(writer.Format("%s,%d\n", "D", -1));
  EXPECT_TRUE(writer.Close());
  EXPECT_FALSE(writer.IsOpen());
  EXPECT_EQ(Written(), "\n[A]\nN=3\nS=x\xFF y \n\nD,-1\n");
  CTavoProfileReader reader(folder_.Path("f"));
  std::int32_t number = 0;
  std::string text;
  EXPECT_TRUE(reader.ReadSectionTitle("A") && reader.ReadInt("N", number) &&
              reader.ReadString("S", text));
  EXPECT_EQ(number, 3);
  EXPECT_EQ(text, "x\xFF y ");
}

TEST_F(ProfileWriterTest, EmptiesAnOpenFileAndLeavesItOpen) {
  WriteHostFile(folder_.Host() / "f", "what was there before");
  TavoFile file(folder_.Path("f"), TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenExisting);
  file.Seek(0, TavoFile::Origin::kEnd);
  EXPECT_TRUE(CTavoProfileWriter(file).WriteInt("a", 1));
  file.Write("b", 1);
  file.Close();
  EXPECT_EQ(Written(), "a=1\nb");
}

TEST_F(ProfileWriterTest, ReportsWhatCouldNotBeWritten) {
  EXPECT_FALSE(CTavoProfileWriter(folder_.Path("none\\f")).IsOpen());
  WriteHostFile(folder_.Host() / "f", "");
  std::FILE* const stream = std::fopen((folder_.Host() / "f").string().c_str(), "rb");
  CTavoProfileWriter writer(stream);
  writer.WriteInt("a", 1);
  EXPECT_FALSE(writer.Close());
  std::fclose(stream);
}

}  // namespace
}  // namespace vemra::test
