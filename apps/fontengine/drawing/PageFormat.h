#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Vell::Tool {

enum class PageFormat { Png, Svg, Pdf };

/// The format for the extension of a file name, in either case; none for any other extension.
std::optional<PageFormat> findPageFormat(std::string_view path);

/// Like findPageFormat, but throws UsageError for any other extension.
PageFormat getPageFormat(std::string_view path);

/// Whether the format holds shapes rather than pixels.
bool isVectorFormat(PageFormat format);

/// A page in logical units: CSS pixels in SVG, points in PDF, `pixelRatio` pixels in PNG.
struct PageSize {
    float width;
    float height;
    float pixelRatio;
};

/// The length of a side of a PNG file in pixels.
int getPixelCount(float length, float pixelRatio);

/// Whether the format can hold a page of this size.
bool fitsFormat(PageFormat format, const PageSize& size);

/// Throws ToolError if the format of the file cannot hold a page of this size.
void checkPageSize(std::string_view path, const PageSize& size);

} // namespace Vell::Tool
