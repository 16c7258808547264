// The result and the arguments of a macro come from the cards of its primitive. If several
// functions or overloads of the language share the primitive, their types are listed as
// alternatives, such as "point or color".

#include "reference/SqxMacroTables.h"

#include <algorithm>
#include <vector>

#include "sqx/SqxCard.h"

namespace {

/// Returns the word of the tables for a type: one for points, vectors and normals, which have the
/// same type in generated C++, and "-" for no result.
std::string_view TypeName(SqxCardType type)
{
    switch (type) {
    case SqxCardType::Float:
        return "float";
    case SqxCardType::String:
        return "string";
    case SqxCardType::Color:
        return "color";
    case SqxCardType::Matrix:
        return "matrix";
    case SqxCardType::Void:
        return "-";
    default:
        return "point";
    }
}

/// Returns the type of a parameter, or its name if a call passes it by name or may omit it; an
/// optional output parameter is listed by its type.
std::string_view Word(const SqxCard& card, const SqxParameter& parameter)
{
    const bool isNamed = parameter.isNamed || (parameter.isOptional && !parameter.isOutput);
    return isNamed ? card.Text(parameter.name) : TypeName(parameter.type);
}

/// The types of one argument or of the result in several cards, each listed once.
class Alternatives {
public:
    void Add(std::string_view type, bool isOutput)
    {
        std::string word(type);
        if (isOutput)
            word = '*' + word + '*';
        if (std::find(m_words.begin(), m_words.end(), word) == m_words.end())
            m_words.push_back(word);
    }
    [[nodiscard]] std::string Text() const
    {
        std::string text;
        for (const std::string& word : m_words)
            text += (text.empty() ? "" : " or ") + word;
        return text;
    }

private:
    std::vector<std::string> m_words;
};

std::vector<const SqxCard*> CardsOf(SqxPrimitive primitive)
{
    std::vector<const SqxCard*> cards;
    for (const SqxCard& card : SqxCards())
        if (card.primitive == primitive)
            cards.push_back(&card);
    return cards;
}

std::string Row(SqxPrimitive primitive)
{
    const std::vector<const SqxCard*> cards = CardsOf(primitive);
    Alternatives result;
    for (const SqxCard* card : cards)
        result.Add(TypeName(card->result), false);
    std::string arguments;
    const std::size_t count = cards[0]->Carried().size();
    for (std::size_t i = 0; i < count; ++i) {
        Alternatives argument;
        for (const SqxCard* card : cards)
            if (i < card->Carried().size())
                argument.Add(Word(*card, card->Carried()[i]), card->Carried()[i].isOutput);
        arguments += (arguments.empty() ? "" : ", ") + argument.Text();
    }
    return "| `" + std::string(SqxPrimitiveName(primitive)) + "` | " + result.Text() + " | " +
           (arguments.empty() ? "none" : arguments) + " |\n";
}

/// True for functions that these tables list. Primitives with lists of arguments, queries to the
/// renderer and operations on neighbouring points have separate tables. Functions without a macro
/// are evaluated by the compiler itself.
bool IsFunctionOfArguments(const SqxCard& card)
{
    const auto list = card.Carried();
    const bool hasMacro =
        card.HasNumber() || !card.function.empty() || card.result == SqxCardType::Void;
    return card.name.length > 0 && hasMacro && !card.IsGridOnly() && card.run != SqxRun::Answer &&
           std::none_of(list.begin(), list.end(), [](const SqxParameter& parameter) {
               return parameter.isRepeated || parameter.isArray ||
                      parameter.type == SqxCardType::Any;
           });
}

/// True for functions with macros of all forms. Procedures have only the plain form in C++.
bool HasForms(const SqxCard& card)
{
    return card.result != SqxCardType::Void && (card.hasGridCall || card.function.ends_with(')'));
}

std::string Table(bool withForms)
{
    std::vector<std::string> rows;
    for (const SqxCard& card : SqxCards())
        if (&card == &SqxCardOf(card.primitive) && IsFunctionOfArguments(card) &&
            HasForms(card) == withForms)
            rows.push_back(Row(card.primitive));
    std::sort(rows.begin(), rows.end());
    std::string text = "\n| Macro | Result | Arguments |\n|---|---|---|\n";
    for (const std::string& row : rows)
        text += row;
    return text + "\n";
}

}  // namespace

std::string SqxPlainMacroTable()
{
    return Table(false);
}

std::string SqxFormMacroTable()
{
    return Table(true);
}
