#pragma once

/// Painters that draw on cairo surfaces of every kind: images, SVG, PDF and others. They implement the
/// painter interfaces of Gfx and FontEngine.
///
///     const auto surface = CairoAdapter::makeImageSurface(640, 480);
///     CairoAdapter::CairoPainter painter(surface.get());
///     FontEngine::VectorTextPainter(painter).drawText(text, extFontInfo, *metrics);

#include <CairoAdapter/Public/CairoGlyphPainter.h>
#include <CairoAdapter/Public/CairoHandles.h>
#include <CairoAdapter/Public/CairoPainter.h>
