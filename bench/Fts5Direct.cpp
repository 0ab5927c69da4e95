// The peer that somebody would build without this library: strips each page of a folder and gives
// its text to an FTS5 table with that engine's own tokenizer.   fts5_direct FOLDER INDEX
#include <sqlite3.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "bench/HtmlStrip.h"

namespace fs = std::filesystem;

namespace {

void Check(sqlite3* db, int code) {
  if (code == SQLITE_OK || code == SQLITE_DONE) return;
  std::fprintf(stderr, "fts5_direct: %s\n", sqlite3_errmsg(db));
  std::exit(1);
}

std::vector<fs::path> FilesBelow(const fs::path& folder) {
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    if (entry.is_regular_file()) files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  return files;
}

std::string ReadFile(const fs::path& path) {
  std::string bytes(fs::file_size(path), '\0');
  std::ifstream(path, std::ios::binary).read(bytes.data(), std::streamsize(bytes.size()));
  return bytes;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: fts5_direct FOLDER INDEX\n");
    return 2;
  }
  fs::remove(argv[2]);
  sqlite3* db = nullptr;
  Check(db, sqlite3_open(argv[2], &db));
  auto run = [&](const char* sql) { Check(db, sqlite3_exec(db, sql, nullptr, nullptr, nullptr)); };
  run("CREATE VIRTUAL TABLE pages USING fts5(path UNINDEXED, title, body)");
  run("BEGIN");
  sqlite3_stmt* insert = nullptr;
  Check(db, sqlite3_prepare_v2(db, "INSERT INTO pages(path, title, body) VALUES(?, ?, ?)", -1,
                               &insert, nullptr));
  vemra::bench::StrippedPage page;
  for (const fs::path& path : FilesBelow(argv[1])) {
    vemra::bench::StripHtml(ReadFile(path), page);
    const std::string name = path.string();
    const std::string* columns[] = {&name, &page.title, &page.body};
    for (int i = 0; i < 3; ++i) {
      sqlite3_bind_text(insert, i + 1, columns[i]->data(), int(columns[i]->size()), SQLITE_STATIC);
    }
    Check(db, sqlite3_step(insert));
    sqlite3_reset(insert);
  }
  sqlite3_finalize(insert);
  run("COMMIT");
  sqlite3_close(db);
  return 0;
}
