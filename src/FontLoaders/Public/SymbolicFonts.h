#pragma once

#include <Utils/Public/Export.h>

#include <boost/utility/string_ref.hpp>

namespace Vell::FontLoaders {

/// Whether a family is one of the well-known symbol fonts, whose codes mean pictures and not characters.
/// These are "Symbol", "Wingdings", "Wingdings 2", "Wingdings 3", "Webdings", "Zapf Dingbats", "ITC Zapf
/// Dingbats", "Marlett", "MT Extra" and "Bookshelf Symbol 7". The name must match exactly, including upper
/// and lower case. "OpenSymbol" is not one of them, because its pictures have Unicode codes. Any
/// thread may call.
VELL_API bool isSymbolicFont(boost::string_ref family);

} // namespace Vell::FontLoaders
