#include "Support/foundation/ProfileReader.h"

#include <gtest/gtest.h>

#include <optional>

#include "Support/foundation/ProfileWriter.h"
#include "tests/TempFolder.h"

namespace vemra::test {
namespace {

// Runs a test once over the reader's own stream and once over a stream of the caller's.
class ProfileReaderTest : public testing::TestWithParam<bool> {
 protected:
  ~ProfileReaderTest() override { CloseStream(); }

  CTavoProfileReader& Read(const std::string& text) {
    WriteHostFile(folder_.Host() / "f", text);
    reader_.emplace();  // a reader that is opened again keeps its pending line
    CloseStream();
    if (GetParam()) {
      EXPECT_TRUE(reader_->Open(folder_.Path("f")));
    } else {
      stream_ = std::fopen((folder_.Host() / "f").string().c_str(), "rb");
      EXPECT_TRUE(reader_->Open(stream_));
    }
    return *reader_;
  }

  // All that ReadLine gives, joined by "|".
  std::string Lines(const std::string& text) {
    CTavoProfileReader& reader = Read(text);
    std::string all;
    for (std::string line; reader.ReadLine(line, 1); reader.GotoNextLine()) all += line + "|";
    return all;
  }

  TempFolder folder_;
  std::optional<CTavoProfileReader> reader_;

 private:
  void CloseStream() {
    if (stream_ != nullptr) std::fclose(stream_);
    stream_ = nullptr;
  }

  std::FILE* stream_ = nullptr;
};

INSTANTIATE_TEST_SUITE_P(Streams, ProfileReaderTest, testing::Bool());

TEST_P(ProfileReaderTest, CutsTheFileIntoMeaningfulLines) {
  struct Row {
    const char* label;
    std::string text;
    std::string lines;
  };
  const std::string full(255, 'x');
  const Row rows[] = {
      {"empty file", "", ""},
      {"only blanks and comments", "\n \t\v\f\r\n;a\n  ; b\r\n", ""},
      {"line ends of both kinds", "a\r\nb\n\r\r\nc", "a|b|c|"},
      {"white space and semicolons inside", "  a ;b  \n", "  a ;b  |"},
      {"longest line", full + "\nb\n", full + "|b|"},
      {"too long lines", full + "yy\n" + full + full + "z\n",
       full + "|yy|" + full + "|" + full + "|z|"},
      {"a long line's piece is a comment", full + ";y\nb", full + "|b|"},
      {"NUL ends a line", std::string("a\0b\nc\r\0\n\0d\ne", 12), "a|c|e|"},
      {"bytes above 127 and end-of-file mark", "\x1A\xFF\x80\nb", "\x1A\xFF\x80|b|"},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.label);
    EXPECT_EQ(Lines(row.text), row.lines);
  }
}

TEST_P(ProfileReaderTest, ReadsManyBlocks) {
  std::string text;
  std::string lines;
  for (int i = 0; i < 20000; ++i) {
    const std::string line = std::string(static_cast<std::size_t>(i % 40), '.') + std::to_string(i);
    text += line + (i % 2 == 0 ? "\r\n" : "\n");
    lines += line + "|";
  }
  EXPECT_EQ(Lines(text), lines);
}

TEST_P(ProfileReaderTest, MatchesTitlesStrictly) {
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

TEST_P(ProfileReaderTest, ReadsIntegersAsTheFormatDoes) {
  struct Row {
    const char* line;
    int result;
    std::int32_t value;
  };
  const Row rows[] = {
      {"N= 42", 1, 42},
      {"N=-7 \t", 1, -7},
      {"N=\t+5", 1, 5},
      {"N=007", 1, 7},
      {"N=2147483647", 1, INT32_MAX},
      {"N=-2147483648", 1, INT32_MIN},
      {"N=2147483648", 0, -1},
      {"N=99999999999999999999", 0, -1},
      {"N=12abc", 0, -1},
      {"N=", 0, -1},
      {"N=5 ;x", 0, -1},
      {"N=+-5", 0, -1},
      {"N=- 5", 0, -1},
      {"N =42", 0, -1},
      {"NN=3", 0, -1},
      {"n=3", 0, -1},
      {" N=3", 0, -1},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.line);
    CTavoProfileReader& reader = Read(row.line);
    std::int32_t value = -1;
    std::string pending;
    EXPECT_EQ(reader.ReadInt("N", value), row.result);
    EXPECT_EQ(value, row.value);
    EXPECT_EQ(reader.ReadLine(pending, 1), row.result ? 0 : 1);
    EXPECT_EQ(pending, row.result ? "" : row.line);
  }
}

TEST_P(ProfileReaderTest, LeavesALinePendingUntilItsKeyIsAskedFor) {
  CTavoProfileReader& reader =
      Read("x\n[A]\n; c\nName=  a b  \n\nSize=3\nEmpty=\nunknown\n[B]\nKey=v ;x");
  std::string text = "old";
  std::int32_t number = 0;
  EXPECT_TRUE(reader.GotoNextSection());
  EXPECT_TRUE(reader.ReadSectionTitle("A"));
  EXPECT_FALSE(reader.ReadInt("Name", number));
  EXPECT_FALSE(reader.ReadString("Nam", text));
  EXPECT_EQ(text, "old");
  EXPECT_TRUE(reader.ReadString("Name", text));
  EXPECT_EQ(text, "  a b  ");
  EXPECT_FALSE(reader.ReadInt("Other", number));
  EXPECT_TRUE(reader.ReadInt("Size", number));
  EXPECT_EQ(number, 3);
  EXPECT_TRUE(reader.ReadString("Empty", text));
  EXPECT_EQ(text, "");
  EXPECT_TRUE(reader.ReadLine(text, 1));
  EXPECT_TRUE(reader.ReadLine(text, 1));
  EXPECT_EQ(text, "unknown");
  EXPECT_TRUE(reader.GotoNextSection());
  EXPECT_TRUE(reader.GotoNextSection());
  EXPECT_TRUE(reader.ReadSectionTitle("B"));
  EXPECT_TRUE(reader.ReadString("Key", text));
  EXPECT_EQ(text, "v ;x");
  EXPECT_FALSE(reader.GotoNextSection());
  EXPECT_FALSE(reader.ReadLine(text, 1));
  EXPECT_EQ(text, "v ;x");
}

TEST(ProfileReaderOpenTest, ReadsNothingWithoutAStream) {
  const TempFolder folder;
  CTavoProfileReader reader(folder.Path("none"));
  std::string text;
  EXPECT_FALSE(reader.IsOpen());
  EXPECT_FALSE(reader.ReadLine(text, 1));
  EXPECT_FALSE(reader.GotoNextSection());
}

TEST(ProfileReaderOpenTest, LeavesTheCallersStreamBehindTheLineInHand) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "f", "a=1\nrest\n");
  std::FILE* const stream = std::fopen((folder.Host() / "f").string().c_str(), "rb");
  std::int32_t number = 0;
  EXPECT_TRUE(CTavoProfileReader(stream).ReadInt("a", number));
  char rest[16] = "";
  EXPECT_NE(std::fgets(rest, sizeof rest, stream), nullptr);
  EXPECT_STREQ(rest, "rest\n");
  std::fclose(stream);
}

