#pragma once

/// KELTRIX_STATICS_API marks what libkeltrix-statics exports. KELTRIX_STATICS_BUILDING is defined only while the library itself
/// is compiled, KELTRIX_STATICS_STATIC when it is linked statically.
#if defined(KELTRIX_STATICS_STATIC)
#define KELTRIX_STATICS_API
#elif defined(_WIN32)
#if defined(KELTRIX_STATICS_BUILDING)
#define KELTRIX_STATICS_API __declspec(dllexport)
#else
#define KELTRIX_STATICS_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KELTRIX_STATICS_API __attribute__((visibility("default")))
#else
#define KELTRIX_STATICS_API
#endif
