#include "Support/foundation/ProfileWriter.h"

#include <cstdarg>
#include <system_error>

namespace vemra {

CTavoProfileWriter::CTavoProfileWriter(std::FILE* stream) {
  Open(stream);
}

CTavoProfileWriter::CTavoProfileWriter(const std::string& path) {
  Open(path);
}

CTavoProfileWriter::CTavoProfileWriter(TavoFile& file) {
  Open(file);
}

CTavoProfileWriter::~CTavoProfileWriter() {
  Close();
}

int CTavoProfileWriter::Open(std::FILE* stream) {
  stream_ = stream;
  ownsStream_ = 0;
  return IsOpen();
}

int CTavoProfileWriter::Open(const std::string& path) {
  Open(static_cast<std::FILE*>(nullptr));
  try {
    TavoFile file(path, TavoFile::Access::kWrite, TavoFile::Creation::kCreateTruncate);
    return Open(file);
  } catch (const std::system_error&) {
    return 0;
  }
}

int CTavoProfileWriter::Open(TavoFile& file) {
  ownsStream_ = 0;
  try {
    file.SetLength(0);
    file.Seek(0, TavoFile::Origin::kBegin);
  } catch (const std::system_error&) {
    return 0;
  }
  // The stream has a descriptor of its own, so it is the writer's to close.
  Open(file.OpenStream("wt"));
  ownsStream_ = IsOpen();
  return IsOpen();
}

int CTavoProfileWriter::Close() {
  if (stream_ == nullptr) return 1;
  int succeeded = std::ferror(stream_) == 0 && std::fflush(stream_) == 0;
  if (ownsStream_) succeeded = std::fclose(stream_) == 0 && succeeded;
  Open(static_cast<std::FILE*>(nullptr));
  return succeeded;
}

int CTavoProfileWriter::WriteSectionTitle(const std::string& title) {
  return Format("\n[%s]\n", title.c_str());
}

int CTavoProfileWriter::WriteInt(const std::string& key, std::int32_t value) {
  return Format("%s=%d\n", key.c_str(), static_cast<int>(value));
}

int CTavoProfileWriter::WriteString(const std::string& key, const std::string& value) {
  return Format("%s=%s\n", key.c_str(), value.c_str());
}

int CTavoProfileWriter::WriteNewline() {
  return Format("\n");
}

int CTavoProfileWriter::Format(const char* format, ...) {
  std::va_list arguments;
  va_start(arguments, format);
  const int written = std::vfprintf(stream_, format, arguments);
  va_end(arguments);
  return written >= 0;
}

}  // namespace vemra
