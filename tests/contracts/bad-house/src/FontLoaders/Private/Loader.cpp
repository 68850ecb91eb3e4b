#include <Gfx/Private/Detail.h>
#include <Gfx/Public/Shape.h>
