// The layouts are computed when this file is compiled, from the names of instructions and the rows
// that match them. The name determines most of a layout:
//
//     MULT_FLOAT_COLOR_SIMD_IF_TRUE     row "MULT_*", "wrr", "WXY", Point
// becomes
//     primitive MULT_FLOAT_COLOR, for all points, conditional; values "wcrr" of types "tbft"
//
// W is the wider of the two types, and c the condition, which comes after the result. Compilers
// limit the steps of one constant evaluation, so the table is computed in parts.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "sqx/SqxLayout.h"

#include <array>
#include <utility>

#include "sqx/SqxLayoutRows.h"
#include "sqx/SqxNumbers.h"

namespace {

constexpr bool Matches(std::string_view pattern, std::string_view name)
{
    const std::size_t star = pattern.find('*');
    if (star == std::string_view::npos)
        return pattern == name;
    return name.size() + 1 >= pattern.size() && name.starts_with(pattern.substr(0, star)) &&
           name.ends_with(pattern.substr(star + 1));
}

constexpr const SqxLayoutRow& RowFor(std::string_view primitive)
{
    for (const SqxLayoutRow& row : sqxlayout::k_sqxLayoutRows)
        if (Matches(row.pattern, primitive))
            return row;
    throw primitive;  // an instruction without a row
}

/// The letter of the type that a word of a name denotes.
constexpr char TypeOfWord(std::string_view word)
{
    if (word == "FLOAT" || word == "1D")
        return 'f';
    if (word == "MATRIX")
        return 'm';
    if (word == "STRING")
        return 's';
    return word == "BOOL" ? 'b' : 't';
}

constexpr std::string_view TakeLastWord(std::string_view& name)
{
    const std::size_t bar = name.rfind('_');
    const std::string_view word = name.substr(bar + 1);
    name = name.substr(0, bar);
    return word;
}

/// The type of X, Y or W in an instruction of this name.
constexpr char TypeOf(char letter, std::string_view name)
{
    if (letter != 'X' && letter != 'Y' && letter != 'W')
        return letter;
    const char last = TypeOfWord(TakeLastWord(name));
    if (letter == 'Y' || (letter == 'W' && last != 'f'))
        return last;
    return TypeOfWord(TakeLastWord(name));
}

constexpr bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

constexpr std::size_t k_mostLetters = 23;

struct Letters {
    constexpr void Insert(std::size_t place, char letter)
    {
        for (std::size_t i = count++; i > place; --i)
            text[i] = text[i - 1];
        text[place] = letter;
    }
    constexpr void Add(char letter) { text[count++] = letter; }

    char text[k_mostLetters] = {};
    unsigned char count = 0;
};

/// Expands repeated letters; a number without a letter before it means no values.
constexpr Letters Expand(std::string_view column)
{
    Letters letters;
    for (std::size_t i = 0; i < column.size();) {
        if (!IsDigit(column[i])) {
            letters.Add(column[i++]);
            continue;
        }
        int count = 0;
        while (i < column.size() && IsDigit(column[i]))
            count = count * 10 + (column[i++] - '0');
        for (; count > 1; --count)
            letters.Add(letters.text[letters.count - 1]);
    }
    return letters;
}

constexpr bool DropSuffix(std::string_view& name, std::string_view suffix)
{
    if (!name.ends_with(suffix))
        return false;
    name.remove_suffix(suffix.size());
    return true;
}

struct Form {
    SqxLayout layout;
    Letters operands;
    Letters types;
};

constexpr void AddTypes(Form& form, std::string_view types)
{
    form.layout.endsInList = DropSuffix(types, "*");
    form.types = Expand(types);
    for (std::size_t i = 0; i < form.types.count; ++i)
        form.types.text[i] = TypeOf(form.types.text[i], form.layout.primitive);
}

/// Inserts the condition after the result, if there is one; in instructions without a whole-grid
/// form the condition is last.
constexpr void AddCondition(Form& form)
{
    const std::size_t afterResult = form.operands.text[0] == 'w' ? 1 : 0;
    const std::size_t place = form.layout.simd ? afterResult : form.operands.count;
    form.operands.Insert(place, 'c');
    form.types.Insert(place, 'b');
}

constexpr Form MakeForm(std::string_view name)
{
    Form form;
    form.layout.name = name;
    form.layout.conditional = DropSuffix(name, "_IF_TRUE");
    form.layout.simd = DropSuffix(name, "_SIMD");
    form.layout.primitive = name;
    const SqxLayoutRow& row = RowFor(name);
    if (row.operands.empty())
        return {};
    form.layout.run = row.run;
    form.operands = Expand(row.operands);
    AddTypes(form, row.types);
    if (form.layout.conditional)
        AddCondition(form);
    return form;
}

constexpr std::size_t k_partSize = 32;
constexpr std::size_t k_partCount = k_sqxHighestNumber / k_partSize + 1;

using Part = std::array<Form, k_partSize>;
using LayoutPart = std::array<SqxLayout, k_partSize>;

template <std::size_t part>
constexpr Part k_forms = [] {
    Part forms;
    for (std::size_t i = 0; i < k_partSize; ++i) {
        const std::string_view name = SqxNumberName(static_cast<int>(part * k_partSize + i));
        if (!name.empty())
            forms[i] = MakeForm(name);
    }
    return forms;
}();

/// The layouts, which refer to the letters in the forms.
template <std::size_t part>
constexpr LayoutPart k_layouts = [] {
    LayoutPart layouts;
    for (std::size_t i = 0; i < k_partSize; ++i) {
        const Form& form = k_forms<part>[i];
        layouts[i] = form.layout;
        layouts[i].operands = {form.operands.text, form.operands.count};
        layouts[i].types = {form.types.text, form.types.count};
    }
    return layouts;
}();

constexpr auto k_parts = []<std::size_t... part>(std::index_sequence<part...>)
{
    return std::array{&k_layouts<part>...};
}
(std::make_index_sequence<k_partCount>());

/// A list has one type more than its fixed values.
constexpr bool TypesFitOperands()
{
    for (const LayoutPart* part : k_parts)
        for (const SqxLayout& layout : *part)
            if (layout.endsInList ? !layout.operands.ends_with('*') || layout.types.size() < 2
                                  : layout.operands.size() != layout.types.size())
                return false;
    return true;
}
static_assert(TypesFitOperands());

}  // namespace

const SqxLayout* SqxLayout::Find(int number)
{
    if (number < 0 || number > k_sqxHighestNumber)
        return nullptr;
    const auto place = static_cast<std::size_t>(number);
    const SqxLayout& layout = (*k_parts[place / k_partSize])[place % k_partSize];
    return layout.name.empty() ? nullptr : &layout;
}
