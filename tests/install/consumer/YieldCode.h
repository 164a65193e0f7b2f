#pragma once

#include <keltrix/steel/Steel.h>

/// A host's first look at a module: the library knows no design code, so the module hands the member out.
[[gnu::visibility("default")]] Keltrix::Steel::CSteelMember* NewYieldMember();
