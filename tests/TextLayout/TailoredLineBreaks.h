#pragma once

namespace Vell::Testing {

/// A line of LineBreakTest.txt that ICU 72 divides in another way, as the file has it and as ICU has it.
struct TailoredLineBreak {
    const char* published;
    const char* found;
    const char* reason;
};

constexpr const char* hyphen = "a hyphen at the beginning of a word stays with what follows, as in Finnish";
constexpr const char* separator = "a number may begin with its separator, so the digit stays with it";
constexpr const char* decimalPoint =
    "a number may begin with its decimal point, so the line ends before the point";

constexpr TailoredLineBreak tailoredLineBreaks[] = {
    {"× 002D ÷ 0023 ÷", "× 002D × 0023 ÷", hyphen},
    {"× 002D × 0308 ÷ 0023 ÷", "× 002D × 0308 × 0023 ÷", hyphen},
    {"× 002D ÷ 00A7 ÷", "× 002D × 00A7 ÷", hyphen},
    {"× 002D × 0308 ÷ 00A7 ÷", "× 002D × 0308 × 00A7 ÷", hyphen},
    {"× 002D ÷ 50005 ÷", "× 002D × 50005 ÷", hyphen},
    {"× 002D × 0308 ÷ 50005 ÷", "× 002D × 0308 × 50005 ÷", hyphen},
    {"× 002D ÷ 0E01 ÷", "× 002D × 0E01 ÷", hyphen},
    {"× 002D × 0308 ÷ 0E01 ÷", "× 002D × 0308 × 0E01 ÷", hyphen},
    {"× 002C ÷ 0030 ÷", "× 002C × 0030 ÷", separator},
    {"× 002C × 0308 ÷ 0030 ÷", "× 002C × 0308 × 0030 ÷", separator},
    {"× 0065 × 0071 × 0075 × 0061 × 006C × 0073 × 0020 × 002E ÷ 0033 × 0035 × 0020 ÷ 0063 × 0065 × 006E × "
     "0074 × 0073 ÷",
     "× 0065 × 0071 × 0075 × 0061 × 006C × 0073 × 0020 ÷ 002E × 0033 × 0035 × 0020 ÷ 0063 × 0065 × 006E × "
     "0074 × 0073 ÷",
     decimalPoint},
    {"× 0061 × 002E ÷ 0032 × 0020 ÷", "× 0061 × 002E × 0032 × 0020 ÷", separator},
    {"× 0061 × 002E ÷ 0032 × 0020 ÷ 0915 ÷", "× 0061 × 002E × 0032 × 0020 ÷ 0915 ÷", separator},
    {"× 0061 × 002E ÷ 0032 × 0020 ÷ 672C ÷", "× 0061 × 002E × 0032 × 0020 ÷ 672C ÷", separator},
    {"× 0061 × 002E ÷ 0032 × 3000 ÷ 672C ÷", "× 0061 × 002E × 0032 × 3000 ÷ 672C ÷", separator},
    {"× 0061 × 002E ÷ 0032 × 3000 ÷ 307E ÷", "× 0061 × 002E × 0032 × 3000 ÷ 307E ÷", separator},
    {"× 0061 × 002E ÷ 0032 × 3000 ÷ 0033 ÷", "× 0061 × 002E × 0032 × 3000 ÷ 0033 ÷", separator},
    {"× 0041 × 002E ÷ 0031 × 0020 ÷ BABB ÷", "× 0041 × 002E × 0031 × 0020 ÷ BABB ÷", separator},
    {"× BD24 ÷ C5B4 × 002E × 0020 ÷ 0041 × 002E ÷ 0032 × 0020 ÷ BCFC ÷",
     "× BD24 ÷ C5B4 × 002E × 0020 ÷ 0041 × 002E × 0032 × 0020 ÷ BCFC ÷", separator},
    {"× BD10 ÷ C694 × 002E × 0020 ÷ 0041 × 002E ÷ 0033 × 0020 ÷ BABB ÷",
     "× BD10 ÷ C694 × 002E × 0020 ÷ 0041 × 002E × 0033 × 0020 ÷ BABB ÷", separator},
    {"× C694 × 002E × 0020 ÷ 0041 × 002E ÷ 0034 × 0020 ÷ BABB ÷",
     "× C694 × 002E × 0020 ÷ 0041 × 002E × 0034 × 0020 ÷ BABB ÷", separator},
    {"× 0061 × 002E ÷ 0032 × 3000 ÷ 300C ÷", "× 0061 × 002E × 0032 × 3000 ÷ 300C ÷", separator}};

} // namespace Vell::Testing
