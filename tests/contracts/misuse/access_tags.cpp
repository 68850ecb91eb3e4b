// Only FontFactory can make factories, faces, fonts and their metrics, because it alone can make the access
// tags.

#include <FontEngine/FE_FontFactory.h>
#include <Utils/Public/Ptr/PtrUtils.h>

using namespace Vell;
using FontEngine::FaceData;
using FontEngine::Font;
using FontEngine::FontFace;
using FontEngine::FontFactory;

using Loader = NNPtr<const FontLoaders::FontLoader>;
using Face = NNPtr<const FontFace>;
using Info = NNPtr<const Gfx::FontInfo>;

class Client {
public:
    NNPtr<FontFactory> make(const Loader& loader) { return FontFactory::create(loader, "name"); }
    Face open(const FontFactory& factory, const Info& info) {
        return factory.getFace(info->getFontFaceInfo());
    }
    Font find(const FontFactory& factory, const Info& info) { return factory.getFont(info); }

#ifdef MISUSE_FACTORY_WITHOUT_TAG // private
    FontFactory factory(const Loader& loader) {
        return FontFactory(loader, "name");
    }
#endif
#ifdef MISUSE_FACTORY_TAG // private
    auto tag1() {
        return FontFactory::FactoryAccessTag();
    }
#endif
#ifdef MISUSE_FACTORY_TAG_IN_BRACES // private
    auto tag2() {
        return FontFactory::FactoryAccessTag{};
    }
#endif
#ifdef MISUSE_FACTORY_TAG_FROM_EMPTY_BRACES // explicit|private|no matching constructor
    auto tagFactory(const Loader& loader) {
        return FontFactory({}, loader, "name");
    }
#endif
#ifdef MISUSE_SHARED_FACTORY_WITHOUT_TAG // private|no matching function
    auto shared(const Loader& loader) {
        return std::make_shared<FontFactory>(loader, "name");
    }
#endif
#ifdef MISUSE_FACTORY_COPY // deleted
    void copy(const FontFactory& factory) {
        FontFactory second(factory);
    }
#endif
#ifdef MISUSE_FACTORY_ASSIGNMENT // deleted
    void assign(FontFactory& factory) {
        factory = factory;
    }
#endif
#ifdef MISUSE_FLUSH_OF_A_CONST_FACTORY // discards qualifiers|not marked const
    void flush(const FontFactory& factory) {
        factory.flush();
    }
#endif
#ifdef MISUSE_RESET_OF_A_CONST_FACTORY // discards qualifiers|not marked const
    void reset(const FontFactory& factory) {
        factory.reset(1, 1);
    }
#endif
#ifdef MISUSE_GRAPHICS_TAG // private
    auto tag3() {
        return Gfx::FactoryAccessTag();
    }
#endif
#ifdef MISUSE_GRAPHICS_TAG_IN_BRACES // private
    auto tag4() {
        return Gfx::FactoryAccessTag{};
    }
#endif
#ifdef MISUSE_FACE_WITHOUT_TAG // no matching (function|constructor)
    void face(std::shared_ptr<const FontFactory> factory, const FaceData& data) {
        FontFace face(factory, data);
    }
#endif
#ifdef MISUSE_FACE_FROM_EMPTY_BRACES // explicit|private|no matching constructor
    void tagFace(std::shared_ptr<const FontFactory> factory, const FaceData& data) {
        FontFace face({}, factory, data);
    }
#endif
#ifdef MISUSE_FACE_COPY // deleted
    void copyFace(const FontFace& face) {
        FontFace second(face);
    }
#endif
#ifdef MISUSE_FONT_FROM_EMPTY_BRACES // explicit|private|no matching constructor
    auto font(const Info& info, const Face& face) {
        return Font({}, info, face);
    }
#endif
#ifdef MISUSE_METRICS_FROM_EMPTY_BRACES // explicit|private|no matching constructor
    auto metrics() {
        return Gfx::BasicMetrics({}, 1, 1, 1, {1, 1}, Gfx::CharMap({0, 1}));
    }
#endif
};

int main() {}
