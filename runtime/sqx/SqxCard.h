#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "sqx/SqxPrimitive.h"

/// Where the instructions of a primitive are allowed, and for which points they run. `QxVerifier`
/// states the exact rules. Forms with "_SIMD" in their name are always allowed like `Grid`.
enum class SqxRun : unsigned char {
    Point,   // inside parallel brackets for each point; outside once for the grid
    Grid,    // only outside parallel brackets, where it runs once for all points
    Reduce,  // like Grid; reduces the values of the points to one for the grid
    Answer,  // like Point, but whole-grid forms may write uniform variables
    Shaded,  // like Point, but depends on the shading point: never once for the grid
};

/// The types of parameters and results. Those of the second group occur only in instructions, not
/// in functions of the language.
enum class SqxCardType : unsigned char {
    Void,
    Float,
    String,
    Color,
    Point,
    Vector,
    Normal,
    Matrix,
    Any,        // any type of the language except void
    AnyPoint,   // point, vector or normal
    AnyVector,  // vector or normal

    Bool,
    AnyValue,        // a value, or an array of values
    Array,           // with elements of any type
    Reference,       // bound to an element of an array
    NumberOrTriple,  // also an integer constant: a count, or an omitted argument
    Place,           // target of a jump in the block
    Space,           // the number of a coordinate space
    Literal,         // a plain number, not that of a variable
    Shadeop,         // the number of a shadeop function
};

/// Determines whether the result of a call is uniform.
enum class SqxDetailRule : unsigned char {
    AsArguments,  // if all arguments are; without arguments, if a uniform value is wanted
    Varying,
    Uniform,
};

/// The same for a call in a function body, with the details of one call of that function. All rules
/// but the three of `SqxDetailRule` also give the written arguments the combined detail of those
/// that are read.
enum class SqxInlineRule : unsigned char {
    AsArguments,
    Varying,
    PointComponent,
    ColorComponent,
    Fresnel,
    Unpack,
    MatrixComponent,
    Uniform,
    Outputs,
};

/// How the machine computes a primitive whose card has a function or an expression.
enum class SqxKernelKind : unsigned char {
    Each,     // at the points that need it
    Cheap,    // in vectors, also at points that need no result
    Vectors,  // in vectors, at the points that need it; for expensive functions of numbers
    Custom,   // with a hand-written kernel
};

/// A part of a card's text; empty for what the card does not have.
struct SqxCardWord {
    unsigned short at = 0;
    unsigned short length = 0;
};

struct SqxParameter {
    SqxCardType type = SqxCardType::Void;
    bool isArray = false;
    bool isUniform = false;        // the argument must be uniform
    bool isUniformInGrid = false;  // the argument must be uniform in a whole-grid call
    bool isOutput = false;         // read and written
    bool isAssigned = false;       // written, never read
    bool isOptional = false;
    bool isNamed = false;     // passed as a name and a value
    bool isRepeated = false;  // stands for any number of arguments; only for the last parameter
    unsigned char count = 1;  // number of consecutive values
    SqxCardWord name;
    SqxCardWord value;  // the default
};

/// The facts about a primitive, or about a further function of the language that the primitive
/// computes.
struct SqxCard {
    static constexpr std::size_t k_forms = 4;
    static constexpr std::size_t k_mostReads = 4;
    static constexpr std::size_t k_mostParameters = 14;

    std::string_view text;
    std::string_view function;    // of the shading headers; empty if the card names none
    std::string_view expression;  // of an operator, over the names of its parameters; or empty
    SqxCardWord name;             // in the language; empty if it has none
    SqxCardWord meaning;          // for the reference page; only in the first card of a name
    /// Byte-code numbers, by `SqxForm`; 0 if a form has none.
    std::array<short, k_forms> numbers{};
    std::array<SqxCardWord, k_mostReads> reads{};
    std::array<SqxParameter, k_mostParameters> parameters{};
    SqxPrimitive primitive{};
    SqxCardType result = SqxCardType::Void;
    SqxRun run = SqxRun::Point;
    SqxKernelKind kernel = SqxKernelKind::Each;
    SqxDetailRule detail = SqxDetailRule::AsArguments;
    SqxInlineRule inlineDetail = SqxInlineRule::AsArguments;
    bool isFoldable = false;         // may be evaluated at compile time
    bool isOrdered = false;          // calls must not be reordered
    bool hasGridCall = false;        // a call in the language may use the whole-grid form
    bool looksAtLights = false;      // the lights must have been evaluated for `P`
    bool isUnused = false;           // part of the instruction set, but never emitted
    unsigned char carriedCount = 0;  // number of parameters of `@carries`, first in `parameters`
    unsigned char formalCount = 0;   // number of parameters of the function

    [[nodiscard]] constexpr std::string_view Text(SqxCardWord word) const
    {
        return text.substr(word.at, word.length);
    }
    [[nodiscard]] constexpr std::string_view Name() const { return Text(name); }
    [[nodiscard]] constexpr short Number(SqxForm form) const
    {
        return numbers[static_cast<std::size_t>(form)];
    }
    /// Returns the predefined variables that the primitive reads in addition to its arguments;
    /// empty entries are last.
    [[nodiscard]] constexpr std::array<std::string_view, k_mostReads> Reads() const
    {
        std::array<std::string_view, k_mostReads> names;
        for (std::size_t i = 0; i < k_mostReads; ++i)
            names[i] = Text(reads[i]);
        return names;
    }
    [[nodiscard]] constexpr bool HasReads() const { return reads[0].length > 0; }
    /// True if the card has byte-code numbers. False for primitives that only generated C++, the
    /// machine or the compiler itself computes, and for the cards of overloads.
    [[nodiscard]] constexpr bool HasNumber() const { return numbers[0] > 0 || numbers[1] > 0; }
    /// Returns the parameters of the function, or of an instruction without a name.
    [[nodiscard]] constexpr std::span<const SqxParameter> Formals() const
    {
        return std::span(parameters).subspan(carriedCount, formalCount);
    }
    /// Returns the parameters of the instruction; without `@carries`, those of the function.
    [[nodiscard]] constexpr std::span<const SqxParameter> Carried() const
    {
        return carriedCount > 0 ? std::span(parameters).first(carriedCount) : Formals();
    }
    /// True if the primitive has no plain form, since it needs neighbouring points. Only for the
    /// card of a primitive, not for that of an overload.
    [[nodiscard]] constexpr bool IsGridOnly() const { return numbers[0] == 0 && numbers[1] > 0; }
};

/// Returns all cards, in the order of the table.
[[nodiscard]] std::span<const SqxCard> SqxCards();
/// Returns the card of a primitive, which is the first one that names it.
[[nodiscard]] const SqxCard& SqxCardOf(SqxPrimitive primitive);
/// Returns the cards of a function of the language, in the order of the table. O(log n).
[[nodiscard]] std::span<const SqxCard* const> SqxCardsNamed(std::string_view function);
/// Returns the title of the chapter of the reference page that contains a card of the table; empty
/// for an instruction without a name. O(n) for n cards.
[[nodiscard]] std::string_view SqxChapterOf(const SqxCard& card);
