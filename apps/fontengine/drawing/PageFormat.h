#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Vell::Tool {

enum class PageFormat { Png, Svg, Pdf };

/// The format that a file name ends in, whatever the case; nothing for any other ending.
std::optional<PageFormat> findPageFormat(std::string_view path);

/// The same. Throws UsageError for any other ending.
PageFormat getPageFormat(std::string_view path);

/// Whether the format holds shapes rather than pixels.
bool isVectorFormat(PageFormat format);

/// A page in logical units: CSS pixels in SVG, points in PDF, `pixelRatio` pixels in PNG.
struct PageSize {
    float width;
    float height;
    float pixelRatio;
};

/// The side of a picture in pixels: PNG only.
int getPixelCount(float length, float pixelRatio);

/// Whether the format can hold a page that large.
bool fitsFormat(PageFormat format, const PageSize& size);

/// Throws ToolError when the format of the file cannot hold a page that large.
void checkPageSize(std::string_view path, const PageSize& size);

} // namespace Vell::Tool
