#pragma once

#include <CoreFoundation/CoreFoundation.h>
