#pragma once

#include <FontLoaders/Private/InstalledFace.h>

#include <vector>

namespace Vell::FontLoaders::Internal {

using Faces = std::vector<const InstalledFace*>;

/// The face that has exactly this style, null when none has. Several of one style are told apart by their
/// distance from regular or bold weight, then from normal width, then by path, then by index.
const InstalledFace* selectFace(const Faces& faces, bool bold, bool italic);

/// The face for text of no particular style: the regular one, or the nearest that there is. Null only where
/// there are no faces.
const InstalledFace* selectPlainFace(const Faces& faces);

} // namespace Vell::FontLoaders::Internal
