// CharacterConvert: the host's text as the 8-bit text that the rest of the plug-in compares.
#pragma once

#include "base/source/fstring.h"

#include <string>

namespace Steinberg {
namespace Vst {

/** Holds a copy of one host text. A Unicode host delivers UTF-16; a host without Unicode writes
    plain 8-bit text into the same 16-bit fields. The Unicode flag, fixed at construction, says
    which of the two the object holds: it must match the host, since UTF-16 read with a clear flag
    ends after its first character.

    Null texts are empty texts. No operation reports an error or throws anything but
    std::bad_alloc. Built on the stack around one text. [one thread at a time] */
class CharacterConvert : public StringObject {
public:
    /** From a 16-bit field of the host.
        @param text borrowed for the call. With the flag set UTF-16, ended by a zero unit; with the
        flag clear packed 8-bit text, ended by its zero byte (the host need not write a whole zero
        unit). Nothing behind the terminator is read.
        @param length at most this many units are read, so give the size of the field where the
        text comes in one of fixed size and may lack its terminator; -1 for no limit
        @param isTerminated false: there is no terminator, the text is all length units */
    CharacterConvert(const char16* text, bool isUnicode, int32 length = -1,
                     bool isTerminated = true);

    /** From 8-bit text; with the flag set it is UTF-8 and made wide. length counts bytes. */
    CharacterConvert(const char8* text, bool isUnicode, int32 length = -1,
                     bool isTerminated = true);

    /** Copies at most length units (-1: all) of what the host set into other; 8-bit text in it is
        treated as above. */
    CharacterConvert(const StringObject& other, bool isUnicode, int32 length = -1);

    CharacterConvert(const CharacterConvert&) = delete;
    CharacterConvert& operator=(const CharacterConvert&) = delete;
    ~CharacterConvert() override = default;

    /** The bytes of an object with a clear flag, else an empty text; never null. Borrowed, until
        the object changes. */
    const char8* text8() const override;

    /** The text of an object with the flag set, else an empty text; never null. Borrowed as
        above. */
    const char16* text16() const override;

    /** The text: UTF-8 when the flag is set, else the host's own bytes, to the first zero byte. */
    std::string getStdString() const;

    /** What getStdString of an object made from this text gives, without the object and its copy:
        for texts that come by the thousand. Parameters as the constructor's. */
    static std::string ConvertHostText(const char16* text, bool isUnicode, int32 length = -1);

    /** Wide text as 8-bit text: UTF-8, or the system's default encoding. What the encoding lacks
        becomes "?". @param text zero-terminated; null gives an empty text */
    static std::string ConvertTo8BitString(const char16* text, bool utf8);

    /** The number at the begin of the text, read by strtol and narrowed to 32 bits; 0 without
        one. */
    int32 getStrToL(int base) const;

    /** Whether needle (8-bit, zero-terminated) occurs in the text; false for null, true for an
        empty needle. ignoreCase equates the letters A to Z with a to z and no others. */
    bool IsContainedInString(const char* needle, bool ignoreCase) const;

    /** A copy with A to Z lowered and every other byte as it was; empty for null. */
    static std::string GetLowerCaseString(const char* text);

private:
    const bool unicode; ///< else the text is 8-bit text, in whatever width
};

} // namespace Vst
} // namespace Steinberg
