#include <string>

#include "Support/text/LangPack.h"
#include "fuzz/FuzzInput.h"
#include "programs/engine/Query.h"

namespace vemra::fuzz {
namespace {

using engine::QueryNode;

engine::QueryLanguage Language() {
  engine::QueryLanguage language;
  language.pack = TavoLangPack::GetDefault();
  language.general.Set(0);
  language.general.Set(1);
  CTavoFieldList title;
  title.Set(1);
  language.fields = {{"General", language.general}, {"Title", title}, {"a", title}};
  return language;
}

int CountTerms(const QueryNode& node) {
  auto terms = static_cast<int>(node.terms.size());
  Check((node.kind == QueryNode::Kind::kPhrase) == (terms > 0), "phrases have words");
  Check(node.kind == QueryNode::Kind::kPhrase || !node.children.empty(),
        "an operator has operands");
  for (const QueryNode& child : node.children) terms += CountTerms(child);
  for (const QueryNode& child : node.excluded) terms += CountTerms(child);
  return terms;
}

void Run(std::string_view bytes) {
  static const engine::QueryLanguage language = Language();
  const std::string text(bytes);
  try {
    const QueryNode query = engine::ParseQuery(text, language);
    Check(CountTerms(query) <= engine::kMaxQueryTerms, "not too many words");
    // What is written in one more pair of parentheses means the same.
    const std::string tree = engine::FormatQuery(query, language.general);
    const bool isPlain = text.find_first_of("();\"") == std::string::npos &&
                         text.size() + 2 <= engine::kMaxQueryBytes;
    if (isPlain) {
      const QueryNode again = engine::ParseQuery('(' + text + ')', language);
      Check(engine::FormatQuery(again, language.general) == tree, "parentheses change nothing");
    }
  } catch (const engine::QueryError& error) {
    Check(error.GetOffset() <= text.size(), "the place of an error is in the query");
  }
}

}  // namespace
}  // namespace vemra::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  vemra::fuzz::Run(vemra::fuzz::ExactCopy(data, size).View());
  return 0;
}
