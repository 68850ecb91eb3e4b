#pragma once

/// Layout of text in every script, above the engine and from its caches: shaped text, paragraphs, and the
/// analysis that both need. All texts are UTF-8, all offsets are byte offsets.
///
///     const TextLayout::TextShaper shaper(factory); // keep it: it has a cache of words
///     const auto text = shaper.shape("Price: \u05E9 12", describeFont("DejaVu Sans", 16.0F));
///     const TextLayout::Paragraph paragraph(text, TextLayout::ParagraphStyle().setWidth(300.0F));
///     drawRaster(paragraph, {painter, glyphPainter, color, devicePixelRatio});
///     const TextLayout::TextHit hit = paragraph.hitTest({x, y});

#include <TextLayout/Public/BidiLine.h>
#include <TextLayout/Public/Paragraph.h>
#include <TextLayout/Public/ParagraphLine.h>
#include <TextLayout/Public/ParagraphStyle.h>
#include <TextLayout/Public/ScriptRuns.h>
#include <TextLayout/Public/ShapedText.h>
#include <TextLayout/Public/TextBoundaries.h>
#include <TextLayout/Public/TextDrawing.h>
#include <TextLayout/Public/TextFeatures.h>
#include <TextLayout/Public/TextLayoutException.h>
#include <TextLayout/Public/TextShaper.h>
#include <TextLayout/Public/TextStyle.h>
