#pragma once

#include <functional>

#include "Support/text/IndexingWrapper.h"

namespace vemra::engine {

class IndexWriter;

// The callback table through which the library's indexing sink hands a text to an IndexWriter. The
// table holds plain functions, so one object lives at a time in a process.
//
// Of what the sink sends, this engine keeps the words with their positions, the expressions, the
// titles and the sort keys, and where sentences and paragraphs begin. It keeps neither stored text
// (documents are read again to be shown) nor index entries.
class EngineCallbacks {
 public:
  using MessageFunction = std::function<void(const char* text, unsigned long level)>;

  // writer is a loan. onMessage receives the sink's messages and must not throw.
  EngineCallbacks(IndexWriter& writer, MessageFunction onMessage);
  ~EngineCallbacks();
  EngineCallbacks(const EngineCallbacks&) = delete;
  EngineCallbacks& operator=(const EngineCallbacks&) = delete;

  TavoIndexingWrapper& GetTable() { return table_; }

 private:
  TavoIndexingWrapper table_;
};

}  // namespace vemra::engine
