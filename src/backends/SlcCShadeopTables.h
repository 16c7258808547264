#pragma once

#include <deque>

#include "backends/SlcCText.h"
#include "support/SlcPtr.h"

class SlcFuncDSOSymbolEntry;

/// Writes what a C++ file needs to call shadeops: the tables of open libraries and of functions,
/// and the two functions that fill and clear them.
class SlcCShadeopTables : private SlcCText {
public:
    using Functions = std::deque<SlcPtr<SlcFuncDSOSymbolEntry>>;

    /// `functions`: those that the shader calls, which outlive the writer.
    SlcCShadeopTables(std::ostream& out, const Functions& functions)
        : SlcCText(out),
          m_functions(functions)
    {
    }

    /// The tables, and the function that opens the libraries and fills the tables, once.
    void GenInitDSO();
    /// The function that runs the libraries' cleanup functions and closes them. It must follow the
    /// tables.
    void GenCleanupDSO();

private:
    void GenShadeopTables();
    void GenNeeds();
    void GenOpenLibrary(const SlcFuncDSOSymbolEntry& library);
    void GenFindShadeop(const SlcFuncDSOSymbolEntry& function);

    const Functions& m_functions;
};
