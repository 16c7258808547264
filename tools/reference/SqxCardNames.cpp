// A function that is called only for one point or for uniform data becomes a single macro:
//
//     @forms(128) float mod(float a, float b), QxMod
//     #define CALL_PRIM_MOD(result, a, b) QxSet(result, QxMod(QxNumber(a), QxNumber(b)))
//
// The expression of an operator becomes the body of a macro:
//
//     @forms(44) color (color left, float right), (left) + QxNumber(right)
//     #define ADD_COLOR_FLOAT(result, left, right) QxSet(result, (left) + QxNumber(right))
//
// A function object, and a function with a result that may be called for the whole grid, gets one
// macro for each of four forms. `FormMacros` lists them.
//
// Tested by tests/reference/run.sh, which fails if the header in the tree is out of date.

#include "reference/SqxCardNames.h"

#include "sqx/SqxCard.h"

namespace {

constexpr std::string_view k_head = "#pragma once\n"
                                    "\n"
                                    "// The macros of generated C++ that are derived from the "
                                    "cards in runtime/sqx/SqxCards.def. To\n"
                                    "// change one, change its card and run `cmake --build ... "
                                    "--target reference`. QxBuiltInNames.h\n"
                                    "// explains the forms, and contains the names that are not "
                                    "derived from a card.\n"
                                    "\n"
                                    "// clang-format off\n";
constexpr std::string_view k_tail = "// clang-format on\n";

bool IsPoint(SqxCardType type)
{
    return type == SqxCardType::Point || type == SqxCardType::Vector ||
           type == SqxCardType::Normal || type == SqxCardType::AnyPoint ||
           type == SqxCardType::AnyVector;
}

/// Returns the argument of a call. Floats and points that are read are converted: constants are
/// doubles in generated C++, and a number may stand for a point.
std::string Argument(const SqxCard& card, const SqxParameter& parameter)
{
    const std::string name(card.Text(parameter.name));
    if (parameter.isOutput)
        return name;
    if (parameter.type == SqxCardType::Float)
        return "QxNumber(" + name + ')';
    return IsPoint(parameter.type) ? "QxToPoint(" + name + ')' : name;
}

std::string PlainMacro(const SqxCard& card)
{
    std::string names;
    std::string arguments;
    for (const SqxParameter& parameter : card.Carried()) {
        names.append(names.empty() ? "" : ", ").append(card.Text(parameter.name));
        arguments.append(arguments.empty() ? "" : ", ").append(Argument(card, parameter));
    }
    const std::string name(SqxPrimitiveName(card.primitive));
    const std::string call = std::string(card.function) + '(' + arguments + ')';
    if (card.result == SqxCardType::Void)
        return "#define " + name + '(' + names + ") " + call + '\n';
    return "#define " + name + "(result" + (names.empty() ? "" : ", ") + names +
           ") QxSet(result, " + call + ")\n";
}

std::string OperatorMacro(const SqxCard& card)
{
    std::string text = "#define " + std::string(SqxPrimitiveName(card.primitive)) + "(result";
    for (const SqxParameter& operand : card.Formals())
        text.append(", ").append(card.Text(operand.name));
    return text.append(") QxSet(result, ").append(card.expression).append(")\n");
}

/// Returns the macros of all forms of a function object.
std::string FormMacros(const SqxCard& card, const std::string& object)
{
    static constexpr struct {
        std::string_view suffix;
        std::string_view call;
    } forms[] = {
        {"", "QxCallPlain("},
        {"_SIMD", "QxCallSimd(numMp, "},
        {"_SIMD_IF_TRUE", "QxCallSimdIf(numMp, true, "},
        {"_SIMD_IF_FALSE", "QxCallSimdIf(numMp, false, "},
    };
    std::string text;
    for (const auto& form : forms) {
        text.append("#define ").append(SqxPrimitiveName(card.primitive)).append(form.suffix);
        text.append("(...) ").append(form.call).append(object).append(", __VA_ARGS__)\n");
    }
    return text;
}

std::string MacrosOf(const SqxCard& card)
{
    if (!card.expression.empty())
        return OperatorMacro(card);
    if (card.function.empty())
        return "";
    const std::string function(card.function);
    if (function.ends_with(')'))
        return FormMacros(card, function);
    if (card.hasGridCall && card.result != SqxCardType::Void)
        return FormMacros(card, "QX_OBJECT_OF(" + function + ')');
    return PlainMacro(card);
}

}  // namespace

std::string SqxCardNames()
{
    std::string text(k_head);
    for (const SqxCard& card : SqxCards())
        text += MacrosOf(card);
    return text.append(k_tail);
}
