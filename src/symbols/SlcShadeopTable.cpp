// A library is not trusted with addresses: a record's texts are read only where the library's own
// memory lies, and the first one that points elsewhere ends the table.
//
// Tested by tests/symbols/SlcShadeopLoaderTest.cpp.

#include "symbols/SlcShadeopTable.h"

#include <cstring>

std::optional<SlcShadeopTexts> SlcShadeopTable::Next()
{
    SlcShadeopRecord record;
    if (m_faulty || m_rest.size() < sizeof record)
        return std::nullopt;
    // A library need not keep to the alignment of a record.
    std::memcpy(&record, m_rest.data(), sizeof record);
    m_rest = m_rest.subspan(sizeof record);
    const std::string_view declaration = Text(record.declaration);
    if (declaration.empty()) {
        m_rest = {};
        return std::nullopt;
    }
    const SlcShadeopTexts texts = {declaration, Text(record.init), Text(record.cleanup)};
    if (m_faulty)
        return std::nullopt;
    return texts;
}

std::string_view SlcShadeopTable::Text(const char* address)
{
    if (!address)
        return {};
    const auto text = m_memory.TextAt(address);
    m_faulty |= !text;
    return text.value_or(std::string_view());
}
