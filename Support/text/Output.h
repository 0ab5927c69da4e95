#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Support/Export.h"
#include "Support/foundation/File.h"
#include "Support/text/BufferedOutput.h"

namespace vemra {

// The output of a parser: prints to its buffer or to a file, and can gather the text of a field in
// a buffer of that field's own, to be inserted elsewhere later.
class SUPPORT_API TavoOutput : public TavoBufferedOutput {
 public:
  TavoOutput();
  ~TavoOutput() override;  // closes the file

  // Also resets the buffers of the fields, and the page count to 1. The file and the current field
  // stay.
  void ResetOutput() override;
  // 0, with the file still attached, when something still waits; else closes the file.
  int Close() override;
  // With a file attached, 0 when it cannot be written.
  int PrintString(const std::string& s) override;

 protected:
  virtual std::unique_ptr<TavoBufferedOutput> CreateBuffer();

 public:
  // Prints to a file from now on. With create, the file is created or emptied; without, an existing
  // file is overwritten from its start, keeping its length. 0 when it cannot be opened: the output
  // then prints to its buffer.
  int SetOutputToFile(const std::string& path, int create);
  // Prints to an open file, deleted by this output when owns is set. Returns 1.
  int SetOutputToFile(TavoFile* file, int owns);
  int SetOutputToBuffer();  // returns 1
  // Detaches the file; an owned one is closed and deleted. An error of closing is lost.
  void CloseCurrentFile();
  const std::string& GetFileName() const { return fileName_; }  // empty unless opened by path

  // WriteString and WriteSection to the current target: the output itself or a field's buffer.
  int Write(const std::string& s) { return target_->WriteString(s); }
  int Write(TavoSection* section, int owned) { return target_->WriteSection(section, owned); }

  // Fields. Numbers are 0 or more; a field has a buffer once it has been current.
  void SetCurrentField(int field);                 // -1: the output itself
  TavoBufferedOutput* GetBuffer(int field) const;  // null when it has none
  // What the buffer has printed, after printing what can be; null when it has none. A loan until
  // the next operation.
  const std::string* GetFieldContents(int field);
  // Inserts the field's buffer into the current target (TavoBufferedOutput::InsertTo), unless it is
  // the target itself.
  void WriteField(int field, int move);
  int IsFieldEmpty(int field) const;

  // A section has been unlocked: prints what can be printed, also in the buffers of the fields. The
  // section may be deleted by this.
  void SectionFreed();

  // Pages of the document as its format counts them.
  int GetPageCount() const { return pageCount_; }
  void SetPageCount(int pages) { pageCount_ = pages; }

 private:
  std::string fileName_;
  TavoFile* file_ = nullptr;
  int ownsFile_ = 0;
  TavoBufferedOutput* target_ = this;
  std::vector<std::unique_ptr<TavoBufferedOutput>> fieldBuffers_;  // by field number
  int pageCount_ = 1;
};

}  // namespace vemra
