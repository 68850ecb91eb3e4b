#pragma once

#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYSTEM_H

#include <atomic>
#include <cstddef>
#include <memory>

namespace Vell::FontLoaders::Internal {

/// The memory of one FreeType library. It keeps a list of the library's blocks, except those of glyphs
/// (FreeTypeGlyphMemory), and frees at its end those that are left: FreeType leaks blocks with compressed
/// fonts, and clients may leak theirs.
///
///     auto memory = std::make_unique<LibraryMemory>();
///     if (FT_New_Library(memory->getRecord(), &library) == FT_Err_Ok) {
///         memory.release()->bindLifetimeTo(library);
///     }
///
/// Blocks may be freed on any thread.
class LibraryMemory {
public:
    LibraryMemory();
    ~LibraryMemory();
    LibraryMemory(const LibraryMemory&) = delete;
    LibraryMemory& operator=(const LibraryMemory&) = delete;

    /// The reader of a face. Null if it has none, as for a face whose library uses another memory.
    static GlyfReader* findReader(FT_Face face);
    /// Gives a face its reader, which is destroyed with the face's own memory block, so never before the
    /// face, however many references to the face exist. Does nothing for a face whose library uses another
    /// memory.
    static void setReader(FT_Face face, std::unique_ptr<GlyfReader> reader);

    FT_Memory getRecord() { return &_record; }

    /// From now on the library owns this object. It is destroyed when FreeType frees the library's own block,
    /// which is the last thing that FT_Done_Library does for the last owner.
    void bindLifetimeTo(FT_Library library) { _library = library; }

private:
    /// Precedes each listed block. The list is a ring, in which _ring precedes the first block.
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
    std::atomic_flag _isRingTaken = ATOMIC_FLAG_INIT; // by the thread that changes the links
};

} // namespace Vell::FontLoaders::Internal
