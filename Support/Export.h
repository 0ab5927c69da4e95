#pragma once

// SUPPORT_API marks what the library exports. SUPPORT_BUILD is set while the library itself, or a
// test that contains its objects, is built.

#if defined(_WIN32)
#if defined(SUPPORT_BUILD)
#define SUPPORT_API __declspec(dllexport)
#else
#define SUPPORT_API __declspec(dllimport)
#endif
#else
#define SUPPORT_API __attribute__((visibility("default")))
#endif

// SUPPORT_PRINTF(f, a): argument f is a printf format and its arguments begin at a (counted from 1;
// a member function's object counts too).
#if defined(_WIN32)
#define SUPPORT_PRINTF(f, a) __attribute__((format(gnu_printf, f, a)))
#else
#define SUPPORT_PRINTF(f, a) __attribute__((format(printf, f, a)))
#endif
