#include <Utils/Public/Assert.h>

#include <cstdio>
#include <cstdlib>

namespace Vell {

void doFailAssert(const char* file, int line, const char* expression) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s\n", file, line, expression);
    std::abort();
}

void doFailAssert(const char* file, int line, const char* expression, const char* message) {
    std::fprintf(stderr, "%s:%d: assertion failed: %s (%s)\n", file, line, expression, message);
    std::abort();
}

} // namespace Vell
