#pragma once

// All of the server services.
#include "Support/services/Property.h"
#include "Support/services/PropertyArray.h"
#include "Support/services/PropertyHolder.h"
#include "Support/services/Trace.h"
#include "Support/services/TraceModules.h"
#include "Support/services/WebAction.h"
