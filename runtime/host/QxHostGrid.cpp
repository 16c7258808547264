// One table for each type of value describes the predefined variables: the name, the member of
// `QxHiddenVariables` through which shaders access the variable, whether the grid has one value or
// one for each point, and the initial value. Storage, look-up by name and the pointers for shaders
// are loops over the rows of these tables. `FillSquare` sets other initial values where they depend
// on the place of a point.
//
// `E` has no such member: shaders read it from the context.
//
// Tested by tests/host/HostTest.cpp.

#include "host/QxHostGrid.h"

#include <algorithm>
#include <new>
#include <string>

#include "QxHostError.h"

namespace {

template <class Value>
struct Row {
    std::string_view name;
    Value* QxHiddenVariables::*member;  // null for `E`
    bool uniform;
    Value initial;
};

using Hidden = QxHiddenVariables;

// clang-format off
constexpr Row<float> k_floats[] = {
    {"u",      &Hidden::u,      false, 0},
    {"v",      &Hidden::v,      false, 0},
    {"s",      &Hidden::s,      false, 0},
    {"t",      &Hidden::t,      false, 0},
    {"alpha",  &Hidden::alpha,  false, 1},
    {"du",     &Hidden::du,     true,  1},
    {"dv",     &Hidden::dv,     true,  1},
    {"ncomps", &Hidden::ncomps, true,  3},
    {"time",   &Hidden::time,   true,  0},
};
constexpr Row<QxVector3> k_vectors[] = {
    {"P",      &Hidden::P,      false, {0, 0, 1}},
    {"Ps",     &Hidden::Ps,     false, {0, 0, 1}},
    {"I",      &Hidden::I,      false, {0, 0, 1}},
    {"N",      &Hidden::N,      false, {0, 0, -1}},
    {"Ng",     &Hidden::Ng,     false, {0, 0, -1}},
    {"dPdu",   &Hidden::dPdu,   false, {1, 0, 0}},
    {"dPdv",   &Hidden::dPdv,   false, {0, -1, 0}},
    {"L",      &Hidden::L,      false, {0, 0, 0}},
    {"E",      nullptr,         true,  {0, 0, 0}},
};
constexpr Row<QxRGBColor> k_colors[] = {
    {"Cs",     &Hidden::Cs,     false, {1, 1, 1}},
    {"Os",     &Hidden::Os,     false, {1, 1, 1}},
    {"Ci",     &Hidden::Ci,     false, {0, 0, 0}},
    {"Oi",     &Hidden::Oi,     false, {0, 0, 0}},
    {"Cl",     &Hidden::Cl,     false, {0, 0, 0}},
    {"Ol",     &Hidden::Ol,     false, {1, 1, 1}},
};
// clang-format on

template <class Value>
std::span<const Row<Value>> Rows();
template <>
std::span<const Row<float>> Rows()
{
    return k_floats;
}
template <>
std::span<const Row<QxVector3>> Rows()
{
    return k_vectors;
}
template <>
std::span<const Row<QxRGBColor>> Rows()
{
    return k_colors;
}

// Conversion between a value and numbers

void Append(std::vector<float>& numbers, float value)
{
    numbers.push_back(value);
}

template <class Triple>
void Append(std::vector<float>& numbers, const Triple& value)
{
    numbers.insert(numbers.end(), {value[0], value[1], value[2]});
}

void Load(float& value, const float* numbers)
{
    value = numbers[0];
}

template <class Triple>
void Load(Triple& value, const float* numbers)
{
    value = {numbers[0], numbers[1], numbers[2]};
}

/// Assigns `source`, which must have one value or as many as `target`; otherwise throws
/// `QxHostError`.
template <class Value>
void Assign(std::vector<Value>& target, const QxHostValue& source, std::string_view name)
{
    const std::size_t width = QxFloatCount(source.type);
    if (source.Count() != 1 && source.Count() != target.size())
        throw QxHostError("Predefined variable '" + std::string(name) + "' takes 1 or " +
                          std::to_string(target.size()) + " values, but got " +
                          std::to_string(source.Count()));
    if (source.Count() == 1) {
        Value value;
        Load(value, source.numbers.data());
        std::fill(target.begin(), target.end(), value);
        return;
    }
    for (std::size_t i = 0; i < target.size(); ++i)
        Load(target[i], source.numbers.data() + i * width);
}

template <class Value>
QxHostValue ToHostValue(QxValueType type, const std::vector<Value>& values)
{
    std::vector<float> numbers;
    for (const Value& value : values)
        Append(numbers, value);
    return {type, std::move(numbers)};
}

/// Number of the bit in `QxHostPoints::Names` for the first row in the table of a type; the bits of
/// its other rows follow.
template <class Value>
constexpr int k_firstBit = 0;
template <>
constexpr int k_firstBit<QxVector3> = std::size(k_floats);
template <>
constexpr int k_firstBit<QxRGBColor> = std::size(k_floats) + std::size(k_vectors);
static_assert(k_firstBit<QxRGBColor> + std::size(k_colors) <= 32);

template <class Value>
QxHostPoints::Names PresentBits(const QxHiddenVariables& variables)
{
    QxHostPoints::Names bit = QxHostPoints::Names{1} << k_firstBit<Value>;
    QxHostPoints::Names names = 0;
    for (const Row<Value>& row : Rows<Value>()) {
        names |= !row.member || variables.*row.member ? bit : 0;
        bit <<= 1;
    }
    return names;
}

template <class Value>
QxHostPoints::Names BitOfName(std::string_view name)
{
    QxHostPoints::Names bit = QxHostPoints::Names{1} << k_firstBit<Value>;
    for (const Row<Value>& row : Rows<Value>()) {
        if (row.name == name)
            return bit;
        bit <<= 1;
    }
    return 0;
}

/// Calls `change`, which allocates memory for a grid. Throws `QxHostError` if that fails.
template <class Change>
void AllocateOrThrow(const QxGrid& layout, const Change& change)
{
    try {
        change();
    } catch (const std::bad_alloc&) {
        throw QxHostError("There is no memory for a grid of " + std::to_string(layout.Size()) +
                          " points");
    }
}

float StepOf(unsigned int points)
{
    return points > 1 ? 1 / static_cast<float>(points - 1) : 1;
}

}  // namespace

