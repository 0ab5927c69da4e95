#pragma once

#include <string>
#include <string_view>

#include "Support/text/LangPack.h"

namespace vemra {

// The contents of a section, folded for the index all at once: word by word takes twice the time.
class FoldedText {
 public:
  // contents is a loan for as long as words of it are asked for. The memory is used again for the
  // next contents, unless it is large.
  void Fold(const std::string& contents, const TavoLangPack& pack) {
    if (folded_.capacity() > kMostKept) std::string().swap(folded_);
    folded_.resize(contents.size() + 1);
    pack.ToIndex(contents, folded_.data());
    contents_ = contents.data();
  }

  // Calls use with the folded form of word, a piece of the contents, ended by a NUL. It is valid
  // for the call.
  template <typename Use>
  void WithWord(std::string_view word, const Use& use) {
    if (word.empty()) return use("");
    char* const begin = folded_.data() + (word.data() - contents_);
    char& behind = begin[word.size()];
    const char kept = behind;
    behind = '\0';
    use(static_cast<const char*>(begin));
    behind = kept;
  }

 private:
  static constexpr std::size_t kMostKept = std::size_t{1} << 20;  // bytes

  std::string folded_;  // with room for the NUL of the last word
  const char* contents_ = nullptr;
};

}  // namespace vemra
