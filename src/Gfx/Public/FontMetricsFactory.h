#pragma once

#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/FontMetrics.h>
#include <Utils/Public/Export.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

namespace Vell::Gfx {

/// Where the graphics library gets its text metrics from.
class VELL_API FontMetricsFactory {
public:
    virtual ~FontMetricsFactory();

    virtual NNPtr<const FontMetrics> getFontMetrics(const NNPtr<const FontInfo>& fontInfo) const = 0;
};

} // namespace Vell::Gfx
