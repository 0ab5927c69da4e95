#include "Support/platform/PrivateProfile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <memory>
#include <mutex>
#include <unordered_map>
#include <utility>

#include "Support/platform/Errors.h"
#include "Support/platform/FileHandle.h"
#include "Support/platform/Paths.h"
#include "Support/platform/posix/Errno.h"
#include "Support/platform/posix/ShareLock.h"

namespace vemra::platform {

namespace {

class Descriptor {
 public:
  explicit Descriptor(int fd = -1) : fd_(fd) {}
  Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    std::swap(fd_, other.fd_);
    return *this;
  }
  ~Descriptor() {
    if (fd_ >= 0) close(fd_);
  }
  int Get() const { return fd_; }
  explicit operator bool() const { return fd_ >= 0; }

 private:
  int fd_;
};

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1000000000 + time.tv_nsec;
}

std::int64_t WallNanoseconds() {
  timespec now = {};
  clock_gettime(CLOCK_REALTIME, &now);
  return Nanoseconds(now);
}

// What changes when a file is replaced or written to.
struct Stamp {
  dev_t device = 0;
  ino_t inode = 0;
  off_t size = 0;
  std::int64_t modified = 0;  // ns

  explicit Stamp(const struct stat& status)
      : device(status.st_dev),
        inode(status.st_ino),
        size(status.st_size),
        modified(Nanoseconds(status.st_mtim)) {}
  bool operator==(const Stamp&) const = default;
};

// The system takes the time of a change from a clock that ticks every few milliseconds: a file that
// changed within this time of being read may change again and keep its stamp.
constexpr std::int64_t kUnsettled = 20000000;  // ns

struct Loaded {
  Stamp stamp;
  bool settled;  // the stamp tells every later change
  std::shared_ptr<const ProfileText> text;
};

// The files read last.
class Cache {
 public:
  static Cache& Get() {
    static auto* const cache = new Cache;  // outlives every static object that saves settings
    return *cache;
  }

  std::shared_ptr<const ProfileText> Find(const std::string& hostPath, const Stamp& stamp) {
    const std::lock_guard lock(mutex_);
    const auto found = files_.find(hostPath);
    if (found == files_.end() || !found->second.settled || found->second.stamp != stamp)
      return nullptr;
    return found->second.text;
  }

  void Store(const std::string& hostPath, Loaded loaded) {
    const std::lock_guard lock(mutex_);
    if (files_.size() >= kMaxFiles) files_.clear();
    files_.insert_or_assign(hostPath, std::move(loaded));
  }

 private:
  static constexpr std::size_t kMaxFiles = 64;

  std::mutex mutex_;
  std::unordered_map<std::string, Loaded> files_;
};

bool ReadWhole(int fd, std::size_t size, std::string& bytes) {
  bytes.resize(size);
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = read(fd, bytes.data() + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    if (count == 0) break;
    done += std::size_t(count);
  }
  bytes.resize(done);
  return true;
}

bool WriteWhole(int fd, const std::string& bytes) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t count = write(fd, bytes.data() + done, bytes.size() - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return false;
    done += std::size_t(count);
  }
  return true;
}

// Null, with the last error set, when the file cannot be read.
std::shared_ptr<const ProfileText> Load(const std::string& hostPath) {
  struct stat status = {};
  if (stat(hostPath.c_str(), &status) == 0) {
    if (auto text = Cache::Get().Find(hostPath, Stamp(status))) return text;
  }
  const Descriptor file(open(hostPath.c_str(), O_RDONLY | O_CLOEXEC));
  if (!file || fstat(file.Get(), &status) != 0) {
    FailWithErrno(hostPath);
    return nullptr;
  }
  if (!S_ISREG(status.st_mode) || std::size_t(status.st_size) > ProfileText::kMaxSize) {
    SetLastErrorCode(kAccessDenied);
    return nullptr;
  }
  if (!ClaimShare(file.Get(), TavoFile::Access::kRead, TavoFile::Share::kAll)) return nullptr;
  const Stamp before(status);
  std::string bytes;
  if (!ReadWhole(file.Get(), std::size_t(status.st_size), bytes)) {
    FailWithErrno();
    return nullptr;
  }
  auto text = std::make_shared<const ProfileText>(std::move(bytes));
  if (fstat(file.Get(), &status) == 0 && Stamp(status) == before) {
    const bool settled = WallNanoseconds() - before.modified > kUnsettled;
    Cache::Get().Store(hostPath, {before, settled, text});
  }
  return text;
}

