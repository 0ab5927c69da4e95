#include "programs/commands/QuerySession.h"

#include <algorithm>

#include "Support/foundation/VemraConfig.h"
#include "programs/commands/CommandError.h"
#include "programs/engine/Expansion.h"
#include "programs/engine/Query.h"

namespace vemra::commands {
namespace {

// A word in a title says more of a text than one in its body.
constexpr double kTitleWeight = 8.0;
// How much of a long query is shown before and after the place of an error.
constexpr std::size_t kContextBytes = 60;

// One byte of the code page is one character, so the caret stands under the right one.
std::string DescribeError(const std::string& query, const engine::QueryError& error,
                          const CodePage& codePage) {
  const std::size_t begin =
      error.GetOffset() > kContextBytes ? error.GetOffset() - kContextBytes : 0;
  std::string context = query.substr(begin, 2 * kContextBytes);
  std::replace_if(
      context.begin(), context.end(), [](char c) { return static_cast<unsigned char>(c) < 32; },
      ' ');
  return std::string("in the query: ") + codePage.ToUtf8(error.what()) + "\n  " +
         codePage.ToUtf8(context) + "\n  " + std::string(error.GetOffset() - begin, ' ') + '^';
}

std::string DescribeCut(const std::vector<std::string>& patterns, std::uint32_t limit,
                        const CodePage& codePage) {
  std::string text;
  for (const std::string& pattern : patterns) {
    text += codePage.ToUtf8(pattern) + " stands for more than " + std::to_string(limit) +
            " words; only the first " + std::to_string(limit) + " were searched\n";
  }
  return text;
}

engine::FieldWeights MakeWeights(const CTavoFileINI& fields) {
  engine::FieldWeights weights;
  for (int i = 0; i < fields.GetNumOfTitleItems(); ++i) {
    const int fieldno = fields.GetTitleItem(i)->GetFieldno();
    if (CTavoFileINI::IsValidFieldno(fieldno)) {
      weights.byField[static_cast<std::size_t>(fieldno)] = kTitleWeight;
    }
  }
  return weights;
}

}  // namespace

QuerySession::QuerySession(Database& database, engine::IndexDatabase& index,
                           const std::string& query)
    : database_(database), search_(MakeSearch(index, database.GetCodePage().FromUtf8(query))) {}

engine::Search QuerySession::MakeSearch(engine::IndexDatabase& index, const std::string& query) {
  const CodePage& codePage = database_.GetCodePage();
  try {
    engine::QueryNode tree = engine::ParseQuery(
        query, engine::MakeQueryLanguage(database_.GetFields(), database_.GetPack()));
    const std::uint32_t limit = VemraConfig::GetVemraConfig().GetMaxExpansions();
    warning_ = DescribeCut(engine::ExpandPatterns(index, tree, limit), limit, codePage);
    return engine::Search(index, std::move(tree));
  } catch (const engine::QueryError& error) {
    throw CommandError(DescribeError(query, error, codePage));
  }
}

engine::FoundTexts QuerySession::Find(int count) {
  return search_.Find(count, MakeWeights(database_.GetFields()));
}

engine::FoundTexts QuerySession::FindSorted(int count, const engine::SortOrder& order) {
  return search_.FindSorted(count, MakeWeights(database_.GetFields()), order);
}

}  // namespace vemra::commands
