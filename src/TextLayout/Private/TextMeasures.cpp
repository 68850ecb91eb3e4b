#include <TextLayout/Private/TextMeasures.h>

namespace Vell::TextLayout {

TextMeasures::TextMeasures(const ShapedText& /*text*/) {}

} // namespace Vell::TextLayout