std::shared_ptr<const ProfileText> LoadPath(const std::string& path) {
  const std::string hostPath = ToHostPath(path);
  return hostPath.empty() ? nullptr : Load(hostPath);
}

// Writers exclude each other by a lock on the file that the new text is staged in, beside the
// profile. It becomes the profile when it is complete; a writer that was killed leaves it behind,
// and the next one takes it over.
class Staging {
 public:
  // Waits for other writers. False, with errno set, when the folder does not admit the file.
  bool Open(const std::string& hostPath) {
    target_ = hostPath;
    path_ = hostPath + ".new";
    for (;;) {
      file_ = Descriptor(open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666));
      if (!file_ || !Lock()) return false;
      staged_ = IsCurrent();
      if (staged_) return true;  // else it has meanwhile become the profile
    }
  }

  ~Staging() {
    if (staged_) unlink(path_.c_str());
  }

  // The new profile gets the given permissions, and a time of change later than the old one's, so
  // that no stamp ever comes back.
  bool Replace(const std::string& bytes, const struct stat* old) {
    const int fd = file_.Get();
    if (ftruncate(fd, 0) != 0 || !WriteWhole(fd, bytes)) return false;
    if (old != nullptr) {
      if (fchmod(fd, old->st_mode & 07777) != 0) return false;
      if (fchown(fd, old->st_uid, old->st_gid) != 0) errno = 0;  // only its owner may give it away
    }
    std::int64_t now = WallNanoseconds();
    if (old != nullptr) now = std::max(now, Nanoseconds(old->st_mtim) + 1);
    const timespec time = {time_t(now / 1000000000), long(now % 1000000000)};
    const timespec times[2] = {time, time};
    if (futimens(fd, times) != 0 || fdatasync(fd) != 0) return false;
    if (rename(path_.c_str(), target_.c_str()) != 0) return false;
    staged_ = false;
    return true;
  }

  int Get() const { return file_.Get(); }

 private:
  bool Lock() const {
    // Far behind the bytes on which openers lock each other out.
    struct flock lock = {};
    lock.l_type = F_WRLCK;
    lock.l_whence = SEEK_SET;
    lock.l_start = LLONG_MAX - 1;
    lock.l_len = 1;
    int result = 0;
    do {
      result = fcntl(file_.Get(), F_OFD_SETLKW, &lock);
    } while (result != 0 && errno == EINTR);
    return result == 0;
  }

  bool IsCurrent() const {
    struct stat mine = {};
    struct stat named = {};
    return fstat(file_.Get(), &mine) == 0 && stat(path_.c_str(), &named) == 0 &&
           mine.st_dev == named.st_dev && mine.st_ino == named.st_ino;
  }

  std::string target_;
  std::string path_;
  Descriptor file_;
  bool staged_ = false;  // locked, and not the profile yet
};

ProfileDraft Edit(std::shared_ptr<const ProfileText> base, const std::vector<ProfileEdit>& edits) {
  ProfileDraft edited;
  if (base) edited.text = *base;
  edited.base = std::move(base);
  for (const ProfileEdit& edit : edits) edited.changed |= edited.text.Apply(edit);
  return edited;
}

// The file behind a link is replaced, not the link.
std::string FollowLinks(const std::string& hostPath) {
  const std::unique_ptr<char, void (*)(void*)> real(realpath(hostPath.c_str(), nullptr), std::free);
  return real ? real.get() : hostPath;
}

// Under the writers' lock. edited is what the edits gave before it; another writer may have come
// between, and then they are applied to what that one wrote.
bool ReplaceLocked(const std::vector<ProfileEdit>& edits, ProfileDraft edited,
                   const std::string& path, const std::string& hostPath, ProfileBase base,
                   Staging& staging) {
  struct stat old = {};
  const bool exists = stat(hostPath.c_str(), &old) == 0;
  FileHandle held;  // fails where another opener denies writing, and keeps others from denying it
  if (exists && !held.Open(path, TavoFile::Access::kWrite, TavoFile::Creation::kOpenExisting,
                           TavoFile::Share::kAll))
    return false;
  if (base == ProfileBase::kCurrent) {
    const auto current = exists ? Load(hostPath) : nullptr;
    if (exists && !current) return false;
    if (current != edited.base) edited = Edit(current, edits);
    if (!edited.changed) return true;
  }
  std::string bytes = edited.text.Serialize();
  if (bytes.size() > ProfileText::kMaxSize) return Fail(kAccessDenied);
  if (!staging.Replace(bytes, exists ? &old : nullptr)) return FailWithErrno();
  struct stat now = {};
  if (fstat(staging.Get(), &now) == 0) {
    auto written = std::make_shared<const ProfileText>(std::move(bytes));
    Cache::Get().Store(hostPath, {Stamp(now), true, std::move(written)});
  }
  return true;
}

