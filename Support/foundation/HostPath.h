#pragma once

#include <string>

#include "Support/Export.h"

namespace vemra {

// The library names every file in the Windows form, on both systems; these two translate for
// programs that take host paths from a person. Safe from any thread.
//
// On Windows ToHostPath returns its argument, and FromHostPath turns slashes into backslashes.
// On Linux:
// - Drive Z: is the host's root folder: Z:\srv\a.cfg is /srv/a.cfg, and the other way round.
// - The environment variable VEMRA_DRIVES maps further drives and network shares to host folders:
//   "C=/srv/c;\\server\share=/mnt/share". A drive or share that is not mapped does not exist.
//   Z: cannot be mapped elsewhere.
// - A relative path is under the current folder. The current drive is always Z:, so \srv is /srv;
//   Z:name is under the current folder, and any other X:name under that drive's root.
// - "." and ".." are taken out by text before the system sees the path, as on Windows; slashes
//   separate like backslashes, and separators in a row count once.
// - An existing file is found by its exact name first and else without regard to the case of ASCII
//   letters, component by component; of several such names the first in byte order is taken. What
//   does not exist keeps its spelling.

// The host path, or an empty string for a path that no host file can have: an empty one, one on an
// unmapped drive or share, one with a colon in a name.
SUPPORT_API std::string ToHostPath(const std::string& path);

// The Windows form; a relative path stays relative. Empty for a path that the Windows form cannot
// say, because a name in it holds a backslash or a colon.
SUPPORT_API std::string FromHostPath(const std::string& hostPath);

}  // namespace vemra
