#pragma once

#include <deque>

#include "backends/SlcCText.h"
#include "support/SlcPtr.h"

class SlcFuncDSOSymbolEntry;

/// Writes the support code for shadeop calls in a C++ file: the tables of open libraries and of
/// functions, and the two functions that fill and clear them.
class SlcCShadeopTables : private SlcCText {
public:
    using Functions = std::deque<SlcPtr<SlcFuncDSOSymbolEntry>>;

    /// `functions` are those that the shader calls; they must outlive the writer.
    SlcCShadeopTables(SlcText& out, const Functions& functions)
        : SlcCText(out),
          m_functions(functions)
    {
    }

    /// Writes the tables, and the function that opens the libraries and fills the tables when it is
    /// first called.
    void GenInitDSO();
    /// Writes the function whose first call runs the cleanup functions of the libraries and closes
    /// them. The tables must precede it in the file.
    void GenCleanupDSO();

private:
    void GenShadeopTables();
    void GenNeeds();
    void GenOpenLibrary(const SlcFuncDSOSymbolEntry& library);
    void GenFindShadeop(const SlcFuncDSOSymbolEntry& function);

    const Functions& m_functions;
};
