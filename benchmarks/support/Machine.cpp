#include "Machine.h"

#include <FontLoaders/Public/FreeType.h>

#include <benchmark/benchmark.h>
#include <boost/version.hpp>
#include <pango/pangocairo.h>

#include <fstream>
#include <string>

namespace Vell::Benchmarks {

namespace {

std::string findProcessor() {
    std::ifstream file("/proc/cpuinfo");
    std::string line;
    while (std::getline(file, line)) {
        if (line.rfind("model name", 0) == 0) {
            return line.substr(line.find(": ") + 2);
        }
    }
    return "unknown";
}

std::string getCompiler() {
#ifdef __clang__
    return "clang++ " __clang_version__;
#else
    return "g++ " __VERSION__;
#endif
}

std::string getFreeTypeVersion() {
    const FontLoaders::FTLibraryPtr library = FontLoaders::createFreeTypeLibrary();
    FT_Int major = 0;
    FT_Int minor = 0;
    FT_Int patch = 0;
    FT_Library_Version(library.get(), &major, &minor, &patch);
    return std::to_string(major) + "." + std::to_string(minor) + "." + std::to_string(patch);
}

std::string getBoostVersion() {
    return std::to_string(BOOST_VERSION / 100000) + "." + std::to_string(BOOST_VERSION / 100 % 1000);
}

} // namespace

void describeMachine() {
    benchmark::AddCustomContext("processor", findProcessor());
    benchmark::AddCustomContext("compiler", getCompiler());
    benchmark::AddCustomContext("FreeType", getFreeTypeVersion());
    benchmark::AddCustomContext("Boost", getBoostVersion());
    benchmark::AddCustomContext("cairo", cairo_version_string());
    benchmark::AddCustomContext("Pango", pango_version_string());
}

} // namespace Vell::Benchmarks
