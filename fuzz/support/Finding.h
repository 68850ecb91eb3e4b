#pragma once

#include <stdexcept>
#include <string>

namespace Vell::Fuzz {

/// The engine did what it must not do. Nothing between a harness and the program around it catches this.
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
