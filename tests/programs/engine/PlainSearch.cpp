#include "tests/programs/engine/PlainSearch.h"

#include <algorithm>

namespace vemra::test {
namespace {

using engine::QueryNode;
using engine::QueryRelation;
using engine::QueryTerm;

// A place of a phrase: its words, as indices in the text.
struct Match {
  const QueryNode* phrase;
  std::vector<std::size_t> words;

  std::size_t First() const { return words.front(); }
  std::size_t Last() const { return words.back(); }
};

bool MatchesWildcard(const char* pattern, const char* word) {
  if (*pattern == '*') {
    return MatchesWildcard(pattern + 1, word) || (*word && MatchesWildcard(pattern, word + 1));
  }
  if (*word == '\0') return *pattern == '\0';
  return (*pattern == '?' || *pattern == *word) && MatchesWildcard(pattern + 1, word + 1);
}

std::vector<Match> MatchesOfPhrase(const QueryNode& node, const PlainText& text) {
  std::vector<Match> matches;
  for (std::size_t start = 0; start < text.size(); ++start) {
    if (node.columns.IsSet(text[start].field) == 0) continue;
    Match match{&node, {}};
    for (std::size_t at = start; at < text.size() && match.words.size() < node.terms.size(); ++at) {
      if (text[at].field != text[start].field) continue;
      const QueryTerm& term = node.terms[match.words.size()];
      const auto& forms = text[at].forms;
      const auto isAllowed = [&](const std::string& form) { return Allows(term, form); };
      if (std::none_of(forms.begin(), forms.end(), isAllowed)) break;
      match.words.push_back(at);
    }
    if (match.words.size() == node.terms.size()) matches.push_back(match);
  }
  return matches;
}

std::vector<Match> MatchesOfOperand(const QueryNode& node, const PlainText& text) {
  if (node.kind == QueryNode::Kind::kPhrase) return MatchesOfPhrase(node, text);
  std::vector<Match> matches;
  for (const QueryNode& child : node.children) {
    for (const Match& match : MatchesOfPhrase(child, text)) matches.push_back(match);
  }
  return matches;
}

bool AreRelated(const Match& a, const Match& b, const QueryRelation& relation,
                const PlainText& text) {
  if (a.First() > b.First()) return AreRelated(b, a, relation, text);
  if (b.First() <= a.Last()) return false;
  if (relation.kind == QueryRelation::Kind::kWords) {
    return b.First() - a.Last() <= static_cast<std::size_t>(relation.words);
  }
  const auto group = [&](std::size_t at) {
    return relation.kind == QueryRelation::Kind::kSentence ? text[at].sentence : text[at].paragraph;
  };
  return group(a.First()) == group(b.Last());  // and so is everything between
}

void AddHits(const Match& match, PlainHits& hits) {
  for (std::size_t i = 0; i < match.words.size(); ++i) {
    hits[match.words[i]].push_back(&match.phrase->terms[i]);
  }
}

// The words of every chain that goes on from the last match of one that was begun.
bool FollowChains(const QueryNode& node, const PlainText& text, std::vector<Match>& chain,
                  PlainHits& hits) {
  const std::size_t next = chain.size();
  if (next == node.children.size()) {
    for (const Match& match : chain) AddHits(match, hits);
    return true;
  }
  bool found = false;
  for (const Match& match : MatchesOfOperand(node.children[next], text)) {
    if (next > 0 && !AreRelated(chain.back(), match, node.relations[next - 1], text)) continue;
    chain.push_back(match);
    found |= FollowChains(node, text, chain, hits);
    chain.pop_back();
  }
  return found;
}

bool MatchGroup(const QueryNode& node, const PlainText& text, PlainHits& hits) {
  std::size_t matched = 0;
  for (const QueryNode& child : node.children) matched += MatchPlainly(child, text, hits) ? 1 : 0;
  if (node.kind == QueryNode::Kind::kOr) return matched > 0;
  PlainHits ignored;
  return matched == node.children.size() &&
         std::none_of(node.excluded.begin(), node.excluded.end(),
                      [&](const QueryNode& child) { return MatchPlainly(child, text, ignored); });
}

}  // namespace

bool Allows(const QueryTerm& term, const std::string& form) {
  return term.isPattern ? MatchesWildcard(term.text.c_str(), form.c_str()) : term.text == form;
}

bool MatchPlainly(const QueryNode& query, const PlainText& text, PlainHits& hits) {
  PlainHits own;
  std::vector<Match> chain;
  bool matches = false;
  if (query.kind == QueryNode::Kind::kPhrase) {
    for (const Match& match : MatchesOfPhrase(query, text)) AddHits(match, own);
    matches = !own.empty();
  } else if (query.kind == QueryNode::Kind::kNear) {
    matches = FollowChains(query, text, chain, own);
  } else {
    matches = MatchGroup(query, text, own);
  }
  if (!matches) return false;
  for (auto& [word, terms] : own) {
    hits[word].insert(hits[word].end(), terms.begin(), terms.end());
  }
  return true;
}

}  // namespace vemra::test
