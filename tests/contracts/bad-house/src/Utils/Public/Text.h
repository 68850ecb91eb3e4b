#pragma once
#include <Gfx/Public/Shape.h>
#include <cinder/Vector.h>
