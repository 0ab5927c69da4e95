#include <string>
#include <vector>

#include "Support/definition/FileIDX.h"
#include "Support/foundation/INIWorker.h"
#include "fuzz/SavedFiles.h"

namespace vemra::fuzz {
namespace {

using Texts = std::vector<std::string>;

Texts TextsOf(const CTavoFileIDX& list) {
  Texts texts;
  for (int i = 0; i < list.GetNumOfFileTypes(); ++i) {
    const CTavoFileType& fileType = *list.GetFileType(i);
    texts.insert(texts.end(), {fileType.GetName(), fileType.GetFTDfileName(), fileType.GetFormat(),
                               fileType.GetLanguage()});
  }
  return texts;
}

// A settings file's file types survive saving and loading.
void Run(std::string_view bytes) {
  const InputFile input(bytes);
  std::vector<Texts> loaded;
  CheckStable(input.Path(), [&](const std::string& from, const std::string& to) {
    INIWorker reader(from);
    reader.SetSection("General Definitions");
    const INIWorker::Batch snapshot(reader);
    CTavoFileIDX list;
    Check(list.LoadFileTypes(reader) != 0, "loading");
    Check((list.GetFileType() == nullptr) == (list.GetNumOfFileTypes() == 0), "the current type");
    loaded.push_back(TextsOf(list));
    INIWorker writer(to);
    writer.SetSection("General Definitions");
    INIWorker::Batch batch(writer);
    Check(list.SaveFileTypes(writer) != 0 && batch.Commit() != 0, "saving");
  });
  Check(loaded[0] == loaded[1], "the file types loaded again");
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
