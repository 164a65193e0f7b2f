#pragma once

/// KELTRIX_STEEL_API marks what libkeltrix-steel exports. The library is built with hidden visibility, so
/// nothing without the mark can be reached from outside. KELTRIX_STEEL_BUILDING is defined only while the library
/// itself is compiled, KELTRIX_STEEL_STATIC when it is linked statically.
#if defined(KELTRIX_STEEL_STATIC)
#define KELTRIX_STEEL_API
#elif defined(_WIN32)
#if defined(KELTRIX_STEEL_BUILDING)
#define KELTRIX_STEEL_API __declspec(dllexport)
#else
#define KELTRIX_STEEL_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KELTRIX_STEEL_API __attribute__((visibility("default")))
#else
#define KELTRIX_STEEL_API
#endif
