#include <FontLoaders/Private/Coverage/StyledFamily.h>

#include <algorithm>

namespace Vell::FontLoaders::Internal {

namespace {

constexpr FaceStyle regular = {false, false};
constexpr FaceStyle boldStyle = {true, false};
constexpr FaceStyle italicStyle = {false, true};
constexpr FaceStyle boldItalic = {true, true};

/// All styles, in the order in which a font factory tries them for `wanted`, some of them twice.
std::vector<FaceStyle> listStyles(const FaceStyle& wanted) {
    if (wanted == boldItalic) {
        return {boldItalic, boldStyle, regular, italicStyle};
    }
    return {wanted, regular, boldStyle, italicStyle, boldItalic};
}

} // namespace

StyledFamily makeStyledFamily(const std::string& name, const Faces& faces, const FaceStyle& wanted) {
    StyledFamily family{name, {}};
    for (const FaceStyle& style : listStyles(wanted)) {
        const InstalledFace* const face = selectFace(faces, style.bold, style.italic);
        const bool isListed = std::any_of(family.faces.begin(), family.faces.end(),
                                          [face](const StyledFace& other) { return other.face == face; });
        if (face == nullptr || isListed) {
            continue;
        }
        // A factory draws other styles with the first face, but not with a bold italic one.
        const bool isDrawnAsWanted = family.faces.empty() && !(style == boldItalic);
        family.faces.push_back({face, style, isDrawnAsWanted ? wanted : style});
    }
    return family;
}

} // namespace Vell::FontLoaders::Internal
