TEST(Hash, IsRight) {}
TEST(HashOfNumbers, IsRight) {}
TEST(Hashing, LeadsNowhere) {}
