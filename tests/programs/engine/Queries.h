#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "Support/definition/FieldList.h"
#include "programs/engine/Query.h"

// Queries that are made without their text.
namespace vemra::test {

inline CTavoFieldList ListOf(std::initializer_list<int> fields) {
  CTavoFieldList list;
  for (const int field : fields) list.Set(field);
  return list;
}

// Words with * or ? are patterns, which must be expanded.
inline engine::QueryNode Phrase(const std::vector<std::string>& words,
                                const CTavoFieldList& columns) {
  engine::QueryNode node;
  node.columns = columns;
  for (const std::string& word : words) {
    const bool isPattern = word.find_first_of("*?") != std::string::npos;
    node.terms.push_back({word, isPattern, {}});
    if (!isPattern) node.terms.back().alternatives.push_back(word);
  }
  return node;
}

inline engine::QueryNode Group(engine::QueryNode::Kind kind,
                               std::vector<engine::QueryNode> children) {
  engine::QueryNode node;
  node.kind = kind;
  node.children = std::move(children);
  return node;
}

}  // namespace vemra::test
