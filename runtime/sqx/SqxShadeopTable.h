#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxElfFile.h"

/// One record of a library's table; a text is empty if its pointer in the table is null.
struct SqxShadeopRecord {
    std::string_view declaration;
    std::string_view init;
    std::string_view cleanup;
};

/// The table in which a library declares a shadeop, an array of `QxShadeop`
/// (`shading/QxShadeop.h`). The compiler, the machine and the host read it with this class. A
/// library may export anything under the name of a table, so pointers outside the library are not
/// followed.
class SqxShadeopTable {
public:
    /// The kind of symbol with the table's name.
    enum class Place {
        Nothing,
        Other,  // a symbol that is not data
        Table
    };

    /// Reads the table of the function. The library must outlive the texts of the records.
    SqxShadeopTable(const SqxElfFile& library, std::string_view function);

    /// Returns the name of the symbol of a function's table.
    [[nodiscard]] static std::string NameFor(std::string_view function)
    {
        return std::string(function) + "_shadeops";
    }

    [[nodiscard]] Place Found() const { return m_place; }
    /// The records before the end record or before a faulty one; all records if the table has
    /// neither.
    [[nodiscard]] const std::vector<SqxShadeopRecord>& Records() const { return m_records; }
    /// True if reading ended at a faulty record: one with a pointer that is not null and does not
    /// lead to text in the library.
    [[nodiscard]] bool IsFaulty() const { return m_isFaulty; }
    /// True if the required end record was found. False if there is no table, if it is faulty, or
    /// if its records extend to the end of its object.
    [[nodiscard]] bool HasEnd() const { return m_hasEnd; }

private:
    Place m_place = Place::Nothing;
    std::vector<SqxShadeopRecord> m_records;
    bool m_isFaulty = false;
    bool m_hasEnd = false;
};
