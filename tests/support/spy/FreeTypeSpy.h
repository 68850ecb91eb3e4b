#pragma once

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_IMAGE_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace Vell::Testing {

/// A call of a FreeType function. "FT_Load_Glyph 36 10" is its name and its arguments without the object and
/// the results. A matrix is "xx xy yx yy", a vector "x y", a charmap "platform encoding", an encoding its
/// four letters, and a null argument "null".
struct FreeTypeCall {
    std::string name;
    std::string line;
    const void* object; ///< the face, library, glyph, slot or outline
    bool isInjectedFailure;
};

/// Watches the calls of FreeType while it exists, and can make them fail.
///
///     FreeTypeSpy spy;
///     spy.failCall("FT_Load_Glyph", 2, FT_Err_Out_Of_Memory);
///     drawSomething();
///     EXPECT_THAT(spy.getLines({"FT_Load_Glyph"}), ElementsAre("FT_Load_Glyph 1 10", "FT_Load_Glyph 2 10"));
///
/// An executable that links fontengine_freetype_spy defines the functions of FreeType that the engine uses.
/// So the calls of its shared libraries arrive here, are recorded, and continue to libfreetype. The spy does
/// not record the calls of FreeType itself, of cairo, fontconfig and HarfBuzz, and those inside another
/// recorded call. It records the test's own calls unless a Pause exists on their thread.
///
/// Only one spy may exist at a time. Calls may come from any thread; only the test's thread may use the spy.
class FreeTypeSpy {
public:
    FreeTypeSpy();
    ~FreeTypeSpy();
    FreeTypeSpy(const FreeTypeSpy&) = delete;
    FreeTypeSpy& operator=(const FreeTypeSpy&) = delete;

    std::vector<FreeTypeCall> getCalls() const;
    /// The lines of all calls, or of the calls of these functions.
    std::vector<std::string> getLines() const;
    std::vector<std::string> getLines(const std::vector<std::string>& names) const;
    std::size_t countCalls(const std::string& name) const;
    /// The number of calls that an exception has unwound, including FreeType's frames, which clean up
    /// nothing.
    std::size_t countUnwoundCalls() const;
    void clear();

    /// Makes the `number`-th recorded call of a function from now on (1 is the next one) return `error`
    /// without reaching FreeType; FT_Get_Sfnt_Table returns null. Throws std::invalid_argument for functions
    /// that cannot fail.
    void failCall(const std::string& name, std::size_t number = 1, FT_Error error = FT_Err_Invalid_Argument);

    /// Makes FT_Get_First_Char and FT_Get_Next_Char return these codes with these glyphs from now on.
    void setCharacters(std::vector<std::pair<FT_ULong, FT_UInt>> characters);

    /// Sets the format that glyphs from FT_Get_Glyph claim to have from now on. They are released safely.
    void setGlyphFormat(FT_Glyph_Format format);

    /// Hides the calls of one thread.
    class Pause {
    public:
        Pause();
        ~Pause();
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        int _depthBefore;
    };
};

} // namespace Vell::Testing
