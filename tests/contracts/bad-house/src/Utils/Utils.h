#pragma once
#include <Utils/Public/Text.h>
