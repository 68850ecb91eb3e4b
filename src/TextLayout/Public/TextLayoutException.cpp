#include <TextLayout/Public/TextLayoutException.h>

namespace Vell::TextLayout {

TextLayoutException::~TextLayoutException() = default;

} // namespace Vell::TextLayout
