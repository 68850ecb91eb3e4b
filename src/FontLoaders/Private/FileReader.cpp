#include <FontLoaders/Private/FileReader.h>

#include <FontLoaders/Public/Exceptions.h>

#include <fmt/format.h>

#include <sys/stat.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <system_error>

namespace Vell::FontLoaders::Internal {

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

[[noreturn]] void throwUnreadable(const std::string& file, const std::string& reason) {
    throw FontLoaderException(fmt::format("cannot read font file {}: {}", file, reason));
}

[[noreturn]] void throwSystemError(const std::string& file) {
    const int error = errno;
    throwUnreadable(file, std::generic_category().message(error));
}

std::size_t getSize(std::FILE* stream, const std::string& file) {
    struct stat status {};
    if (fstat(fileno(stream), &status) != 0) {
        throwSystemError(file);
    }
    return static_cast<std::size_t>(status.st_size);
}

} // namespace

std::vector<unsigned char> readWholeFile(const std::string& file) {
    const FilePtr stream(std::fopen(file.c_str(), "rbe"));
    if (!stream) {
        throwSystemError(file);
    }
    // A file may shrink while it is read: what counts is what was read.
    std::vector<unsigned char> bytes(getSize(stream.get(), file));
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), stream.get()));
    if (std::ferror(stream.get()) != 0) {
        throwSystemError(file);
    }
    if (bytes.empty()) {
        throwUnreadable(file, "the file is empty");
    }
    return bytes;
}

} // namespace Vell::FontLoaders::Internal
