#include "Support/platform/DdeStrings.h"

#include "Support/foundation/Ascii.h"

namespace vemra::platform {
namespace {

std::string Fold(std::string text) {
  for (char& c : text) c = static_cast<char>(ToAsciiLower(static_cast<unsigned char>(c)));
  return text;
}

}  // namespace

DdeStrings::Hold::Hold(DdeStrings* strings, DDEString string) : strings_(strings) {
  if (string == DDEString::kNone) return;
  const auto name = strings->names_.find(string);
  if (name == strings->names_.end()) return;
  ++name->second.holders;
  string_ = string;
}

DdeStrings::Hold::~Hold() {
  if (string_ == DDEString::kNone) return;
  const auto name = strings_->names_.find(string_);
  if (--name->second.holders > 0) return;
  strings_->byFoldedText_.erase(Fold(name->second.text));
  strings_->names_.erase(name);
}

DdeStrings::Hold DdeStrings::Create(const std::string& text) {
  if (text.empty() || text.size() > kMaxLength) return {};
  const auto [known, added] = byFoldedText_.try_emplace(Fold(text));
  if (added) {
    known->second = DDEString{++last_};
    names_[known->second].text = text;
  }
  return {this, known->second};
}

std::size_t DdeStrings::CountHolders() const {
  std::size_t count = 0;
  for (const auto& [string, name] : names_) count += static_cast<std::size_t>(name.holders);
  return count;
}

const std::string* DdeStrings::Find(DDEString string) const {
  const auto name = names_.find(string);
  return name == names_.end() ? nullptr : &name->second.text;
}

}  // namespace vemra::platform
