// The entry point of libFuzzer. FONTENGINE_FUZZED_HARNESS is the function that the executable runs.

#include <fuzz/support/Harness.h>

#include <cstddef>
#include <cstdint>

/// A quarantine of 16 MB keeps freed memory for several inputs. With the default of 256 MB, most of the time
/// goes into fresh pages.
extern "C" const char* __asan_default_options() {
    return "quarantine_size_mb=16";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Vell::Fuzz::FONTENGINE_FUZZED_HARNESS(Vell::Fuzz::Bytes(data, data + size));
    return 0;
}
