TEST(HashOfTextsOfFonts, StandsInAnotherSource) {}
