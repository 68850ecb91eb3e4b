#pragma once

#include <stdexcept>
#include <string>

namespace Vell::Fuzz {

/// The engine broke a rule. Only the program that runs the harness may catch this.
class Finding : public std::logic_error {
public:
    using std::logic_error::logic_error;
};

inline void require(bool holds, const char* rule) {
    if (!holds) {
        throw Finding(std::string("broken rule: ") + rule);
    }
}

} // namespace Vell::Fuzz
