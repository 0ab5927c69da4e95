// A client that knows the installed library only: every public header, one call into each layer.
#include <cstdio>

#include "Support/definition/Definition.h"
#include "Support/foundation/Foundation.h"
#include "Support/services/Services.h"
#include "Support/text/Text.h"

int main() {
  vemra::TavoSection section(nullptr, "Two words", vemra::TavoLangPack::GetDefault());
  int words = 0;
  for (auto* word = section.GetFirstWord(); word != nullptr; word = section.GetNextWord(word)) {
    ++words;
  }
  vemra::CTavoFieldList fields;
  fields.Set(3);
  const bool joined = vemra::ConnectPaths("C:\\a", "b") == "C:\\a\\b";
  std::printf("%d words\n", words);
  return words == 2 && !fields.IsEmpty() && joined ? 0 : 1;
}
