#pragma once

#include <string>

#include "icode/SlcICode.h"

/// Reports at run time an index outside the array.
class SlcCheckValidArrayIndexICode : public SlcICodeOf<SlcCheckValidArrayIndexICode, SlcICode> {
public:
    /// Makes the string constants of the array's name and of the file's.
    SlcCheckValidArrayIndexICode(const std::string& arrayName, SlcOperand index, int size, int line,
                                 const std::string* fileName);

    SlcOperand m_arrayName;
    SlcOperand m_index;
    int m_size;
    int m_line;
    SlcOperand m_fileName;
};

/// result = a reference to the element: reads and writes of it reach the array.
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
