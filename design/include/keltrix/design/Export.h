#pragma once

/// KELTRIX_DESIGN_API marks what libkeltrix-design exports. KELTRIX_DESIGN_BUILDING is defined only while the library itself
/// is compiled, KELTRIX_DESIGN_STATIC when it is linked statically.
#if defined(KELTRIX_DESIGN_STATIC)
#define KELTRIX_DESIGN_API
#elif defined(_WIN32)
#if defined(KELTRIX_DESIGN_BUILDING)
#define KELTRIX_DESIGN_API __declspec(dllexport)
#else
#define KELTRIX_DESIGN_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KELTRIX_DESIGN_API __attribute__((visibility("default")))
#else
#define KELTRIX_DESIGN_API
#endif
