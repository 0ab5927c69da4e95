#pragma once

#include "Support/foundation/File.h"

// Share modes as open-file-description locks, which belong to the open file: they hold between
// threads and processes and end with the last descriptor of the open file.
namespace vemra::platform {

// Registers what the opener does and refuses to others. kSharingViolation when that and what other
// openers have registered exclude each other.
bool ClaimShare(int descriptor, TavoFile::Access access, TavoFile::Share share);

// Whether anybody has registered on this file.
bool IsShareClaimed(int descriptor);

}  // namespace vemra::platform
