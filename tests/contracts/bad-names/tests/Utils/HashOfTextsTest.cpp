TEST(HashOfTexts, IsRight) {}
TEST(Hash, StandsInTwoSources) {}
