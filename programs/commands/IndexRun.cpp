#include "programs/commands/IndexRun.h"

#include <filesystem>

#include "Support/foundation/HostPath.h"
#include "Support/text/Index.h"
#include "Support/text/ParseFile.h"
#include "programs/commands/HostPaths.h"
#include "programs/engine/EngineError.h"

namespace vemra::commands {
namespace {

// Every document is the whole of its file.
constexpr int kFirstInFile = 1;
// Far more than putting a large index in order takes.
constexpr TimeSpan kFinishTerm(3600);

std::int64_t FileBytes(const std::string& path) {
  std::error_code error;
  const auto bytes = std::filesystem::file_size(ToHostPath(path), error);
  return error ? 0 : static_cast<std::int64_t>(bytes);
}

}  // namespace

std::int64_t CountFiles(const CTavoFileIDX& list) {
  std::int64_t count = 0;
  std::string path;
  for (int i = 0; i < list.GetNumOfFileTypes(); ++i) {
    const CTavoFileType& fileType = *list.GetFileType(i);
    POSITION position = fileType.GetStartPosition();
    while (fileType.GetNextFilePath(position, path) != 0) ++count;
  }
  return count;
}

IndexRun::IndexRun(Database& database, Progress& progress, IndexingAccess& access)
    : database_(database),
      progress_(progress),
      access_(access),
      writer_(database.GetIndexPath(), database.GetFields().GetDefinedFields()),
      callbacks_(writer_, [this](const char* text, unsigned long) { OnMessage(text); }) {
  dictionary_.Open(database.GetConfiguration().GetFileFIN());
}

bool IndexRun::IndexAll() {
  const int fileTypes = database_.GetIndexList().GetNumOfFileTypes();
  for (int i = 0; i < fileTypes && !access_.IsStopRequested(); ++i) IndexFileType(i);
  return !access_.IsStopRequested();
}

void IndexRun::Finish(bool complete) {
  access_.KeepFor(kFinishTerm);
  // Stopped before its first document, the run leaves the old index as it was.
  if (complete) {
    writer_.Finish();
  } else if (figures_.files > 0) {
    writer_.Commit();
  }
  dictionary_.Close();
}

void IndexRun::IndexFileType(int fileType) {
  const std::unique_ptr<FormatWrapper> wrapper = database_.MakeFormatWrapper(fileType);
  TavoIndex index(*wrapper, callbacks_.GetTable());
  TavoParseFile* parser = wrapper->GetIndexingParser(&index);
  const CTavoFileType& files = *database_.GetIndexList().GetFileType(fileType);
  POSITION position = files.GetStartPosition();
  std::string path;
  while (!access_.IsStopRequested() && files.GetNextFilePath(position, path) != 0) {
    IndexFile(index, *parser, fileType, path);
  }
  CTavoFileType::CloseScan(position);
  wrapper->FreeIndexingParser(parser);
}

void IndexRun::IndexFile(TavoIndex& index, TavoParseFile& parser, int fileType,
                         const std::string& path) {
  current_ = path;
  try {
    index.OnDocumentStart(path);
    if (parser.ParseFile(path) == 0) return Skip(path, "cannot be read");
    index.OnDocumentEnd(nullptr, database_.GetPack());
  } catch (const std::exception& error) {
    return Skip(path, std::string("cannot be parsed: ") + error.what());
  }
  StoreText(path, fileType);
}

// The dictionary first: a text of the index always has its record.
void IndexRun::StoreText(const std::string& path, int fileType) {
  if (dictionary_.PutFileName(fileType, kFirstInFile, path) == 0) {
    throw engine::EngineError(
        engine::Fault::kFailed,
        PathForPerson(database_.GetConfiguration().GetFileFIN()) + ": cannot be written");
  }
  access_.Keep();  // the text may complete a batch, which is then stored
  const engine::TextRecord& text = writer_.EndText(path, fileType, FileBytes(path));
  ++figures_.files;
  figures_.words += text.words;
  figures_.sentences += text.sentences;
  figures_.paragraphs += text.paragraphs;
  figures_.bytes += text.bytes;
  progress_.FileDone(text.bytes);
}

void IndexRun::Skip(const std::string& path, const std::string& reason) {
  ++figures_.skipped;
  progress_.Report(PathForPerson(path) + ": " + reason + "; skipped");
  progress_.FileDone(0);
}

void IndexRun::OnMessage(const char* text) {
  std::string line = text;
  while (!line.empty() && line.back() == '\n') line.pop_back();
  progress_.Report(PathForPerson(current_) + ": " + database_.GetCodePage().ToUtf8(line));
}

}  // namespace vemra::commands
