// A run owns one block of memory, divided among its variables; parameters and predefined variables
// stay in the host's memory. Each variable has two addresses: `m_homes` is its own memory,
// `m_values` its current address. They differ only for variables that are re-bound while code runs:
// aliases of elements, locals with room for one strip, and L, Cl and Ol in a loop over lights.
//
// A varying reference is an array of addresses, one per point, followed by dummy elements that it
// refers to before it is bound, so that a file that uses it too early does no harm.
//
// Tested by tests/host/HostTest.cpp and tests/host/AgreementTest.cpp.

#include "machine/run/QxMachineStore.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>

#include "QxHostError.h"
#include "sqx/SqxPredefined.h"

namespace {

using Kind = QxStorage::Kind;

// A variable gets two cache lines more than its values need, so that arrays of 2^n points do not
// map to the same cache sets.
constexpr std::size_t k_alignment = 64;
constexpr std::size_t k_gap = 2 * k_alignment;

/// Stands for the eye, which is not a member of `QxHiddenVariables`.
constexpr std::uint32_t k_eye = sizeof(QxHiddenVariables);
#define QX_MEMBER(NAME) offsetof(QxHiddenVariables, NAME)
/// Offsets of the members, by row of the table of predefined variables.
constexpr std::uint32_t k_offsets[] = {
    QX_MEMBER(Cs), QX_MEMBER(Os), QX_MEMBER(P),  QX_MEMBER(dPdu),   QX_MEMBER(dPdv),
    QX_MEMBER(N),  QX_MEMBER(Ng), QX_MEMBER(u),  QX_MEMBER(v),      QX_MEMBER(du),
    QX_MEMBER(dv), QX_MEMBER(s),  QX_MEMBER(t),  QX_MEMBER(L),      QX_MEMBER(Cl),
    QX_MEMBER(Ol), k_eye,         QX_MEMBER(I),  QX_MEMBER(ncomps), QX_MEMBER(time),
    QX_MEMBER(Ci), QX_MEMBER(Oi), QX_MEMBER(Ps), QX_MEMBER(alpha)};
#undef QX_MEMBER
static_assert(std::size(k_offsets) == std::size(k_sqxPredefined));

bool IsOwn(Kind kind)
{
    return kind == Kind::Local || kind == Kind::Borrowed || kind == Kind::Reference ||
           kind == Kind::Alias || kind == Kind::Nowhere || kind == Kind::Strip;
}

/// Returns the number of points for which a variable has room; 1 for a uniform variable.
std::size_t PlacesOf(const QxStorage& storage, std::size_t points)
{
    if (!storage.varying)
        return 1;
    return storage.kind == Kind::Strip ? std::min<std::size_t>(points, k_qxLongestStrip) : points;
}

}  // namespace

void QxMachineStore::Memory::operator()(void* block) const
{
    std::free(block);
}

QxMachineStore::QxMachineStore(const QxMachineCode& code)
    : m_code(code),
      m_values(code.variables.size()),
      m_homes(code.variables.size())
{
    for (std::uint32_t i = 0; i < code.variables.size(); ++i) {
        const QxStorage& storage = code.variables[i];
        if (storage.kind == Kind::Reference || storage.kind == Kind::Alias)
            m_references.push_back(i);
        if (storage.kind == Kind::Local && storage.size > 1 && storage.stored != QxStored::Text)
            m_arrays.push_back(i);
        if (storage.kind == Kind::Parameter)
            m_parameters.push_back(i);
        if (storage.kind == Kind::Predefined)
            m_predefined.push_back({i, k_offsets[storage.number]});
        if (storage.kind == Kind::Ng)
            m_predefined.push_back({i, offsetof(QxHiddenVariables, Ng)});
        if (storage.kind != Kind::Constant)
            continue;
        const QxConstant& constant = code.constants[storage.number];
        // Constants are never written; the translation ensures that.
        const void* place = constant.numbers;
        if (storage.stored == QxStored::Text)
            place = &constant.text;
        else if (storage.stored == QxStored::Flag)
            place = &constant.flag;
        m_values[i] = m_homes[i] = const_cast<void*>(place);
    }
}

QxMachineStore::~QxMachineStore()
{
    FreeTexts();
}

std::size_t QxMachineStore::BytesOf(const QxStorage& storage, std::size_t points)
{
    // A reference also has a dummy element, for use before it is bound.
    const std::size_t pointer = storage.kind == Kind::Reference ? sizeof(void*) : 0;
    return PlacesOf(storage, points) * (storage.size * QxBytesOf(storage.stored) + pointer) + k_gap;
}

