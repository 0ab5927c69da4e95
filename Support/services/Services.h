#pragma once

// The services of the server.

#include "Support/services/Property.h"
#include "Support/services/PropertyArray.h"
#include "Support/services/PropertyHolder.h"
#include "Support/services/WebAction.h"
