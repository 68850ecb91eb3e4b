#include <FontEngine/Color/Private/FE_ColorPaintList.h>

namespace Vell::FontEngine::Internal {

void ColorPaintList::paint(ColorPaintTarget& target) const {
    replay(operations, target);
}

} // namespace Vell::FontEngine::Internal
