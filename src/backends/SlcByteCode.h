#pragma once

#include <string_view>

#include "sqx/SqxNumbers.h"

/// The number of each instruction by its name, for the writer. The table itself is kept with the
/// reader, which shares it.
class SlcByteCode {
public:
    /// The number of an instruction. A name that is not in the table is a fault of the compiler,
    /// and fatal.
    [[nodiscard]] static short GetInstrNb(std::string_view name);

    static constexpr const SqxNumberRow* sm_theByteCodes = k_sqxNumbers;  // ended by a null name
};
