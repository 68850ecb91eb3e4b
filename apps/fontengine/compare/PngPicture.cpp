#include "compare/PngPicture.h"

#include "Errors.h"
#include "drawing/PageFormat.h"

#include <fmt/format.h>

#include <png.h>

namespace Vell::Tool {

namespace {

/// The state of libpng while it reads or writes a picture.
class PngImage {
public:
    PngImage() { _image.version = PNG_IMAGE_VERSION; }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;
    ~PngImage() { png_image_free(&_image); }

    png_image* get() { return &_image; }
    png_image* operator->() { return &_image; }

private:
    png_image _image{};
};

void checkSize(const std::string& path, const png_image& image) {
    const PageSize size{static_cast<float>(image.width), static_cast<float>(image.height), 1.0F};
    if (!fitsFormat(PageFormat::Png, size)) {
        throw ToolError(
            fmt::format("the picture '{}' is too large: {} by {} pixels", path, image.width, image.height));
    }
}

} // namespace

PngPicture readPng(const std::string& path) {
    const auto check = [&path](bool isDone, const char* message) {
        if (!isDone) {
            throw ToolError(fmt::format("cannot read the picture '{}': {}", path, message));
        }
    };
    PngImage image;
    check(png_image_begin_read_from_file(image.get(), path.c_str()) != 0, image->message);
    checkSize(path, *image.get());
    image->format = PNG_FORMAT_RGBA;
    PngPicture picture{image->width, image->height, {}};
    picture.bytes.resize(PNG_IMAGE_SIZE(*image.get()));
    check(png_image_finish_read(image.get(), nullptr, picture.bytes.data(), 0, nullptr) != 0, image->message);
    return picture;
}

std::string makePngFile(const PngPicture& picture) {
    PngImage image;
    image->width = picture.width;
    image->height = picture.height;
    image->format = PNG_FORMAT_RGBA;
    png_alloc_size_t size = PNG_IMAGE_PNG_SIZE_MAX(*image.get());
    std::string file(size, '\0');
    if (png_image_write_to_memory(image.get(), file.data(), &size, 0, picture.bytes.data(), 0, nullptr) ==
        0) {
        throw ToolError(fmt::format("cannot make a PNG file: {}", image->message));
    }
    file.resize(size);
    return file;
}

} // namespace Vell::Tool
