#include "commands/CoverageRoad.h"

#include "fonts/FaceFacts.h"
#include "fonts/FontOrigin.h"
#include "fonts/FontShaper.h"
#include "fonts/RecordingCoverage.h"
#include "output/Printing.h"

#include <Utils/Public/Utf8.h>

#include <fmt/format.h>
#include <fmt/ostream.h>

#include <cstddef>
#include <ostream>
#include <set>
#include <string_view>
#include <vector>

namespace Vell::Tool {

namespace {

using FontLoaders::CoveringFace;

std::u32string decode(std::string_view cluster) {
    std::u32string characters;
    const char* position = cluster.data();
    const char* const end = position + cluster.size();
    while (position != end) {
        characters.push_back(decodeUtf8(position, end));
    }
    return characters;
}

/// "U+0061 a"
std::string describeCluster(std::string_view cluster) {
    std::string codes;
    std::string characters;
    const char* position = cluster.data();
    const char* const end = position + cluster.size();
    while (position != end) {
        const char* const begin = position;
        const char32_t character = decodeUtf8(position, end);
        codes += (codes.empty() ? "" : " ") + formatCodePoint(character);
        characters += makePrintable(character, {begin, static_cast<std::size_t>(position - begin)});
    }
    return codes + (characters.empty() ? "" : " ") + characters;
}

/// The fonts of the clusters of a text, and the questions that led to them.
class Road {
public:
    explicit Road(const FallbackOptions& options)
        : _options(options)
        , _shaper(options.font, {"", options.language, "auto"}, true)
        , _ownFaceInfo(_shaper.getFont().setting->getFontInfo()->getFontFaceInfo()) {}

    void print(const std::string& text, std::ostream& out) {
        _shaper.shape(text);
        std::set<std::string_view> seen;
        const std::vector<std::size_t> boundaries = TextLayout::findGraphemeBoundaries(text);
        for (std::size_t i = 1; i < boundaries.size(); ++i) {
            const auto cluster =
                std::string_view(text).substr(boundaries[i - 1], boundaries[i] - boundaries[i - 1]);
            const bool isDrawn = cluster.find_first_of("\t\r\n") != 0;
            if (isDrawn && seen.insert(cluster).second) {
                fmt::print(out, "  {}: {}\n", describeCluster(cluster), explain(decode(cluster)));
            }
        }
    }

private:
    std::string explain(const std::u32string& cluster) const {
        const RecordingCoverage::Answer* const answer = _shaper.getCoverage()->findAnswer(cluster);
        if (answer == nullptr) {
            return "own font";
        }
        if (!*answer) {
            return "none";
        }
        const CoveringFace& found = **answer;
        if (*found.drawnFace == *_ownFaceInfo) {
            return "own font";
        }
        return explain(cluster, found);
    }

    std::string explain(const std::u32string& cluster, const CoveringFace& found) const {
        const bool isEmoji =
            FontLoaders::findPresentation(cluster) == FontLoaders::ClusterPresentation::Emoji;
        return fmt::format("{}{}, {}", isEmoji ? "emoji presentation, " : "", describeFace(found),
                           isEmoji ? "first in the order for emoji" : describeOrder(found));
    }

    std::string describeFace(const CoveringFace& found) const {
        const auto face = _shaper.getSource().getFactory()->shareFace(found.drawnFace);
        const auto place = findPlace(*_shaper.getSource().getLoader(), face->getFaceData().bytes);
        return getFullName(*face) + (place ? fmt::format(", {} (face {})", place->file, place->index) : "");
    }

    std::string describeOrder(const CoveringFace& found) const {
        const std::string own = _ownFaceInfo->getName();
        if (found.face->getName() == own) {
            return "of the own family";
        }
        return fmt::format("first in the order for \"{}\" in {}", _options.font.file ? defaultFamily : own,
                           _options.language.empty() ? "the language of the process" : _options.language);
    }

    const FallbackOptions& _options;
    FontShaper _shaper;
    NNPtr<const Gfx::FontFaceInfo> _ownFaceInfo;
};

} // namespace

void printCoverage(const FallbackOptions& options, const std::string& text, std::ostream& out) {
    out << "coverage:\n";
    Road(options).print(text, out);
}

} // namespace Vell::Tool
