#pragma once
#include "../Private/Detail.h"
#include <Utils/Utils.h>
