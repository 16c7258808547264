#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "sqx/SqxElfFile.h"

/// One record of a library's table; texts are empty where it has none.
struct SqxShadeopRecord {
    std::string_view declaration;
    std::string_view init;
    std::string_view cleanup;
};

/// The table by which a library declares a shadeop, as `QxShadeop` of `shading/QxShadeop.h` lays it
/// out. The compiler, the machine and the host read it here. A library may export anything by the
/// name of a table, so that nothing is followed that does not point into it.
class SqxShadeopTable {
public:
    /// What stands under the table's name.
    enum class Place {
        Nothing,
        Other,  // no data
        Table
    };

    /// Reads the table of the function. The library must outlive the texts of the records.
    SqxShadeopTable(const SqxElfFile& library, std::string_view function);

    [[nodiscard]] static std::string NameFor(std::string_view function)
    {
        return std::string(function) + "_shadeops";
    }

    [[nodiscard]] Place Found() const { return m_place; }
    /// Up to the record that ends the table, or to the first one that holds what is no text.
    [[nodiscard]] const std::vector<SqxShadeopRecord>& Records() const { return m_records; }
    /// It ended at a record that holds what is no text of the library.
    [[nodiscard]] bool IsFaulty() const { return m_isFaulty; }
    /// A record ends it, as it must. Without one the table goes as far as its object.
    [[nodiscard]] bool HasEnd() const { return m_hasEnd; }

private:
    Place m_place = Place::Nothing;
    std::vector<SqxShadeopRecord> m_records;
    bool m_isFaulty = false;
    bool m_hasEnd = false;
};
