#include <CairoAdapter/Private/Color/SweepMesh.h>

#include <CairoAdapter/Private/Color/Sectors.h>

#include <cmath>

namespace Vell::CairoAdapter::Internal {

namespace {

/// A patch spreads its colours evenly along a cubic curve. Over a sixteenth of a turn, an even step along the
/// curve is an even angle to 1/100,000.
constexpr double maxPatchAngle = 0.39269908169872415481;

struct Disc {
    double x;
    double y;
    double radius;
};

void setCorner(cairo_pattern_t* mesh, unsigned int corner, const StraightColor& color) {
    cairo_mesh_pattern_set_corner_color_rgba(mesh, corner, color.red, color.green, color.blue, color.alpha);
}

/// Two of the patch's four corners are the centre of the disc.
void addPatch(cairo_pattern_t* mesh, const Disc& disc, const Sector& sector) {
    const double arm = 4.0 / 3.0 * std::tan((sector.to - sector.from) / 4.0);
    const double fromX = disc.radius * std::cos(sector.from);
    const double fromY = disc.radius * std::sin(sector.from);
    const double toX = disc.radius * std::cos(sector.to);
    const double toY = disc.radius * std::sin(sector.to);
    cairo_mesh_pattern_begin_patch(mesh);
    cairo_mesh_pattern_move_to(mesh, disc.x, disc.y);
    cairo_mesh_pattern_line_to(mesh, disc.x + fromX, disc.y + fromY);
    cairo_mesh_pattern_curve_to(mesh, disc.x + fromX - arm * fromY, disc.y + fromY + arm * fromX,
                                disc.x + toX + arm * toY, disc.y + toY - arm * toX, disc.x + toX,
                                disc.y + toY);
    cairo_mesh_pattern_line_to(mesh, disc.x, disc.y);
    setCorner(mesh, 0, sector.fromColor);
    setCorner(mesh, 1, sector.fromColor);
    setCorner(mesh, 2, sector.toColor);
    setCorner(mesh, 3, sector.toColor);
    cairo_mesh_pattern_end_patch(mesh);
}

void addSector(cairo_pattern_t* mesh, const Disc& disc, const Sector& sector) {
    const double angle = sector.to - sector.from;
    const int count = static_cast<int>(std::ceil(angle / maxPatchAngle));
    for (int i = 0; i < count; ++i) {
        const double begin = static_cast<double>(i) / count;
        const double end = static_cast<double>(i + 1) / count;
        addPatch(mesh, disc,
                 {sector.from + begin * angle, sector.from + end * angle,
                  mix(sector.fromColor, sector.toColor, begin), mix(sector.fromColor, sector.toColor, end)});
    }
}

} // namespace

PatternPtr makeSweepMesh(const FontEngine::SweepGradient& gradient, double radius) {
    // The curves of the disc are not quite round.
    const Disc disc{gradient.center.x, gradient.center.y, radius / std::cos(maxPatchAngle / 2.0)};
    PatternPtr mesh = adoptPattern(cairo_pattern_create_mesh());
    for (const Sector& sector : listSectors(gradient)) {
        addSector(mesh.get(), disc, sector);
    }
    throwIfFailed(cairo_pattern_status(mesh.get()));
    return mesh;
}

} // namespace Vell::CairoAdapter::Internal
