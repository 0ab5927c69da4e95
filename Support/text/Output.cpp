#include "Support/text/Output.h"

#include <system_error>

namespace vemra {

TavoOutput::TavoOutput() = default;

TavoOutput::~TavoOutput() {
  CloseCurrentFile();
}

void TavoOutput::ResetOutput() {
  TavoBufferedOutput::ResetOutput();
  for (const auto& buffer : fieldBuffers_) {
    if (buffer != nullptr) buffer->ResetOutput();
  }
  pageCount_ = 1;
}

int TavoOutput::Close() {
  if (!TavoBufferedOutput::Close()) return 0;
  CloseCurrentFile();
  return 1;
}

int TavoOutput::PrintString(const std::string& s) {
  if (file_ == nullptr) return TavoBufferedOutput::PrintString(s);
  try {
    file_->Write(s.data(), s.size());
    return 1;
  } catch (const std::system_error&) {
    return 0;
  }
}

std::unique_ptr<TavoBufferedOutput> TavoOutput::CreateBuffer() {
  return std::make_unique<TavoBufferedOutput>();
}

int TavoOutput::SetOutputToFile(const std::string& path, int create) {
  CloseCurrentFile();
  try {
    auto file = std::make_unique<TavoFile>(
        path, TavoFile::Access::kWrite,
        create ? TavoFile::Creation::kCreateTruncate : TavoFile::Creation::kOpenExisting);
    fileName_ = path;
    file_ = file.release();
    ownsFile_ = 1;
    return 1;
  } catch (const std::system_error&) {
    return 0;
  }
}

int TavoOutput::SetOutputToFile(TavoFile* file, int owns) {
  CloseCurrentFile();
  file_ = file;
  ownsFile_ = owns;
  return 1;
}

int TavoOutput::SetOutputToBuffer() {
  CloseCurrentFile();
  return 1;
}

void TavoOutput::CloseCurrentFile() {
  if (ownsFile_) delete file_;
  file_ = nullptr;
  ownsFile_ = 0;
  fileName_.clear();
}

void TavoOutput::SetCurrentField(int field) {
  if (field < 0) {
    target_ = this;
    return;
  }
  const auto index = static_cast<std::size_t>(field);
  if (index >= fieldBuffers_.size()) fieldBuffers_.resize(index + 1);
  if (fieldBuffers_[index] == nullptr) fieldBuffers_[index] = CreateBuffer();
  target_ = fieldBuffers_[index].get();
}

TavoBufferedOutput* TavoOutput::GetBuffer(int field) const {
  const auto index = static_cast<std::size_t>(field);
  return field >= 0 && index < fieldBuffers_.size() ? fieldBuffers_[index].get() : nullptr;
}

const std::string* TavoOutput::GetFieldContents(int field) {
  TavoBufferedOutput* const buffer = GetBuffer(field);
  if (buffer == nullptr) return nullptr;
  buffer->TryPrintAll();
  return &buffer->GetOutputBuffer();
}

void TavoOutput::WriteField(int field, int move) {
  TavoBufferedOutput* const buffer = GetBuffer(field);
  if (buffer != nullptr && buffer != target_) buffer->InsertTo(target_, move);
}

int TavoOutput::IsFieldEmpty(int field) const {
  const TavoBufferedOutput* const buffer = GetBuffer(field);
  return buffer == nullptr || buffer->IsEmpty() ? 1 : 0;
}

void TavoOutput::SectionFreed() {
  TryPrintAll();
  for (const auto& buffer : fieldBuffers_) {
    if (buffer != nullptr) buffer->TryPrintAll();
  }
}

}  // namespace vemra
