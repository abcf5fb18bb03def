// Core Foundation has it in a header of its own, which the SDK includes.
#pragma once

#include <CoreFoundation/CoreFoundation.h>
