#pragma once

/// KELTRIX_STABILITY_API marks what libkeltrix-stability exports. KELTRIX_STABILITY_BUILDING is defined only while the library itself
/// is compiled, KELTRIX_STABILITY_STATIC when it is linked statically.
#if defined(KELTRIX_STABILITY_STATIC)
#define KELTRIX_STABILITY_API
#elif defined(_WIN32)
#if defined(KELTRIX_STABILITY_BUILDING)
#define KELTRIX_STABILITY_API __declspec(dllexport)
#else
#define KELTRIX_STABILITY_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KELTRIX_STABILITY_API __attribute__((visibility("default")))
#else
#define KELTRIX_STABILITY_API
#endif
