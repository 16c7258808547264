#pragma once

#include <map>
#include <string>

#include "sqx/SqxNumbers.h"

/// The number of each instruction by its name, for the writer.
class SlcByteCode {
public:
    SlcByteCode();

    /// The number of an instruction. A name that is not in the table is a fault of the compiler,
    /// and fatal.
    [[nodiscard]] short GetInstrNb(const std::string& name) const;

    static constexpr const SqxNumberRow* sm_theByteCodes = k_sqxNumbers;  // ended by a null name

private:
    std::map<std::string, short, std::less<>> m_numbers;
};
