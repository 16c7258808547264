#pragma once

#include <string>

#include "icode/SlcICode.h"

/// Reports at run time an index outside the array. It stands in front of each `w[i]`, read or
/// written, unless `--no-array-check` or a level above 2 leaves it out; the access follows as it
/// would without.
class SlcCheckValidArrayIndexICode : public SlcICodeOf<SlcCheckValidArrayIndexICode, SlcICode> {
public:
    /// Makes the string constants of the array's name and of the file's. `index` is a float, which
    /// is cut to a whole number; `size` the length of the array; `fileName` and `line` the place in
    /// the source.
    SlcCheckValidArrayIndexICode(const std::string& arrayName, SlcOperand index, int size, int line,
                                 const std::string* fileName);

    SlcOperand m_arrayName;
    SlcOperand m_index;
    int m_size;
    int m_line;
    SlcOperand m_fileName;
};

/// result = a reference to the element: reads and writes of it reach the array.
///
/// The type of result is a reference to the type of the elements. It refers to what index said
/// then: an index that varies makes of it a reference for each point, which holds inside the block
/// that it stands in.
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
