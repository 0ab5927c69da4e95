#pragma once

#include <string>
#include <string_view>
#include <utility>

namespace vemra {

// The text of the run that is being collected, with white space as a page shows it. It holds no
// control characters but those that are white space.
class RunText {
 public:
  // Every stretch of white space becomes one blank. At the start and the end of the run none is
  // kept, but remembered: it stands between this run and the next.
  void AppendCollapsed(std::string_view text);
  // White space is kept; control characters become blanks.
  void AppendVerbatim(std::string_view text);
  void NoteSpace() { space_ = true; }
  // Whether white space waits for the next text; it does no longer.
  bool HasSpace() const { return space_; }
  bool TakeSpace() { return std::exchange(space_, false); }

  const std::string& Get() const { return text_; }
  bool IsEmpty() const { return text_.empty(); }
  // Whether white space stood before the run.
  bool HasSpaceBefore() const { return spaceBefore_; }

  // The next run begins: drops the text, or the first part of a long one.
  void Restart();
  void DropFirst(std::size_t bytes);
  void DropSpace() { space_ = false; }
  void Clear();

 private:
  std::string text_;
  bool space_ = false;  // white space after the text
  bool spaceBefore_ = false;
};

}  // namespace vemra
