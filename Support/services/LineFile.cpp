#include "Support/services/LineFile.h"

#include <system_error>

#include "Support/foundation/Errors.h"
#include "Support/platform/Errors.h"

namespace vemra {
namespace {

// Takes a line's beginning off the file's end again.
void RemoveFromEnd(TavoFile& file, std::size_t size) {
  try {
    file.SetLength(file.GetLength() - static_cast<std::int64_t>(size));
  } catch (const std::system_error&) {
    return;  // a device, say: nothing to take back
  }
}

}  // namespace

LineFile::LineFile(const std::string& path)
    : file_(path, TavoFile::Access::kWrite, TavoFile::Creation::kOpenOrCreate,
            TavoFile::Share::kDenyWrite) {
  // A stream, because it knows the system's line ends; it also stays at the end of a file that
  // somebody shortens.
  stream_ = file_.OpenStream("at");
  if (stream_ == nullptr) {
    const auto code = static_cast<int>(platform::GetLastErrorCode());
    throw std::system_error(code, SystemErrorCategory(), path);
  }
  std::setvbuf(stream_, nullptr, _IONBF, 0);
}

LineFile::~LineFile() {
  std::fclose(stream_);
}

void LineFile::WriteLine(std::initializer_list<std::string_view> parts) {
  const std::lock_guard lock(mutex_);
  UpdateStamp();
  line_ = stamp_;
  for (const std::string_view part : parts) line_ += part;
  line_ += '\n';
  const std::size_t written = std::fwrite(line_.data(), 1, line_.size(), stream_);
  if (written > 0 && written < line_.size()) RemoveFromEnd(file_, written);
}

// Taking a moment apart in the local time zone costs more than the rest of a line.
void LineFile::UpdateStamp() {
  const DateTime now = DateTime::Now();
  if (now == stamped_ && !stamp_.empty()) return;
  const LocalTime local = now.GetLocal();
  char text[80];
  std::snprintf(text, sizeof text, "%02d/%02d/%02d %02d:%02d:%02d ", local.month, local.day,
                local.year % 100, local.hour, local.minute, local.second);
  stamp_ = text;
  stamped_ = now;
}

}  // namespace vemra
