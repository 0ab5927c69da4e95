#pragma once

#include <string>
#include <string_view>
#include <utility>

#include "Support/Export.h"

namespace vemra {

class INIWorker;

// A pattern over element paths with two flags. An element path is the run of open elements of a
// marked-up document, each beginning with '<', such as "<html><body><p>".
//
// In the pattern '*' stands for any run of bytes, possibly empty; every other byte matches itself.
// Kept: the match does not backtrack. The text after a '*' is taken at its first occurrence, so
// "*ab" does not match "xabab". An empty pattern matches only an empty path.
class SUPPORT_API CTavoTag {
 public:
  CTavoTag() = default;
  explicit CTavoTag(std::string path, int ignoreParentFields = 0, int addToTagField = 0)
      : path_(std::move(path)),
        ignoreParentFields_(ignoreParentFields),
        addToTagField_(addToTagField) {}
  CTavoTag(const CTavoTag&) = default;
  CTavoTag(CTavoTag&&) = default;
  CTavoTag& operator=(const CTavoTag&) = default;
  CTavoTag& operator=(CTavoTag&&) = default;
  virtual ~CTavoTag();

  // Write and read the keys of item number item, counted from 1, in the worker's current section.
  // Missing keys give the defaults. Both return 1, Save 0 when a write fails.
  virtual int Save(INIWorker& writer, int item) const;
  virtual int Load(INIWorker& reader, int item);

  const std::string& GetTagPath() const { return path_; }
  void SetTagPath(const std::string& path) { path_ = path; }
  int GetIgnoreParentFields() const { return ignoreParentFields_; }
  void SetIgnoreParentFields(int flag) { ignoreParentFields_ = flag; }
  int GetAddToTagField() const { return addToTagField_; }
  void SetAddToTagField(int flag) { addToTagField_ = flag; }

  // 1 when the pattern matches the path, else 0.
  int CheckPath(std::string_view path) const;
  // 1 when the pattern matches the path and, with "ignore parent fields", does not already match
  // the parent's path. Kept: the parent's path is cut one byte short, so that its closing '>' does
  // not count.
  int IsTagOn(std::string_view path) const;

 private:
  std::string path_;
  int ignoreParentFields_ = 0;
  int addToTagField_ = 0;
};

}  // namespace vemra
