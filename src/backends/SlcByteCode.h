#pragma once

#include <map>
#include <string>
#include <string_view>

/// The numbers of instructions that are written without a look-up: the marks of control flow and
/// what has no primitive of its own.
enum class SlcByteCodeMark : short {
    Goto = 432,
    BeginIlluminance = 433,
    EndIlluminance = 434,
    BeginParallel = 435,
    EndParallel = 436,
    IfTrue = 437,
    IfFalse = 438,
    IfTrueGoto = 439,
    IfFalseGoto = 440,
    SetBool = 441,
    EvalLightsForP = 442,
    ResetEvalLightsForP = 443,
    ArrayRef = 445,
    CheckValidArrayIndex = 446,
    EndIf = 454,
    CallDSO = 459,
    ConvertArrayDSOTo = 460,
    ConvertArrayDSOFrom = 461,
};

/// The vocabulary of compiled shaders: the number of each instruction by its name.
class SlcByteCode {
public:
    struct Row {
        const char* name;
        short number;
    };

    SlcByteCode();

    /// The number of an instruction. A name that is not in the table is a fault of the compiler,
    /// and fatal.
    [[nodiscard]] short GetInstrNb(const std::string& name) const;

    /// The name of a number, also of a mark; empty for one that is not assigned.
    [[nodiscard]] static std::string_view GetName(int number);

    static const Row sm_theByteCodes[];  // ended by a null name; in no order of numbers
    static const Row sm_marks[];         // names of the marks, which have no row; the same end

    static constexpr int k_highestNumber = 521;

private:
    std::map<std::string, short, std::less<>> m_numbers;
};
