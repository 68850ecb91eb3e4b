#pragma once

/// Marks what a shared library exports; everything else is hidden. Every polymorphic class and every
/// exception carries the mark, because clients use dynamic_cast on them and catch them. A static build
/// exports nothing.
#if defined(FONTENGINE_STATIC)
#define VELL_API
#else
#define VELL_API __attribute__((visibility("default")))
#endif
