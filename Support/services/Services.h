#pragma once

// All of the server services.
#include "Support/services/AccessEntry.h"
#include "Support/services/AccessFile.h"
#include "Support/services/DBAccess.h"
#include "Support/services/Log.h"
#include "Support/services/Profiler.h"
#include "Support/services/Property.h"
#include "Support/services/PropertyArray.h"
#include "Support/services/PropertyHolder.h"
#include "Support/services/Statistic.h"
#include "Support/services/StopIndexingEvent.h"
#include "Support/services/Trace.h"
#include "Support/services/TraceModules.h"
#include "Support/services/WebAction.h"
