// Redefines the functions of FreeType that the engine calls. The dynamic linker finds those of the executable
// first.

#include <support/spy/FreeTypeMemory.h>
#include <support/spy/SpiedCall.h>

#include FT_ADVANCES_H
#include FT_BBOX_H
#include FT_COLOR_H
#include FT_GLYPH_H
#include FT_LCD_FILTER_H
#include FT_MODULE_H
#include FT_OUTLINE_H
#include FT_TRUETYPE_TABLES_H

#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>

namespace {

using Vell::Testing::Spy::Call;
using Vell::Testing::Spy::countOwners;
using Vell::Testing::Spy::Tag;
using Vell::Testing::Spy::watchMemory;

/// Finds the function of that name in libfreetype.
template <class Function>
Function* findNext(const char* name, Function&) {
    void* const symbol = dlsym(RTLD_NEXT, name);
    if (symbol == nullptr) {
        std::fprintf(stderr, "the FreeType spy cannot find %s\n", name);
        std::abort();
    }
    return reinterpret_cast<Function*>(symbol);
}

} // namespace

#define NEXT(function) static auto* const next = findNext(#function, function)
#define RECORD(function, ...) const Call call(#function, __builtin_return_address(0), __VA_ARGS__)

FT_Error FT_New_Library(FT_Memory memory, FT_Library* library) {
    NEXT(FT_New_Library);
    RECORD(FT_New_Library, memory);
    watchMemory(memory);
    return countOwners(1, call.forward(next, memory, library));
}

FT_Error FT_Reference_Library(FT_Library library) {
    NEXT(FT_Reference_Library);
    RECORD(FT_Reference_Library, library);
    return countOwners(1, call.forward(next, library));
}

FT_Error FT_Done_Library(FT_Library library) {
    NEXT(FT_Done_Library);
    RECORD(FT_Done_Library, library);
    return countOwners(-1, call.forward(next, library));
}

FT_Error FT_Library_SetLcdFilter(FT_Library library, FT_LcdFilter filter) {
    NEXT(FT_Library_SetLcdFilter);
    RECORD(FT_Library_SetLcdFilter, library, filter);
    return call.forward(next, library, filter);
}

FT_Error FT_Open_Face(FT_Library library, const FT_Open_Args* arguments, FT_Long index, FT_Face* face) {
    NEXT(FT_Open_Face);
    RECORD(FT_Open_Face, library, index);
    return call.forward(next, library, arguments, index, face);
}

FT_Error FT_Done_Face(FT_Face face) {
    NEXT(FT_Done_Face);
    RECORD(FT_Done_Face, face);
    return call.forward(next, face);
}

FT_Error FT_Select_Charmap(FT_Face face, FT_Encoding encoding) {
    NEXT(FT_Select_Charmap);
    RECORD(FT_Select_Charmap, face, Tag{static_cast<FT_ULong>(encoding)});
    return call.forward(next, face, encoding);
}

FT_Error FT_Set_Charmap(FT_Face face, FT_CharMap charMap) {
    NEXT(FT_Set_Charmap);
    RECORD(FT_Set_Charmap, face, charMap);
    return call.forward(next, face, charMap);
}

FT_ULong FT_Get_First_Char(FT_Face face, FT_UInt* glyph) {
    NEXT(FT_Get_First_Char);
    RECORD(FT_Get_First_Char, face);
    if (const auto character = call.takeFirstCharacter()) {
        *glyph = character->second;
        return character->first;
    }
    return next(face, glyph);
}

FT_ULong FT_Get_Next_Char(FT_Face face, FT_ULong code, FT_UInt* glyph) {
    NEXT(FT_Get_Next_Char);
    RECORD(FT_Get_Next_Char, face, code);
    if (const auto character = call.takeNextCharacter()) {
        *glyph = character->second;
        return character->first;
    }
    return next(face, code, glyph);
}

FT_Error FT_Get_Advance(FT_Face face, FT_UInt glyph, FT_Int32 flags, FT_Fixed* advance) {
    NEXT(FT_Get_Advance);
    RECORD(FT_Get_Advance, face, glyph, flags);
    return call.forward(next, face, glyph, flags, advance);
}

void* FT_Get_Sfnt_Table(FT_Face face, FT_Sfnt_Tag tag) {
    NEXT(FT_Get_Sfnt_Table);
    RECORD(FT_Get_Sfnt_Table, face, tag);
    return call.getInjectedError() ? nullptr : next(face, tag);
}

