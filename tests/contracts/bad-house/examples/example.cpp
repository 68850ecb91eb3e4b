#include <Gfx/Gfx.h>
#include <Gfx/Private/Detail.h>
