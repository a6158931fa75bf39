#include "tests/support/Process.h"
