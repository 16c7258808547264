// Tested by tests/symbols/SlcShadeopLoaderTest.cpp and the fuzz target `shadeop_table`.

#include "sqx/SqxShadeopTable.h"

#include <optional>

#include "QxShadeop.h"

namespace {

constexpr std::size_t k_texts = sizeof(QxShadeop) / sizeof(const char*);

/// None if the pointer does not point to text in the library; empty for a null pointer.
std::optional<std::string_view> TextOf(const SqxElfFile& library,
                                       const std::optional<std::uint64_t>& pointer)
{
    if (!pointer)
        return std::nullopt;
    return *pointer == 0 ? std::string_view() : library.TextAt(*pointer);
}

}  // namespace

SqxShadeopTable::SqxShadeopTable(const SqxElfFile& library, std::string_view function)
{
    const SqxElfFile::Symbol symbol = library.Find(NameFor(function));
    if (symbol.kind == SqxElfFile::Kind::None)
        return;
    m_place = symbol.kind == SqxElfFile::Kind::Object ? Place::Table : Place::Other;
    if (m_place != Place::Table)
        return;
    const std::size_t count = library.Contents(symbol).size() / sizeof(QxShadeop);
    const auto pointers = library.PointersAt(symbol.address, count * k_texts);
    for (std::size_t i = 0; i + k_texts <= pointers.size(); i += k_texts) {
        const auto declaration = TextOf(library, pointers[i]);
        m_hasEnd = declaration && declaration->empty();
        if (m_hasEnd)
            return;
        const auto init = TextOf(library, pointers[i + 1]);
        const auto cleanup = TextOf(library, pointers[i + 2]);
        m_isFaulty = !declaration || !init || !cleanup;
        if (m_isFaulty)
            return;
        m_records.push_back({*declaration, *init, *cleanup});
    }
}
