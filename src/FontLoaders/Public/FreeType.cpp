#include <FontLoaders/Public/FreeType.h>

#include <FontLoaders/Private/FreeTypeErrors.h>
#include <FontLoaders/Private/FreeTypeHeap.h>
#include <FontLoaders/Private/GlyfReader.h>
#include <FontLoaders/Private/LibraryMemory.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeTypeMemory.h>

#include FT_MODULE_H

#include <memory>
#include <mutex>
#include <utility>

namespace Vell::FontLoaders {

namespace {

/// Guards the owner counts of all libraries, which FreeType changes without any care for threads.
std::mutex ownerCountMutex;

void releaseFace(FT_FaceRec_* face) {
    FT_Done_Face(face);
}

/// Bytes that FreeType reads in place. They are kept until FreeType closes the stream: when the last owner of
/// the face lets go, or when the bytes turn out to be no font.
struct MemoryStream {
    explicit MemoryStream(NNPtr<const std::vector<unsigned char>> content)
        : bytes(std::move(content)) {
        // FreeType has no const for what it only reads.
        record.base = const_cast<unsigned char*>(bytes->data());
        record.size = static_cast<unsigned long>(bytes->size());
        record.descriptor.pointer = this;
        record.close = [](FT_Stream stream) {
            static_cast<MemoryStream*>(stream->descriptor.pointer)->self.reset();
        };
    }

    FT_StreamRec record{};
    NNPtr<const std::vector<unsigned char>> bytes;
    std::shared_ptr<MemoryStream> self; // while FreeType has it
};

/// The lack of memory behind an error that FreeType calls by another name, or behind none at all: it goes on
/// without the modules of a library and the tables of a face that it has no memory for.
int preferMemoryError(int error) {
    return Internal::hasLackedMemory() ? FT_Err_Out_Of_Memory : error;
}

void throwIfFailed(const char* call, int error) {
    if (!isFTSucceeded(error)) {
        throw FreeTypeException(Internal::describeFreeTypeError(call, error));
    }
}

} // namespace

FTLibraryPtr createFreeTypeLibrary() {
    auto memory = std::make_unique<Internal::LibraryMemory>();
    FT_Library library = nullptr;
    throwIfFailed("FT_New_Library", FT_New_Library(memory->getRecord(), &library));
    memory.release()->endWith(library);
    FTLibraryPtr owner(library, releaseFreeTypeLibrary);
    Internal::forgetLackOfMemory();
    FT_Add_Default_Modules(library);
    throwIfFailed("FT_Add_Default_Modules", preferMemoryError(FT_Err_Ok));
    return owner;
}

FTLibraryPtr shareFreeTypeLibrary(FT_Library library) {
    const std::lock_guard<std::mutex> lock(ownerCountMutex);
    throwIfFailed("FT_Reference_Library", FT_Reference_Library(library));
    return FTLibraryPtr(library, releaseFreeTypeLibrary);
}

void releaseFreeTypeLibrary(FT_Library library) {
    const std::lock_guard<std::mutex> lock(ownerCountMutex);
    FT_Done_Library(library);
}

FTFacePtr createFontFace(const FTLibraryPtr& library, const NNPtr<const std::vector<unsigned char>>& bytes) {
    const auto stream = std::make_shared<MemoryStream>(bytes);
    FT_Open_Args arguments{};
    arguments.flags = FT_OPEN_STREAM;
    arguments.stream = &stream->record;
    const FreeTypeOperation operation(openingBounds);
    FT_Face face = nullptr;
    stream->self = stream;
    Internal::forgetLackOfMemory();
    const int error = FT_Open_Face(library.get(), &arguments, 0, &face);
    if (!isFTSucceeded(error)) {
        stream->self.reset(); // FreeType closes only what it has come to look at
    }
    FTFacePtr owner(face, releaseFace);
    throwIfFailed("FT_Open_Face", preferMemoryError(error));
    Internal::attachGlyfReader(face);
    return owner;
}

} // namespace Vell::FontLoaders
