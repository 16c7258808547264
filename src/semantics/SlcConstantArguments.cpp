// Calls with these constants have a defined result at run time, but are rarely intended:
//
//     spline("catmul-rom", ...)     an unknown basis: the default
//     ctransform("HSV", c)          an unknown space: "rgb"
//     comp(c, 3)                    the nearest component
//     printf("%s\n")                the specifier is printed
//
// The valid names are those in the tables of the run time. A name, index or format that is not a
// literal is not checked.
//
// Tested by tests/semantics/SlcConstantArgumentsTest.cpp.

#include "semantics/SlcConstantArguments.h"

#include <cctype>
#include <cmath>
#include <optional>
#include <string>
#include <string_view>

#include "frontend/SlcBinOpNodes.h"
#include "frontend/SlcCallNodes.h"
#include "semantics/SlcTypedExpr.h"
#include "shading/QxColorSpaces.h"
#include "shading/QxFilters.h"
#include "shading/QxSplines.h"
#include "shading/QxText.h"
#include "support/reports/SlcSemanticError.h"
#include "symbols/SlcFuncSymbolEntry.h"

namespace {

constexpr int k_level = 2;

using Arguments = std::vector<std::unique_ptr<SlcExprNode>>;

std::string WithoutQuotes(const SlcStringLiteralNode& literal)
{
    const std::string& text = literal.GetText();
    return text.substr(1, text.size() - 2);
}

std::optional<std::string> TextOf(const SlcExprNode* expr)
{
    const auto* constant = dynamic_cast<const SlcConstExprNode*>(expr);
    if (!constant || constant->IsFloat())
        return std::nullopt;
    return WithoutQuotes(*constant->GetStringConst());
}

std::optional<double> NumberOf(const SlcExprNode* expr)
{
    if (const auto* minus = dynamic_cast<const SlcUMinusExprNode*>(expr)) {
        const auto operand = NumberOf(minus->GetOperand());
        return operand ? std::optional(-*operand) : std::nullopt;
    }
    const auto* constant = dynamic_cast<const SlcConstExprNode*>(expr);
    if (!constant || !constant->IsFloat())
        return std::nullopt;
    return constant->GetFloatConst()->GetValue();
}

/// Returns the row of `table` with that name, or, after a warning that starts with `unknown`, the
/// first row, which is the default.
template <class Table>
const auto& FindRow(SlcSemanticError& errors, const SlcSyntaxNode* node, const Table& table,
                    const std::string& unknown, const std::string& name)
{
    std::string known;
    for (const auto& row : table) {
        if (name == row.name)
            return row;
        known += (known.empty() ? "'" : ", '") + std::string(row.name) + "'";
    }
    const auto& byDefault = table[0];
    errors.Warning(
        node, unknown + name + "' counts as '" + byDefault.name + "', known are " + known, k_level);
    return byDefault;
}

void CheckSpaces(SlcSemanticError& errors, const Arguments& arguments)
{
    for (const auto& argument : arguments)
        if (const auto name = TextOf(argument.get()))
            FindRow(errors, argument.get(), qxcolor::k_spaces, "Unknown color space '", *name);
}

void CheckFilter(SlcSemanticError& errors, const Arguments& arguments)
{
    for (std::size_t i = 2; i + 1 < arguments.size(); ++i) {
        if (TextOf(arguments[i].get()) != "filter")
            continue;
        if (const auto name = TextOf(arguments[i + 1].get()))
            FindRow(errors, arguments[i + 1].get(), qxfilter::k_filters, "Unknown filter '", *name);
    }
}

/// Returns the number of values of a spline, which begin at `first`; nothing for an array of
/// unknown length.
std::optional<std::size_t> CountValues(const Arguments& arguments, std::size_t first)
{
    const auto* array =
        dynamic_cast<const SlcArrayTypeNode*>(SlcTypedExpr::FirstType(arguments[first].get()));
    if (!array)
        return arguments.size() - first;
    if (array->GetLength() <= 0)
        return std::nullopt;
    return array->GetLength();
}

void CheckSpline(SlcSemanticError& errors, const SlcProcCallExprNode& call)
{
    const Arguments& arguments = call.GetArguments()->GetArgs();
    const bool hasBasis = call.GetSymbolEntry()->GetArgTypes().front()->IsStringType();
    const QxSplineBasis* basis = hasBasis ? nullptr : &k_qxSplineBases[0];
    if (hasBasis)
        if (const auto name = TextOf(arguments[0].get()))
            basis = &FindRow(errors, arguments[0].get(), k_qxSplineBases, "Unknown spline basis '",
                             *name);
    const auto values = CountValues(arguments, hasBasis ? 2 : 1);
    if (!values)
        return;
    if (*values < 4) {
        errors.Warning(&call,
                       "A spline needs four values or more, of " + std::to_string(*values) +
                           " it is the first",
                       k_level);
        return;
    }
    const int leftOver = basis ? QxLeftOver(*basis, static_cast<int>(*values)) : 0;
    if (leftOver != 0)
        errors.Warning(&call,
                       std::string("A '") + basis->name + "' spline leaves out the last " +
                           std::to_string(leftOver) + " of " + std::to_string(*values) +
                           " values, it takes 4 and " + std::to_string(basis->step) +
                           " for each further segment",
                       k_level);
}

/// The indices follow the first argument; a matrix has two.
void CheckIndices(SlcSemanticError& errors, const SlcProcCallExprNode& call)
{
    const Arguments& arguments = call.GetArguments()->GetArgs();
    const bool isMatrix = call.GetSymbolEntry()->GetArgTypes().front()->IsMatrixType();
    const std::size_t count = isMatrix ? 2 : 1;
    const int last = isMatrix ? 3 : 2;
    for (std::size_t i = 1; i <= count; ++i) {
        const auto index = NumberOf(arguments[i].get());
        if (index && (std::trunc(*index) < 0 || std::trunc(*index) > last))
            errors.Warning(arguments[i].get(),
                           "An index outside of 0 to " + std::to_string(last) +
                               " counts as the nearest one of them",
                           k_level);
    }
}

/// Returns the text of the specifier: the percent sign, the width, and the letter if there is one.
/// Returns only the percent sign if no specifier is meant, as in "50 % of".
std::string_view SpecifierAt(std::string_view format, std::size_t percent)
{
    constexpr std::string_view widths = "0123456789.+-#*";
    const std::size_t letter = format.find_first_not_of(widths, percent + 1);
    const bool hasLetter = letter != std::string_view::npos &&
                           std::isalpha(static_cast<unsigned char>(format[letter]));
    const std::size_t end = hasLetter ? letter + 1 : std::min(letter, format.size());
    return format.substr(percent, end - percent);
}

/// Reads specifiers in the same way as QxFormat.
void CheckFormat(SlcSemanticError& errors, const Arguments& arguments)
{
    const auto format = TextOf(arguments[0].get());
    if (!format)
        return;
    std::size_t specifiers = 0;
    for (std::size_t i = 0; i < format->size(); ++i) {
        if ((*format)[i] != '%')
            continue;
        const char next = i + 1 < format->size() ? (*format)[i + 1] : '\0';
        if (next == '%') {
            ++i;
        } else if (qxtext::IsConversion(next)) {
            ++specifiers;
        } else if (const auto unknown = SpecifierAt(*format, i); unknown.size() > 1) {
            errors.Warning(arguments[0].get(),
                           "Unknown specifier '" + std::string(unknown) +
                               "' stays as it is, known are '%' with one of '" +
                               qxtext::k_conversions + "', and '%%'",
                           k_level);
        }
    }
    const std::size_t given = arguments.size() - 1;
    if (specifiers != given)
        errors.Warning(arguments[0].get(),
                       "Format with " + std::to_string(specifiers) + " specifiers has " +
                           std::to_string(given) + " arguments",
                       k_level);
}

}  // namespace

void SlcCheckConstantArguments(SlcSemanticError& errors, const SlcProcCallExprNode& call)
{
    const SlcFuncSymbolEntry& entry = *call.GetSymbolEntry();
    if (entry.GetOrigin() != SlcFuncOrigin::BuiltIn)
        return;
    const std::string& name = entry.GetName();
    const Arguments& arguments = call.GetArguments()->GetArgs();
    if (name == "ctransform")
        CheckSpaces(errors, arguments);
    else if (name == "filterstep")
        CheckFilter(errors, arguments);
    else if (name == "spline")
        CheckSpline(errors, call);
    else if (name == "comp" || name == "setcomp")
        CheckIndices(errors, call);
    else if (name == "printf" || name == "format")
        CheckFormat(errors, arguments);
}

void SlcCheckColorSpace(SlcSemanticError& errors, const SlcCastExprNode& cast)
{
    if (cast.GetType()->IsColorType() && cast.GetSpace())
        FindRow(errors, &cast, qxcolor::k_spaces, "Unknown color space '",
                WithoutQuotes(*cast.GetSpace()));
}
