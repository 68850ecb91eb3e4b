#pragma once

#include <cinder/Color.h>

#include <cstddef>
#include <string>
#include <vector>

namespace Vell::Benchmarks {

/// The size of most texts.
constexpr float usualPixelSize = 14.0F;

/// Near black, the colour of most texts.
constexpr cinder::ColorAT<unsigned char> usualInk{20, 30, 40, 255};

/// A text as a program draws it, line by line, with a font file that covers it, its size and its colour.
struct Workload {
    std::string name;
    std::string fontFile;
    std::string fontFamily; ///< the name of the font in fontconfig
    std::vector<std::string> lines;
    float pixelSize = usualPixelSize;
    cinder::ColorAT<unsigned char> ink = usualInk;

    std::size_t countCharacters() const;
    /// Whether the engine draws any part of it as coloured sub-pixels.
    bool hasUnderscores() const;
};

/// English prose.
const Workload& getEnglish();
/// Cyrillic, Greek and Latin in turn.
const Workload& getMixed();
/// 80 short labels, as in menus and tables.
const Workload& getLabels();
/// Chinese and Japanese prose.
const Workload& getCjk();
/// A form to fill in, with many underscores, which the engine draws as coloured sub-pixels.
const Workload& getForm();

/// English prose in a face with serifs, somewhat larger than the others.
const Workload& getProse();
/// Source code in a monospaced face, somewhat smaller than the others: many underscores, in blue.
const Workload& getCode();

/// All seven.
std::vector<const Workload*> getWorkloads();

/// Prose in scripts whose letters must be shaped.
const Workload& getArabic();
const Workload& getDevanagari();
const Workload& getThai();

/// English, mixed, labels and CJK of the others, and these three.
std::vector<const Workload*> getShapedWorkloads();

/// The code points of well-formed UTF-8.
std::vector<unsigned int> decode(const std::string& text);

} // namespace Vell::Benchmarks
