#pragma once

#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "machine/SqxStore.h"
#include "sqx/SqxPrimitive.h"

class SqxMachine;

/// One instruction at one point, as its operation sees it: the operands in the order of the file.
/// If the instruction has one result, that is usually operand 0. `Get` copies values, so a result
/// may also be an argument.
///
/// If an operation has read poison, its result has poison in the components to which arithmetic has
/// propagated it, or in all components if arithmetic has lost it.
class SqxCall {
public:
    /// `isDoubtful`: a condition that was never written decides whether the instruction runs.
    SqxCall(SqxMachine& machine, SqxStore& store, std::span<const int> operands, std::size_t point,
            bool isDoubtful = false)
        : m_machine(machine),
          m_store(store),
          m_operands(operands),
          m_point(point),
          m_gotPoison(isDoubtful)
    {
    }

    /// Returns an operand; `Value` is `bool` for a flag, and `QxVector3` fits any triple. Records
    /// whether it is poison. Throws `SqxFault` for a flag that was never set, and for an operand
    /// with another number of components.
    template <class Value>
    [[nodiscard]] Value Get(std::size_t place) const
    {
        Note(place);
        return Part<Value>(place);
    }
    /// Like `Get`, but does not record poison: for operations that use a part of the operand, whose
    /// rest may be poison.
    template <class Value>
    [[nodiscard]] Value Part(std::size_t place) const;
    /// Writes an operand, as poison if the operation has read poison.
    template <class Value>
    void Set(std::size_t place, const Value& value) const;

    /// Returns the operands from `first` on, with the given types.
    template <class... Values>
    [[nodiscard]] std::tuple<Values...> GetAll(std::size_t first) const
    {
        return GetEach<Values...>(first, std::index_sequence_for<Values...>());
    }

    // These functions return all numbers or texts of an operand of any size, in the store itself.
    // They throw `SqxFault` for an operand of the other kind.

    [[nodiscard]] std::span<float> Numbers(std::size_t place) const;
    [[nodiscard]] std::span<std::string> Texts(std::size_t place) const;

    [[nodiscard]] const SqxVariable& Variable(std::size_t place) const;
    /// Records whether a number or the first text of an operand is poison. `Get` calls it;
    /// operations that compute with `Numbers` must call it themselves.
    void Note(std::size_t place) const;
    /// Throws `SqxFault` if the operation has read poison or is doubtful; for values that leave the
    /// shader.
    void RefusePoison() const;
    /// Returns the number of a variable, or a literal.
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

// These tables list the operations of primitives at one point, by topic.
[[nodiscard]] std::span<const SqxOperationRow> SqxOperatorTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxMathTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxNoiseTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxGeometryTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxTextTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxLightTable();
[[nodiscard]] std::span<const SqxOperationRow> SqxSceneTable();

/// Returns the operation of a primitive; null if there is none.
[[nodiscard]] SqxOperation SqxFindOperation(SqxPrimitive primitive);
