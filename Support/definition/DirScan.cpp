#include "Support/definition/DirScan.h"

#include <algorithm>
#include <deque>
#include <utility>

#include "Support/definition/LowerCase.h"
#include "Support/definition/Tokens.h"
#include "Support/foundation/Paths.h"
#include "Support/foundation/Strings.h"
#include "Support/foundation/Wildcard.h"
#include "Support/platform/Errors.h"
#include "Support/platform/Files.h"
#include "Support/platform/FolderListing.h"

namespace vemra {
namespace {

// A listing deeper than this below the innermost one gives its handle back.
constexpr std::size_t kMaxOpenListings = 32;

}  // namespace

// One folder being listed.
struct CDirHandle {
  platform::FolderListing listing;  // opened when its first entry is asked for
  platform::FileIdentity identity;
  std::deque<platform::FolderEntry> readAhead;  // what remained when the listing was closed
  std::uint32_t error = 0;                      // that ended the listing early
  bool opened = false;

  bool Next(platform::FolderEntry* entry) {
    if (readAhead.empty()) return Read(entry);
    *entry = std::move(readAhead.front());
    readAhead.pop_front();
    return true;
  }

  // Reads the rest, so that a deep walk does not hold a handle of each level.
  void Close() {
    platform::FolderEntry entry;
    while (Read(&entry)) readAhead.push_back(std::move(entry));
    listing.Close();
  }

 private:
  bool Read(platform::FolderEntry* entry) {
    if (!listing.IsOpen()) return false;
    if (listing.Next(entry)) return true;
    const std::uint32_t code = platform::GetLastErrorCode();
    if (code != platform::kNoMoreFiles) error = code;
    return false;
  }
};

CDirScan::CDirScan() = default;
CDirScan::~CDirScan() = default;

void CDirScan::Scan(const std::string& root, const std::string& filters, int includeSubfolders) {
  Cleanup();
  ParseFilters(filters);
  includeSubfolders_ = includeSubfolders;
  lastError_ = 0;
  currentDir_ = root;
  RemoveLastSlash(currentDir_);
  listings_.push_back(std::make_unique<CDirHandle>());
}

void CDirScan::Cleanup() {
  listings_.clear();
  currentDir_.clear();
}

void CDirScan::ParseFilters(const std::string& filters) {
  filters_.clear();
  const std::string lowered = ToLowerCase(filters);
  std::string_view rest = lowered;
  for (std::string_view pattern = NextToken(rest, ";,"); !pattern.empty();
       pattern = NextToken(rest, ";,")) {
    filters_.emplace_back(pattern);
  }
}

int CDirScan::MatchFilters(const std::string& name) const {
  if (filters_.empty()) return 1;
  const std::string lowered = ToLowerCase(name);
  return std::any_of(filters_.begin(), filters_.end(),
                     [&](const std::string& pattern) { return MatchWildcard(pattern, lowered); })
             ? 1
             : 0;
}

int CDirScan::IsSpecialDir(const std::string& name) {
  return name == "." || name == ".." ? 1 : 0;
}

int CDirScan::FindNextFile(std::string& path) {
  for (;;) {
    std::string name;
    switch (NextStep(name, LinkedFolders::kEnter)) {
      case Step::kEnd:
        return 0;
      case Step::kFile:
        path = currentDir_ + '\\' + name;
        return 1;
      case Step::kFolderEnd:
        Leave();
        break;
      case Step::kLinkedFolder:
        break;
    }
  }
}

void CDirScan::DeleteSubtree(int removeRoot) {
  for (;;) {
    std::string name;
    switch (NextStep(name, LinkedFolders::kReport)) {
      case Step::kEnd:
        return;
      case Step::kFile:
        if (!platform::RemoveFile(currentDir_ + '\\' + name)) KeepErrorUnlessGone();
        break;
      case Step::kLinkedFolder:
        // What the link leads to is not ours. With filters, no folder goes that is not empty.
        if (filters_.empty()) RemoveLink(currentDir_ + '\\' + name);
        break;
      case Step::kFolderEnd: {
        const std::string folder = currentDir_;
        const bool isRoot = listings_.size() == 1;
        Leave();
        if ((!isRoot || removeRoot != 0) && !platform::RemoveFolder(folder)) {
          KeepErrorUnlessGone();
        }
        break;
      }
    }
  }
}

// Goes on to the next file, or to the end of a folder, whose listing is then still the innermost.
CDirScan::Step CDirScan::NextStep(std::string& name, LinkedFolders linkedFolders) {
  while (!listings_.empty()) {
    if (!listings_.back()->opened && !OpenInnermost()) return Step::kFolderEnd;
    platform::FolderEntry entry;
    if (!listings_.back()->Next(&entry)) {
      if (listings_.back()->error != 0) lastError_ = listings_.back()->error;
      return Step::kFolderEnd;
    }
    if (!entry.isFolder) {
      if (MatchFilters(entry.name) == 0) continue;
      name = std::move(entry.name);
      return Step::kFile;
    }
    if (includeSubfolders_ == 0 || IsSpecialDir(entry.name) != 0) continue;
    if (entry.isLink && linkedFolders == LinkedFolders::kReport) {
      name = std::move(entry.name);
      return Step::kLinkedFolder;
    }
    Enter(entry.name);
  }
  return Step::kEnd;
}

bool CDirScan::OpenInnermost() {
  CDirHandle& innermost = *listings_.back();
  innermost.opened = true;
  if (!innermost.listing.Open(currentDir_)) {
    if (listings_.size() == 1) {
      lastError_ = platform::GetLastErrorCode();
    } else {
      KeepErrorUnlessGone();
    }
    return false;
  }
  innermost.identity = innermost.listing.GetIdentity();
  // A link that leads back to a folder being walked would never end.
  const bool isLoop = std::any_of(listings_.begin(), listings_.end() - 1, [&](const auto& outer) {
    return outer->identity == innermost.identity;
  });
  if (isLoop) innermost.listing.Close();
  return !isLoop;
}

void CDirScan::Enter(const std::string& name) {
  currentDir_ += '\\';
  currentDir_ += name;
  listings_.push_back(std::make_unique<CDirHandle>());
  if (listings_.size() > kMaxOpenListings) {
    listings_[listings_.size() - 1 - kMaxOpenListings]->Close();
  }
}

void CDirScan::Leave() {
  listings_.pop_back();
  if (!listings_.empty()) TruncateString(currentDir_, static_cast<int>(currentDir_.rfind('\\')));
}

void CDirScan::RemoveLink(const std::string& path) {
  if (!platform::RemoveFolder(path) && !platform::RemoveFile(path)) KeepErrorUnlessGone();
}

// What was listed and is gone when its turn comes is no error.
void CDirScan::KeepErrorUnlessGone() {
  const std::uint32_t code = platform::GetLastErrorCode();
  if (code != platform::kFileNotFound && code != platform::kPathNotFound) lastError_ = code;
}

}  // namespace vemra