void QxHostPoints::Check(const QxGrid& layout)
{
    if (layout.columns == 0 || layout.rows == 0)
        throw QxHostError("A grid needs at least one point each way");
    if (std::uint64_t{layout.columns} * layout.rows > k_highestSize)
        throw QxHostError("A grid of " + std::to_string(layout.columns) + " times " +
                          std::to_string(layout.rows) + " points is too large, it may have " +
                          std::to_string(k_highestSize));
}

bool QxHostPoints::Has(std::string_view name) const
{
    return (Named(name) & Present()) != 0;
}

QxHostPoints::Names QxHostPoints::Present() const
{
    return PresentBits<float>(variables) | PresentBits<QxVector3>(variables) |
           PresentBits<QxRGBColor>(variables);
}

QxHostPoints::Names QxHostPoints::Named(std::string_view name)
{
    return BitOfName<float>(name) | BitOfName<QxVector3>(name) | BitOfName<QxRGBColor>(name);
}

QxHostGrid::QxHostGrid(unsigned int columns, unsigned int rows) : m_layout{columns, rows}
{
    QxHostPoints::Check(m_layout);
    AllocateOrThrow(m_layout, [this] {
        Allocate<float>();
        Allocate<QxVector3>();
        Allocate<QxRGBColor>();
    });
    FillSquare();
}

template <class Value>
void QxHostGrid::Allocate()
{
    for (const Row<Value>& row : Rows<Value>())
        std::get<Store<Value>>(m_values).emplace_back(row.uniform ? 1 : Size(), row.initial);
}

/// Reserves memory, so that the resizing that follows cannot fail half-way.
template <class Value>
void QxHostGrid::ReserveAll(std::size_t points)
{
    const auto rows = Rows<Value>();
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (!rows[i].uniform)
            std::get<Store<Value>>(m_values)[i].reserve(points);
}

template <class Value>
void QxHostGrid::ResizeAll()
{
    const auto rows = Rows<Value>();
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (!rows[i].uniform)
            std::get<Store<Value>>(m_values)[i].resize(Size(), rows[i].initial);
}