FT_Error FT_Set_Char_Size(FT_Face face, FT_F26Dot6 width, FT_F26Dot6 height, FT_UInt horizontalResolution,
                          FT_UInt verticalResolution) {
    NEXT(FT_Set_Char_Size);
    RECORD(FT_Set_Char_Size, face, width, height, horizontalResolution, verticalResolution);
    return call.forward(next, face, width, height, horizontalResolution, verticalResolution);
}

void FT_Set_Transform(FT_Face face, FT_Matrix* matrix, FT_Vector* delta) {
    NEXT(FT_Set_Transform);
    RECORD(FT_Set_Transform, face, matrix, delta);
    next(face, matrix, delta);
}

FT_Error FT_Load_Glyph(FT_Face face, FT_UInt glyph, FT_Int32 flags) {
    NEXT(FT_Load_Glyph);
    RECORD(FT_Load_Glyph, face, glyph, flags);
    return call.forward(next, face, glyph, flags);
}

FT_Error FT_Get_Glyph(FT_GlyphSlot slot, FT_Glyph* glyph) {
    NEXT(FT_Get_Glyph);
    RECORD(FT_Get_Glyph, slot);
    const FT_Error error = call.forward(next, slot, glyph);
    if (const auto format = call.getGlyphFormat(); format && error == FT_Err_Ok) {
        (*glyph)->format = *format;
    }
    return error;
}

FT_Error FT_Glyph_To_Bitmap(FT_Glyph* glyph, FT_Render_Mode mode, const FT_Vector* origin,
                            FT_Bool isReplaced) {
    NEXT(FT_Glyph_To_Bitmap);
    RECORD(FT_Glyph_To_Bitmap, *glyph, mode, origin, isReplaced);
    return call.forward(next, glyph, mode, origin, isReplaced);
}

void FT_Glyph_Get_CBox(FT_Glyph glyph, FT_UInt mode, FT_BBox* box) {
    NEXT(FT_Glyph_Get_CBox);
    RECORD(FT_Glyph_Get_CBox, glyph, mode);
    next(glyph, mode, box);
}

void FT_Done_Glyph(FT_Glyph glyph) {
    NEXT(FT_Done_Glyph);
    RECORD(FT_Done_Glyph, glyph);
    next(glyph);
}

FT_Error FT_Outline_Embolden(FT_Outline* outline, FT_Pos strength) {
    NEXT(FT_Outline_Embolden);
    RECORD(FT_Outline_Embolden, outline, strength);
    return call.forward(next, outline, strength);
}

void FT_Outline_Transform(const FT_Outline* outline, const FT_Matrix* matrix) {
    NEXT(FT_Outline_Transform);
    RECORD(FT_Outline_Transform, outline, matrix);
    next(outline, matrix);
}

FT_Error FT_Outline_Decompose(FT_Outline* outline, const FT_Outline_Funcs* functions, void* user) {
    NEXT(FT_Outline_Decompose);
    RECORD(FT_Outline_Decompose, outline, functions->shift, functions->delta);
    return call.forward(next, outline, functions, user);
}

FT_Error FT_Load_Sfnt_Table(FT_Face face, FT_ULong tag, FT_Long offset, FT_Byte* buffer, FT_ULong* length) {
    NEXT(FT_Load_Sfnt_Table);
    RECORD(FT_Load_Sfnt_Table, face, Tag{tag}, offset);
    return call.forward(next, face, tag, offset, buffer, length);
}

FT_Error FT_Select_Size(FT_Face face, FT_Int strike) {
    NEXT(FT_Select_Size);
    RECORD(FT_Select_Size, face, strike);
    return call.forward(next, face, strike);
}

FT_Error FT_Palette_Data_Get(FT_Face face, FT_Palette_Data* data) {
    NEXT(FT_Palette_Data_Get);
    RECORD(FT_Palette_Data_Get, face);
    return call.forward(next, face, data);
}

FT_Error FT_Palette_Select(FT_Face face, FT_UShort index, FT_Color** palette) {
    NEXT(FT_Palette_Select);
    RECORD(FT_Palette_Select, face, index);
    return call.forward(next, face, index, palette);
}

FT_Error FT_Outline_Get_BBox(FT_Outline* outline, FT_BBox* box) {
    NEXT(FT_Outline_Get_BBox);
    RECORD(FT_Outline_Get_BBox, outline);
    return call.forward(next, outline, box);
}

FT_Error FT_Outline_Get_Bitmap(FT_Library library, FT_Outline* outline, const FT_Bitmap* bitmap) {
    NEXT(FT_Outline_Get_Bitmap);
    RECORD(FT_Outline_Get_Bitmap, library, outline->n_points);
    return call.forward(next, library, outline, bitmap);
}
