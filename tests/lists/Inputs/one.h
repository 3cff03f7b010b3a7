#include "two.h"
