#include "Support/foundation/File.h"

#include <system_error>

#include "Support/foundation/Errors.h"
#include "Support/platform/Errors.h"
#include "Support/platform/FileHandle.h"

namespace vemra {

struct TavoFile::State {
  std::string path;
  platform::FileHandle handle;

  // Raises the last error unless the operation succeeded.
  void Require(bool succeeded) const {
    if (succeeded) return;
    const auto code = static_cast<int>(platform::GetLastErrorCode());  // before any other call
    const std::error_code reason(code, SystemErrorCategory());
    throw std::system_error(reason, path);
  }
};

TavoFile::TavoFile() : state_(std::make_unique<State>()) {}

TavoFile::TavoFile(const std::string& path, Access access, Creation creation, Share share)
    : TavoFile() {
  Open(path, access, creation, share);
}

TavoFile::~TavoFile() = default;

// What was moved from is closed, and as good as new.
TavoFile::TavoFile(TavoFile&& other) noexcept : TavoFile() {
  state_.swap(other.state_);
}

TavoFile& TavoFile::operator=(TavoFile&& other) noexcept {
  if (this != &other) {
    Close();
    state_.swap(other.state_);
  }
  return *this;
}

void TavoFile::Open(const std::string& path, Access access, Creation creation, Share share) {
  Close();
  state_->path = path;
  state_->Require(state_->handle.Open(path, access, creation, share));
}

void TavoFile::Close() {
  state_->handle.Close();
  state_->path.clear();
}

bool TavoFile::IsOpen() const {
  return state_->handle.IsOpen();
}

const std::string& TavoFile::GetPath() const {
  return state_->path;
}

std::size_t TavoFile::Read(void* buffer, std::size_t size) {
  std::size_t read = 0;
  state_->Require(state_->handle.Read(buffer, size, &read));
  return read;
}

void TavoFile::Write(const void* data, std::size_t size) {
  state_->Require(state_->handle.Write(data, size));
}

std::int64_t TavoFile::Seek(std::int64_t offset, Origin origin) {
  std::int64_t position = 0;
  state_->Require(state_->handle.Seek(offset, origin, &position));
  return position;
}

std::int64_t TavoFile::GetLength() {
  std::int64_t length = 0;
  state_->Require(state_->handle.GetLength(&length));
  return length;
}

void TavoFile::SetLength(std::int64_t length) {
  state_->Require(state_->handle.SetLength(length));
}

void TavoFile::Sync() {
  state_->Require(state_->handle.Sync());
}

std::FILE* TavoFile::OpenStream(const char* mode) {
  return state_->handle.OpenStream(mode);
}

}  // namespace vemra
