#pragma once

/// Layout of text in every script. So far, the analysis that must precede shaping: directions, scripts, and
/// the places where a text may be divided. All texts are UTF-8, all offsets are byte offsets.
///
///     const TextLayout::BidiLine line("Price: \u05E9 12", TextLayout::ParagraphDirection::Auto);
///     for (const TextLayout::LineBreak& lineBreak : TextLayout::findLineBreaks(text)) { ... }

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
