#include "programs/engine/IndexWriter.h"

#include <gtest/gtest.h>

#include "programs/engine/EngineError.h"
#include "programs/engine/Search.h"
#include "programs/engine/Sqlite.h"
#include "tests/TempFolder.h"
#include "tests/programs/engine/Queries.h"

namespace vemra::engine {
namespace {

const CTavoFieldList kGeneral = test::ListOf({0});

void AddTexts(IndexWriter& writer, int count, const std::string& word) {
  for (int i = 0; i < count; ++i) {
    writer.BeginText();
    writer.AddWord(0, word.c_str());
    writer.EndText("Z:\\" + word, 3, 5);
  }
}

std::int64_t Count(const std::string& path, const std::string& word) {
  IndexDatabase index(path);
  return Search(index, test::Phrase({word}, kGeneral)).Find(0, FieldWeights()).total;
}

template <typename Action>
Fault FaultOf(const Action& action) {
  try {
    action();
  } catch (const EngineError& error) {
    return error.GetFault();
  }
  ADD_FAILURE() << "no error";
  return Fault::kFailed;
}

TEST(IndexWriter, KeepsTheOldIndexUntilTheFirstBatchIsStored) {
  test::TempFolder folder;
  const std::string path = folder.Path("a.vix");
  {
    IndexWriter writer(path, kGeneral);
    AddTexts(writer, 3, "old");
    writer.Finish();
  }
  {
    IndexWriter writer(path, kGeneral);
    EXPECT_EQ(FaultOf([&] { IndexWriter(path, kGeneral); }), Fault::kLocked);
    AddTexts(writer, 2, "new");
    EXPECT_EQ(Count(path, "old"), 3);
    writer.Commit();
    EXPECT_EQ(Count(path, "old"), 0);
    EXPECT_EQ(Count(path, "new"), 2);
    AddTexts(writer, 2, "lost");  // never committed
  }
  EXPECT_EQ(Count(path, "new"), 2);
  EXPECT_EQ(Count(path, "lost"), 0);
  EXPECT_EQ(IndexDatabase(path).CountTexts(), 2);
}

// Stores texts in so many batches, and gives the blocks that the full-text index has then.
std::int64_t BlocksOf(const test::TempFolder& folder, int batches) {
  const std::string path = folder.Path("a.vix");
  IndexWriter writer(path, kGeneral);
  for (int i = 0; i < batches; ++i) {
    AddTexts(writer, 1, "word");
    writer.Commit();
  }
  writer.Finish();
  EXPECT_EQ(Count(path, "word"), batches);
  Connection connection((folder.Host() / "a.vix").string(), /*create=*/false);
  return connection.QueryNumber("SELECT count(*) FROM words_data");
}

TEST(IndexWriter, MergesAnIndexOfManyParts) {
  const test::TempFolder folder;
  EXPECT_LT(BlocksOf(folder, 30), BlocksOf(folder, 3));
}

TEST(IndexWriter, GivesTheNumberOfAnUnfinishedTextAgain) {
  test::TempFolder folder;
  IndexWriter writer(folder.Path("a.vix"), kGeneral);
  AddTexts(writer, 1, "one");
  EXPECT_EQ(writer.BeginText(), 2U);
  writer.AddWord(0, "unfinished");
  writer.SetTitle("unfinished");
  EXPECT_EQ(writer.BeginText(), 2U);
  writer.AddWord(0, "two");
  writer.AddWord(5, "of no column");
  writer.SetTitle(std::string("t\0\xe9", 3));
  writer.EndText("Z:\\b", 1, 7);
  writer.Finish();
  IndexDatabase index(folder.Path("a.vix"));
  const TextRecord text = index.FindText(2).value();
  EXPECT_EQ(text.path, "Z:\\b");
  EXPECT_EQ(text.title, std::string("t\0\xe9", 3));
  EXPECT_EQ(text.fileType, 1);
  EXPECT_EQ(text.bytes, 7);
  EXPECT_EQ(text.words, 1);
  EXPECT_FALSE(index.FindText(3).has_value());
  EXPECT_EQ(Count(folder.Path("a.vix"), "unfinished"), 0);
}

TEST(IndexWriter, KeepsAnyBytesAndLongWords) {
  test::TempFolder folder;
  const std::string path = folder.Path("a.vix");
  const std::string words[] = {std::string(1, '\1'),     "\2\3", "\"", "a\"b", "\xff\xfe",
                               std::string(100000, 'x'), "%",    "'"};
  {
    IndexWriter writer(path, kGeneral);
    for (const std::string& word : words) AddTexts(writer, 1, word);
    writer.Finish();
  }
  for (const std::string& word : words) {
    SCOPED_TRACE(word.substr(0, 20));
    EXPECT_EQ(Count(path, word), 1);
  }
}

TEST(IndexDatabase, TellsMissingFromDamaged) {
  test::TempFolder folder;
  const std::string path = folder.Path("a.vix");
  const auto host = folder.Host() / "a.vix";
  const auto open = [&] { IndexDatabase(path).FindText(1); };
  EXPECT_EQ(FaultOf(open), Fault::kMissing);
  test::WriteHostFile(host, "");
  EXPECT_EQ(FaultOf(open), Fault::kMissing);
  test::WriteHostFile(host, std::string(5000, 'x'));
  EXPECT_EQ(FaultOf(open), Fault::kDamaged);
  test::WriteHostFile(host, "");
  {
    IndexWriter writer(path, kGeneral);
    AddTexts(writer, 2000, "word");
    writer.Finish();
  }
  // The header stays whole, the tables do not.
  std::string bytes = test::ReadHostFile(host);
  std::fill(bytes.begin() + 4096, bytes.end(), '\x55');
  test::WriteHostFile(host, bytes);
  EXPECT_EQ(FaultOf(open), Fault::kDamaged);
}

}  // namespace
}  // namespace vemra::engine
