#include "../support/Absent.h"

static const bool isRegistered =
    (Vell::Benchmarks::registerAbsent("Qt"), Vell::Benchmarks::registerAbsentShaper("Qt"), true);
