TEST(Seeds, HaveASourceInLowerCase) {}
