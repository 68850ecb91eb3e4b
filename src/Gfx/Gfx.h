#pragma once

/// The interfaces between text and graphics: descriptions of faces and fonts, metrics, painters and paths.

#include <Gfx/Public/BasicMetrics.h>
#include <Gfx/Public/CharMap.h>
#include <Gfx/Public/FontInfo.h>
#include <Gfx/Public/FontMetrics.h>
#include <Gfx/Public/Painter.h>
#include <Gfx/Public/UniversalFontMetrics.h>
#include <Utils/Utils.h>
