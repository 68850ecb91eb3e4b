#pragma once
#include <Gfx/Public/Shape.h>
