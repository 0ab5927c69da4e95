// Queries on a database of vemra and on the index that fts5_direct made of the same pages, each in
// one process that stays, as a server does.   query_bench DB.cfg DIRECT
// Prints for one and for two words: the median and the 99th percentile, in microseconds, of both.
#include <sqlite3.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <iostream>
#include <limits>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "programs/commands/Database.h"
#include "programs/commands/QuerySession.h"
#include "programs/engine/Dictionary.h"
#include "programs/engine/IndexDatabase.h"

namespace {

constexpr int kQueries = 200;
constexpr int kRounds = 7;
constexpr int kBest = 10;

using Words = std::vector<std::string>;
using Ask = std::function<std::size_t(const Words&)>;  // returns the bytes of what was found

// The best texts with title and path: parsing and expanding the query, ranking, reading the texts.
class Ours {
 public:
  explicit Ours(const std::string& definition)
      : database_(definition), index_(database_.GetIndexPath()) {}

  std::size_t operator()(const Words& words) {
    std::string query;
    for (const std::string& word : words) query += word + ' ';
    vemra::commands::QuerySession session(database_, index_, query);
    std::size_t bytes = 0;
    for (const auto& found : session.Find(kBest).best) {
      const auto text = index_.FindText(found.number);
      bytes += text->path.size() + text->title.size();
    }
    return bytes;
  }

  vemra::engine::IndexDatabase& GetIndex() { return index_; }

 private:
  vemra::commands::Database database_;
  vemra::engine::IndexDatabase index_;
};

class Direct {
 public:
  explicit Direct(const char* path) {
    if (sqlite3_open_v2(path, &db_, SQLITE_OPEN_READONLY, nullptr) != SQLITE_OK ||
        sqlite3_prepare_v2(
            db_, "SELECT path, title FROM pages WHERE pages MATCH ? ORDER BY rank LIMIT ?", -1,
            &search_, nullptr) != SQLITE_OK) {
      std::fprintf(stderr, "query_bench: %s\n", sqlite3_errmsg(db_));
      std::exit(1);
    }
  }
  ~Direct() {
    sqlite3_finalize(search_);
    sqlite3_close(db_);
  }
  Direct(const Direct&) = delete;
  Direct& operator=(const Direct&) = delete;

  std::size_t operator()(const Words& words) {
    std::string query;
    for (const std::string& word : words) query += '"' + word + "\" ";
    sqlite3_bind_text(search_, 1, query.data(), static_cast<int>(query.size()), SQLITE_STATIC);
    sqlite3_bind_int(search_, 2, kBest);
    std::size_t bytes = 0;
    while (sqlite3_step(search_) == SQLITE_ROW) {
      for (const int column : {0, 1}) {
        bytes += static_cast<std::size_t>(sqlite3_column_bytes(search_, column));
      }
    }
    sqlite3_reset(search_);
    return bytes;
  }

 private:
  sqlite3* db_ = nullptr;
  sqlite3_stmt* search_ = nullptr;
};

// Words of plain letters, which both engines know alike, as often as they stand in the pages.
std::vector<Words> DrawQueries(vemra::engine::IndexDatabase& index, int wordsOfEach) {
  vemra::CTavoFieldList columns;
  for (const int fieldno : index.GetColumns()) columns.Set(fieldno);
  Words words;
  std::vector<double> places;
  constexpr int kAll = std::numeric_limits<int>::max();
  for (const auto& word : vemra::engine::ReadDictionary(index, "", columns, kAll).words) {
    const auto isLetter = [](char c) { return c >= 'a' && c <= 'z'; };
    if (word.word.size() < 3 || !std::all_of(word.word.begin(), word.word.end(), isLetter) ||
        word.word == "and" || word.word == "not") {
      continue;
    }
    words.push_back(word.word);
    places.push_back(static_cast<double>(word.occurrences));
  }
  std::mt19937 random(12);
  std::discrete_distribution<std::size_t> draw(places.begin(), places.end());
  std::vector<Words> queries(kQueries);
  for (Words& query : queries) {
    for (int i = 0; i < wordsOfEach; ++i) query.push_back(words[draw(random)]);
  }
  return queries;
}

double Microseconds(const Ask& ask, const Words& query) {
  const auto start = std::chrono::steady_clock::now();
  if (ask(query) == 1) std::abort();  // never, but the answer is needed
  return std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start)
      .count();
}

// Each query by turns, so that a noisy moment hits both; the best of the rounds counts.
void Compare(const std::vector<Words>& queries, const Ask& ours, const Ask& direct) {
  std::vector<double> best[2];
  for (const Words& query : queries) {
    double times[2] = {1e9, 1e9};
    for (int round = 0; round < kRounds; ++round) {
      times[0] = std::min(times[0], Microseconds(ours, query));
      times[1] = std::min(times[1], Microseconds(direct, query));
    }
    for (const int side : {0, 1}) best[side].push_back(times[side]);
  }
  for (std::vector<double>& times : best) std::sort(times.begin(), times.end());
  const std::size_t median = queries.size() / 2;
  const std::size_t nearWorst = queries.size() * 99 / 100;
  std::cout << best[0][median] << ' ' << best[1][median] << ' ' << best[0][nearWorst] << ' '
            << best[1][nearWorst] << '\n';
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: query_bench DB.cfg DIRECT\n");
    return 2;
  }
  Ours ours(argv[1]);
  Direct direct(argv[2]);
  for (const int words : {1, 2}) {
    Compare(DrawQueries(ours.GetIndex(), words), std::ref(ours), std::ref(direct));
  }
  return 0;
}
