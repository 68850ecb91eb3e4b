#pragma once

#include <support/ByteWriter.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

/// The tables of a variable font. Coordinates of axes are normalised: -1 is the minimum, 0 the default, 1 the
/// maximum.
namespace Vell::Testing::Variations {

struct Axis {
    std::string tag;
    int minimum;
    int defaultValue;
    int maximum;
};

/// Where a change is felt along an axis: not at all outside of the start and the end, fully at the peak.
struct Reach {
    float start;
    float peak;
    float end;
};

/// One for each axis. An axis with a peak of 0 does not matter.
using Region = std::vector<Reach>;

/// From 0 to this end of an axis.
constexpr Reach toMaximum = {0.0F, 1.0F, 1.0F};
constexpr Reach toMinimum = {-1.0F, -1.0F, 0.0F};
constexpr Reach everywhere = {0.0F, 0.0F, 0.0F};

/// How far a point moves, in font units. After the points of a glyph (for a composite one, its parts) come
/// four for its metrics: the second is the end of the advance.
struct PointChange {
    unsigned int point;
    int x;
    int y;
};

/// The points that move at the peak of a region. The movement of others is inferred from them.
struct GlyphChange {
    Region region;
    std::vector<PointChange> points;
};

/// A number of a list that changes: of an advance in HVAR, of a metric in MVAR, of a control value in cvar.
struct NumberChange {
    Region region;
    unsigned int number;
    int change;
};

/// The axes and no named instances; their names are the one with the number 2.
Bytes makeFvar(const std::vector<Axis>& axes);

/// For each axis, pairs of coordinates: where a design coordinate is, and where it is moved to.
Bytes makeAvar(const std::vector<std::vector<std::pair<float, float>>>& maps);

/// One list for each glyph.
Bytes makeGvar(std::size_t axisCount, const std::vector<std::vector<GlyphChange>>& glyphs);

Bytes makeHvar(std::size_t axisCount, std::size_t glyphCount, const std::vector<NumberChange>& advances);

/// The numbers of the changes count the tags.
Bytes makeMvar(std::size_t axisCount, const std::vector<std::string>& tags,
               const std::vector<NumberChange>& metrics);

Bytes makeCvar(const std::vector<NumberChange>& controlValues);

} // namespace Vell::Testing::Variations
