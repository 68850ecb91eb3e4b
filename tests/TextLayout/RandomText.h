#pragma once

#include <random>
#include <string>

namespace Vell::Testing {

/// Texts of characters that meet in each other's rules: letters and marks of many scripts, brackets, digits,
/// formatting characters, emoji, jamo, separators, any code point at all, and ill-formed bytes.
class RandomText {
public:
    explicit RandomText(unsigned int seed)
        : _random(seed) {}

    /// Up to `maxParts` parts. Texts without right-to-left and formatting characters are among them.
    std::string make(unsigned int maxParts);

    unsigned int pick(unsigned int count) { return static_cast<unsigned int>(_random() % count); }

private:
    std::mt19937 _random;
};

} // namespace Vell::Testing
