#include "programs/engine/Query.h"

#include <algorithm>

#include "Support/definition/FileINI.h"
#include "Support/text/LangPack.h"

namespace vemra::engine {
namespace {

// The fields whose text is also indexed into field, itself among them.
CTavoFieldList ColumnsOf(const CTavoFileINI& definitions, int field) {
  CTavoFieldList columns;
  POSITION position = definitions.GetStartPosition();
  while (position != 0) {
    const int source = definitions.GetNextField(position)->GetFieldno();
    CTavoFieldList list;
    list.Set(source);
    if (definitions.ExpandFieldList(list).IsSet(field) != 0) columns.Set(source);
  }
  return columns;
}

CTavoFieldList ExpressionsOf(const CTavoFileINI& definitions, const CTavoFieldList& columns) {
  CTavoFieldList expressions;
  POSITION position = columns.GetStartPosition();
  while (position != 0) {
    const int fieldno = columns.GetNextFieldno(position);
    if ((definitions.GetFieldRule(fieldno) & fieldrule::kExpressions) != 0)
      expressions.Set(fieldno);
  }
  return expressions;
}

std::string FormatColumns(const CTavoFieldList& columns) {
  std::string text;
  POSITION position = columns.GetStartPosition();
  while (position != 0) {
    if (!text.empty()) text += ',';
    text += std::to_string(columns.GetNextFieldno(position));
  }
  return text;
}

std::string FormatPhrase(const QueryNode& phrase, const CTavoFieldList& general) {
  std::string text;
  for (const QueryTerm& term : phrase.terms) {
    if (!text.empty()) text += ' ';
    text += term.text;
  }
  if (phrase.terms.size() > 1) text = '"' + text + '"';
  return phrase.columns == general ? text : FormatColumns(phrase.columns) + ':' + text;
}

std::string FormatRelation(const QueryRelation& relation) {
  if (relation.kind == QueryRelation::Kind::kWords) return '/' + std::to_string(relation.words);
  return relation.kind == QueryRelation::Kind::kSentence ? "/s" : "/p";
}

std::string FormatNear(const QueryNode& node, const CTavoFieldList& general) {
  std::string text = "NEAR(" + FormatQuery(node.children.front(), general);
  for (std::size_t i = 0; i < node.relations.size(); ++i) {
    text += ' ' + FormatRelation(node.relations[i]) + ' ';
    text += FormatQuery(node.children[i + 1], general);
  }
  return text + ')';
}

std::string FormatList(const char* name, const std::vector<QueryNode>& nodes,
                       const CTavoFieldList& general) {
  std::string text;
  for (const QueryNode& node : nodes) {
    if (!text.empty()) text += ' ';
    text += FormatQuery(node, general);
  }
  return std::string(name) + '(' + text;
}

}  // namespace

QueryLanguage MakeQueryLanguage(const CTavoFileINI& definitions, const TavoLangPack* pack) {
  QueryLanguage language;
  language.pack = pack;
  const CTavoField* general = definitions.GetSpecialField(SpecialField::kGeneral);
  POSITION position = definitions.GetStartPosition();
  while (position != 0) {
    const CTavoField* field = definitions.GetNextField(position);
    const CTavoFieldList columns = ColumnsOf(definitions, field->GetFieldno());
    language.fields.push_back({field->GetName(), columns, ExpressionsOf(definitions, columns)});
    if (field == general) language.general = language.fields.back().columns;
  }
  if (general == nullptr) language.general = definitions.GetDefinedFields();
  return language;
}

const QueryLanguage::Field* QueryLanguage::FindField(std::string_view name) const {
  const auto isExact = [&](const Field& field) { return field.name == name; };
  const auto isAnyCase = [&](const Field& field) {
    return pack->CompareNoCase(field.name, name) != 0;
  };
  auto found = std::find_if(fields.begin(), fields.end(), isExact);
  if (found == fields.end()) found = std::find_if(fields.begin(), fields.end(), isAnyCase);
  return found == fields.end() ? nullptr : &*found;
}

std::string FormatQuery(const QueryNode& node, const CTavoFieldList& general) {
  if (node.kind == QueryNode::Kind::kPhrase) return FormatPhrase(node, general);
  if (node.kind == QueryNode::Kind::kNear) return FormatNear(node, general);
  std::string text =
      FormatList(node.kind == QueryNode::Kind::kAnd ? "AND" : "OR", node.children, general);
  if (!node.excluded.empty()) text += ' ' + FormatList("NOT", node.excluded, general) + ')';
  return text + ')';
}

}  // namespace vemra::engine
