#include "output/OutputFile.h"

#include "Errors.h"
#include "output/Interruption.h"

#include <fmt/format.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <optional>
#include <utility>

namespace Vell::Tool {

namespace {

[[noreturn]] void fail(const std::string& path, int error) {
    throw ToolError(fmt::format("cannot write '{}': {}", path, describeErrno(error)));
}

/// In the folder of the target, where a rename is atomic. The name is short even if that of the target is
/// not.
std::string makeNamePattern(const std::string& target) {
    return target.substr(0, target.rfind('/') + 1) + ".fontengine-XXXXXX";
}

/// The mode of an ordinary new file.
mode_t getNewFileMode() {
    const mode_t mask = umask(0);
    umask(mask);
    constexpr mode_t everyone = 0666;
    return everyone & ~mask;
}

/// The end of a chain of symbolic links, even if it does not exist yet.
std::string followLinks(const std::string& path) {
    constexpr int mostLinks = 40;
    std::error_code error;
    std::filesystem::path target = path;
    for (int i = 0; i < mostLinks && is_symlink(symlink_status(target, error)); ++i) {
        target = target.parent_path() / read_symlink(target, error);
    }
    return target.string();
}

/// The mode of the existing file. Only a file that may be written may be replaced.
mode_t getMode(const std::string& path, const std::string& target) {
    struct stat status {};
    if (stat(target.c_str(), &status) != 0) {
        if (errno == ENOENT) {
            return getNewFileMode();
        }
        fail(path, errno);
    }
    if (S_ISDIR(status.st_mode)) {
        fail(path, EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        throw ToolError(fmt::format("cannot write '{}': not a regular file", path));
    }
    if (access(target.c_str(), W_OK) != 0) {
        fail(path, errno);
    }
    constexpr mode_t permissions = 07777;
    return status.st_mode & permissions;
}

/// A new file beside the target, which is where the links of the path lead. It goes away unless it takes the
/// target's place. Messages name the path.
class TemporaryFile {
public:
    explicit TemporaryFile(const std::string& path)
        : _path(path)
        , _target(followLinks(path))
        , _mode(getMode(path, _target))
        , _name(makeNamePattern(_target)) {
        const InterruptionPause pause;
        _descriptor = mkostemp(_name.data(), O_CLOEXEC);
        if (_descriptor < 0) {
            fail(_path, errno);
        }
        _undo.emplace([](void* file) { unlink(static_cast<TemporaryFile*>(file)->_name.c_str()); }, this);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (_descriptor >= 0) {
            close(_descriptor);
        }
        if (!_name.empty()) {
            unlink(_name.c_str());
        }
    }

    /// Syncs the bytes to disk before the file gets its name, so that a crash leaves the old file.
    void write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = ::write(_descriptor, bytes.data(), bytes.size());
            if (written >= 0) {
                bytes.remove_prefix(static_cast<std::size_t>(written));
            } else if (errno != EINTR) {
                fail(_path, errno);
            }
        }
        check(fchmod(_descriptor, _mode));
        check(fsync(_descriptor));
        check(close(std::exchange(_descriptor, -1)));
    }

    void replaceTarget() {
        const InterruptionPause pause;
        check(std::rename(_name.c_str(), _target.c_str()));
        _undo.reset();
        _name.clear();
    }

private:
    void check(int result) const {
        if (result != 0) {
            fail(_path, errno);
        }
    }

    std::string _path;
    std::string _target;
    mode_t _mode;
    std::string _name; // of the new file
    int _descriptor = -1;
    std::optional<Undo> _undo;
};

/// Makes a folder and its missing parents, and removes them again unless they are kept.
class Folder {
public:
    explicit Folder(const std::string& path)
        : _undo([](void* folder) { static_cast<Folder*>(folder)->remove(); }, this) {
        if (path.empty()) {
            failToMake(path, ENOENT);
        }
        std::filesystem::path part;
        for (const auto& name : std::filesystem::path(path)) {
            part /= name;
            make(path, part.string());
        }
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() { remove(); }

    void keep() {
        const InterruptionPause pause;
        _made.clear();
    }

private:
    [[noreturn]] static void failToMake(const std::string& path, int error) {
        throw ToolError(fmt::format("cannot make the folder '{}': {}", path, describeErrno(error)));
    }

    void make(const std::string& path, const std::string& part) {
        constexpr mode_t everyone = 0777;
        std::error_code ignored;
        if (std::filesystem::is_directory(part, ignored)) {
            return;
        }
        const InterruptionPause pause;
        _made.push_back(part);
        if (mkdir(part.c_str(), everyone) != 0) {
            const int error = errno;
            _made.pop_back();
            failToMake(path, error);
        }
    }

    /// The innermost first. A folder that is not empty, because another program uses it, stays.
    void remove() noexcept {
        for (auto part = _made.rbegin(); part != _made.rend(); ++part) {
            rmdir(part->c_str());
        }
    }

    std::vector<std::string> _made;
    Undo _undo;
};

} // namespace

void writeFile(const std::string& path, std::string_view bytes) {
    TemporaryFile file(path);
    file.write(bytes);
    file.replaceTarget();
}

void writeFiles(const std::string& folder, const std::vector<NamedFile>& files) {
    Folder target(folder);
    std::deque<TemporaryFile> ready;
    for (const NamedFile& file : files) {
        const std::string path = (std::filesystem::path(folder) / file.name).string();
        ready.emplace_back(path).write(file.bytes);
    }
    const InterruptionPause pause;
    for (TemporaryFile& file : ready) {
        file.replaceTarget();
    }
    target.keep();
}

} // namespace Vell::Tool
