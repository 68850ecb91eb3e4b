TEST(Fonts, HaveASourceOfAnotherName) {}
