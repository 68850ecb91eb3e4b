#include "../support/Absent.h"

static const bool isRegistered = (Vell::Benchmarks::registerAbsent("Qt"), true);
