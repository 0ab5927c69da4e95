#pragma once

// All of the foundation: utilities, profile files, settings, the registry store, fingerprint and
// scrambling.

#include "Support/foundation/BinaryRecords.h"
#include "Support/foundation/DateTime.h"
#include "Support/foundation/Dates.h"
#include "Support/foundation/Errors.h"
#include "Support/foundation/FastFileINI.h"
#include "Support/foundation/File.h"
#include "Support/foundation/FolderPicker.h"
#include "Support/foundation/HostPath.h"
#include "Support/foundation/INIException.h"
#include "Support/foundation/INIWorker.h"
#include "Support/foundation/Paths.h"
#include "Support/foundation/Position.h"
#include "Support/foundation/ProfileReader.h"
#include "Support/foundation/ProfileWriter.h"
#include "Support/foundation/Registry.h"
#include "Support/foundation/RegistryKey.h"
#include "Support/foundation/Scramble.h"
#include "Support/foundation/Signature32.h"
#include "Support/foundation/Strings.h"
#include "Support/foundation/VemraConfig.h"
#include "Support/foundation/Wildcard.h"
