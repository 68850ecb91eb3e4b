#include "specimen/Html.h"

#include <Utils/Utils.h>

#include <boost/archive/iterators/base64_from_binary.hpp>
#include <boost/archive/iterators/transform_width.hpp>

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <set>

namespace Vell::Tool {

namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD"; // U+FFFD

/// Passes each character of a text with its bytes to `write`. Characters that neither HTML nor JSON allows
/// become U+FFFD.
template <class Write>
std::string rewrite(std::string_view text, const Write& write) {
    constexpr unsigned int lastControl = 0x9F;
    std::string result;
    const char* position = text.data();
    const char* const end = position + text.size();
    while (position != end) {
        const char* const start = position;
        const unsigned int code = decodeUtf8(position, end);
        const bool isControl = code < ' ' || (code > '~' && code <= lastControl);
        const bool isBad = code == replacementCharacter || isControl;
        write(result, isBad ? replacementCharacter : code,
              isBad ? replacement : std::string_view(start, static_cast<std::size_t>(position - start)));
    }
    return result;
}

std::string_view getEntity(unsigned int code) {
    switch (code) {
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '&':
        return "&amp;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return {};
    }
}

bool mustEscapeInJson(unsigned int code) {
    // JSON requires the first two. The others keep a script's end and a comment from appearing.
    return code == '"' || code == '\\' || code == '<' || code == '>' || code == '&';
}

const std::string& getValue(const std::vector<std::pair<std::string_view, std::string>>& values,
                            std::string_view name) {
    const auto found =
        std::find_if(values.begin(), values.end(), [&](const auto& pair) { return pair.first == name; });
    if (found == values.end()) {
        doFailAssert("apps/fontengine/Html", 91, "found != values.end()");
    }
    return found->second;
}

} // namespace

std::string escapeHtml(std::string_view text) {
    return rewrite(text, [](std::string& result, unsigned int code, std::string_view bytes) {
        const std::string_view entity = getEntity(code);
        result += entity.empty() ? bytes : entity;
    });
}

std::string quoteJson(std::string_view text) {
    return '"' +
           rewrite(text,
                   [](std::string& result, unsigned int code, std::string_view bytes) {
                       result += mustEscapeInJson(code) ? fmt::format("\\u{:04x}", code) : std::string(bytes);
                   }) +
           '"';
}

std::string encodeBase64(std::string_view bytes) {
    using namespace boost::archive::iterators;
    using Iterator = base64_from_binary<transform_width<const char*, 6, 8>>;
    constexpr std::size_t group = 3;
    const std::size_t missing = (group - bytes.size() % group) % group;
    std::string whole(bytes);
    whole.append(missing, '\0'); // the iterators read whole groups
    std::string text(Iterator(whole.data()), Iterator(whole.data() + whole.size()));
    std::fill(text.end() - static_cast<std::ptrdiff_t>(missing), text.end(), '=');
    return text;
}

std::string fillTemplate(std::string_view text,
                         const std::vector<std::pair<std::string_view, std::string>>& values) {
    std::string result;
    std::set<std::string_view> used;
    for (std::size_t start = text.find("{{"); start != std::string_view::npos; start = text.find("{{")) {
        const std::size_t end = std::min(text.find("}}", start), text.size());
        const std::string_view name = text.substr(start + 2, end - start - 2);
        result += text.substr(0, start);
        result += getValue(values, end < text.size() ? name : std::string_view());
        text.remove_prefix(end + 2);
        used.insert(name);
    }
    if (used.size() != values.size()) {
        doFailAssert("apps/fontengine/Html", 112, "used.size() == values.size()");
    }
    return result.append(text);
}

} // namespace Vell::Tool
