#include <FontLoaders/Private/StyleSelection.h>

#include <cmath>
#include <functional>
#include <tuple>

namespace Vell::FontLoaders::Internal {

namespace {

struct Style {
    bool bold;
    bool italic;
};

/// From plain to what is least like it.
constexpr Style stylesByLikeness[] = {{false, false}, {true, false}, {false, true}, {true, true}};

bool isNearer(const InstalledFace& lhs, const InstalledFace& rhs, double weight) {
    const auto getDistance = [weight](const InstalledFace& face) {
        return std::make_tuple(std::abs(face.weight - weight), std::abs(face.width - FC_WIDTH_NORMAL),
                               std::cref(face.file), face.index);
    };
    return getDistance(lhs) < getDistance(rhs);
}

} // namespace

const InstalledFace* selectFace(const Faces& faces, bool bold, bool italic) {
    const double weight = bold ? FC_WEIGHT_BOLD : FC_WEIGHT_REGULAR;
    const InstalledFace* nearest = nullptr;
    for (const InstalledFace* face : faces) {
        const bool hasStyle = face->isBold() == bold && face->isItalic() == italic;
        if (hasStyle && (nearest == nullptr || isNearer(*face, *nearest, weight))) {
            nearest = face;
        }
    }
    return nearest;
}

const InstalledFace* selectPlainFace(const Faces& faces) {
    for (const Style& style : stylesByLikeness) {
        if (const InstalledFace* face = selectFace(faces, style.bold, style.italic)) {
            return face;
        }
    }
    return nullptr;
}

} // namespace Vell::FontLoaders::Internal
