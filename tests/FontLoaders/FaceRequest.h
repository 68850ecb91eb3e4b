#pragma once

#include <FontLoaders/FontLoaders.h>
#include <Utils/Utils.h>

#include <string>
#include <utility>

namespace Vell::FontLoaders::Testing {

/// A face description as a client of the loader might write it.
class FaceRequest final : public Gfx::FontFaceInfo {
public:
    FaceRequest(std::string name, bool bold, bool italic)
        : _name(std::move(name))
        , _bold(bold)
        , _italic(italic) {}

    std::string getName() const override { return _name; }
    bool isBold() const override { return _bold; }
    bool isItalic() const override { return _italic; }

private:
    std::string _name;
    bool _bold;
    bool _italic;
};

using Bytes = std::vector<unsigned char>;

inline std::shared_ptr<const Bytes> load(const CheckedPtrImpl<FontLoader, false>& loader,
                                         const std::string& name, bool bold = false, bool italic = false) {
    return loader->loadFont(makeNNPtr<const FaceRequest>(name, bold, italic));
}

} // namespace Vell::FontLoaders::Testing
