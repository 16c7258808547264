#pragma once

#include <cstdint>

#include "QxShading.h"

// Access to elements of arrays in generated code, which is written as
//
//     array + int(index)              a uniform array
//     (array + int(index) * numMp)    a varying one
//
// after a check of the index, unless an option turns the checks off. With and without checks, an
// index outside its array accesses the nearest element, as in byte-code. For this, `int` before a
// parenthesis becomes an object that clamps the index when the address is computed. The type of a
// uniform local array contains its length. The length of other arrays is looked up by address,
// among the parameters and the varying locals, and stored in a small table, which is a local
// variable of the function. The table stays valid while the function runs, since arrays do not
// move; it is cleared when the function itself frees a block.

/// Number of bytes before each block of locals. They contain the size of the block, and keep it
/// aligned like a block from calloc.
constexpr std::size_t k_qxBlockHead = 16;

/// An array whose length has been looked up. In an empty entry of the table, `array` is null.
struct QxKnownArray {
    const void* array;
    int last;  // index of its last element
};

/// A table of the arrays that a function has accessed, by address. Of arrays that share an entry,
/// only the last one that was looked up is in the table.
class QxKnownArrays {
public:
    /// Returns the only entry of the table that can be for this array. It may be empty or contain
    /// another array.
    QxKnownArray& At(const void* array)
    {
        const std::uintptr_t place = reinterpret_cast<std::uintptr_t>(array) >> 4;
        return m_known[(place ^ place >> 6) % k_count];
    }
    /// Must be called when a block was freed: the next one may be at the same address, with other
    /// arrays.
    void Forget()
    {
        for (QxKnownArray& known : m_known)
            known = {nullptr, 0};
    }

private:
    static constexpr std::size_t k_count = 8;

    QxKnownArray m_known[k_count] = {};
};

/// The number of parameters of the shader, set when `QxInterrogate` creates them.
static std::size_t s_qxParameters = 0;

/// Returns the whole part of the index, clamped to the range from 0 to `last`; 0 for NaN.
inline int QxElementAt(float index, int last)
{
    const float bound = static_cast<float>(last);
    return static_cast<int>(index > 0 ? (index < bound ? index : bound) : 0);
}

/// Stands for the locals of a body without varying locals.
struct QxNoLocals {};

/// Returns the end of the block of varying locals, from the size that QxCalloc has stored before
/// it.
inline const char* QxEndOfBlock(const void* block)
{
    std::size_t bytes;
    std::memcpy(&bytes, static_cast<const char*>(block) - k_qxBlockHead, sizeof bytes);
    return static_cast<const char*>(block) + bytes;
}

/// Returns the number of bytes from a varying local to the next one in the same block, or to the
/// end of the block; 0 if `local` is not a varying local. `locals` is the structure of pointers to
/// all varying locals, which are in one block.
template <class Locals>
inline std::size_t QxBytesOfLocal(const Locals& locals, const void* local)
{
    constexpr std::size_t count = sizeof locals / sizeof(void*);
    const char* members[count + 1];
    std::memcpy(members, &locals, count * sizeof(void*));
    const char* const begin = static_cast<const char*>(local);
    const char* block = begin;
    const char* end = nullptr;
    bool found = false;
    for (std::size_t i = 0; i < count; ++i) {
        found |= members[i] == begin;
        if (members[i] < block)
            block = members[i];
        if (members[i] > begin && (!end || members[i] < end))
            end = members[i];
    }
    if (!found)
        return 0;
    return static_cast<std::size_t>((end ? end : QxEndOfBlock(block)) - begin);
}

/// Looks up the length of the array, and stores the array and the index of its last element in
/// `known`. An array that is not found is treated as one element. `elementBytes` is the distance
/// from one element to the next.
template <class Locals>
__attribute__((noinline)) void QxFindArray(QxKnownArray& known, const void* array,
                                           std::size_t elementBytes, QxVar* parameters,
                                           const Locals locals)
{
    known = {array, 0};
    for (std::size_t i = 0; i < s_qxParameters; ++i)
        if (parameters[i].Value() == array) {
            known.last = static_cast<int>(parameters[i].Length()) - 1;
            return;
        }
    if (sizeof(Locals) >= sizeof(void*))
        if (const std::size_t bytes = QxBytesOfLocal(locals, array))
            known.last = static_cast<int>(bytes / elementBytes) - 1;
}

/// An index, and where to look up the length of its array. `stride` is the distance between
/// elements in values: 1 for a uniform array, the number of points for a varying one.
template <class Locals>
struct QxIndex {
    float index;
    QxKnownArrays& known;
    QxVar* parameters;
    const Locals& locals;
    unsigned int stride;

    QxIndex operator*(unsigned int points) const
    {
        return {index, known, parameters, locals, points};
    }
    // Generated code reports an index for which one of these is true: a whole part below 0 or not
    // below the length, or NaN.
    bool operator<(int) const { return !(index > -1); }
    bool operator>=(int length) const { return index >= static_cast<float>(length); }
};

template <class Locals>
inline QxIndex<Locals> QxMakeIndex(float index, QxKnownArrays& known, QxVar* parameters,
                                   const Locals& locals)
{
    return {index, known, parameters, locals, 1};
}

template <class Element, std::size_t length, class Locals>
inline Element* operator+(Element (&array)[length], const QxIndex<Locals>& index)
{
    return array + QxElementAt(index.index, static_cast<int>(length) - 1);
}

template <class Element, class Locals>
inline Element* operator+(Element* const& array, const QxIndex<Locals>& index)
{
    QxKnownArray& known = index.known.At(array);
    if (__builtin_expect(known.array != array, 0))
        QxFindArray(known, array, sizeof(Element) * index.stride, index.parameters, index.locals);
    return array + static_cast<std::size_t>(QxElementAt(index.index, known.last)) * index.stride;
}
