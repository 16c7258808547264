#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string_view>

#include "sqx/SqxPrimitive.h"

/// Where an instruction is allowed, and for which points it runs.
enum class SqxRun : unsigned char {
    Point,   // inside parallel brackets for each point; outside once for the grid
    Grid,    // only outside parallel brackets; accesses all points at once
    Reduce,  // like Grid; reduces the values of the points to one for the grid
    Answer,  // like Point; the answer may be uniform although it depends on points
    Shaded,  // like Point, but depends on the shading point: never once for the grid
};

/// The types of operands. The second group has no word in the language.
enum class SqxCardType : unsigned char {
    Void,
    Float,
    String,
    Color,
    Point,
    Vector,
    Normal,
    Matrix,
    Any,        // any type but void
    AnyPoint,   // point, vector or normal
    AnyVector,  // vector or normal

    Bool,
    AnyValue,        // a value or an array of them
    Array,           // of any elements
    Reference,       // bound to an element of an array
    NumberOrTriple,  // also a literal integer, for what is left out
    Place,           // in the block, to go to
    Space,           // the number of a coordinate space
    Literal,         // a literal integer
    Shadeop,         // the number of a shadeop function
};

/// Determines whether the result of a call is uniform.
enum class SqxDetailRule : unsigned char {
    AsArguments,  // if all arguments are
    Varying,
    Uniform,
};

/// The rule for a call in a function body that is being evaluated: as the rule above, or which
/// arguments get the detail of the others.
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

/// How the machine computes a primitive with a function.
enum class SqxKernelKind : unsigned char {
    Each,     // at the points that need it
    Cheap,    // in vectors, also at points that need no result
    Vectors,  // in vectors, at the points that need it: costly functions of numbers
    Custom,   // with a kernel that is written by hand
};

/// A part of a card's text.
struct SqxCardWord {
    unsigned short at = 0;
    unsigned short length = 0;
};

struct SqxParameter {
    SqxCardType type = SqxCardType::Void;
    bool isArray = false;
    bool isUniform = false;        // the argument must be
    bool isUniformInGrid = false;  // the argument must be in a whole-grid call
    bool isOutput = false;         // read and written
    bool isAssigned = false;       // written, never read
    bool isOptional = false;
    bool isNamed = false;     // given as a name and a value
    bool isRepeated = false;  // any number of further ones; the last
    unsigned char count = 1;  // values in a row
    SqxCardWord name;
    SqxCardWord value;  // the default
};

/// What is known of a primitive, or of one more function of the language that it computes.
struct SqxCard {
    static constexpr std::size_t k_forms = 4;
    static constexpr std::size_t k_mostReads = 4;
    static constexpr std::size_t k_mostParameters = 14;

    std::string_view text;
    std::string_view function;    // of the shading headers; empty if its macros are hand-written
    std::string_view expression;  // of an operator, over the names of its parameters; else empty
    SqxCardWord name;             // in the language; empty if it has none
    SqxCardWord meaning;          // for the reference page; in the first card of a name
    /// Byte-code numbers by `SqxForm`; 0 for none.
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
    bool hasGridCall = false;        // a call of the language may be written in its whole-grid form
    bool looksAtLights = false;      // the lights must have been evaluated for `P`
    bool isUnused = false;           // part of the instruction set, but never written
    unsigned char carriedCount = 0;  // parameters of the instruction, if they are others; first
    unsigned char formalCount = 0;   // parameters of the function

    [[nodiscard]] constexpr std::string_view Text(SqxCardWord word) const
    {
        return text.substr(word.at, word.length);
    }
    [[nodiscard]] constexpr std::string_view Name() const { return Text(name); }
    [[nodiscard]] constexpr short Number(SqxForm form) const
    {
        return numbers[static_cast<std::size_t>(form)];
    }
    /// The predefined variables that it reads although they are no arguments; empty ones last.
    [[nodiscard]] constexpr std::array<std::string_view, k_mostReads> Reads() const
    {
        std::array<std::string_view, k_mostReads> names;
        for (std::size_t i = 0; i < k_mostReads; ++i)
            names[i] = Text(reads[i]);
        return names;
    }
    [[nodiscard]] constexpr bool HasReads() const { return reads[0].length > 0; }
    /// False for what only generated C++ can call.
    [[nodiscard]] constexpr bool HasNumber() const { return numbers[0] > 0 || numbers[1] > 0; }
    [[nodiscard]] constexpr std::span<const SqxParameter> Formals() const
    {
        return std::span(parameters).subspan(carriedCount, formalCount);
    }
    /// The parameters of the instruction.
    [[nodiscard]] constexpr std::span<const SqxParameter> Carried() const
    {
        return carriedCount > 0 ? std::span(parameters).first(carriedCount) : Formals();
    }
    /// Of the primitive's own card: it has no plain form, since it needs neighbouring points.
    [[nodiscard]] constexpr bool IsGridOnly() const { return numbers[0] == 0 && numbers[1] > 0; }
};

/// All cards, in the order of the table.
[[nodiscard]] std::span<const SqxCard> SqxCards();
/// The card of a primitive.
[[nodiscard]] const SqxCard& SqxCardOf(SqxPrimitive primitive);
/// The cards of a function of the language, in the order of the table. O(log n).
[[nodiscard]] std::span<const SqxCard* const> SqxCardsNamed(std::string_view function);
/// The chapter of the reference page that a card is in; empty for an instruction without a name.
[[nodiscard]] std::string_view SqxChapterOf(const SqxCard& card);
