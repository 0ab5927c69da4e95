// What an indexing engine is called with, from the bytes of a document on: every document in
// tests/data/calls against its list of calls, NAME.calls, one call a line as RecordingEngine writes
// it. A byte that is not printable ASCII stands as \xHH.
//
// When calls change on purpose: run with VEMRA_WRITE_CALLS=1, and read every line that differs.

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>

#include "Support/foundation/HostPath.h"
#include "Support/text/Index.h"
#include "Support/text/Output.h"
#include "Support/text/ParseFile.h"
#include "programs/formats/FormatWrapper.h"
#include "tests/TempFolder.h"
#include "tests/text/RecordingEngine.h"

namespace vemra::test {
namespace {

const std::filesystem::path kDocuments = VEMRA_TEST_DATA "/calls";

std::string Printable(const std::string& calls) {
  std::string text;
  for (const unsigned char c : calls) {
    char hex[5];
    std::snprintf(hex, sizeof hex, "\\x%02X", c);
    text += c == '\n' || (c >= ' ' && c < 0x7F) ? std::string(1, static_cast<char>(c)) : hex;
  }
  return text;
}

std::string CallsOf(const std::filesystem::path& document) {
  const std::string format = document.extension() == ".html" ? "HTML" : "Text";
  FormatWrapper wrapper(FromHostPath((kDocuments / "calls.cfg").string()), 0, format);
  EXPECT_EQ(wrapper.IsLoaded(), 1);
  RecordingEngine engine('\n');
  TavoIndex index(wrapper, engine);
  index.SetMaxSortKeySize(20);
  index.SetStoreText(document.stem() == "stored");
  TavoParseFile* const parser = wrapper.GetIndexingParser(&index);
  index.OnDocumentStart(document.filename().string());
  EXPECT_EQ(parser->ParseFile(FromHostPath(document.string())), 1);
  index.OnDocumentEnd(parser->GetOutput(), wrapper.GetLangPack());
  wrapper.FreeIndexingParser(parser);
  return Printable(engine.Take()) + "\n";
}

TEST(CallsTest, EachDocumentGivesItsCalls) {
  const bool write = std::getenv("VEMRA_WRITE_CALLS") != nullptr;
  int documents = 0;
  for (const auto& entry : std::filesystem::directory_iterator(kDocuments)) {
    const std::filesystem::path& document = entry.path();
    if (document.extension() != ".html" && document.extension() != ".txt") continue;
    ++documents;
    std::filesystem::path golden = document;
    golden += ".calls";
    const std::string calls = CallsOf(document);
    if (write) WriteHostFile(golden, calls);
    EXPECT_EQ(calls, ReadHostFile(golden)) << document.filename();
  }
  EXPECT_EQ(documents, 21);
  if (write) GTEST_SKIP() << "written, not compared";
}

}  // namespace
}  // namespace vemra::test
