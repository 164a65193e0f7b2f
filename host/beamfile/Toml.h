#pragma once

// toml++ as headers alone, within the sources of this folder: no library to link, and nesting of values bounded, because it reads and destroys
// them by recursion.
#define TOML_HEADER_ONLY 1
#define TOML_MAX_NESTED_VALUES 32
#include <toml++/toml.h>
