#include "output/format.h"