TEST(ProfileReaderOpenTest, APendingLineOutlivesItsFile) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "f", "a=1\nb=2\n");
  WriteHostFile(folder.Host() / "g", "c=3\n");
  CTavoProfileReader reader(folder.Path("f"));
  std::string text;
  EXPECT_FALSE(reader.ReadString("c", text));  // the first line is pending
  reader.Close();
  EXPECT_TRUE(reader.Open(folder.Path("g")));
  EXPECT_TRUE(reader.ReadString("a", text));
  EXPECT_EQ(text, "1");
  EXPECT_TRUE(reader.ReadString("c", text));
  EXPECT_EQ(text, "3");
}

TEST(ProfileReaderOpenTest, ReadsOnFromWhereAnOpenFileStands) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "f", "skipped\na=1\n");
  TavoFile file(folder.Path("f"), TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  file.Seek(8, TavoFile::Origin::kBegin);
  std::int32_t number = 0;
  EXPECT_TRUE(CTavoProfileReader(file).ReadInt("a", number));
  EXPECT_EQ(file.Seek(0, TavoFile::Origin::kBegin), 0);  // still open
}

std::string WithoutCarriageReturns(std::string text) {
  std::erase(text, '\r');
  return text;
}

TEST(ProfileWriterTest, WritesWhatTheReaderReads) {
  const TempFolder folder;
  CTavoProfileWriter writer(folder.Path("f"));
  EXPECT_TRUE(writer.WriteSectionTitle("A"));
  EXPECT_TRUE(writer.WriteInt("N", 3));
  EXPECT_TRUE(writer.WriteString("S", "x\xFF y "));
  EXPECT_TRUE(writer.WriteNewline());
  EXPECT_TRUE(writer.Format("%s,%d\n", "D", -1));
  EXPECT_TRUE(writer.Close());
  EXPECT_FALSE(writer.IsOpen());
  EXPECT_EQ(WithoutCarriageReturns(ReadHostFile(folder.Host() / "f")),
            "\n[A]\nN=3\nS=x\xFF y \n\nD,-1\n");
  CTavoProfileReader reader(folder.Path("f"));
  std::int32_t number = 0;
  std::string text;
  EXPECT_TRUE(reader.ReadSectionTitle("A"));
  EXPECT_TRUE(reader.ReadInt("N", number));
  EXPECT_TRUE(reader.ReadString("S", text));
  EXPECT_EQ(number, 3);
  EXPECT_EQ(text, "x\xFF y ");
}

TEST(ProfileWriterTest, EmptiesAnOpenFileAndLeavesItOpen) {
  const TempFolder folder;
  WriteHostFile(folder.Host() / "f", "what was there before");
  TavoFile file(folder.Path("f"), TavoFile::Access::kReadWrite, TavoFile::Creation::kOpenExisting);
  file.Seek(0, TavoFile::Origin::kEnd);
  EXPECT_TRUE(CTavoProfileWriter(file).WriteInt("a", 1));
  file.Write("b", 1);
  file.Close();
  EXPECT_EQ(WithoutCarriageReturns(ReadHostFile(folder.Host() / "f")), "a=1\nb");
}

TEST(ProfileWriterTest, ReportsWhatCouldNotBeWritten) {
  const TempFolder folder;
  EXPECT_FALSE(CTavoProfileWriter(folder.Path("none\\f")).IsOpen());
  WriteHostFile(folder.Host() / "f", "");
  std::FILE* const stream = std::fopen((folder.Host() / "f").string().c_str(), "rb");
  CTavoProfileWriter writer(stream);
  writer.WriteInt("a", 1);
  EXPECT_FALSE(writer.Close());
  std::fclose(stream);
}

}  // namespace
}  // namespace vemra::test
