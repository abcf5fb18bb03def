// FullLibrary: a lean library that also has a state, a user bank and voices.
#pragma once

#include "tests/bench/LeanLibrary.h"

#include <cstring>

namespace bench::growth {

class FullLibrary : public LeanLibrary {
public:
    void setStateChunk(const void*, int32 size) override { lastSize = size; }
    std::vector<char> getStateChunk() override { return state; }
    int32 applyUserBank(int32, int32, const char*, int32 size) override
    {
        lastSize = size;
        return 0;
    }
    std::vector<char> getUserBankData(int32, int32) override { return bank; }
    int32 getVoiceDataString(int32, int32, char* text) override { return answer(text, "32:Voice"); }
    int32 getCategoryName(int32, char* text) override { return answer(text, "Organ"); }
    int32 getSubCategoryName(int32, int32, char* text) override { return answer(text, "Pipe"); }

    std::vector<char> state;
    std::vector<char> bank;
    int32 lastSize = 0; ///< of the state or the bank that was given last

private:
    static int32 answer(char* buffer, const char* text)
    {
        std::strcpy(buffer, text);
        return 0;
    }
};

} // namespace bench::growth
