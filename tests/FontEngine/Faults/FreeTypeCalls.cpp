#include <FontEngine/Faults/FreeTypeCalls.h>

#include <cstdio>
#include <memory>
#include <stdexcept>

namespace Vell::FontEngine {

namespace {

const GlyphFault size = {"FT_Set_Char_Size", FT_Err_Invalid_Pixel_Size, Reaction::CachesNull, "", false};
const GlyphFault load = {"FT_Load_Glyph", FT_Err_Invalid_Outline, Reaction::Throws,
                         "FT_Load_Glyph() failed, error: 20, glyph index: ", true};
const GlyphFault reference = {"FT_Reference_Library", FT_Err_Invalid_Library_Handle, Reaction::Throws,
                              "FT_Reference_Library() failed: invalid library handle (error 33)", false};
const GlyphFault get = {"FT_Get_Glyph", FT_Err_Out_Of_Memory, Reaction::Throws,
                        "FT_Get_Glyph() failed, error: 64, glyph index: ", true};

constexpr const char* sound = "face with A at 1, cap height 0.700000";

} // namespace

const std::vector<GlyphFault>& getBitmapFaults() {
    static const std::vector<GlyphFault> faults = {
        size,
        load,
        reference,
        get,
        {"FT_Glyph_To_Bitmap", FT_Err_Raster_Overflow, Reaction::Throws,
         "Failed to get bitmap for glyph, error: 98, glyph index: ", true}};
    return faults;
}

const std::vector<GlyphFault>& getOutlineFaults() {
    static const std::vector<GlyphFault> faults = {
        size,
        load,
        reference,
        get,
        {"FT_Outline_Decompose", FT_Err_Invalid_Outline, Reaction::Throws,
         "FT_Outline_Decompose() failed, error: 20, glyph index: ", true}};
    return faults;
}

const std::vector<FaceFault>& getFaceFaults() {
    constexpr const char* noDefaultAdvance =
        "FT_Get_Advance() failed. It can't find glyph advance for undefined character code.";
    constexpr const char* noAdvance = "Error making char to glyph advance cache. FT_Get_Advance() failed.";
    static const std::vector<FaceFault> faults = {
        {"FT_New_Library", 1, FT_Err_Out_Of_Memory, "FT_New_Library() failed: out of memory (error 64)"},
        {"FT_Open_Face", 1, FT_Err_Unknown_File_Format,
         "FT_Open_Face() failed: unknown file format (error 2)"},
        {"FT_Select_Charmap", 1, FT_Err_Invalid_CharMap_Handle, sound},
        {"FT_Select_Charmap", 1, FT_Err_Invalid_CharMap_Handle, sound, false, Testing::CharMapKind::MacRoman},
        {"FT_Set_Charmap", 1, FT_Err_Invalid_CharMap_Handle, "FT_Set_Charmap failed", false,
         Testing::CharMapKind::MacRoman},
        {"FT_Get_Advance", 1, FT_Err_Invalid_Glyph_Index, noDefaultAdvance},
        {"FT_Get_Advance", 2, FT_Err_Invalid_Glyph_Index, noAdvance},
        {"FT_Get_Advance", 3, FT_Err_Invalid_Glyph_Index, noAdvance},
        {"FT_Set_Char_Size", 1, FT_Err_Invalid_Pixel_Size, "FT_Set_Char_Size() failed: 23", true},
        {"FT_Get_Sfnt_Table", 1, FT_Err_Table_Missing, "face with A at 1, cap height 0.800000"},
        {"FT_Library_SetLcdFilter", 1, FT_Err_Unimplemented_Feature, sound}};
    return faults;
}

const std::vector<const char*>& getColorCalls() {
    static const std::vector<const char*> calls = {
        "FT_Load_Sfnt_Table", "FT_Select_Size",      "FT_Load_Glyph",        "FT_Palette_Data_Get",
        "FT_Palette_Select",  "FT_Outline_Get_BBox", "FT_Outline_Get_Bitmap"};
    return calls;
}

const std::set<std::string>& getInfallibleCalls() {
    static const std::set<std::string> calls = {
        "FT_Add_Default_Modules", // only the allocator can make it fail
        "FT_Done_Face",           "FT_Done_Glyph",        "FT_Done_Library",      "FT_Get_Char_Index",
        "FT_Get_First_Char",      "FT_Get_Font_Format",   "FT_Get_Next_Char",     "FT_MulFix",
        "FT_Outline_Get_CBox",    "FT_Outline_Transform", "FT_Outline_Translate", "FT_Set_Transform"};
    return calls;
}

std::set<std::string> listImportedCalls() {
    std::set<std::string> calls;
    const std::unique_ptr<FILE, int (*)(FILE*)> names(popen(FONTENGINE_TEST_LIST_UNDEFINED, "r"), pclose);
    if (!names) {
        throw std::runtime_error("cannot run " FONTENGINE_TEST_LIST_UNDEFINED);
    }
    char line[1024];
    while (std::fgets(line, sizeof(line), names.get()) != nullptr) {
        const std::string text = line;
        const std::size_t start = text.find(" FT_");
        if (start != std::string::npos) {
            calls.insert(text.substr(start + 1, text.find_first_of("@\n", start) - start - 1));
        }
    }
    return calls;
}

} // namespace Vell::FontEngine
