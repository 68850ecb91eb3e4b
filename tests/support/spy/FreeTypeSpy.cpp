#include <support/spy/FreeTypeSpy.h>

#include <support/spy/SpiedCall.h>

#include <dlfcn.h>

#include <algorithm>
#include <cstring>
#include <exception>
#include <map>
#include <mutex>
#include <stdexcept>

namespace Vell::Testing {

namespace {

using Character = std::pair<FT_ULong, FT_UInt>;

/// The state of the current spy.
struct State {
    bool isWatching = false;
    std::vector<FreeTypeCall> calls;
    std::size_t unwoundCalls = 0;
    std::map<std::string, std::map<std::size_t, FT_Error>> failures; // by the number of calls to come
    std::optional<std::vector<Character>> characters;
    std::size_t nextCharacter = 0;
    std::optional<FT_Glyph_Format> glyphFormat;
};

State state;
std::mutex stateMutex;
thread_local int depth = 0; // of calls, and of pauses

constexpr const char* failingFunctions[] = {"FT_Set_Char_Size",
                                            "FT_Load_Glyph",
                                            "FT_Get_Glyph",
                                            "FT_Glyph_To_Bitmap",
                                            "FT_Outline_Embolden",
                                            "FT_Outline_Decompose",
                                            "FT_Get_Advance",
                                            "FT_Select_Charmap",
                                            "FT_Set_Charmap",
                                            "FT_Get_Sfnt_Table",
                                            "FT_Library_SetLcdFilter",
                                            "FT_New_Library",
                                            "FT_Done_Library",
                                            "FT_Open_Face",
                                            "FT_Done_Face",
                                            "FT_Reference_Library",
                                            "FT_Load_Sfnt_Table",
                                            "FT_Select_Size",
                                            "FT_Palette_Data_Get",
                                            "FT_Palette_Select",
                                            "FT_Outline_Get_BBox",
                                            "FT_Outline_Get_Bitmap"};

constexpr const char* otherUsers[] = {"libfreetype", "libcairo", "libfontconfig", "libharfbuzz"};

bool isCalledByOtherUser(const void* returnAddress) {
    Dl_info module;
    if (dladdr(returnAddress, &module) == 0 || module.dli_fname == nullptr) {
        return false;
    }
    return std::any_of(std::begin(otherUsers), std::end(otherUsers),
                       [&](const char* name) { return std::strstr(module.dli_fname, name) != nullptr; });
}

std::optional<FT_Error> takeFailure(const std::string& name) {
    std::optional<FT_Error> error;
    std::map<std::size_t, FT_Error> remaining;
    for (const auto& [number, failure] : state.failures[name]) {
        if (number == 1) {
            error = failure;
        } else {
            remaining[number - 1] = failure;
        }
    }
    state.failures[name] = std::move(remaining);
    return error;
}

std::optional<Character> takeCharacter() {
    if (!state.characters) {
        return std::nullopt;
    }
    const std::size_t position = state.nextCharacter++;
    return position < state.characters->size() ? (*state.characters)[position] : Character(0, 0);
}

} // namespace

FreeTypeSpy::FreeTypeSpy() {
    const std::lock_guard<std::mutex> lock(stateMutex);
    if (state.isWatching) {
        throw std::logic_error("another FreeTypeSpy is alive");
    }
    state = State();
    state.isWatching = true;
}

FreeTypeSpy::~FreeTypeSpy() {
    const std::lock_guard<std::mutex> lock(stateMutex);
    state = State();
}

std::vector<FreeTypeCall> FreeTypeSpy::getCalls() const {
    const std::lock_guard<std::mutex> lock(stateMutex);
    return state.calls;
}

std::vector<std::string> FreeTypeSpy::getLines() const {
    std::vector<std::string> lines;
    for (const FreeTypeCall& call : getCalls()) {
        lines.push_back(call.line);
    }
    return lines;
}

std::vector<std::string> FreeTypeSpy::getLines(const std::vector<std::string>& names) const {
    std::vector<std::string> lines;
    for (const FreeTypeCall& call : getCalls()) {
        if (std::find(names.begin(), names.end(), call.name) != names.end()) {
            lines.push_back(call.line);
        }
    }
    return lines;
}

std::size_t FreeTypeSpy::countCalls(const std::string& name) const {
    return getLines({name}).size();
}

std::size_t FreeTypeSpy::countUnwoundCalls() const {
    const std::lock_guard<std::mutex> lock(stateMutex);
    return state.unwoundCalls;
}

void FreeTypeSpy::clear() {
    const std::lock_guard<std::mutex> lock(stateMutex);
    state.calls.clear();
    state.unwoundCalls = 0;
}

void FreeTypeSpy::failCall(const std::string& name, std::size_t number, FT_Error error) {
    if (std::find(std::begin(failingFunctions), std::end(failingFunctions), name) ==
        std::end(failingFunctions)) {
        throw std::invalid_argument(name + " cannot be made to fail");
    }
    const std::lock_guard<std::mutex> lock(stateMutex);
    state.failures[name][number] = error;
}

void FreeTypeSpy::setCharacters(std::vector<Character> characters) {
    const std::lock_guard<std::mutex> lock(stateMutex);
    state.characters = std::move(characters);
}

void FreeTypeSpy::setGlyphFormat(FT_Glyph_Format format) {
    const std::lock_guard<std::mutex> lock(stateMutex);
    state.glyphFormat = format;
}

FreeTypeSpy::Pause::Pause()
    : _depthBefore(depth++) {}

FreeTypeSpy::Pause::~Pause() {
    depth = _depthBefore;
}

namespace Spy {

std::string describe(const FT_Matrix* matrix) {
    if (matrix == nullptr) {
        return "null";
    }
    return describe(matrix->xx) + ' ' + describe(matrix->xy) + ' ' + describe(matrix->yx) + ' ' +
           describe(matrix->yy);
}

std::string describe(const FT_Vector* vector) {
    return vector == nullptr ? "null" : describe(vector->x) + ' ' + describe(vector->y);
}

std::string describe(FT_CharMap charMap) {
    return charMap == nullptr ? "null"
                              : describe(charMap->platform_id) + ' ' + describe(charMap->encoding_id);
}

std::string describe(Tag tag) {
    std::string letters;
    for (const int shift : {24, 16, 8, 0}) {
        letters += static_cast<char>(tag.value >> shift & 0xFFU);
    }
    return letters;
}

int Call::enter() {
    return depth++;
}

bool Call::shouldRecord(const void* returnAddress) const {
    if (_depthBefore != 0) {
        return false;
    }
    const std::lock_guard<std::mutex> lock(stateMutex);
    return state.isWatching && !isCalledByOtherUser(returnAddress);
}

// FreeType's rasteriser leaves nested calls by longjmp, which skips their destructors.
Call::~Call() {
    depth = _depthBefore;
    if (_isRecorded && std::uncaught_exceptions() > _exceptionsAtEntry) {
        const std::lock_guard<std::mutex> lock(stateMutex);
        ++state.unwoundCalls;
    }
}

void Call::record(const char* name, const void* object, std::string line) {
    const std::lock_guard<std::mutex> lock(stateMutex);
    _injectedError = takeFailure(name);
    state.calls.push_back({name, std::move(line), object, _injectedError.has_value()});
}

std::optional<Character> Call::takeFirstCharacter() const {
    const std::lock_guard<std::mutex> lock(stateMutex);
    if (!_isRecorded) {
        return std::nullopt;
    }
    state.nextCharacter = 0;
    return takeCharacter();
}

std::optional<Character> Call::takeNextCharacter() const {
    const std::lock_guard<std::mutex> lock(stateMutex);
    return _isRecorded ? takeCharacter() : std::nullopt;
}

std::optional<FT_Glyph_Format> Call::getGlyphFormat() const {
    const std::lock_guard<std::mutex> lock(stateMutex);
    return _isRecorded ? state.glyphFormat : std::nullopt;
}

} // namespace Spy

} // namespace Vell::Testing
