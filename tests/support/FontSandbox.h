#pragma once

#include <support/TemporaryFolder.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// A machine of its own for the loaders that are made while it exists: a folder of fonts and a configuration
/// of fontconfig that knows nothing else.
class FontSandbox {
public:
    /// `rules` are elements of fontconfig's configuration language.
    explicit FontSandbox(const std::string& rules = "");
    FontSandbox(const FontSandbox&) = delete;
    FontSandbox& operator=(const FontSandbox&) = delete;
    ~FontSandbox();

    /// Where a font of this name is.
    std::string getPath(const std::string& name) const;
    std::string getRoot() const { return _root.getPath(); }

    void write(const std::string& name, const std::vector<unsigned char>& bytes) const;
    void remove(const std::string& name) const;

    /// Installs a font of the machine that the tests run on under its own name.
    void link(const std::string& file) const;

private:
    TemporaryFolder _root;
};

/// Folders of the fonts that the tests borrow.
constexpr const char* dejaVu = "/usr/share/fonts/truetype/dejavu/";
constexpr const char* liberation = "/usr/share/fonts/truetype/liberation/";
constexpr const char* notoCjk = "/usr/share/fonts/opentype/noto/";

std::vector<unsigned char> readFile(const std::string& path);

} // namespace Vell::Testing
