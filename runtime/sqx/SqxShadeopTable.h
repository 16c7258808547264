#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxElfFile.h"

/// One record of a library's table; missing texts are empty.
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

    [[nodiscard]] static std::string NameFor(std::string_view function)
    {
        return std::string(function) + "_shadeops";
    }

    [[nodiscard]] Place Found() const { return m_place; }
    /// The records before the end record, or before the first one with a pointer that does not lead
    /// to text in the library.
    [[nodiscard]] const std::vector<SqxShadeopRecord>& Records() const { return m_records; }
    /// True if reading ended at a record with a pointer that does not lead to text in the library.
    [[nodiscard]] bool IsFaulty() const { return m_isFaulty; }
    /// True if the required end record was found. If it was not, and the table is not faulty, the
    /// table extends to the end of its object.
    [[nodiscard]] bool HasEnd() const { return m_hasEnd; }

private:
    Place m_place = Place::Nothing;
    std::vector<SqxShadeopRecord> m_records;
    bool m_isFaulty = false;
    bool m_hasEnd = false;
};
