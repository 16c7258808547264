// The layouts are computed from the cards when this file is compiled:
//
//     SQX_CARD(CALL_PRIM_MIX_3D,
//              "@forms(311, 312, 313) color mix(color a, color b, float position)")
// becomes, among others,
//     number 313: for all points, conditional; values "wcrrr" of types "tbttf"
//
// c is the condition, which comes after the result. Compilers limit the steps of one constant
// evaluation, so the table is computed in parts.
//
// Tested by tests/backends/ByteCodeTableTest.cpp.

#include "sqx/SqxLayout.h"

#include <array>
#include <utility>

#include "sqx/SqxCardTable.h"

namespace {

/// Returns the letter of a type, as `SqxLayout` lists them.
constexpr char LetterOf(SqxCardType type)
{
    switch (type) {
    case SqxCardType::Float:
        return 'f';
    case SqxCardType::String:
        return 's';
    case SqxCardType::Color:
    case SqxCardType::Point:
    case SqxCardType::Vector:
    case SqxCardType::Normal:
    case SqxCardType::AnyPoint:
    case SqxCardType::AnyVector:
        return 't';
    case SqxCardType::Matrix:
        return 'm';
    case SqxCardType::Any:
        return 'a';
    case SqxCardType::Bool:
        return 'b';
    case SqxCardType::AnyValue:
        return 'A';
    case SqxCardType::Array:
        return '[';
    case SqxCardType::Reference:
        return 'e';
    case SqxCardType::NumberOrTriple:
        return 'N';
    case SqxCardType::Void:
    case SqxCardType::Place:
    case SqxCardType::Space:
    case SqxCardType::Literal:
    case SqxCardType::Shadeop:
        break;
    }
    return '-';
}

constexpr char TypeOf(const SqxParameter& parameter)
{
    const char letter = LetterOf(parameter.type);
    if (!parameter.isOptional && !parameter.isNamed)
        return letter;
    // If such an argument is omitted and has no default of its type, it is an integer constant.
    if (letter == 's')
        return 'S';
    if (letter == 't')
        return parameter.isOutput ? 'T' : 'N';
    return parameter.isOutput ? 'F' : letter;
}

constexpr char OperandOf(const SqxParameter& parameter)
{
    switch (parameter.type) {
    case SqxCardType::Place:
        return 'j';
    case SqxCardType::Space:
        return 's';
    case SqxCardType::Literal:
        return 'i';
    case SqxCardType::Shadeop:
        return 'd';
    default:  // a variable
        return parameter.isOutput ? 'm' : parameter.isAssigned ? 'w' : 'r';
    }
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

struct Form {
    SqxLayout layout;
    Letters operands;
    Letters types;

    constexpr void Add(char operand, char type)
    {
        operands.Add(operand);
        types.Add(type);
    }
};

constexpr void AddResult(Form& form, const SqxCard& card)
{
    if (card.result != SqxCardType::Void)
        form.Add('w', LetterOf(card.result));
}

constexpr void AddParameter(Form& form, const SqxParameter& parameter)
{
    for (int i = 0; i < parameter.count; ++i)
        form.Add(OperandOf(parameter), TypeOf(parameter));
}

/// The number of arguments comes before the result; one `*` stands for all the arguments.
constexpr void AddList(Form& form, const SqxCard& card)
{
    auto parameters = card.Carried();
    if (parameters.front().type == SqxCardType::Shadeop) {
        AddParameter(form, parameters.front());
        parameters = parameters.subspan(1);
    }
    form.Add('n', '-');
    AddResult(form, card);
    form.operands.Add('*');
    for (const SqxParameter& parameter : parameters)
        form.types.Add(TypeOf(parameter));
    form.layout.endsInList = true;
}

/// Inserts the condition after the result, or at the start if there is no result. In the form
/// `Where` the condition is last.
constexpr void AddCondition(Form& form)
{
    const std::size_t afterResult = form.operands.text[0] == 'w' ? 1 : 0;
    const std::size_t place = form.layout.simd ? afterResult : form.operands.count;
    form.operands.Insert(place, 'c');
    form.types.Insert(place, 'b');
}

constexpr Form MakeForm(const SqxNumbered& numbered)
{
    Form form;
    if (!numbered.IsAssigned() || numbered.Card().isUnused)
        return form;
    const SqxCard& card = numbered.Card();
    form.layout.name = SqxFormNamesOf(card.primitive)[numbered.form];
    form.layout.primitive = card.primitive;
    const auto kind = static_cast<SqxForm>(numbered.form);
    form.layout.simd = kind == SqxForm::Grid || kind == SqxForm::GridWhere;
    form.layout.conditional = kind == SqxForm::GridWhere || kind == SqxForm::Where;
    form.layout.run = card.run;
    const auto parameters = card.Carried();
    if (!parameters.empty() && parameters.back().isRepeated) {
        AddList(form, card);
    } else {
        AddResult(form, card);
        for (const SqxParameter& parameter : parameters)
            AddParameter(form, parameter);
    }
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
        const std::size_t number = part * k_partSize + i;
        if (number <= k_sqxHighestNumber)
            forms[i] = MakeForm(k_sqxNumbered[number]);
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

}  // namespace

const SqxLayout* SqxLayout::Find(int number)
{
    if (number < 0 || number > k_sqxHighestNumber)
        return nullptr;
    const auto place = static_cast<std::size_t>(number);
    const SqxLayout& layout = (*k_parts[place / k_partSize])[place % k_partSize];
    return layout.name.empty() ? nullptr : &layout;
}
