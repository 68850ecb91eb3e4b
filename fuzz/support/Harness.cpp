#include <fuzz/support/Harness.h>

#include <stdexcept>
#include <string>

namespace Vell::Fuzz {

namespace {

struct NamedHarness {
    std::string_view name;
    void (*run)(const Bytes& input);
};

constexpr NamedHarness harnesses[] = {{"font", runFont}, {"text", runText},   {"cache", runCache},
                                      {"sfnt", runSfnt}, {"cairo", runCairo}, {"shape", runShape},
                                      {"vary", runVary}};

} // namespace

void runHarness(std::string_view name, const Bytes& input) {
    for (const NamedHarness& harness : harnesses) {
        if (harness.name == name) {
            harness.run(input);
            return;
        }
    }
    throw std::invalid_argument("there is no harness \"" + std::string(name) + "\"");
}

} // namespace Vell::Fuzz
