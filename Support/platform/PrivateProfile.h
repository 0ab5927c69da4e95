#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "Support/platform/ProfileText.h"

namespace vemra::platform {

// The system's private-profile calls. On Windows they are the system's own. On Linux they answer
// alike from memory: a file is parsed once, and again only when its identity, size or time of
// change differ from those of the last call.
//
// path is in the Windows form; a relative one is under the current folder. Any thread may call. A
// writer excludes other writers of the file, in this and other processes, for the length of the
// call; on Linux it waits for them, on Windows it fails. On Linux the file is replaced as a whole:
// readers and a kill at any moment meet the old or the new file. On Windows it is rewritten in
// place, as the system does. A file that another opener holds with writers denied cannot be
// written.

// Stores the answer with its terminating NUL in buffer (size bytes in all) and returns its length.
// A missing key gives fallback. With a null key the answer is the list of the section's keys, and
// with a null section that of the sections: each name ends with a NUL, and one more ends the list.
// What does not fit is cut: a string to size - 1 characters, a list to size - 2 and one NUL.
// fallback loses one pair of enclosing quotes and, unless it stands in for a list, first its
// trailing blanks.
std::uint32_t QueryProfile(const char* section, const char* key, const char* fallback, char* buffer,
                           std::uint32_t size, const std::string& path);

// A null value removes the key, a null key the section. False, with the system's error set, when
// the file cannot be written.
bool WriteProfile(const char* section, const char* key, const char* value, const std::string& path);

// As QueryProfile, for at most limit characters (kNoLimit: the whole value).
inline constexpr std::size_t kNoLimit = SIZE_MAX;
std::string ReadProfileString(const std::string& section, const std::string& key,
                              const std::string& fallback, std::size_t limit,
                              const std::string& path);
// The names in file order, without empty ones.
std::vector<std::string> ReadProfileSections(const std::string& path);
std::vector<std::string> ReadProfileKeys(const std::string& section, const std::string& path);

// A profile in memory, to be edited there and stored by EditProfile.
struct ProfileDraft {
  ProfileText text;
  bool changed = false;                     // by edits since it was loaded
  std::shared_ptr<const ProfileText> base;  // what was loaded, for the platform's own use
};
// The file in memory, empty when it cannot be read. (On Windows it is read as ProfileText says, a
// UTF-16 file not at all.)
ProfileDraft LoadProfile(const std::string& path);
// What edits are applied to: what the file holds when they are stored, or nothing.
enum class ProfileBase { kCurrent, kEmpty };
// Applies the edits in order and stores the result at once. False as for WriteProfile; nothing is
// changed then. draft is null, or what LoadProfile gave with the same edits applied: they are not
// applied again when the file still is what was loaded.
bool EditProfile(const std::vector<ProfileEdit>& edits, const std::string& path,
                 ProfileBase base = ProfileBase::kCurrent, const ProfileDraft* draft = nullptr);

}  // namespace vemra::platform
