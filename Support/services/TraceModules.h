#pragma once

#include <cstdint>

namespace vemra {

// The module bits of the library's trace calls. The trace setting "Module" is a mask of them; a
// program's own modules use the upper half, from 0x10000 on.
enum TraceModule : std::uint32_t {
  kTraceFoundation = 0x01,  // paths, profile files, settings
  kTraceDefinition = 0x02,  // the definition files of a database
  kTraceLanguage = 0x04,    // language packs
  kTraceText = 0x08,        // sections, scanner, parse driver
  kTraceOutput = 0x10,      // output, highlighting, result view
  kTraceAccess = 0x20,      // the access file of a database
  kTraceNetwork = 0x40,     // URLs, DDE
  kTraceServer = 0x80,      // thread pool, server configuration
};

}  // namespace vemra
