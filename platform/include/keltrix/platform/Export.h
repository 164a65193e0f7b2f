#pragma once

/// KELTRIX_PLATFORM_API marks what libkeltrix-platform exports. The library is built with hidden visibility, so
/// nothing without the mark can be reached from outside. KELTRIX_PLATFORM_BUILDING is defined only while the library
/// itself is compiled, KELTRIX_PLATFORM_STATIC when it is linked statically.
#if defined(KELTRIX_PLATFORM_STATIC)
#define KELTRIX_PLATFORM_API
#elif defined(_WIN32)
#if defined(KELTRIX_PLATFORM_BUILDING)
#define KELTRIX_PLATFORM_API __declspec(dllexport)
#else
#define KELTRIX_PLATFORM_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define KELTRIX_PLATFORM_API __attribute__((visibility("default")))
#else
#define KELTRIX_PLATFORM_API
#endif

/// KELTRIX_CONSTANT stands before the constants of exported classes: of those whose address a library never takes, g++
/// puts none into a DLL, but what is linked with the DLL looks for them there.
#if defined(_WIN32) && defined(__GNUC__)
#define KELTRIX_CONSTANT [[gnu::used]]
#else
#define KELTRIX_CONSTANT
#endif
