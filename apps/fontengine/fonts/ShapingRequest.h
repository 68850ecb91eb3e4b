#pragma once

#include <string>

namespace Vell::Tool {

/// What the options say about shaping, in the words of the command line.
struct ShapingRequest {
    std::string features = {};      ///< "-liga,kern=0,ss01"
    std::string language = {};      ///< a BCP 47 tag; empty if none is given
    std::string direction = "auto"; ///< or "ltr" or "rtl"
};

} // namespace Vell::Tool
