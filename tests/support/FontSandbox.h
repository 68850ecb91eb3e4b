#pragma once

#include <support/TemporaryFolder.h>

#include <string>
#include <vector>

namespace Vell::Testing {

/// While it exists, new loaders see only its folder of fonts, through a fontconfig configuration of its own.
class FontSandbox {
public:
    /// `rules` are elements of fontconfig's configuration language.
    explicit FontSandbox(const std::string& rules = "");
    FontSandbox(const FontSandbox&) = delete;
    FontSandbox& operator=(const FontSandbox&) = delete;
    ~FontSandbox();

    /// The path of a font file with this name.
    std::string getPath(const std::string& name) const;
    std::string getRoot() const { return _root.getPath(); }

    void write(const std::string& name, const std::vector<unsigned char>& bytes) const;
    void remove(const std::string& name) const;

    /// Installs a font file of the machine under its own name.
    void link(const std::string& file) const;

private:
    TemporaryFolder _root;
};

/// The folders of the machine's fonts that the tests use.
constexpr const char* dejaVu = "/usr/share/fonts/truetype/dejavu/";
constexpr const char* liberation = "/usr/share/fonts/truetype/liberation/";
constexpr const char* notoCjk = "/usr/share/fonts/opentype/noto/";

std::vector<unsigned char> readFile(const std::string& path);

} // namespace Vell::Testing
