// The bytes of the font file FONTENGINE_EMBEDDED_FONT_FILE, as read-only data.

    .section .rodata, "a", %progbits
    .balign 16

    .globl fontengineEmbeddedFontBegin
    .hidden fontengineEmbeddedFontBegin
    .type fontengineEmbeddedFontBegin, %object
fontengineEmbeddedFontBegin:
    .incbin FONTENGINE_EMBEDDED_FONT_FILE

    .globl fontengineEmbeddedFontEnd
    .hidden fontengineEmbeddedFontEnd
    .type fontengineEmbeddedFontEnd, %object
fontengineEmbeddedFontEnd:
    .byte 0

    // Without this note the linker would make the stacks of the program executable.
    .section .note.GNU-stack, "", %progbits
