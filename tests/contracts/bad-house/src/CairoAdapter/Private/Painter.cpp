#include <TextLayout/TextLayout.h>
