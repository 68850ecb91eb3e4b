#include "RandomText.h"

#include "ConformanceFile.h"

namespace Vell::Testing {

namespace {

constexpr char32_t plain[] =
    U"ab "
    U"12.,-()[]{}\t\n\r\u00AD\u0085\u2028\u2029\u0301\u0308\u20E3\u03B1\u0416\u4E00\u3042\u30A2\u3099\u3008"
    U"\u232A\uAC00\uAC01\u1100\u1161\u11A8\u0915\u0930\u0937\u094D\u093F\u093E\u094B\u0985\u09CD\u0D15\u0D4D"
    U"\u0B95\u0BCD\u0BBF\u0E01\u0E33\u1780\u17D2\u1000\u1039\u200B\u200C\u200D\u2060\uFE0F\uFE0E\u2764"
    U"\u00A9\U0001F468\U0001F469\U0001F3FD\U0001F1E9\U0001F1EA\U0001F600\U000E0067\U000E007F\u0D4E\u202C"
    U"\u2069"
    U"\u1B05\u1B44\u0F40\u0FB2\u200E";
constexpr char32_t raising[] =
    U"\u05D0\u05D1\u0627\u0628\u064E\u0661\u0600\u200F\u061C\u202A\u202B\u202D\u202E"
    U"\u2066\u2067\u2068\U00010A00\U0001E900\U0001EE00";

template <std::size_t size>
char32_t pickFrom(RandomText& text, const char32_t (&characters)[size]) {
    return characters[text.pick(static_cast<unsigned int>(size - 1))];
}

char32_t pickAny(RandomText& text) {
    const char32_t any = text.pick(0x110000);
    const bool isSurrogate = any >= 0xD800 && any < 0xE000;
    return isSurrogate ? U'?' : any;
}

} // namespace

std::string RandomText::make(unsigned int maxParts) {
    const bool mayRaise = pick(2) == 0;
    std::string text;
    for (unsigned int parts = pick(maxParts + 1); parts > 0; --parts) {
        const unsigned int kind = pick(20);
        if (kind == 0 && mayRaise) {
            appendUtf8(text, pickAny(*this));
        } else if (kind == 1) {
            text.push_back(static_cast<char>(0x80 + pick(0x80)));
        } else if (kind < 8 && mayRaise) {
            appendUtf8(text, pickFrom(*this, raising));
        } else {
            appendUtf8(text, pickFrom(*this, plain));
        }
    }
    return text;
}

} // namespace Vell::Testing
