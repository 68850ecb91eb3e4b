#pragma once

/// Marks what leaves a shared library of the family; everything else is hidden. Every polymorphic class and
/// every exception carries it, because clients catch and dynamic_cast them. A static build exports nothing.
#if defined(FONTENGINE_STATIC)
#define VELL_API
#else
#define VELL_API __attribute__((visibility("default")))
#endif
