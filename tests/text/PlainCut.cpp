#include "tests/text/PlainCut.h"

#include <utility>

namespace vemra::test {

namespace {

int TypeOf(char c) {
  if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9')) return 0;
  return c == ' ' || (c >= '\t' && c <= '\r') ? 2 : 1;
}

void Renumber(std::vector<PlainItem>& parts) {
  for (std::size_t i = 0; i < parts.size(); ++i) {
    parts[i].number = parts[i].itemNumber = static_cast<int>(i);
  }
}

PlainItem Merge(PlainItem a, PlainItem b) {
  const std::string text = a.text + b.text;
  if (a.type == 3 && b.type == 3) {
    std::size_t moved = 0;
    if (a.parts.back().type == b.parts[0].type) {
      a.parts.back() = Merge(a.parts.back(), b.parts[0]);
      moved = 1;
    }
    for (; moved < b.parts.size(); ++moved) a.parts.push_back(b.parts[moved]);
  } else if (a.type == 3) {
    if (a.parts.back().type == b.type) {
      a.parts.back() = Merge(a.parts.back(), b);
    } else {
      a.parts.push_back(b);
    }
  } else if (b.type == 3) {
    b.start = a.start;
    if (a.type == b.parts[0].type) {
      b.parts[0] = Merge(a, b.parts[0]);
    } else {
      b.parts.insert(b.parts.begin(), a);
    }
    std::swap(a, b);
  } else if (a.type != b.type) {
    PlainItem compound;
    compound.start = a.start;
    compound.type = 3;
    compound.parts = {a, b};
    a = compound;
  }
  a.text = text;
  Renumber(a.parts);
  return a;
}

}  // namespace

PlainCut::PlainCut(const std::string& text, bool breakOnNewLine) {
  std::vector<PlainItem> pending;  // none or one
  const auto flush = [&] {
    if (pending.empty()) return;
    if (pending[0].type == 3 && pending[0].parts.size() == 2) {
      Commit(pending[0].parts[0], breakOnNewLine);
      Commit(pending[0].parts[1], breakOnNewLine);
    } else {
      Commit(pending[0], breakOnNewLine);
    }
    pending.clear();
  };
  for (std::size_t at = 0; at < text.size(); ++at) {
    PlainItem item;
    item.text = text[at];
    item.start = static_cast<int>(at);
    item.type = TypeOf(text[at]);
    if (!pending.empty() &&
        (pending[0].type == item.type || (pending[0].type != 2 && item.type != 2))) {
      pending[0] = Merge(pending[0], item);
      continue;
    }
    flush();
    pending.push_back(item);
  }
  flush();
}

void PlainCut::Commit(PlainItem item, bool breakOnNewLine) {
  item.itemNumber = static_cast<int>(items.size());
  if (item.type == 0 || item.type == 3) {
    words.push_back(item.itemNumber);
    ++wordInSentence;
    ++wordInParagraph;
  }
  item.number = static_cast<int>(words.size()) - 1;
  items.push_back(item);

  const PlainItem& last = item.type == 3 ? item.parts.back() : item;
  const auto next = static_cast<unsigned>(words.size());
  if (last.type == 1 && last.text.find_first_of(".!?") != std::string::npos) {
    sentenceBreaks.push_back(next);
    wordInSentence = 0;
    ++sentenceInParagraph;
  }
  if (breakOnNewLine && item.type == 2 && item.text.find_first_of("\r\n") != std::string::npos) {
    sentenceBreaks.push_back(next);
    paragraphBreaks.push_back(next);
    wordInSentence = wordInParagraph = sentenceInParagraph = 0;
  }
}

namespace {

bool SameItem(const TavoWord& word, const PlainItem& plain) {
  if (word.GetText() != plain.text || word.GetStart() != plain.start ||
      word.GetNumber() != plain.number || word.GetItemNumber() != plain.itemNumber ||
      word.GetType() != plain.type ||
      word.GetWordsNumber() != static_cast<int>(plain.parts.size())) {
    return false;
  }
  const TavoWord* part = word.GetFirstWord();
  for (const PlainItem& plainPart : plain.parts) {
    if (part == nullptr || !SameItem(*part, plainPart)) return false;
    part = word.GetNextWord(part);
  }
  return part == nullptr;
}

}  // namespace

bool SameItems(TavoSection& section, const PlainCut& plain) {
  if (section.GetItemsNumber() != static_cast<int>(plain.items.size())) return false;
  const char* text = section.GetContents().data();
  for (int i = 0; i < section.GetItemsNumber(); ++i) {
    const TavoWord* item = section.GetItemAt(i);
    // Side by side in the contents themselves.
    if (item->GetText().data() != text) return false;
    text += item->GetLength();
    if (!SameItem(*item, plain.items[static_cast<std::size_t>(i)])) return false;
  }
  return true;
}

namespace {

bool SameNumbers(TavoSection& section, const PlainCut& plain) {
  if (section.GetWordsNumber() != static_cast<int>(plain.words.size())) return false;
  for (int i = 0; i < section.GetWordsNumber(); ++i) {
    const int item = plain.words[static_cast<std::size_t>(i)];
    if (section.GetWordAt(i) != section.GetItemAt(item)) return false;
  }
  return section.GetSentenceBreaks().GetEntries() == plain.sentenceBreaks &&
         section.GetParagraphBreaks().GetEntries() == plain.paragraphBreaks &&
         section.GetWordInSentenceAtEnd() == plain.wordInSentence &&
         section.GetWordInParagraphAtEnd() == plain.wordInParagraph &&
         section.GetSentenceInParagraphAtEnd() == plain.sentenceInParagraph;
}

}  // namespace

bool Same(TavoSection& section, const PlainCut& plain) {
  return SameItems(section, plain) && SameNumbers(section, plain);
}

}  // namespace vemra::test
