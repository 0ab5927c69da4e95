#include "Support/text/LangPack.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <utility>

#include "Support/foundation/Ascii.h"
#include "Support/foundation/Registry.h"
#include "Support/text/LangPackReader.h"
#include "Support/text/Word.h"

namespace vemra {

namespace {

LangPackTables MakeBuiltInTables() {
  LangPackTables tables;
  for (std::size_t b = 0; b < tables.flags.size(); ++b) {
    const auto c = static_cast<unsigned char>(b);
    if (IsAsciiAlpha(c)) tables.flags[b] = LangPackTables::kLetter;
    if (IsAsciiDigit(c)) tables.flags[b] = LangPackTables::kDigit;
    tables.toIndex[b] = ToAsciiLower(c);
  }
  return tables;
}

int TypeOf(const LangPackTables& tables, unsigned char c) {
  if (c == '\0') return TavoWord::kUnknown;
  if (tables.flags[c] & LangPackTables::kWordCharacter) return TavoWord::kWord;
  return IsAsciiSpace(c) ? TavoWord::kSpace : TavoWord::kPunctuation;
}

ByteClasses MakeByteClasses(const LangPackTables& tables) {
  ByteClasses::Table classes{};
  for (std::size_t b = 0; b < classes.size(); ++b) {
    const auto c = static_cast<unsigned char>(b);
    int bits = TypeOf(tables, c);
    if (c == '.' || c == '!' || c == '?') bits |= ByteClass::kEndsSentence;
    if (c == '\n' || c == '\r') bits |= ByteClass::kEndsLine;
    classes[b] = static_cast<std::uint8_t>(bits);
  }
  return ByteClasses(classes);
}

}  // namespace

LangPackTables::LangPackTables() {
  for (std::size_t b = 0; b < sort.size(); ++b) {
    sort[b] = static_cast<std::int16_t>(b);
    toIndex[b] = static_cast<std::uint8_t>(b);
  }
}

struct TavoLangPack::Cache {
  std::map<std::string, std::unique_ptr<TavoLangPack, Deleter>> packs;
  std::unique_ptr<TavoLangPack, Deleter> builtIn;
};

TavoLangPack::Cache& TavoLangPack::GetCache() {
  static Cache cache;
  return cache;
}

TavoLangPack::TavoLangPack(std::string name, bool builtIn)
    : builtIn_(builtIn), name_(std::move(name)) {
  SetTables(builtIn ? MakeBuiltInTables() : LangPackTables());
}

void TavoLangPack::SetTables(LangPackTables tables) {
  classes_ = std::make_shared<const ByteClasses>(MakeByteClasses(tables));
  tables_ = std::make_shared<const LangPackTables>(std::move(tables));
}

TavoLangPack* TavoLangPack::Get(const std::string& name, LoadStatus* status) {
  LoadStatus ignored;
  LoadStatus& result = status != nullptr ? *status : ignored;
  result.code = LoadStatus::kSuccess;
  if (name.empty()) return GetDefault();
  auto& packs = GetCache().packs;
  if (const auto known = packs.find(name); known != packs.end()) return known->second.get();

  std::string path;
  if (!GetLanguagePath(name, path)) {
    result.code = LoadStatus::kUnknownLanguage;
    return nullptr;
  }
  result.path = path;
  if (path.empty()) {
    GetDefault()->name_ = name;
    return GetDefault();
  }
  std::unique_ptr<TavoLangPack, Deleter> pack(new TavoLangPack(name, false));
  if (!pack->Load(path)) {
    result.code = LoadStatus::kNotLoaded;
    return nullptr;
  }
  return packs.emplace(name, std::move(pack)).first->second.get();
}

TavoLangPack* TavoLangPack::GetDefault() {
  auto& builtIn = GetCache().builtIn;
  if (!builtIn) builtIn.reset(new TavoLangPack("Default", true));
  return builtIn.get();
}

void TavoLangPack::Release(const std::string& name) {
  GetCache().packs.erase(name);
}

void TavoLangPack::Release(const TavoLangPack* pack) {
  // By value: the pack, and its name with it, goes.
  const std::string name = pack->name_;
  Release(name);
}

void TavoLangPack::ReleaseAll() {
  GetCache().packs.clear();
  GetCache().builtIn.reset();
}

std::string& TavoLangPack::ToIndex(std::string& text) const {
  for (char& c : text) c = static_cast<char>(ToIndex(static_cast<unsigned char>(c)));
  return text;
}

int TavoLangPack::Compare(const char* a, const char* b) const {
  return Compare(reinterpret_cast<const unsigned char*>(a),
                 reinterpret_cast<const unsigned char*>(b));
}

int TavoLangPack::Compare(const unsigned char* a, const unsigned char* b) const {
  for (; *a != '\0'; ++a, ++b) {
    if (*b == '\0') return 1;
    const int difference = GetSortOrder(*a) - GetSortOrder(*b);
    if (difference != 0) {
      // The built-in pack answers like strcmp on every system.
      return builtIn_ ? (difference > 0) - (difference < 0) : difference;
    }
  }
  return *b != '\0' ? -1 : 0;
}

bool TavoLangPack::IsFoldedEqual(std::string_view a, std::string_view b) const {
  return std::equal(a.begin(), a.end(), b.begin(), [this](char x, char y) {
    return ToIndex(static_cast<unsigned char>(x)) == ToIndex(static_cast<unsigned char>(y));
  });
}

int TavoLangPack::Load(const std::string& path) {
  LangPackTables tables = *tables_;
  if (!LangPackReader().Read(path, tables)) return 0;
  if (!builtIn_) SetTables(std::move(tables));
  return 1;
}

}  // namespace vemra
