// More encodings, known from Core Foundation's header of this name, which Apple has published.
#pragma once

enum { kCFStringEncodingMacCentralEurRoman = 29, kCFStringEncodingShiftJIS_X0213_00 = 0x0628 };
