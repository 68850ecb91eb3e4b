// Lossy conversions and callables with another signature do not compile.

#include <Gfx/Public/CharMap.h>
#include <Utils/Public/Assert.h>
#include <Utils/Public/CallableRef.h>
#include <Utils/Public/MRUCache.h>
#include <Utils/Public/NumCast.h>
#include <Utils/Public/Ptr/CheckedPtr.h>

#include <functional>
#include <string>

using namespace Vell;

using Cache = MRUCache<int, int, std::hash<int>, AreDeeplyEqualComparator>;

void visit(const CallableRef<int(int)>& visitor);
void look(const Cache& cache);

int neverReturns() {
    doFailAssert("file", 1, "expression"); // no return after it
}

int main() {
    Cache cache(3, 100);
    const Cache::DataNode node(1, 2);
    Gfx::CharMap map(Gfx::CharMap::GlyphIndexWithAdvance(0, 0.5F));
    const Gfx::CharMap& constMap = map;
    const int number = numCast<int>(3L);
    const CallableRef<int(int)> same([](int value) { return value; });

    look(3);
#ifdef MISUSE_LOOKING_UP_IN_A_CONST_CACHE // discards qualifiers|not marked const
    static_cast<const Cache&>(cache).get(1);
#endif
#ifdef MISUSE_CHANGING_A_NODE // read-only|cannot assign
    cache.get(1)->getValue() = 2;
#endif
#ifdef MISUSE_NODE_WITHOUT_WEIGHT // no matching (function|constructor)
    const Cache::DataNode weightless(1);
#endif
#ifdef MISUSE_INSERTING_INTO_A_CONST_MAP // discards qualifiers|not marked const
    constMap.insert('A', {1, 1.0F}, true);
#endif
#ifdef MISUSE_MAP_WITHOUT_DEFAULT // no matching (function|constructor)
    const Gfx::CharMap bare;
#endif
#ifdef MISUSE_CASTING_A_TEXT // numCast converts numbers
    numCast<int>(std::string());
#endif
#ifdef MISUSE_TRUNCATING_AN_INTEGER // from floating point to integer
    tryTruncate<int>(3);
#endif
#ifdef MISUSE_CALLABLE_OF_ANOTHER_ARGUMENT // initialization|no viable|no matching
    visit([](const std::string&) { return 1; });
#endif
#ifdef MISUSE_CALLABLE_OF_ANOTHER_RESULT // initialization|no viable|no matching
    visit([](int) { return std::string(); });
#endif
#ifdef MISUSE_NO_CALLABLE // no matching (function|constructor)
    const CallableRef<int(int)> nothing;
#endif
    return number == same(3) && node.getValue() == 1 && constMap.size() == 0 ? 0 : 1;
}
