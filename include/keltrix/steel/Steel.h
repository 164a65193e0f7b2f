#pragma once

// Everything that the steel member design library exports.
#include "keltrix/steel/CodeShare.h"
#include "keltrix/steel/Export.h"
#include "keltrix/steel/MemberLayout.h"
#include "keltrix/steel/MemberResult.h"
#include "keltrix/steel/Restraint.h"
#include "keltrix/steel/SectionGeometry.h"
#include "keltrix/steel/SectionShapes.h"
#include "keltrix/steel/SteelMember.h"