void QxMachineStore::Start(std::size_t points, std::vector<QxVar>& variables,
                           std::size_t memoryLimit)
{
    FreeTexts();
    if (points != m_points)
        Allocate(points, memoryLimit);
    for (const std::uint32_t i : m_parameters)
        m_values[i] = m_homes[i] = variables[m_code.variables[i].number].Value();
    ResetReferences();
    Clear(m_arrays);
}

/// Computes in floating point, where sums and products of hostile numbers cannot wrap around.
void QxMachineStore::CheckMemory(std::size_t points, std::size_t memoryLimit) const
{
    double bytes =
        static_cast<double>(m_code.depth) * k_qxMachineStrip * sizeof(QxStopAndBool);  // masks
    for (const QxStorage& storage : m_code.variables)
        if (IsOwn(storage.kind))
            bytes += static_cast<double>(PlacesOf(storage, points)) * storage.size *
                         static_cast<double>(QxBytesOf(storage.stored)) +
                     k_gap;
    if (bytes > static_cast<double>(memoryLimit))
        throw QxHostError("The variables of a grid of " + std::to_string(points) +
                          " points need more memory than the limit of " +
                          std::to_string(memoryLimit) + " bytes");
}

void QxMachineStore::Allocate(std::size_t points, std::size_t memoryLimit)
{
    CheckMemory(points, memoryLimit);
    m_points = 0;
    m_texts.clear();
    m_zeros.clear();
    std::size_t bytes = 0;
    const auto padded = [&](const QxStorage& storage) {
        return (BytesOf(storage, points) + k_alignment - 1) / k_alignment * k_alignment;
    };
    for (const QxStorage& storage : m_code.variables)
        bytes += IsOwn(storage.kind) ? padded(storage) : 0;
    bytes = std::max(bytes, k_alignment);
    m_block.reset();
    m_block.reset(static_cast<char*>(std::aligned_alloc(k_alignment, bytes)));
    if (!m_block)
        throw QxHostError("There is no memory for the variables of a grid of " +
                          std::to_string(points) + " points");
    std::memset(m_block.get(), 0, bytes);
    char* place = m_block.get();
    for (std::uint32_t i = 0; i < m_values.size(); ++i) {
        const QxStorage& storage = m_code.variables[i];
        if (!IsOwn(storage.kind))
            continue;
        m_values[i] = m_homes[i] = place;
        place += padded(storage);
        if (storage.kind == Kind::Local && storage.stored == QxStored::Text)
            m_texts.emplace_back(i, storage.size * (storage.varying ? points : 1));
    }
    m_points = points;
}

void QxMachineStore::FreeTexts()
{
    for (const auto& [variable, count] : m_texts) {
        auto** const texts = static_cast<char**>(m_homes[variable]);
        for (std::size_t i = 0; i < count; ++i) {
            std::free(texts[i]);
            texts[i] = nullptr;
        }
    }
}

void QxMachineStore::ResetReferences()
{
    for (const std::uint32_t number : m_references) {
        const QxStorage& storage = m_code.variables[number];
        m_values[number] = m_homes[number];
        if (storage.kind != Kind::Reference)
            continue;
        auto** const elements = static_cast<void**>(m_homes[number]);
        char* const own = static_cast<char*>(m_homes[number]) + m_points * sizeof(void*);
        for (std::size_t i = 0; i < m_points; ++i)
            elements[i] = own + i * QxBytesOf(storage.stored);
    }
}

void QxMachineStore::Clear(const std::vector<std::uint32_t>& locals)
{
    for (const std::uint32_t number : locals) {
        const QxStorage& storage = m_code.variables[number];
        const std::size_t places = storage.varying ? m_points : 1;
        std::memset(m_homes[number], 0, places * storage.size * QxBytesOf(storage.stored));
    }
}

void QxMachineStore::BindStrip(const QxCode& brackets, unsigned int first)
{
    for (std::uint32_t k = 0; k < brackets.count; ++k) {
        const QxOperand& operand = brackets.operands[k];
        m_values[operand.variable] = QxBaseOf(static_cast<char*>(m_homes[operand.variable]),
                                              first * QxBytesOf(operand.stored));
    }
}

void* QxMachineStore::Zeros()
{
    if (m_zeros.empty())
        m_zeros.assign(m_points, {0, 0, 0});
    return m_zeros.data();
}

void QxMachineStore::Bind(const QxHiddenVariables& h, const QxVector3& eye)
{
    m_eye = eye;
    for (const auto& [variable, offset] : m_predefined) {
        void* member = &m_eye;
        if (offset != k_eye)
            std::memcpy(&member, reinterpret_cast<const char*>(&h) + offset, sizeof(member));
        m_values[variable] = m_homes[variable] = member ? member : Zeros();
    }
}
