#include "programs/engine/Expression.h"

#include <algorithm>

#include "programs/engine/IndexDatabase.h"
#include "programs/engine/WordStream.h"

namespace vemra::engine {
namespace {

// Each function gives an empty text when no text can match.
class ExpressionWriter {
 public:
  explicit ExpressionWriter(const CTavoFieldList& columns) : columns_(columns) {}

  std::string Write(const QueryNode& node) const {
    switch (node.kind) {
      case QueryNode::Kind::kPhrase:
        return WritePhrase(node);
      case QueryNode::Kind::kOr:
        return WriteOr(node.children);
      default:
        return WriteAnd(node);
    }
  }

 private:
  std::string WritePhrase(const QueryNode& phrase) const {
    WordStream stream;
    for (const QueryTerm& term : phrase.terms) {
      if (term.alternatives.empty()) return {};
      stream.Add(term.alternatives.front().c_str());
      for (std::size_t i = 1; i < term.alternatives.size(); ++i) {
        stream.AddAtSamePosition(term.alternatives[i].c_str());
      }
    }
    const CTavoFieldList columns = phrase.columns & columns_;
    if (columns.IsEmpty() != 0) return {};
    return (columns == columns_ ? std::string() : ColumnFilter(columns)) + Quote(stream.Get());
  }

  static std::string ColumnFilter(const CTavoFieldList& columns) {
    std::string filter = "{";
    POSITION position = columns.GetStartPosition();
    while (position != 0) filter += ColumnName(columns.GetNextFieldno(position)) + ' ';
    return filter + "} : ";
  }

  static std::string Quote(std::string_view stream) {
    std::string quoted = "\"";
    for (const char c : stream) quoted.append(c == '"' ? 2 : 1, c);
    return quoted + '"';
  }

  // NOT binds most tightly there, so it goes with the first operand: fewer parentheses to nest.
  std::string WriteAnd(const QueryNode& node) const {
    std::string text;
    const std::string excluded = WriteExcluded(node.excluded);
    for (const QueryNode& child : node.children) {
      const std::string operand = WriteOperand(child);
      if (operand.empty()) return {};
      if (!text.empty()) text += " AND ";
      text += operand;
      if (&child == &node.children.front() && !excluded.empty()) text += " NOT (" + excluded + ')';
    }
    return text;
  }

  std::string WriteExcluded(const std::vector<QueryNode>& nodes) const {
    std::vector<QueryNode> decidable;
    std::copy_if(nodes.begin(), nodes.end(), std::back_inserter(decidable),
                 [](const QueryNode& node) { return !NeedsPlaces(node); });
    return WriteOr(decidable);
  }

  std::string WriteOr(const std::vector<QueryNode>& nodes) const {
    std::string text;
    for (const QueryNode& node : nodes) {
      const std::string operand = Write(node);
      if (operand.empty()) continue;
      if (!text.empty()) text += " OR ";
      text += operand;
    }
    return text;
  }

  std::string WriteOperand(const QueryNode& node) const {
    const std::string text = Write(node);
    return node.kind == QueryNode::Kind::kPhrase || text.empty() ? text : '(' + text + ')';
  }

  const CTavoFieldList& columns_;
};

}  // namespace

std::string WriteExpression(const QueryNode& query, const CTavoFieldList& columns) {
  return ExpressionWriter(columns).Write(query);
}

bool NeedsPlaces(const QueryNode& query) {
  return query.kind == QueryNode::Kind::kNear ||
         std::any_of(query.children.begin(), query.children.end(), NeedsPlaces) ||
         std::any_of(query.excluded.begin(), query.excluded.end(), NeedsPlaces);
}

}  // namespace vemra::engine
