#include <support/FontSandbox.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Vell::Testing {

FontSandbox::FontSandbox(const std::string& rules) {
    std::filesystem::create_directory(_root.getPath("fonts"));
    const std::string config = _root.getPath("fonts.conf");
    std::ofstream(config)
        << "<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"urn:fontconfig:fonts.dtd\">\n"
        << "<fontconfig>\n<dir>" << _root.getPath("fonts") << "</dir>\n<cachedir>" << _root.getPath("cache")
        << "</cachedir>\n"
        << rules << "\n</fontconfig>\n";
    setenv("FONTCONFIG_FILE", config.c_str(), 1);
}

FontSandbox::~FontSandbox() {
    unsetenv("FONTCONFIG_FILE");
}

std::string FontSandbox::getPath(const std::string& name) const {
    return _root.getPath("fonts/" + name);
}

void FontSandbox::write(const std::string& name, const std::vector<unsigned char>& bytes) const {
    const std::filesystem::path path = getPath(name);
    std::filesystem::create_directories(path.parent_path());
    std::ofstream stream(path, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!stream) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

void FontSandbox::remove(const std::string& name) const {
    std::filesystem::remove(getPath(name));
}

void FontSandbox::link(const std::string& file) const {
    const std::filesystem::path source = file;
    if (!std::filesystem::exists(source)) {
        throw std::runtime_error("a font that the tests need is not installed: " + file);
    }
    std::filesystem::create_symlink(source, getPath(source.filename().string()));
}

std::vector<unsigned char> readFile(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace Vell::Testing
