#include "CapHeight.h"

#include FT_TRUETYPE_TABLES_H

namespace Vell::Tool {

bool hasCapHeight(const FontEngine::FontFace& face) {
    constexpr FT_UShort firstVersionWithCapHeight = 2;
    const auto* const os2 =
        static_cast<const TT_OS2*>(FT_Get_Sfnt_Table(face.getHandle().get(), FT_SFNT_OS2));
    return os2 != nullptr && os2->version >= firstVersionWithCapHeight && os2->sCapHeight != 0;
}

} // namespace Vell::Tool
