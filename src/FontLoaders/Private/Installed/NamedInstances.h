#pragma once

#include <fontconfig/fontconfig.h>

#include <map>
#include <string>
#include <utility>

namespace Vell::FontLoaders::Internal {

/// Where an instance of a variable font is, that the font has a name for.
struct InstancePlace {
    std::string file;
    unsigned int index;    ///< of the face in its file
    unsigned int instance; ///< from 1, as the font lists them; 0 for the default instance
    bool isBold;
    bool isItalic;
};

/// The named instances of the installed variable fonts, by the name of a family and of a style of it: "Inter
/// SemiBold". Blanks do not count, nor does case.
class NamedInstances {
public:
    /// Adds what a pattern describes: nothing unless it is a font's default or named instance.
    void add(const FcPattern* pattern);

    /// If several fonts have the name, the first by path. Null if none has it.
    const InstancePlace* find(const std::string& name) const;

private:
    std::map<std::string, InstancePlace> _places; // by the name in lower case, without blanks
};

} // namespace Vell::FontLoaders::Internal
