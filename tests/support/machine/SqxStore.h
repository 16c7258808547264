#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

#include "QxMatrixMath.h"
#include "sqx/SqxShader.h"

/// Thrown if a shader does something forbidden, or if a test sets or asks for a value in the wrong
/// form, with a text that describes it. `SqxMachine` catches it when it loads and runs a shader.
struct SqxFault {
    std::string message;
};

/// Returns the value of a number that was never written: a NaN that arithmetic propagates, distinct
/// from the NaN of `0 / 0` in a shader.
[[nodiscard]] float SqxPoison();
[[nodiscard]] std::string SqxPoisonText();
[[nodiscard]] bool SqxIsPoison(float number);
[[nodiscard]] bool SqxIsPoison(const std::string& text);

/// The point of code that runs once for the whole grid.
constexpr std::size_t k_uniformPoint = static_cast<std::size_t>(-1);

/// The values of all variables of a shader over the points of a grid.
///
/// Numbers, flags and texts that were never written are poison, which reveals code whose results
/// depend on them.
class SqxStore {
public:
    SqxStore(const SqxShader& shader, std::size_t points);

    [[nodiscard]] std::size_t Points() const { return m_points; }
    [[nodiscard]] const SqxVariable& Variable(std::size_t number) const;

    /// Returns the numbers of a variable at a point: 1, 3 or 16 for each of its elements. For a
    /// reference, returns the numbers of the element that it refers to. Throws `SqxFault` for a
    /// text, for a reference that was never bound, and for a varying variable at `k_uniformPoint`.
    [[nodiscard]] std::span<float> Numbers(std::size_t number, std::size_t point);
    /// Returns the texts of a variable, one for each element, in the same way; throws for numbers.
    [[nodiscard]] std::span<std::string> Texts(std::size_t number, std::size_t point);

    [[nodiscard]] bool HasPoison(std::size_t number, std::size_t point);

    /// Binds a reference to an element, at one point or, for `k_uniformPoint`, everywhere. An index
    /// outside the array means its nearest element, and NaN the first. If the index was never
    /// written, reads return poison and writes are ignored. Throws `SqxFault` if `reference` is no
    /// reference, or if `array` is one or has another type.
    void Bind(std::size_t reference, std::size_t point, std::size_t array, float index);

private:
    struct Binding {
        std::size_t array = k_uniformPoint;  // unbound
        std::size_t element = 0;
        bool isLost = false;  // its index was never written
    };
    struct Values {
        std::size_t width = 1;  // number of values of one point
        std::vector<float> numbers;
        std::vector<std::string> texts;
        std::vector<Binding> bindings;  // of a reference, by point
    };

    void Allocate(const SqxVariable& variable, Values& values) const;
    /// Returns which group of `width` values belongs to a point: 0 for a uniform variable, else
    /// the point. Throws `SqxFault` if the variable is varying and there is no point.
    [[nodiscard]] std::size_t Place(std::size_t number, std::size_t point) const;
    [[nodiscard]] const Binding& Resolve(std::size_t reference, std::size_t point) const;

    const SqxShader& m_shader;
    std::size_t m_points;
    std::vector<Values> m_values;  // by number of the variable
    std::vector<float> m_lostNumbers;
    std::vector<std::string> m_lostTexts;
};

/// Returns how many numbers one element of a type has; 1 for a text.
[[nodiscard]] std::size_t SqxComponents(SqxType type);
