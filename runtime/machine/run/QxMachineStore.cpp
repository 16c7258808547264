// A run owns one block of memory, divided among its locals; parameters and predefined variables
// stay in the host's memory, constants in that of the program. Each variable has two addresses:
// `m_homes` is its own memory, `m_values` its current address. The addresses differ only for
// variables that are re-bound while code runs: aliases of elements, locals with room for one strip,
// and L, Cl and Ol in a loop over lights. A predefined variable that the host did not set is an
// array of zeros at first.
//
// A varying reference is an array of addresses, one per point, followed by dummy elements that it
// refers to before it is bound, so that code that uses it too early does no harm.
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

/// The offset that stands for the eye, which is not a member of `QxHiddenVariables`.
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

/// Returns the bytes of the block that a variable takes; 0 if its values are elsewhere. The sum of
/// all variables fits into 64 bits: the verifier limits the variables of a file, and a grid has
/// fewer than 2^32 points.
std::uint64_t BytesOf(const QxStorage& storage, std::size_t points)
{
    if (!IsOwn(storage.kind))
        return 0;
    // A reference has an address for each point, in addition to the dummy elements.
    const std::uint64_t pointer = storage.kind == Kind::Reference ? sizeof(void*) : 0;
    const std::uint64_t bytes =
        PlacesOf(storage, points) *
            (std::uint64_t{storage.size} * QxBytesOf(storage.stored) + pointer) +
        k_gap;
    return (bytes + k_alignment - 1) / k_alignment * k_alignment;
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

void QxMachineStore::Start(std::size_t points, std::vector<QxVar>& variables,
                           std::size_t memoryLimit)
{
    FreeTexts();
    m_memoryLimit = memoryLimit;
    if (points != m_points)
        Allocate(points);
    else
        CheckMemory(points, m_bytes + std::uint64_t{m_zeros.size()} * points * sizeof(QxVector3));
    for (const std::uint32_t i : m_parameters)
        m_values[i] = m_homes[i] = variables[m_code.variables[i].number].Value();
    ResetReferences();
    Clear(m_arrays);
}

void QxMachineStore::CheckMemory(std::size_t points, std::uint64_t bytes) const
{
    const std::uint64_t masks =
        std::uint64_t{m_code.depth} * k_qxMachineStrip * sizeof(QxStopAndBool);
    if (bytes + masks > m_memoryLimit)
        throw QxHostError("The variables of a grid of " + std::to_string(points) +
                          " points need more memory than the limit of " +
                          std::to_string(m_memoryLimit) + " bytes");
}

void QxMachineStore::Allocate(std::size_t points)
{
    std::uint64_t bytes = 0;
    for (const QxStorage& storage : m_code.variables)
        bytes += BytesOf(storage, points);
    CheckMemory(points, bytes);
    m_points = 0;
    m_texts.clear();
    m_zeros.clear();
    m_bytes = std::max<std::uint64_t>(bytes, k_alignment);
    m_block.reset();
    m_block.reset(
        static_cast<char*>(std::aligned_alloc(k_alignment, static_cast<std::size_t>(m_bytes))));
    if (!m_block)
        throw QxHostError("There is no memory for the variables of a grid of " +
                          std::to_string(points) + " points");
    std::memset(m_block.get(), 0, static_cast<std::size_t>(m_bytes));
    char* place = m_block.get();
    for (std::uint32_t i = 0; i < m_values.size(); ++i) {
        const QxStorage& storage = m_code.variables[i];
        if (!IsOwn(storage.kind))
            continue;
        m_values[i] = m_homes[i] = place;
        place += BytesOf(storage, points);
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

void* QxMachineStore::Zeros(std::size_t array)
{
    if (array >= m_zeros.size()) {
        CheckMemory(m_points, m_bytes + std::uint64_t{array + 1} * m_points * sizeof(QxVector3));
        m_zeros.resize(array + 1);
    }
    if (array != k_onlyRead || m_zeros[array].empty())
        m_zeros[array].assign(m_points, {0, 0, 0});
    return m_zeros[array].data();
}

void QxMachineStore::Bind(const QxHiddenVariables& h, const QxVector3& eye)
{
    m_eye = eye;
    std::size_t array = k_onlyRead;
    for (const auto& [variable, offset] : m_predefined) {
        void* member = &m_eye;
        if (offset != k_eye)
            std::memcpy(&member, reinterpret_cast<const char*>(&h) + offset, sizeof(member));
        if (!member)
            member = Zeros(m_code.variables[variable].written ? ++array : k_onlyRead);
        m_values[variable] = m_homes[variable] = member;
    }
}

void QxMachineStore::BindWithoutGrid(const QxVector3& eye)
{
    m_eye = eye;
    m_single.assign(m_predefined.size(), {0, 0, 0});
    for (std::size_t i = 0; i < m_predefined.size(); ++i) {
        const auto [variable, offset] = m_predefined[i];
        m_values[variable] = m_homes[variable] = offset == k_eye ? &m_eye : &m_single[i];
    }
}
