// Parameters: how many the plug-in shows its host, and the IDs that many tests use. For all tests:
// it needs no other header.
#pragma once

namespace doubles {

constexpr int kParts = 16;
constexpr int kParametersOfAPart = 14;
constexpr int kAutomatable = kParts * kParametersOfAPart;
constexpr int kParameters = kAutomatable + 1; ///< the last one is the edit flag

constexpr unsigned kVolume1 = 37012000; ///< of part 1
constexpr unsigned kPan1 = 37013000;
constexpr unsigned kVolume16 = 37012015;
constexpr unsigned kEditFlag = 201005000;

} // namespace doubles
