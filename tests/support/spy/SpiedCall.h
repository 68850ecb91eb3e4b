#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_IMAGE_H

#include <exception>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

/// The common parts of the forwarding functions.
namespace Vell::Testing::Spy {

/// Four letters as FreeType packs them into a number.
struct Tag {
    FT_ULong value;
};

std::string describe(const FT_Matrix* matrix);
std::string describe(const FT_Vector* vector);
std::string describe(FT_CharMap charMap);
std::string describe(Tag tag);

template <class Number, class = std::enable_if_t<std::is_arithmetic_v<Number> || std::is_enum_v<Number>>>
std::string describe(Number number) {
    return std::to_string(static_cast<long>(number));
}

/// A call on its way to FreeType. It exists as long as the call.
class Call {
public:
    template <class... Arguments>
    Call(const char* name, const void* returnAddress, const void* object, const Arguments&... arguments)
        : _exceptionsAtEntry(std::uncaught_exceptions())
        , _depthBefore(enter())
        , _isRecorded(shouldRecord(returnAddress)) {
        if (_isRecorded) {
            record(name, object, (std::string(name) + ... + (' ' + describe(arguments))));
        }
    }
    ~Call();
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;

    /// The error to return without calling FreeType.
    const std::optional<FT_Error>& getInjectedError() const { return _injectedError; }

    template <class Function, class... Arguments>
    FT_Error forward(Function function, Arguments... arguments) const {
        return _injectedError ? *_injectedError : function(arguments...);
    }

    /// The character to return without calling FreeType.
    std::optional<std::pair<FT_ULong, FT_UInt>> takeFirstCharacter() const;
    std::optional<std::pair<FT_ULong, FT_UInt>> takeNextCharacter() const;
    std::optional<FT_Glyph_Format> getGlyphFormat() const;

private:
    static int enter();
    bool shouldRecord(const void* returnAddress) const;
    void record(const char* name, const void* object, std::string line);

    int _exceptionsAtEntry;
    int _depthBefore;
    bool _isRecorded;
    std::optional<FT_Error> _injectedError;
};

} // namespace Vell::Testing::Spy
