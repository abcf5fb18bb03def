#include "tests/doubles/Trace.h"
