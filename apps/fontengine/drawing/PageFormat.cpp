#include "drawing/PageFormat.h"

#include "Errors.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace Vell::Tool {

namespace {

/// `maxSide` is in pixels for PNG, where it is the limit of cairo's images, and in units otherwise; PDF
/// viewers show at most 200 inches. `maxArea` limits the memory for drawing a PNG to 256 MB.
struct FormatRow {
    PageFormat format;
    std::string_view extension;
    bool isVector;
    double maxSide;
    double maxArea;
    std::string_view unit;
};

constexpr FormatRow formats[] = {
    {PageFormat::Png, ".png", false, 32767.0, 67108864.0, "pixels"},
    {PageFormat::Svg, ".svg", true, 32767.0, 32767.0 * 32767.0, "units"},
    {PageFormat::Pdf, ".pdf", true, 14400.0, 14400.0 * 14400.0, "points"},
};

const FormatRow& getRow(PageFormat format) {
    return *std::find_if(std::begin(formats), std::end(formats),
                         [format](const FormatRow& row) { return row.format == format; });
}

std::string toLower(std::string_view text) {
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; });
    return lower;
}

std::string_view getFileName(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// A name that consists of an extension is that of a hidden file without extension.
bool endsIn(std::string_view name, std::string_view extension) {
    return name.size() > extension.size() && name.substr(name.size() - extension.size()) == extension;
}

double toDevice(float length, float ratio) {
    return std::ceil(static_cast<double>(length) * static_cast<double>(ratio));
}

struct DeviceSize {
    double width;
    double height;
};

DeviceSize getDeviceSize(const FormatRow& row, const PageSize& size) {
    const float ratio = row.isVector ? 1.0F : size.pixelRatio;
    return {toDevice(size.width, ratio), toDevice(size.height, ratio)};
}

} // namespace

std::optional<PageFormat> findPageFormat(std::string_view path) {
    const std::string name = toLower(getFileName(path));
    const auto* row = std::find_if(std::begin(formats), std::end(formats), [&](const FormatRow& candidate) {
        return endsIn(name, candidate.extension);
    });
    return row != std::end(formats) ? std::optional<PageFormat>(row->format) : std::nullopt;
}

PageFormat getPageFormat(std::string_view path) {
    const auto format = findPageFormat(path);
    if (!format) {
        throw UsageError(fmt::format("'{}' does not end in .png, .svg or .pdf", path));
    }
    return *format;
}

bool isVectorFormat(PageFormat format) {
    return getRow(format).isVector;
}

int getPixelCount(float length, float pixelRatio) {
    return std::max(1, static_cast<int>(toDevice(length, pixelRatio)));
}

bool fitsFormat(PageFormat format, const PageSize& size) {
    const FormatRow& row = getRow(format);
    const DeviceSize device = getDeviceSize(row, size);
    return device.width <= row.maxSide && device.height <= row.maxSide &&
           device.width * device.height <= row.maxArea;
}

void checkPageSize(std::string_view path, const PageSize& size) {
    const PageFormat format = getPageFormat(path);
    if (!fitsFormat(format, size)) {
        const FormatRow& row = getRow(format);
        const DeviceSize device = getDeviceSize(row, size);
        throw ToolError(
            fmt::format("'{}' would be too large: {} by {} {}", path, device.width, device.height, row.unit));
    }
}

} // namespace Vell::Tool
