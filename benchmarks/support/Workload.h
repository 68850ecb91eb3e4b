#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Benchmarks {

/// A text as a program draws it, line by line, and the font file that covers it.
struct Workload {
    std::string name;
    std::string fontFile;
    std::string fontFamily; ///< what fontconfig calls that font
    std::vector<std::string> lines;

    std::size_t countCharacters() const;
};

/// English prose.
const Workload& getEnglish();
/// Cyrillic, Greek and Latin in turn.
const Workload& getMixed();
/// 80 short labels, as menus and tables have them.
const Workload& getLabels();
/// Chinese and Japanese prose.
const Workload& getCjk();
/// A form to fill in: underscores, which the engine colours by sub-pixels.
const Workload& getForm();

/// All five.
std::vector<const Workload*> getWorkloads();

/// The code points of well-formed UTF-8.
std::vector<unsigned int> decode(const std::string& text);

constexpr float pixelSize = 14.0F;

} // namespace Vell::Benchmarks
