#include "Support/text/Output.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <thread>

#include "Support/text/Section.h"
#include "tests/TempFolder.h"

namespace vemra {
namespace {

// Marks each section as one numbered highlight, and counts how many live.
class NumberedSection : public TavoSection {
 public:
  NumberedSection(TavoOutput* output, const std::string& text) : TavoSection(output, text) {
    ++alive;
  }
  ~NumberedSection() override { --alive; }
  void MarkContents() override {
    marked_ = "<" + std::to_string(GetCurrentHighlightCount()) + ">";
    SetInitialHighlightCount(GetCurrentHighlightCount() + 1);
  }
  const std::string& Marked() const { return marked_; }

  static inline int alive = 0;

 private:
  std::string marked_;
};

// Prints the number that a section was marked with, writes anchors, and can be made to fail.
class TestOutput : public TavoOutput {
 public:
  using TavoOutput::SetAnchorFlag;
  bool broken = false;

  int PrintString(const std::string& s) override { return broken ? 0 : TavoOutput::PrintString(s); }
  int PrintSection(TavoSection* section) override {
    if (section->IsContentsEmpty()) return 1;
    if (!TavoOutput::PrintSection(section)) return 0;
    return TavoOutput::PrintString(static_cast<NumberedSection*>(section)->Marked());
  }

