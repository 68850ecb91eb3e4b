#include "Errors.h"
#include "commands/Commands.h"
#include "compare/PictureDifference.h"
#include "drawing/PageFormat.h"
#include "output/OutputFile.h"
#include "output/Printing.h"

#include <fmt/format.h>

#include <ostream>

namespace Vell::Tool {

namespace {

void checkOutput(const CompareOptions& options) {
    if (options.output && findPageFormat(*options.output) != PageFormat::Png) {
        throw UsageError(fmt::format("'{}' does not end in .png", *options.output));
    }
}

void checkSameSize(const CompareOptions& options, const PngPicture& a, const PngPicture& b) {
    if (a.width != b.width || a.height != b.height) {
        throw ToolError(fmt::format("the pictures differ in size: '{}' has {} by {} pixels, '{}' {} by {}",
                                    options.first, a.width, a.height, options.second, b.width, b.height));
    }
}

template <class Value>
std::string printChannels(const std::array<Value, channelCount>& values) {
    return fmt::format("red {:.4g}, green {:.4g}, blue {:.4g}, alpha {:.4g}", static_cast<double>(values[0]),
                       static_cast<double>(values[1]), static_cast<double>(values[2]),
                       static_cast<double>(values[3]));
}

void print(std::ostream& out, const PngPicture& picture, const PictureDifference& difference) {
    const std::size_t pixels = picture.bytes.size() / channelCount;
    printProperty(out, "size", fmt::format("{} by {} pixels", picture.width, picture.height));
    printProperty(out, "differing pixels", fmt::format("{} of {}", difference.differingPixels, pixels));
    printProperty(out, "largest", printChannels(difference.largest));
    printProperty(out, "mean", printChannels(difference.mean));
}

} // namespace

bool comparePictures(const CompareOptions& options, std::ostream& out) {
    checkOutput(options);
    const PngPicture first = readPng(options.first);
    const PngPicture second = readPng(options.second);
    checkSameSize(options, first, second);
    const PictureDifference difference = measureDifference(first, second);
    if (options.output) {
        writeFile(*options.output, makePngFile(drawDifference(first, second)));
    }
    print(out, first, difference);
    return difference.differingPixels == 0;
}

} // namespace Vell::Tool
