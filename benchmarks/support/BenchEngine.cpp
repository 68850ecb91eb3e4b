#include "BenchEngine.h"

#include <Utils/Public/Ptr/PtrUtils.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <utility>

namespace Vell::Benchmarks {

namespace {

constexpr const char* family = "Bench";
constexpr const char* fallbackFamily = "Bench Fallback";

FontLoaders::FontBytes readIfNamed(const std::string& path) {
    return path.empty() ? nullptr : readFontFile(path);
}

} // namespace

FontLoaders::FontBytes readFontFile(const std::string& path) {
    auto bytes = std::make_shared<Bytes>(std::filesystem::file_size(path));
    std::ifstream file(path, std::ios::binary);
    if (!file.read(reinterpret_cast<char*>(bytes->data()), static_cast<std::streamsize>(bytes->size()))) {
        throw std::runtime_error("cannot read " + path);
    }
    return bytes;
}

OneFontLoader::OneFontLoader(FontLoaders::FontBytes font, FontLoaders::FontBytes fallback)
    : _font(std::move(font))
    , _fallback(std::move(fallback)) {}

FontLoaders::FontBytes OneFontLoader::loadFont(const NNPtr<const Gfx::FontFaceInfo>& faceInfo) const {
    return faceInfo->getName() == fallbackFamily ? _fallback : _font;
}

FontLoaders::FontBytes OneFontLoader::loadDefaultFont(bool, bool) const {
    return _font;
}

std::string OneFontLoader::getFamilyNameForRange(unsigned int) const {
    return _fallback ? fallbackFamily : std::string();
}

BenchEngine::BenchEngine(const Workload& workload, const std::string& fallbackFile)
    : BenchEngine(readFontFile(workload.fontFile), readIfNamed(fallbackFile), workload.pixelSize) {}

BenchEngine::BenchEngine(const FontLoaders::FontBytes& bytes, const FontLoaders::FontBytes& fallback,
                         float size)
    : BenchEngine(makeNNPtr<const OneFontLoader>(bytes, fallback), family, size) {}

BenchEngine::BenchEngine(const NNPtr<const FontLoaders::FontLoader>& loader, const std::string& name,
                         float size)
    : factory(FontEngine::FontFactory::create(loader, name))
    , faceInfo(makeNNPtr<const FontEngine::Internal::FontFaceInfo>(name, false, false))
    , fontInfo(makeNNPtr<const FontEngine::Internal::FontInfo>(faceInfo, size, Gfx::TextPositionType::Normal))
    , extFontInfo(makeNNPtr<const FontEngine::Internal::ExtFontInfo>(fontInfo, 0.0F))
    , font(factory->getFont(fontInfo)) {}

} // namespace Vell::Benchmarks
