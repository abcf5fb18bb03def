#pragma once

enum { kCFStringEncodingMacCentralEurRoman = 29, kCFStringEncodingShiftJIS_X0213_00 = 0x0628 };
