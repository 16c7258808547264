#include "backends/SlcByteCode.h"

#include "support/SlcDiagnostics.h"

SlcByteCode::SlcByteCode()
{
    for (const SqxNumberRow* row = sm_theByteCodes; row->name; ++row)
        m_numbers.emplace(row->name, row->number);
}

short SlcByteCode::GetInstrNb(const std::string& name) const
{
    const auto found = m_numbers.find(name);
    if (found == m_numbers.end())
        FatalError("Function unknown (in SlcByteCode::GetInstrNb) " + name);
    return found->second;
}
