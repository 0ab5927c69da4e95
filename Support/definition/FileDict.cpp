#include "Support/definition/FileDict.h"

#include <algorithm>
#include <cstring>
#include <system_error>

namespace vemra {
namespace {

// Places within a record.
constexpr std::size_t kTypeAt = 0;
constexpr std::size_t kNumInTextAt = 1;
constexpr std::size_t kNameAt = 3;

// Little-endian, 16 bits, signed.
int ReadNumInText(const char* bytes) {
  const auto low = static_cast<unsigned char>(bytes[0]);
  const auto high = static_cast<unsigned char>(bytes[1]);
  return static_cast<std::int16_t>(low | high << 8);
}

}  // namespace

int CTavoFileDict::Open(const std::string& path) {
  Close();
  path_ = path;
  return 1;
}

void CTavoFileDict::Close() {
  file_ = TavoFile();
  path_.clear();
}

bool CTavoFileDict::OpenFor(bool reading) {
  if (file_.IsOpen()) return reading == reading_;
  if (path_.empty()) return false;
  if (reading) {
    file_.Open(path_, TavoFile::Access::kRead, TavoFile::Creation::kOpenExisting);
  } else {
    file_.Open(path_, TavoFile::Access::kWrite, TavoFile::Creation::kCreateTruncate);
  }
  reading_ = reading;
  return true;
}

int CTavoFileDict::PutFileName(int fileType, int numInText, const std::string& name) {
  try {
    if (!OpenFor(false)) return 0;
    record_.fill('\0');
    record_[kTypeAt] = static_cast<char>(fileType);
    record_[kNumInTextAt] = static_cast<char>(numInText);
    record_[kNumInTextAt + 1] = static_cast<char>(numInText >> 8);
    std::copy_n(name.data(), std::min(name.size(), kNameBytes), record_.data() + kNameAt);
    file_.Write(record_.data(), record_.size());
    return 1;
  } catch (const std::system_error&) {
    return 0;
  }
}

bool CTavoFileDict::ReadRecord(std::int32_t textNumber, std::size_t offset, std::size_t size) {
  if (textNumber < 1) return false;
  try {
    if (!OpenFor(true)) return false;
    const std::int64_t record = (std::int64_t{textNumber} - 1) * std::int64_t{kRecordBytes};
    file_.Seek(record + static_cast<std::int64_t>(offset), TavoFile::Origin::kBegin);
    return file_.Read(record_.data() + offset, size) == size;
  } catch (const std::system_error&) {
    return false;
  }
}

int CTavoFileDict::GetFileName(std::int32_t textNumber, std::string& name, int* numInText) {
  const std::size_t first = numInText != nullptr ? kNumInTextAt : kNameAt;
  if (!ReadRecord(textNumber, first, kRecordBytes - first)) return 0;
  const char* stored = record_.data() + kNameAt;
  name.assign(stored, std::find(stored, stored + kNameBytes, '\0'));
  if (numInText != nullptr) *numInText = ReadNumInText(record_.data() + kNumInTextAt);
  return 1;
}

int CTavoFileDict::GetFileType(std::int32_t textNumber) {
  return ReadRecord(textNumber, kTypeAt, 1) ? static_cast<signed char>(record_[kTypeAt]) : -1;
}

int CTavoFileDict::GetNumInText(std::int32_t textNumber) {
  return ReadRecord(textNumber, kNumInTextAt, 2) ? ReadNumInText(record_.data() + kNumInTextAt)
                                                 : -1;
}

}  // namespace vemra
