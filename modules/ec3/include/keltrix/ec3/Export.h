#pragma once

/// KELTRIX_EC3_API marks what libkeltrix-ec3 exports. The library is built with hidden visibility, so nothing
/// without the mark can be reached from outside. KELTRIX_EC3_BUILDING is defined only while the library itself is
/// compiled, KELTRIX_EC3_STATIC when it is linked statically.
#if defined(KELTRIX_EC3_STATIC)
#define KELTRIX_EC3_API
#elif defined(_WIN32)
#if defined(KELTRIX_EC3_BUILDING)
#define KELTRIX_EC3_API __declspec(dllexport)
#else
#define KELTRIX_EC3_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KELTRIX_EC3_API __attribute__((visibility("default")))
#else
#define KELTRIX_EC3_API
#endif
