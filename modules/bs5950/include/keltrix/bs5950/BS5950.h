#pragma once

// Everything that the BS 5950-1:2000 module exports.
#include "keltrix/bs5950/Capacity.h"
#include "keltrix/bs5950/Classification.h"
#include "keltrix/bs5950/DesignCode.h"
#include "keltrix/bs5950/DesignOptions.h"
#include "keltrix/bs5950/Export.h"
#include "keltrix/bs5950/Ledger.h"
#include "keltrix/bs5950/Material.h"
#include "keltrix/bs5950/Resistance.h"
#include "keltrix/bs5950/Results.h"
#include "keltrix/bs5950/SectionBS5950.h"
#include "keltrix/bs5950/SectionProperties.h"
#include "keltrix/bs5950/SteelMemberBS5950.h"
