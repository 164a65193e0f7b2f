#pragma once

/// KELTRIX_BS5950_API marks what libkeltrix-bs5950 exports. The library is built with hidden visibility, so nothing
/// without the mark can be reached from outside. KELTRIX_BS5950_BUILDING is defined only while the library itself is
/// compiled, KELTRIX_BS5950_STATIC when it is linked statically.
#if defined(KELTRIX_BS5950_STATIC)
#define KELTRIX_BS5950_API
#elif defined(_WIN32)
#if defined(KELTRIX_BS5950_BUILDING)
#define KELTRIX_BS5950_API __declspec(dllexport)
#else
#define KELTRIX_BS5950_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KELTRIX_BS5950_API __attribute__((visibility("default")))
#else
#define KELTRIX_BS5950_API
#endif
