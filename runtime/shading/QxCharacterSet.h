#pragma once

#include <cstddef>
#include <cstring>

// Sets of characters, and the named character classes of regular expressions.

/// A set of characters, by their codes from 0 to 255.
struct QxCharacterSet {
    unsigned int bits[8];

    bool Has(unsigned char c) const { return (bits[c / 32] >> c % 32 & 1u) != 0; }
    void Add(unsigned char c) { bits[c / 32] |= 1u << c % 32; }
    void Add(const QxCharacterSet& other)
    {
        for (int i = 0; i < 8; ++i)
            bits[i] |= other.bits[i];
    }
    void Invert()
    {
        for (unsigned int& word : bits)
            word = ~word;
    }
};

namespace qxpattern {

// The classes contain only ASCII characters, whatever the locale of the host is.
// clang-format off
inline bool IsDigit(int c) { return c >= '0' && c <= '9'; }
inline bool IsLower(int c) { return c >= 'a' && c <= 'z'; }
inline bool IsUpper(int c) { return c >= 'A' && c <= 'Z'; }
inline bool IsAlpha(int c) { return IsLower(c) || IsUpper(c); }
inline bool IsAlnum(int c) { return IsAlpha(c) || IsDigit(c); }
inline bool IsWord(int c) { return IsAlnum(c) || c == '_'; }
inline bool IsBlank(int c) { return c == ' ' || c == '\t'; }
inline bool IsSpace(int c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
inline bool IsCntrl(int c) { return c < ' ' || c == 127; }
inline bool IsGraph(int c) { return c > ' ' && c < 127; }
inline bool IsPrint(int c) { return c >= ' ' && c < 127; }
inline bool IsPunct(int c) { return IsGraph(c) && !IsAlnum(c); }
inline bool IsXdigit(int c) { return IsDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F'); }
// clang-format on

/// A named class, with the function that returns whether a character belongs to it.
struct Class {
    char name[8];
    bool (*has)(int);
};

/// Returns the class with this name; null for an unknown name.
inline const Class* FindClass(const char* name, std::size_t length)
{
    static const Class classes[] = {
        {"alnum", IsAlnum}, {"alpha", IsAlpha}, {"blank", IsBlank}, {"cntrl", IsCntrl},
        {"digit", IsDigit}, {"graph", IsGraph}, {"lower", IsLower}, {"print", IsPrint},
        {"punct", IsPunct}, {"space", IsSpace}, {"upper", IsUpper}, {"xdigit", IsXdigit},
    };
    for (const Class& candidate : classes)
        if (std::strlen(candidate.name) == length && std::memcmp(candidate.name, name, length) == 0)
            return &candidate;
    return nullptr;
}

}  // namespace qxpattern
