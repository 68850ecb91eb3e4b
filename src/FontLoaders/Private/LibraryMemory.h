#pragma once

#include <FontLoaders/Private/GlyfReader.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYSTEM_H

#include <atomic>
#include <cstddef>
#include <memory>

namespace Vell::FontLoaders::Internal {

/// The memory of one FreeType library. It lists the blocks that the library has, but for those of glyphs
/// (FreeTypeGlyphMemory), and gives back at its end what is left: FreeType forgets blocks of its own with
/// compressed fonts, and clients may forget theirs.
///
///     auto memory = std::make_unique<LibraryMemory>();
///     if (FT_New_Library(memory->getRecord(), &library) == FT_Err_Ok) {
///         memory.release()->endWith(library);
///     }
///
/// Blocks may be given back on any thread.
class LibraryMemory {
public:
    LibraryMemory();
    ~LibraryMemory();
    LibraryMemory(const LibraryMemory&) = delete;
    LibraryMemory& operator=(const LibraryMemory&) = delete;

    /// The reader of a face; null if it has none, as a face of a library with another memory.
    static GlyfReader* findReader(FT_Face face);
    /// Gives the face a reader, which ends with the face's own block, hence never before the face, however
    /// many references there are to it. A face of a library with another memory gets none.
    static void setReader(FT_Face face, std::unique_ptr<GlyfReader> reader);

    FT_Memory getRecord() { return &_record; }

    /// From now on this object belongs to the library: it ends when FreeType gives back the library's own
    /// block, the last thing that FT_Done_Library does for the last owner.
    void endWith(FT_Library library) { _library = library; }

private:
    /// Stands before each listed block. The list is a ring, in which _ring stands before the first block.
    struct Header {
        Header* previous = nullptr;
        Header* next = nullptr;
        GlyfReader* reader = nullptr; // owned
    };

    static std::size_t getHeaderSize();
    static bool isListed(const void* block);
    static Header* getHeader(void* block);

    static void* allocate(FT_Memory record, long size);
    static void* reallocate(FT_Memory record, long oldSize, long newSize, void* block);
    static void release(FT_Memory record, void* block);

    class RingLock;

    void* list(Header* header);
    void unlist(Header* header);
    void* resize(Header* header, std::size_t bytes);

    FT_MemoryRec_ _record;
    FT_Library _library = nullptr;
    Header _ring;
    std::atomic_flag _isRingTaken = ATOMIC_FLAG_INIT; // by the thread that changes links
};

} // namespace Vell::FontLoaders::Internal
