#pragma once

#include <cstddef>
#include <deque>
#include <memory>
#include <string>

#include "Support/Export.h"

namespace vemra {

class TavoSection;

// An output that keeps strict document order although sections may not be ready to print: a locked
// section, and everything written behind it, waits in a queue until the section is unlocked.
// Used by one thread at a time; a thread that unlocks a section flushes the output on that thread.
class SUPPORT_API TavoBufferedOutput {
 public:
  // Something that waits to be printed.
  struct InternalItem {
    enum Kind { kString = 0, kSection = 1, kAnchor = 2 };

    Kind kind = kString;
    std::string text{};                    // of a string
    TavoSection* section = nullptr;        // of a section
    std::shared_ptr<TavoSection> owner{};  // set when the section is deleted with its last item
  };

  TavoBufferedOutput();
  TavoBufferedOutput(const TavoBufferedOutput&) = delete;
  TavoBufferedOutput& operator=(const TavoBufferedOutput&) = delete;
  // Deletes what is still queued, locked or not.
  virtual ~TavoBufferedOutput();

  // Nothing printed to the buffer and nothing queued.
  virtual int IsEmpty() const;
  // Empties the buffer, deletes every queued item, locked or not, and sets the highlight count to
  // 0.
  virtual void ResetOutput();
  // Prints what can be printed; 0 when something still waits.
  virtual int Close();
  // Print at once, past the queue; 0 when it cannot be printed yet. The section stays the caller's.
  // A section without contents counts as printed; a locked one cannot be. Any other is given the
  // highlight count, marks itself and gives the count back, and its marked contents are printed, or
  // its contents when marking has made none.
  virtual int PrintString(const std::string& s);
  virtual int PrintSection(TavoSection* section);

 protected:
  // Prints one item; 0 when it has to wait. This class cannot print an anchor.
  virtual int TryPrintThing(InternalItem* item);

 public:
  // Print at once when nothing is queued, else queue. Both return 1; an empty string does nothing.
  int WriteString(const std::string& s);
  // With owned, the section is deleted once it is printed.
  int WriteSection(TavoSection* section, int owned);
  // Prints from the head of the queue up to the first item that has to wait. 1 when none is left.
  int TryPrintAll();
  // 1 when the anchor has been queued behind what waits; 0 when the caller is to write it at once.
  int InsertDelayedAnchor();
  // Hands buffer and queue over to target, which adds the highlight count to its own and prints
  // what it can. With move they leave this output, and its highlight count becomes 0. Without, they
  // stay here too; a section is then owned by both, and deleted by the last of them.
  void InsertTo(TavoBufferedOutput* target, int move);
  // Appends bytes to the buffer. 0 only when memory is exhausted; the buffer is then as it was.
  int WriteToBuff(const char* bytes, std::size_t n);

  // What has been printed so far and not gone elsewhere. A loan until the next operation.
  const std::string& GetOutputBuffer() const { return buffer_; }
  // Highlights printed so far, which is the number that the next one gets, counted from 0.
  int GetHighlightCount() const { return highlightCount_; }

 protected:
  // Set by an output that numbers its anchors only when it prints them: then every anchor is
  // queued.
  void SetAnchorFlag(int flag) { anchorFlag_ = flag; }

 private:
  std::deque<InternalItem> queue_;
  std::string buffer_;
  int anchorFlag_ = 0;
  int highlightCount_ = 0;
};

}  // namespace vemra
