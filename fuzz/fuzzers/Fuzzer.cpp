// The entry of libFuzzer. FONTENGINE_FUZZED_HARNESS is the function that the executable runs.

#include <fuzz/support/Harness.h>

#include <cstddef>
#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Vell::Fuzz::FONTENGINE_FUZZED_HARNESS(Vell::Fuzz::Bytes(data, data + size));
    return 0;
}
