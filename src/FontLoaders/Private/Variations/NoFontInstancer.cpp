// Stands in for FontInstancer.cpp where HarfBuzz's subsetter is left out.

#include <FontLoaders/Private/Variations/FontInstancer.h>
#include <FontLoaders/Public/Exceptions.h>

namespace Vell::FontLoaders::Internal {

std::vector<unsigned char> makeStaticFont(const NNPtr<const std::vector<unsigned char>>& /*bytes*/,
                                          hb_face_t* /*face*/, const AxisValues& /*values*/) {
    throw FontLoaderException("cannot fix the axes of a variable font: this build of FontEngine leaves that "
                              "out (FONTENGINE_BUILD_VARIABLE_FONTS)");
}

} // namespace Vell::FontLoaders::Internal
