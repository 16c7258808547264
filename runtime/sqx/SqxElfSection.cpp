// Sections are for programs that inspect a file; loaders do not need them. One section contains the
// names of all sections.
//
// Tested by tests/listing.

#include <algorithm>
#include <elf.h>
#include <link.h>

#include "sqx/SqxElfRecord.h"

namespace {

using Bytes = std::span<const std::byte>;
using Header = ElfW(Shdr);

std::optional<Header> HeaderAt(Bytes file, const ElfW(Ehdr) & head, std::uint64_t index)
{
    if (index >= head.e_shnum || head.e_shoff > file.size() || head.e_shentsize != sizeof(Header))
        return std::nullopt;
    return RecordAt<Header>(file.subspan(head.e_shoff), index * sizeof(Header));
}

/// Returns the contents, cut off at the end of the file; empty if the section has none in the file.
Bytes ContentsOf(Bytes file, const Header& section)
{
    if (section.sh_type == SHT_NOBITS || section.sh_offset > file.size())
        return {};
    const Bytes rest = file.subspan(section.sh_offset);
    return rest.first(std::min<std::uint64_t>(rest.size(), section.sh_size));
}

bool IsTextAt(Bytes texts, std::uint64_t place, std::string_view wanted)
{
    return place < texts.size() && texts.size() - place > wanted.size() &&
           std::memcmp(texts.data() + place, wanted.data(), wanted.size()) == 0 &&
           texts[place + wanted.size()] == std::byte{0};
}

}  // namespace

std::span<const std::byte> SqxElfSection(Bytes file, std::string_view name)
{
    const auto head = RecordAt<ElfW(Ehdr)>(file, 0);
    const auto names = head ? HeaderAt(file, *head, head->e_shstrndx) : std::nullopt;
    if (!names)
        return {};
    const Bytes texts = ContentsOf(file, *names);
    for (std::uint64_t i = 0; const auto section = HeaderAt(file, *head, i); ++i)
        if (IsTextAt(texts, section->sh_name, name))
            return ContentsOf(file, *section);
    return {};
}
