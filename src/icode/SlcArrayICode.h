#pragma once

#include <string>

#include "icode/SlcICode.h"

/// Bounds check: reports an index outside the array at run time. The lowering emits one before each
/// access `w[i]`, read or write, unless `--no-array-check` or an optimization level above 2
/// disables checks. The access itself is the same with and without the check.
class SlcCheckValidArrayIndexICode : public SlcICodeOf<SlcCheckValidArrayIndexICode, SlcICode> {
public:
    /// Makes string constants of the array's name and the file's name. `index` is a float, which is
    /// truncated to a whole number; `size` is the length of the array; `fileName` and `line` are
    /// the place in the source.
    SlcCheckValidArrayIndexICode(const std::string& arrayName, SlcOperand index, int size, int line,
                                 const std::string* fileName);

    SlcOperand m_arrayName;
    SlcOperand m_index;
    int m_size;
    int m_line;
    SlcOperand m_fileName;
};

/// result = a reference to the element: reads and writes through it access the array.
///
/// The type of result is a reference to the element type. The reference keeps referring to the
/// element that index selected when the instruction ran. A varying index yields one reference per
/// point, which is valid only inside the parallel run that contains the instruction.
class SlcArrayRefICode : public SlcICodeOf<SlcArrayRefICode, SlcICode> {
public:
    SlcArrayRefICode(SlcOperand result, SlcOperand array, SlcOperand index)
        : m_result(std::move(result)),
          m_array(std::move(array)),
          m_index(std::move(index))
    {
    }

    SlcOperand m_result;
    SlcOperand m_array;
    SlcOperand m_index;
};
