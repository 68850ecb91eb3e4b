#include "commands/ShapeDocument.h"

#include "commands/JsonString.h"
#include "fonts/FaceFacts.h"
#include "fonts/FontOrigin.h"

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <algorithm>
#include <ostream>
#include <string>
#include <vector>

namespace Vell::Tool {

namespace {

using TextLayout::RunFont;
using TextLayout::ShapedGlyph;
using TextLayout::ShapedRun;
using TextLayout::ShapedRuns;
using TextLayout::ShapedText;

/// The members of a run that name its font.
std::string describeFont(const RunFont& font, const RecordingFontLoader& loader) {
    const FontEngine::FontFace& face = *font.font.getFace();
    const auto place = findPlace(loader, face.getFaceData().bytes);
    return fmt::format(R"("family":{},"file":{},"index":{})", makeJsonString(getFamilyName(face)),
                       makeJsonString(place ? place->file : ""), place ? place->index : 0);
}

class Document {
public:
    Document(const ShapedText& text, const RecordingFontLoader& loader, std::ostream& out)
        : _text(text)
        , _out(out) {
        for (const RunFont& font : text.getFonts()) {
            _fonts.push_back(describeFont(font, loader));
        }
    }

    void print() {
        const ShapedRuns& runs = _text.getRuns();
        _out << R"({"runs":[)";
        for (auto run = runs.begin(); run != runs.end();) {
            auto end = run + 1;
            while (end != runs.end() && looksLikeOneRun(*(end - 1), *end)) {
                ++end;
            }
            _out << (run != runs.begin() ? "," : "");
            print(run, end);
            run = end;
        }
        _out << "]}";
    }

private:
    using RunIterator = ShapedRuns::const_iterator;

    /// Whether nothing that the document shows differs between neighbours, such as those of two paragraphs.
    bool looksLikeOneRun(const ShapedRun& left, const ShapedRun& right) const {
        const bool isAdjacent = left.isRightToLeft() ? right.end == left.begin : left.end == right.begin;
        return isAdjacent && left.level == right.level && left.script == right.script &&
               _fonts[left.font] == _fonts[right.font];
    }

    void print(RunIterator begin, RunIterator end) {
        const ShapedRun& last = *(end - 1);
        fmt::print(_out, R"({{{},"script":"{}","direction":"{}","level":{},"start":{},"end":{},"glyphs":[)",
                   _fonts[begin->font], begin->script.getLetters(), begin->isRightToLeft() ? "rtl" : "ltr",
                   begin->level, std::min(begin->begin, last.begin), std::max(begin->end, last.end));
        const char* separator = "";
        for (auto run = begin; run != end; ++run) {
            for (std::uint32_t i = run->glyphBegin; i != run->glyphEnd; ++i) {
                print(_text.getGlyphs()[i], separator);
                separator = ",";
            }
        }
        _out << "]}";
    }

    void print(const ShapedGlyph& glyph, const char* separator) {
        fmt::print(_out, R"({}{{"g":{},"cl":{},"dx":{},"dy":{},"ax":{},"ay":0}})", separator, glyph.index,
                   glyph.cluster, glyph.xOffset, glyph.yOffset, glyph.advance);
    }

    const ShapedText& _text;
    std::ostream& _out;
    std::vector<std::string> _fonts; // by their index in the text
};

} // namespace

void printShape(const FontShaper& shaper, std::string_view text, std::ostream& out) {
    Document(*shaper.shape(text), *shaper.getSource().getLoader(), out).print();
}

} // namespace Vell::Tool
