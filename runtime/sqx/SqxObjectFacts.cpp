// The data contain lines of numbers about the code, then a byte-code file with an empty main block,
// which `SqxReader` reads. docs/generated-code.md describes the format.
//
// Tested by tests/listing, also with malicious data, and by tests/host/HostTest.cpp.

#include "sqx/SqxObjectFacts.h"

#include <algorithm>

#include "sqx/SqxCursor.h"
#include "sqx/SqxReader.h"

namespace {

constexpr int k_version = 1;

}  // namespace

SqxObjectFacts::SqxObjectFacts(const SqxElfFile& file)
{
    const SqxElfFile::Bytes data = file.Section(k_section);
    const auto end = std::find(data.begin(), data.end(), std::byte{0});
    // If several shaders are linked into one file, their facts cannot be assigned to them.
    const bool isOne = std::all_of(end, data.end(), [](std::byte b) { return b == std::byte{0}; });
    if (data.empty() || !isOne)
        return;
    m_state = Read({reinterpret_cast<const char*>(data.data()),
                    static_cast<std::size_t>(end - data.begin())})
                  ? State::Whole
                  : State::Damaged;
}

bool SqxObjectFacts::Read(std::string_view text)
{
    SqxCursor cursor(text);
    cursor.Enter("facts");
    try {
        if (const int version = cursor.ReadCountLine("Version"); version != k_version)
            cursor.FailAt(1, "Version " + std::to_string(version) + " is not known");
        m_usesLights = cursor.ReadBoolLine("Light flag");
        m_hasLightStatement = cursor.ReadBoolLine("Light statement flag");
        // No memory is reserved for a count that the file claims.
        for (int count = cursor.ReadCountLine("Number of uses"); count > 0; --count) {
            const bool read = cursor.ReadBool("Read flag");
            m_uses.push_back({read, cursor.ReadBoolLine("Write flag")});
        }
    } catch (const SqxMalformed&) {
        m_message = cursor.Message();
        m_faultLine = cursor.FaultLine();
        m_uses.clear();
        return false;
    }
    SqxReader reader;
    const bool isWhole = reader.Read(cursor.Rest());
    m_message = reader.Message();
    m_faultLine = reader.FaultLine();
    m_shader = reader.TakeShader();
    if (isWhole && m_uses.size() != m_shader.predefinedCount) {
        m_message = "Uses are given of " + std::to_string(m_uses.size()) +
                    " predefined variables, but there are " +
                    std::to_string(m_shader.predefinedCount);
        m_faultLine = 1;
    }
    const bool fits = m_uses.size() == m_shader.predefinedCount;
    m_uses.resize(m_shader.predefinedCount);
    return isWhole && fits;
}