void QxHostGrid::Resize(unsigned int columns, unsigned int rows)
{
    if (columns == m_layout.columns && rows == m_layout.rows)
        return;
    const QxGrid layout = {columns, rows};
    QxHostPoints::Check(layout);
    AllocateOrThrow(layout, [&] {
        ReserveAll<float>(layout.Size());
        ReserveAll<QxVector3>(layout.Size());
        ReserveAll<QxRGBColor>(layout.Size());
    });
    m_layout = layout;
    ResizeAll<float>();
    ResizeAll<QxVector3>();
    ResizeAll<QxRGBColor>();
}

template <class Value>
void QxHostGrid::ResetAll()
{
    const auto rows = Rows<Value>();
    for (std::size_t i = 0; i < rows.size(); ++i)
        std::get<Store<Value>>(m_values)[i].assign(rows[i].uniform ? 1 : Size(), rows[i].initial);
}

void QxHostGrid::Reset(unsigned int columns, unsigned int rows)
{
    Resize(columns, rows);
    ResetAll<float>();
    ResetAll<QxVector3>();
    ResetAll<QxRGBColor>();
    FillSquare();
}

void QxHostGrid::FillSquare()
{
    const float du = StepOf(m_layout.columns);
    const float dv = StepOf(m_layout.rows);
    Set("du", du);
    Set("dv", dv);
    const QxHiddenVariables at = Hidden();
    std::size_t i = 0;
    for (unsigned int row = 0; row < m_layout.rows; ++row) {
        const float v = static_cast<float>(row) * dv;
        for (unsigned int column = 0; column < m_layout.columns; ++column, ++i) {
            const float u = static_cast<float>(column) * du;
            at.u[i] = at.s[i] = u;
            at.v[i] = at.t[i] = v;
            at.P[i] = at.Ps[i] = at.I[i] = {u - 0.5F, 0.5F - v, 1};
        }
    }
}

template <class Value>
std::vector<Value>* QxHostGrid::Find(std::string_view name)
{
    const auto rows = Rows<Value>();
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i].name == name)
            return &std::get<Store<Value>>(m_values)[i];
    return nullptr;
}

template <class Value>
std::span<Value> QxHostGrid::Values(std::string_view name)
{
    if (std::vector<Value>* values = Find<Value>(name))
        return *values;
    throw QxHostError("There is no predefined variable '" + std::string(name) + "' of that type");
}

template std::span<float> QxHostGrid::Values(std::string_view name);
template std::span<QxVector3> QxHostGrid::Values(std::string_view name);
template std::span<QxRGBColor> QxHostGrid::Values(std::string_view name);

void QxHostGrid::Set(std::string_view name, const QxHostValue& value)
{
    if (auto* floats = Find<float>(name); floats && value.Fits(QxValueType::Float))
        return Assign(*floats, value, name);
    if (auto* vectors = Find<QxVector3>(name); vectors && value.Fits(QxValueType::Point))
        return Assign(*vectors, value, name);
    if (auto* colors = Find<QxRGBColor>(name); colors && value.Fits(QxValueType::Color))
        return Assign(*colors, value, name);
    throw QxHostError("There is no predefined variable '" + std::string(name) + "' of type " +
                      QxTypeName(value.type));
}

QxHostValue QxHostGrid::Get(std::string_view name)
{
    if (const auto* floats = Find<float>(name))
        return ToHostValue(QxValueType::Float, *floats);
    if (const auto* vectors = Find<QxVector3>(name))
        return ToHostValue(QxValueType::Point, *vectors);
    if (const auto* colors = Find<QxRGBColor>(name))
        return ToHostValue(QxValueType::Color, *colors);
    throw QxHostError("There is no predefined variable '" + std::string(name) + "'");
}

template <class Value>
void QxHostGrid::SetPointers(QxHiddenVariables& hidden)
{
    const auto rows = Rows<Value>();
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (rows[i].member)
            hidden.*rows[i].member = std::get<Store<Value>>(m_values)[i].data();
}

QxHiddenVariables QxHostGrid::Hidden()
{
    QxHiddenVariables hidden;
    SetPointers<float>(hidden);
    SetPointers<QxVector3>(hidden);
    SetPointers<QxRGBColor>(hidden);
    return hidden;
}

QxHostGrid::operator QxHostPoints()
{
    return {m_layout, Hidden(), Values<QxVector3>("E")[0]};
}
