#include <FontEngine/Private/FE_Strike.h>

#include <FontEngine/FE_FontDescriptions.h>
#include <Utils/Public/Hash.h>

#include <cmath>

namespace Vell::FontEngine::Internal {

namespace {

bool isPlainNumber(float value) {
    return !std::isnan(value) && !(value == 0.0F && std::signbit(value));
}

const FontFaceInfo& getOwn(const StrikeInfo& info) {
    return static_cast<const FontFaceInfo&>(*info.faceInfo);
}

} // namespace

bool StrikeInfo::isPlain() const {
    return faceInfo != nullptr && FontFaceInfo::isExactly(*faceInfo) && isPlainNumber(fontSize) &&
           isPlainNumber(scale.x) && isPlainNumber(scale.y) && isPlainNumber(devicePixelRatio);
}

bool StrikeInfo::operator==(const StrikeInfo& other) const {
    return fontSize == other.fontSize && transform == other.transform && scale == other.scale &&
           devicePixelRatio == other.devicePixelRatio && color == other.color &&
           getOwn(*this).holdsSameAs(getOwn(other));
}

bool StrikeInfo::matches(const BitmapGlyphInfo& info) const {
    return faceInfo == info.getFaceInfo().get() && fontSize == info.getFontSize() &&
           transform == info.getTransform() && scale == info.getScale() &&
           devicePixelRatio == info.getDevicePixelRatio();
}

std::size_t StrikeInfoHash::operator()(const StrikeInfo& info) const {
    std::uint64_t hash = combineHash(0, info.faceInfo->getHash());
    hash = combineHash(hash, hashFloat(info.fontSize));
    hash = combineHash(hash, hashFloat(info.scale.x));
    hash = combineHash(hash, hashFloat(info.scale.y));
    hash = combineHash(hash, hashFloat(info.devicePixelRatio));
    return combineHash(hash, std::uint64_t(info.color) << 8U | static_cast<unsigned char>(info.transform));
}

} // namespace Vell::FontEngine::Internal
