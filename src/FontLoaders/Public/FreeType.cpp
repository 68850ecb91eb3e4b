#include <FontLoaders/Public/FreeType.h>

#include <FontLoaders/Private/FreeTypeBounds/FreeTypeMemoryInternal.h>
#include <FontLoaders/Private/FreeTypeBounds/GlyfReader.h>
#include <FontLoaders/Private/FreeTypeBounds/LibraryMemory.h>
#include <FontLoaders/Public/Exceptions.h>
#include <FontLoaders/Public/FreeTypeMemory.h>

#include <fmt/format.h>

#include FT_MODULE_H

#include <memory>
#include <mutex>
#include <utility>

namespace Vell::FontLoaders {

namespace {

/// Guards the reference counts of all libraries, because FreeType's are not atomic.
std::mutex ownerCountMutex;

void releaseFace(FT_FaceRec_* face) {
    FT_Done_Face(face);
}

/// The bytes that FreeType reads in place. FreeType closes the stream when the last reference to the face is
/// released, or when the bytes turn out not to be a font. Until then, the stream keeps the bytes alive.
struct MemoryStream {
    explicit MemoryStream(NNPtr<const std::vector<unsigned char>> content)
        : bytes(std::move(content)) {
        // FreeType only reads the bytes, but takes them without const.
        record.base = const_cast<unsigned char*>(bytes->data());
        record.size = static_cast<unsigned long>(bytes->size());
        record.descriptor.pointer = this;
        record.close = [](FT_Stream stream) {
            static_cast<MemoryStream*>(stream->descriptor.pointer)->self.reset();
        };
    }

    FT_StreamRec record{};
    NNPtr<const std::vector<unsigned char>> bytes;
    std::shared_ptr<MemoryStream> self; // set while FreeType uses the stream
};

/// Returns "out of memory" if an allocation has failed. FreeType may report that as a different error or not
/// at all: it carries on without those modules of a library, or tables of a face, for which there is no
/// memory.
int preferMemoryError(int error) {
    return Internal::hasRunOutOfMemory() ? FT_Err_Out_Of_Memory : error;
}

struct ErrorText {
    int code;
    const char* text;
};

// FT_Error_String returns null in most builds of FreeType. Its header offers the same texts in this way.
#undef FTERRORS_H_
#define FT_ERRORDEF(name, value, text) {value, text},
#define FT_ERROR_START_LIST constexpr ErrorText errorTexts[] = {
#define FT_ERROR_END_LIST                                                                                    \
    }                                                                                                        \
    ;
#include FT_ERRORS_H

const char* findText(int error) {
    for (const ErrorText& entry : errorTexts) {
        if (entry.code == error) {
            return entry.text;
        }
    }
    return "unknown error";
}

void throwIfFailed(const char* call, int error) {
    if (!isFTSucceeded(error)) {
        throw FreeTypeException(fmt::format("{}() failed: {} (error {})", call, findText(error), error));
    }
}

} // namespace

FTLibraryPtr createFreeTypeLibrary() {
    auto memory = std::make_unique<Internal::LibraryMemory>();
    FT_Library library = nullptr;
    throwIfFailed("FT_New_Library", FT_New_Library(memory->getRecord(), &library));
    memory.release()->bindLifetimeTo(library);
    FTLibraryPtr owner(library, releaseFreeTypeLibrary);
    Internal::resetOutOfMemory();
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
    Internal::resetOutOfMemory();
    const int error = FT_Open_Face(library.get(), &arguments, 0, &face);
    if (!isFTSucceeded(error)) {
        stream->self.reset(); // in case FreeType has failed before it looked at the stream
    }
    FTFacePtr owner(face, releaseFace);
    throwIfFailed("FT_Open_Face", preferMemoryError(error));
    Internal::LibraryMemory::setReader(face, std::make_unique<Internal::GlyfReader>(face));
    return owner;
}

} // namespace Vell::FontLoaders