// Copies as much of text as a buffer holds beside tail NULs.
std::uint32_t Answer(std::string_view text, std::size_t tail, char* buffer, std::uint32_t size) {
  const std::size_t length = size < tail ? 0 : std::min(text.size(), size - tail);
  std::memcpy(buffer, text.data(), length);
  buffer[length] = '\0';
  return std::uint32_t(length);
}

std::string_view Look(const ProfileText* text, std::string_view section, std::string_view key,
                      std::string_view fallback) {
  const auto value = text == nullptr ? std::nullopt : text->Find(section, key);
  return value ? *value : ProfileText::CleanFallback(fallback);
}

std::string Join(const std::vector<std::string_view>& names) {
  std::string list;
  for (const std::string_view name : names) list.append(name).push_back('\0');
  return list;
}

}  // namespace

std::uint32_t QueryProfile(const char* section, const char* key, const char* fallback, char* buffer,
                           std::uint32_t size, const std::string& path) {
  if (size == 0) return 0;
  const std::string_view otherwise = fallback == nullptr ? "" : fallback;
  const auto text = LoadPath(path);
  if (section == nullptr) {
    return Answer(text ? Join(text->GetSections()) : std::string(), 2, buffer, size);
  }
  if (key == nullptr) {
    const std::string list = text ? Join(text->GetKeys(section)) : std::string();
    // A list without room for a name counts as none, and so does one whose first name is empty.
    return list.empty() || list.front() == '\0' || size == 2
               ? Answer(ProfileText::Unquote(otherwise), 1, buffer, size)
               : Answer(list, 2, buffer, size);
  }
  return Answer(Look(text.get(), section, key, otherwise), 1, buffer, size);
}

bool WriteProfile(const char* section, const char* key, const char* value,
                  const std::string& path) {
  if (section == nullptr) return false;
  ProfileEdit edit;
  edit.section = section;
  if (key != nullptr) edit.key = key;
  if (value != nullptr) edit.value = value;
  return EditProfile({edit}, path);
}

std::string ReadProfileString(const std::string& section, const std::string& key,
                              const std::string& fallback, std::size_t limit,
                              const std::string& path) {
  const auto text = LoadPath(path);
  return std::string(
      Look(text.get(), section.c_str(), key.c_str(), fallback.c_str()).substr(0, limit));
}

std::vector<std::string> ReadProfileSections(const std::string& path) {
  const auto text = LoadPath(path);
  if (!text) return {};
  const auto names = text->GetSections();
  return {names.begin(), names.end()};
}

std::vector<std::string> ReadProfileKeys(const std::string& section, const std::string& path) {
  const auto text = LoadPath(path);
  if (!text) return {};
  auto names = text->GetKeys(section);
  std::erase(names, std::string_view());
  return {names.begin(), names.end()};
}

ProfileDraft LoadProfile(const std::string& path) {
  return Edit(LoadPath(path), {});
}

bool EditProfile(const std::vector<ProfileEdit>& edits, const std::string& path, ProfileBase base,
                 const ProfileDraft* draft) {
  std::string hostPath = ToHostPath(path);
  if (hostPath.empty()) return false;
  hostPath = FollowLinks(hostPath);
  std::shared_ptr<const ProfileText> current;
  if (base == ProfileBase::kCurrent) {
    current = Load(hostPath);
    if (!current && GetLastErrorCode() != kFileNotFound) return false;
  }
  const bool drafted = draft != nullptr && base == ProfileBase::kCurrent && draft->base == current;
  ProfileDraft edited = drafted ? *draft : Edit(std::move(current), edits);
  // Without a change nothing is touched, not even to lock.
  if (!edited.changed && base == ProfileBase::kCurrent) return true;

  Staging staging;
  if (!staging.Open(hostPath)) return FailWithErrno(hostPath);
  return ReplaceLocked(edits, std::move(edited), path, hostPath, base, staging);
}

}  // namespace vemra::platform
