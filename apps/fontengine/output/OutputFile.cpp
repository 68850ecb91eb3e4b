#include "output/OutputFile.h"

#include "Errors.h"

#include <fmt/format.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

namespace Vell::Tool {

namespace {

[[noreturn]] void fail(const std::string& path, int error) {
    throw ToolError(fmt::format("cannot write '{}': {}", path, describeErrno(error)));
}

/// In the target's folder, where a rename replaces at once. The name is short, whatever the target's is.
std::string makeNamePattern(const std::string& target) {
    return target.substr(0, target.rfind('/') + 1) + ".fontengine-XXXXXX";
}

/// A new file beside the target that goes away unless it takes the target's place.
class TemporaryFile {
public:
    explicit TemporaryFile(std::string target)
        : _target(std::move(target))
        , _path(makeNamePattern(_target))
        , _descriptor(mkostemp(_path.data(), O_CLOEXEC)) {
        if (_descriptor < 0) {
            fail(_target, errno);
        }
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (_descriptor >= 0) {
            close(_descriptor);
        }
        if (!_path.empty()) {
            unlink(_path.c_str());
        }
    }

    void setMode(mode_t mode) { check(fchmod(_descriptor, mode)); }

    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(_descriptor, bytes.data(), bytes.size());
            if (written >= 0) {
                bytes.remove_prefix(static_cast<std::size_t>(written));
            } else if (errno != EINTR) {
                fail(_target, errno);
            }
        }
    }

    /// The bytes reach the disk before the name does: a crash in between leaves the old file.
    void replaceTarget() {
        check(fsync(_descriptor));
        check(close(std::exchange(_descriptor, -1)));
        check(std::rename(_path.c_str(), _target.c_str()));
        _path.clear();
    }

private:
    void check(int result) const {
        if (result != 0) {
            fail(_target, errno);
        }
    }

    std::string _target;
    std::string _path;
    int _descriptor;
};

/// The mode that an ordinary new file gets.
mode_t getNewFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    constexpr mode_t everyone = 0666;
    return everyone & ~mask;
}

/// The mode of the file that is there. Only a file that may be written is replaced.
mode_t getMode(const std::string& target) {
    struct stat status {};
    if (stat(target.c_str(), &status) != 0) {
        if (errno == ENOENT) {
            return getNewFileMode();
        }
        fail(target, errno);
    }
    if (S_ISDIR(status.st_mode)) {
        fail(target, EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        throw ToolError(fmt::format("cannot write '{}': not a regular file", target));
    }
    if (access(target.c_str(), W_OK) != 0) {
        fail(target, errno);
    }
    constexpr mode_t permissions = 07777;
    return status.st_mode & permissions;
}

/// Where a symbolic link leads, also when nothing is there yet.
std::string followLinks(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_symlink(std::filesystem::symlink_status(path, error))) {
        return path;
    }
    const auto followed = std::filesystem::weakly_canonical(path, error);
    return error ? path : followed.string();
}

} // namespace

void writeFile(const std::string& path, std::string_view bytes) {
    const std::string target = followLinks(path);
    const mode_t mode = getMode(target);
    TemporaryFile file(target);
    file.write(bytes);
    file.setMode(mode);
    file.replaceTarget();
}

void makeFolder(const std::string& folder) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) {
        throw ToolError(fmt::format("cannot make the folder '{}': {}", folder, error.message()));
    }
}

} // namespace Vell::Tool
