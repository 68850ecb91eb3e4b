#include "Text.h"
