// CharacterConvert: turns the host's texts into the 8-bit texts that the plug-in compares.
#pragma once

#include "base/source/fstring.h"

#include <string>

namespace Steinberg {
namespace Vst {

/** Holds a copy of one host text. A Unicode host delivers UTF-16; a host without Unicode packs
    8-bit text into the same 16-bit fields. The Unicode flag, which the constructor sets, says which
    of the two it is. It must match the host: UTF-16 that is read without the flag ends after its
    first character.

    Null texts are empty texts. No operation reports an error or throws anything but
    std::bad_alloc. Built on the stack around one text. [one thread at a time] */
class CharacterConvert : public StringObject {
public:
    /** From a 16-bit field of the host.
        @param text borrowed for the call. With the flag set UTF-16, ended by a zero unit; with the
        flag clear packed 8-bit text, ended by its zero byte (the host need not write a whole zero
        unit). Nothing behind the terminator is read.
        @param length at most this many units are read; give the size of a fixed field, in which the
        text may lack its terminator. -1 for no limit
        @param isTerminated false when the text has no terminator and is length units long */
    CharacterConvert(const char16* text, bool isUnicode, int32 length = -1,
                     bool isTerminated = true);

    /** From 8-bit text, which with the flag set is UTF-8 and converted to UTF-16. length
        counts bytes. */
    CharacterConvert(const char8* text, bool isUnicode, int32 length = -1,
                     bool isTerminated = true);

    /** Copies at most length units (-1: all) of the text that the host put into other. It may be
        8-bit or 16-bit text, as above. */
    CharacterConvert(const StringObject& other, bool isUnicode, int32 length = -1);

    CharacterConvert(const CharacterConvert&) = delete;
    CharacterConvert& operator=(const CharacterConvert&) = delete;
    ~CharacterConvert() override = default;

    /** The 8-bit text of an object without the flag; else the empty text. Never null; valid until
        the object changes. */
    const char8* text8() const override;

    /** The UTF-16 text of an object with the flag; else the empty text. Never null; valid until the
        object changes. */
    const char16* text16() const override;

    /** The text as UTF-8 with the flag, else as the host's own bytes up to the first zero byte. */
    std::string getStdString() const;

    /** Gives what getStdString of an object made from this text gives, without making one: for
        lists of thousands of texts. Parameters as at the constructor. */
    static std::string ConvertHostText(const char16* text, bool isUnicode, int32 length = -1);

    /** Converts UTF-16 to 8-bit text: UTF-8, or the system's default encoding, in which a character
        that it lacks becomes "?". @param text zero-terminated; null gives the empty text */
    static std::string ConvertTo8BitString(const char16* text, bool utf8);

    /** The number at the start of the text, read by strtol and narrowed to 32 bits; 0 when the text
        does not start with one. */
    int32 getStrToL(int base) const;

    /** Whether needle (8-bit, zero-terminated) occurs in the text. False for null, true for
        an empty needle. With ignoreCase A to Z are the same as a to z; other letters are
        compared exactly. */
    bool IsContainedInString(const char* needle, bool ignoreCase) const;

    /** A copy with A to Z as a to z and every other byte unchanged; empty for null. */
    static std::string GetLowerCaseString(const char* text);

private:
    const bool unicode; ///< false: 8-bit text, whether the base class keeps it as 8 or 16 bits
};

} // namespace Vst
} // namespace Steinberg
