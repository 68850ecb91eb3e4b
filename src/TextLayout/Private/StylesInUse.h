#pragma once

#include <FontEngine/FE_FontFactory.h>
#include <TextLayout/Private/CachesLock.h>
#include <TextLayout/Private/PreparedStyle.h>
#include <TextLayout/Private/ShapingCaches.h>
#include <TextLayout/Private/StyleGroups.h>

#include <boost/container/small_vector.hpp>

#include <memory>

namespace Vell::TextLayout {

using StylesInUse = boost::container::small_vector<StyleInUse, 1>; // one for each group

/// Finds the styles among those that are known, or prepares them. Takes the lock, but not while it calls the
/// factory and descriptions. The caller has it in the end if there is a group.
StylesInUse prepareStyles(const FontEngine::FontFactory& factory, ShapingCaches& caches,
                          const StyleGroups& groups, CachesLock& lock);

} // namespace Vell::TextLayout
