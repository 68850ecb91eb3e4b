#pragma once

#include <apps/Pixels.h>
#include <apps/ToolProcess.h>

#include <CairoAdapter/CairoAdapter.h>

#include <gmock/gmock.h>

#include <cstdint>
#include <string>
#include <vector>

namespace Vell::Testing {

/// A PNG file, read back.
class RenderedPicture {
public:
    explicit RenderedPicture(const std::string& path)
        : _surface(CairoAdapter::adoptSurface(cairo_image_surface_create_from_png(path.c_str()))) {}

    int getWidth() const { return cairo_image_surface_get_width(_surface.get()); }
    int getHeight() const { return cairo_image_surface_get_height(_surface.get()); }

    std::uint32_t getPixel(int x, int y) const { return readPixel(_surface.get(), x, y) & 0xFFFFFF; }

    /// The number of pixels whose colour is not that of the corner.
    int countInk() const {
        return countInk([](int, int) { return true; });
    }
    int countInkAtTheEdges() const {
        return countInk(
            [this](int x, int y) { return x == 0 || y == 0 || x + 1 == getWidth() || y + 1 == getHeight(); });
    }

private:
    template <class Filter>
    int countInk(Filter isWanted) const {
        int count = 0;
        for (int y = 0; y < getHeight(); ++y) {
            for (int x = 0; x < getWidth(); ++x) {
                count += isWanted(x, y) && getPixel(x, y) != getPixel(0, 0) ? 1 : 0;
            }
        }
        return count;
    }

    CairoAdapter::SurfacePtr _surface;
};

/// Runs the command render.
class RenderFixture : public ::testing::Test {
protected:
    ProcessResult render(std::vector<std::string> arguments, const std::string& name,
                         const std::string& input = "") const {
        arguments.insert(arguments.begin(), {"render", "-o", folder.getPath(name)});
        return runTool(arguments, input);
    }

    RenderedPicture renderPicture(const std::vector<std::string>& arguments,
                                  const std::string& input = "") const {
        const ProcessResult result = render(arguments, "picture.png", input);
        EXPECT_EQ(result.status, 0) << result.err;
        return RenderedPicture(folder.getPath("picture.png"));
    }

    void expectFailure(const ProcessResult& result, int status, const std::string& message) const {
        EXPECT_EQ(result.status, status);
        EXPECT_EQ(result.err, "fontengine: " + message + "\n");
        EXPECT_THAT(result.out, ::testing::IsEmpty());
    }

    TemporaryFolder folder;
};

} // namespace Vell::Testing
