#include "programs/engine/FullText.h"

#include <sqlite3.h>

#include <cstring>
#include <new>

#include "programs/engine/EngineError.h"
#include "programs/engine/Sqlite.h"
#include "programs/engine/WordStream.h"

namespace vemra::engine {
namespace {

using TokenFunction = int (*)(void*, int, const char*, int, int, int);

// The tokenizer has no state of its own; SQLite only asks that the pointer is not null.
int CreateTokenizer(void* context, const char**, int, Fts5Tokenizer** tokenizer) {
  *tokenizer = static_cast<Fts5Tokenizer*>(context);
  return SQLITE_OK;
}

void DeleteTokenizer(Fts5Tokenizer*) {}

// No exception may pass through SQLite.
int Tokenize(Fts5Tokenizer*, void* context, int, const char* text, int length,
             TokenFunction onToken) try {
  WordStreamReader reader({text, static_cast<std::size_t>(length)});
  int code = SQLITE_OK;
  while (code == SQLITE_OK && reader.Next()) {
    code = onToken(context, reader.IsAtSamePosition() ? FTS5_TOKEN_COLOCATED : 0,
                   reader.Word().data(), static_cast<int>(reader.Word().size()),
                   static_cast<int>(reader.Begin()), static_cast<int>(reader.End()));
  }
  return code;
} catch (const std::bad_alloc&) {
  return SQLITE_NOMEM;
}

int CollectPlaces(const Fts5ExtensionApi* api, Fts5Context* context,
                  std::vector<PhrasePlace>& places) {
  int count = 0;
  int code = api->xInstCount(context, &count);
  places.resize(static_cast<std::size_t>(count));
  for (int i = 0; code == SQLITE_OK && i < count; ++i) {
    int phrase = 0;
    PhrasePlace& place = places[static_cast<std::size_t>(i)];
    code = api->xInst(context, i, &phrase, &place.column, &place.position);
  }
  return code;
}

void PhrasePlaces(const Fts5ExtensionApi* api, Fts5Context* fts, sqlite3_context* context, int,
                  sqlite3_value**) try {
  std::vector<PhrasePlace> places;
  const int code = CollectPlaces(api, fts, places);
  if (code != SQLITE_OK) {
    sqlite3_result_error_code(context, code);
  } else {
    sqlite3_result_blob64(context, places.data(), places.size() * sizeof(PhrasePlace),
                          SQLITE_TRANSIENT);
  }
} catch (const std::bad_alloc&) {
  sqlite3_result_error_nomem(context);
}

fts5_api* FindFullTextApi(Connection& connection) {
  fts5_api* api = nullptr;
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(connection.Get(), "SELECT fts5(?1)", -1, &statement, nullptr) ==
      SQLITE_OK) {
    sqlite3_bind_pointer(statement, 1, static_cast<void*>(&api), "fts5_api_ptr", nullptr);
    sqlite3_step(statement);
  }
  sqlite3_finalize(statement);
  return api;
}

}  // namespace

void InstallFullText(Connection& connection) {
  fts5_api* api = FindFullTextApi(connection);
  if (api == nullptr) throw EngineError(Fault::kFailed, "this SQLite has no full-text search");
  fts5_tokenizer tokenizer{CreateTokenizer, DeleteTokenizer, Tokenize};
  if (api->xCreateTokenizer(api, "vemra", api, &tokenizer, nullptr) != SQLITE_OK ||
      api->xCreateFunction(api, "phrase_places", nullptr, PhrasePlaces, nullptr) != SQLITE_OK) {
    connection.Throw("the full-text index cannot be set up");
  }
}

std::vector<PhrasePlace> ReadPhrasePlaces(std::string_view value) {
  std::vector<PhrasePlace> places(value.size() / sizeof(PhrasePlace));
  if (!places.empty()) std::memcpy(places.data(), value.data(), value.size());
  return places;
}

}  // namespace vemra::engine
