#pragma once

#include <Utils/Public/Export.h>

namespace Vell::Gfx {

/// A finished path. Each painter makes a kind of its own and says which kinds it can draw.
class VELL_API Path {
public:
    virtual ~Path();
};

} // namespace Vell::Gfx
