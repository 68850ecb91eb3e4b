#include <fuzz/support/ShapeScript.h>

#include <support/Descriptions.h>

#include <algorithm>

namespace Vell::Fuzz {

namespace {

const char* const languages[] = {"", "sr", "ja", "zh-Hant", "ar", "ro", "de_@", "x"};

Bytes take(ByteReader& reader, std::size_t length) {
    Bytes bytes;
    while (bytes.size() < length && !reader.isAtEnd()) {
        bytes.push_back(reader.takeU8());
    }
    return bytes;
}

std::string takeText(ByteReader& reader, std::size_t length) {
    const Bytes bytes = take(reader, length);
    return std::string(bytes.begin(), bytes.end());
}

} // namespace

const std::vector<std::string>& ShapeScript::getTags() {
    static const std::vector<std::string> tags = {"GSUB", "GPOS", "GDEF", "kern", "morx",
                                                  "mort", "kerx", "trak", "feat", "ankr"};
    return tags;
}

ShapeScript::ShapeScript(const Bytes& input) {
    ByteReader reader(input);
    const unsigned int flags = reader.takeU8();
    direction = static_cast<TextLayout::ParagraphDirection>((flags & 3U) % 3);
    hasOwnEmoji = (flags & 4U) != 0;
    isJustified = (flags & 8U) != 0;
    hasEllipsis = (flags & 16U) != 0;
    hasFallback = (flags & 32U) == 0;
    width = reader.takeMeasure();
    const unsigned int further = reader.takeU8() % 8;
    spans.push_back({0, 16.0F, 0.0F, "", false});
    for (unsigned int i = 0; i < further; ++i) {
        spans.push_back(takeSpan(reader));
    }
    std::sort(spans.begin() + 1, spans.end(),
              [](const Span& lhs, const Span& rhs) { return lhs.begin < rhs.begin; });
    features = takeText(reader, reader.takeU8());
    const unsigned int tableCount = reader.takeU8() % 6;
    for (unsigned int i = 0; i < tableCount; ++i) {
        const std::string& tag = getTags()[reader.takeU8() % getTags().size()];
        const unsigned int length = reader.takeU16();
        tables.push_back({tag, take(reader, length)});
    }
    const Bytes rest = reader.takeRest();
    text.assign(rest.begin(), rest.end());
}

ShapeScript::Span ShapeScript::takeSpan(ByteReader& reader) {
    Span span{};
    span.begin = reader.takeU16();
    span.size = reader.takeMeasure();
    span.spacing = reader.takeMeasure();
    const unsigned int choice = reader.takeU8();
    span.language = languages[choice % std::size(languages)];
    span.hasFeatures = choice >= 128;
    return span;
}

std::vector<TextLayout::TextSpan> ShapeScript::makeSpans() const {
    std::vector<TextLayout::TextSpan> made;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        const Span& span = spans[i];
        const std::size_t end = i + 1 < spans.size() ? spans[i + 1].begin : text.size();
        const auto fontInfo = Testing::makeFontInfo("Test Sans", span.size);
        TextLayout::TextStyle style(Testing::makeExtFontInfo(fontInfo, span.spacing));
        style.setLanguage(span.language);
        style.setEmojiFont(hasOwnEmoji ? TextLayout::EmojiFont::OwnFont : TextLayout::EmojiFont::Fallback);
        if (span.hasFeatures || i == 0) {
            style.setFeatures(TextLayout::parseTextFeatures(features));
        }
        made.push_back({std::min(span.begin, text.size()), std::min(end, text.size()), style});
    }
    return made;
}

} // namespace Vell::Fuzz
