#pragma once

#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "machine/SqxStore.h"
#include "sqx/SqxPrimitive.h"

class SqxMachine;

/// One instruction at one point, as the operations see it: its variables by place, the result (if
/// it has one) first. Values are copied out and in, so that a result may be one of the operands.
///
/// What an operation sets is poison where it has got poison, also where its arithmetic lost it.
class SqxCall {
public:
    /// `isDoubtful`: a condition that nothing has written decides whether it runs.
    SqxCall(SqxMachine& machine, SqxStore& store, std::span<const int> operands, std::size_t point,
            bool isDoubtful = false)
        : m_machine(machine),
          m_store(store),
          m_operands(operands),
          m_point(point),
          m_gotPoison(isDoubtful)
    {
    }

    /// Also a flag as a truth; one that was never set is a fault.
    template <class Value>
    [[nodiscard]] Value Get(std::size_t place) const
    {
        Note(place);
        return Part<Value>(place);
    }
    /// For who takes or replaces a part of it: the rest may be poison.
    template <class Value>
    [[nodiscard]] Value Part(std::size_t place) const;
    template <class Value>
    void Set(std::size_t place, const Value& value) const;

    /// The operands from `first` on, with the given types.
    template <class... Values>
    [[nodiscard]] std::tuple<Values...> GetAll(std::size_t first) const
    {
        return GetEach<Values...>(first, std::index_sequence_for<Values...>());
    }

    /// All numbers or texts of an operand, of whatever type and size.
    [[nodiscard]] std::span<float> Numbers(std::size_t place) const;
    [[nodiscard]] std::span<std::string> Texts(std::size_t place) const;
    [[nodiscard]] const SqxVariable& Variable(std::size_t place) const;
    /// For who reads `Numbers`: `Get` notes by itself what it reads.
    void Note(std::size_t place) const;
    /// For what leaves the shader. Throws `SqxFault` if the operation has got poison.
    void RefusePoison() const;
    /// The number of a variable, or a literal.
    [[nodiscard]] int Operand(std::size_t place) const { return m_operands[place]; }
    [[nodiscard]] std::size_t Count() const { return m_operands.size(); }

    [[nodiscard]] SqxMachine& Machine() const { return m_machine; }
    [[nodiscard]] SqxStore& Store() const { return m_store; }
    [[nodiscard]] std::size_t Point() const { return m_point; }

private:
    template <class... Values, std::size_t... i>
    [[nodiscard]] std::tuple<Values...> GetEach(std::size_t first, std::index_sequence<i...>) const
    {
        return {Get<Values>(first + i)...};
    }
    [[nodiscard]] std::span<float> Exactly(std::size_t place, std::size_t count) const;
    void SetNumbers(std::size_t place, std::span<const float> values) const;

    SqxMachine& m_machine;
    SqxStore& m_store;
    std::span<const int> m_operands;
    std::size_t m_point;
    mutable bool m_gotPoison;
};

template <>
float SqxCall::Part(std::size_t place) const;
template <>
bool SqxCall::Part(std::size_t place) const;
template <>
QxVector3 SqxCall::Part(std::size_t place) const;
template <>
QxRGBColor SqxCall::Part(std::size_t place) const;
template <>
QxMatrix44 SqxCall::Part(std::size_t place) const;
template <>
std::string SqxCall::Part(std::size_t place) const;
template <>
void SqxCall::Set(std::size_t place, const float& value) const;
template <>
void SqxCall::Set(std::size_t place, const bool& value) const;
template <>
void SqxCall::Set(std::size_t place, const QxVector3& value) const;
template <>
void SqxCall::Set(std::size_t place, const QxRGBColor& value) const;
template <>
void SqxCall::Set(std::size_t place, const QxMatrix44& value) const;
template <>
void SqxCall::Set(std::size_t place, const std::string& value) const;

using SqxOperation = void (*)(const SqxCall&);

struct SqxOperationRow {
    SqxPrimitive primitive;
    SqxOperation operation;
};

// What the primitives do at one point, by field.
[[nodiscard]] std::span<const SqxOperationRow> SqxOperatorTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxMathTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxNoiseTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxGeometryTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxTextTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxLightTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxSceneTable();

/// The operation of a primitive; null if there is none.
[[nodiscard]] SqxOperation SqxFindOperation(SqxPrimitive primitive);
