#pragma once

#include <optional>
#include <string_view>

#include "support/QxMemoryRanges.h"

/// One record of a library's table, as libraries are built with it (`QxShadeop` of
/// `runtime/shading/QxShadeop.h`).
struct SlcShadeopRecord {
    const char* declaration;  // empty in the record that ends the table
    const char* init;         // empty or null for none, as the next one
    const char* cleanup;
};

/// The texts of a record; empty where it has none.
struct SlcShadeopTexts {
    std::string_view declaration;
    std::string_view init;
    std::string_view cleanup;
};

/// Reads the records of a table one by one. A library may export anything by the name of a table,
/// so that nothing is followed that does not point into the library.
class SlcShadeopTable {
public:
    /// The memory of the library must outlive the reader.
    SlcShadeopTable(QxMemoryRanges::Bytes table, const QxMemoryRanges& memory)
        : m_rest(table),
          m_memory(memory)
    {
    }

    /// None at the end of the table, which may lack the record that ends it, and none when a record
    /// holds what is no text of the library.
    [[nodiscard]] std::optional<SlcShadeopTexts> Next();
    /// It ended at a record of that kind.
    [[nodiscard]] bool IsFaulty() const { return m_faulty; }

private:
    /// Null gives the empty text.
    [[nodiscard]] std::string_view Text(const char* address);

    QxMemoryRanges::Bytes m_rest;
    const QxMemoryRanges& m_memory;
    bool m_faulty = false;
};
