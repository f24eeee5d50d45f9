#include "tests/support/ReplaceNew.h"