 protected:
  int TryPrintThing(InternalItem* item) override {
    if (item->kind == InternalItem::kAnchor) return PrintString("#");
    return TavoOutput::TryPrintThing(item);
  }
};

NumberedSection* Locked(TavoOutput& output, const std::string& text) {
  auto* section = new NumberedSection(&output, text);
  section->Lock();
  return section;
}

TEST(OutputTest, PrintsInOrderWhenALockIsReleased) {
  TestOutput output;
  NumberedSection* first = Locked(output, "a");
  output.Write(first, 1);
  output.Write(std::string("|"));
  NumberedSection* second = Locked(output, "b");
  output.Write(second, 1);
  EXPECT_EQ(output.InsertDelayedAnchor(), 1);
  second->UnLock();
  EXPECT_EQ(output.GetOutputBuffer(), "");
  EXPECT_EQ(output.Close(), 0);
  first->UnLock();
  EXPECT_EQ(output.GetOutputBuffer(), "a<0>|b<1>#");
  EXPECT_EQ(NumberedSection::alive, 0);
  EXPECT_EQ(output.GetHighlightCount(), 2);
  EXPECT_EQ(output.InsertDelayedAnchor(), 0);
  EXPECT_EQ(output.Close(), 1);
  output.SetAnchorFlag(1);
  EXPECT_EQ(output.InsertDelayedAnchor(), 1);
  output.ResetOutput();
  EXPECT_EQ(output.IsEmpty(), 1);
}

TEST(OutputTest, KeepsOrderWhateverTheOrderOfUnlocking) {
  std::mt19937 random(20);
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(round);
    TestOutput output;
    std::string expected;
    std::vector<NumberedSection*> locked;
    int highlights = 0;
    for (int i = 0; i < 20; ++i) {
      const std::string text(1, static_cast<char>('a' + i));
      expected += text;
      if (random() % 3 == 0) {
        output.Write(text);
        continue;
      }
      expected += "<" + std::to_string(highlights++) + ">";
      auto* section = Locked(output, text);
      locked.push_back(section);
      output.Write(section, 1);
    }
    std::shuffle(locked.begin(), locked.end(), random);
    for (NumberedSection* section : locked) section->UnLock();
    EXPECT_EQ(output.GetOutputBuffer(), expected);
    EXPECT_EQ(NumberedSection::alive, 0);
  }
}

// The thread of a search unlocks in its own order while the parser's thread waits for it.
TEST(OutputTest, KeepsOrderWhenAnotherThreadUnlocks) {
  std::mt19937 random(21);
  TestOutput output;
  std::string expected;
  for (int round = 0; round < 20; ++round) {
    std::vector<NumberedSection*> locked;
    for (int i = 0; i < 10; ++i) {
      output.SetCurrentField(i % 3 == 0 ? 5 : -1);
      locked.push_back(Locked(output, std::to_string(i)));
      output.Write(locked.back(), 1);
      if (i % 3 != 0) {
        expected += std::to_string(i) + "<" +
                    std::to_string(output.GetHighlightCount() + i - i / 3 - 1) + ">";
      }
    }
    std::shuffle(locked.begin(), locked.end(), random);
    std::thread search([&locked] {
      for (NumberedSection* section : locked) section->UnLock();
    });
    search.join();
    ASSERT_EQ(output.GetOutputBuffer(), expected);
    ASSERT_EQ(NumberedSection::alive, 0);
  }
  std::string field;
  for (int round = 0; round < 20; ++round) field += "0369";
  EXPECT_EQ(*output.GetFieldContents(5), field);
}

TEST(OutputTest, DeletesWhatIsStillQueued) {
  {
    TestOutput output;
    output.Write(Locked(output, "a"), 1);
    NumberedSection kept(&output, "b");
    output.Write(&kept, 0);
    output.ResetOutput();
    EXPECT_EQ(NumberedSection::alive, 1);
    output.Write(Locked(output, "c"), 1);
  }
  EXPECT_EQ(NumberedSection::alive, 0);
}

TEST(OutputTest, AFailedWriteBlocksUntilItSucceeds) {
  TestOutput output;
  output.broken = true;
  output.Write(std::string("a"));
  output.Write(new NumberedSection(&output, "b"), 1);
  EXPECT_EQ(output.TryPrintAll(), 0);
  output.broken = false;
  EXPECT_EQ(output.TryPrintAll(), 1);
  EXPECT_EQ(output.GetOutputBuffer(), "ab<0>");
}

TEST(OutputTest, EmptySectionsCountAsPrinted) {
  TestOutput output;
  output.Write(new NumberedSection(&output, ""), 1);
  EXPECT_EQ(output.IsEmpty(), 1);
}

TEST(OutputTest, FieldBuffersAreInsertedWithTheirQueue) {
  for (const int move : {0, 1}) {
    SCOPED_TRACE(move);
    TavoOutput output;
    output.SetCurrentField(3);
    output.Write(std::string("title "));
    auto* section = new TavoSection(&output, "late");
    section->Lock();
    output.Write(section, 1);
    EXPECT_EQ(*output.GetFieldContents(3), "title ");
    output.WriteField(3, move);  // into itself: nothing happens
    output.SetCurrentField(-1);
    output.Write(std::string("["));
    output.WriteField(3, move);
    output.Write(std::string("]"));
    EXPECT_EQ(output.GetOutputBuffer(), "[title ");
    EXPECT_EQ(output.IsFieldEmpty(3), move);
    section->UnLock();
    EXPECT_EQ(*output.GetFieldContents(3), move ? "" : "title late");
  }
  TavoOutput output;
  output.SetCurrentField(2);
  output.Write(new NumberedSection(&output, "a"), 1);
  output.SetCurrentField(-1);
  output.Write(new NumberedSection(&output, "b"), 1);
  EXPECT_EQ(output.GetHighlightCount(), 1);
  output.WriteField(2, 1);
  EXPECT_EQ(output.GetHighlightCount(), 2) << "the field's highlights come with it";
  EXPECT_EQ(output.GetBuffer(2)->GetHighlightCount(), 0);
  EXPECT_EQ(output.GetFieldContents(0), nullptr);
  EXPECT_EQ(output.IsFieldEmpty(124), 1);
}

TEST(OutputTest, WritesToFiles) {
  test::TempFolder folder;
  test::WriteHostFile(folder.Host() / "old", "0123456789");
  TavoOutput output;
  EXPECT_EQ(output.SetOutputToFile(folder.Path("missing"), 0), 0);
  EXPECT_EQ(output.GetFileName(), "");
  output.Write(std::string("buffered"));
  EXPECT_EQ(output.SetOutputToFile(folder.Path("old"), 0), 1);
  output.Write(std::string("a\nb"));
  EXPECT_EQ(output.SetOutputToFile(folder.Path("new"), 1), 1);
  output.Write(std::string("\0x", 2));
  EXPECT_EQ(output.Close(), 1);
  EXPECT_EQ(output.GetFileName(), "");
  EXPECT_EQ(test::ReadHostFile(folder.Host() / "old"), "a\nb3456789");
  EXPECT_EQ(test::ReadHostFile(folder.Host() / "new"), std::string("\0x", 2));
  EXPECT_EQ(output.SetOutputToFile(folder.Path("new"), 1), 1);
  EXPECT_EQ(test::ReadHostFile(folder.Host() / "new"), "");

  // A file that cannot be written keeps its text waiting, and close keeps the file.
  TavoFile readOnly(folder.Path("old"), TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  output.SetOutputToFile(&readOnly, 0);
  output.Write(std::string("late"));
  EXPECT_EQ(output.Close(), 0);
  output.SetOutputToBuffer();
  EXPECT_EQ(output.Close(), 1);
  EXPECT_EQ(output.GetOutputBuffer(), "bufferedlate");
  EXPECT_TRUE(readOnly.IsOpen());
}

}  // namespace
}  // namespace vemra
