// The entry of libFuzzer. FONTENGINE_FUZZED_HARNESS is the function that the executable runs.

#include <fuzz/support/Harness.h>

#include <cstddef>
#include <cstdint>

/// Freed memory rests for as long as 16 MB of it lie about: several inputs long. By default 256 MB do, and
/// the time goes into fresh pages.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=16";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Vell::Fuzz::FONTENGINE_FUZZED_HARNESS(Vell::Fuzz::Bytes(data, data + size));
    return 0;
}
