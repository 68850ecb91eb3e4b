#pragma once

#include <FontLoaders/Private/Installed/FaceCatalog.h>

#include <string>
#include <vector>

namespace Vell::FontLoaders::Internal {

struct FaceStyle {
    bool bold;
    bool italic;
};

inline bool operator==(const FaceStyle& lhs, const FaceStyle& rhs) {
    return lhs.bold == rhs.bold && lhs.italic == rhs.italic;
}

/// A face of a family, which the loader serves for `style`.
struct StyledFace {
    const InstalledFace* face;
    FaceStyle style;
    FaceStyle drawnStyle; ///< the style to ask a font factory for, which adds to the face what this has more
};

/// A family with one face of each style that it has. The face for the wanted style comes first, or the one
/// that a font factory takes instead.
struct StyledFamily {
    std::string name;
    std::vector<StyledFace> faces;
};

StyledFamily makeStyledFamily(const std::string& name, const Faces& faces, const FaceStyle& wanted);

} // namespace Vell::FontLoaders::Internal
