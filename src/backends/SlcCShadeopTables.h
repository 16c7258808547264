#pragma once

#include <deque>

#include "backends/SlcCText.h"
#include "support/SlcPtr.h"

class SlcFuncDSOSymbolEntry;

/// Writes the support code for shadeop calls in a C++ file: the tables of open libraries and of
/// functions, the function that opens the libraries and fills the tables, and the one that cleans
/// up and closes the libraries.
class SlcCShadeopTables : private SlcCText {
public:
    using Functions = std::deque<SlcPtr<SlcFuncDSOSymbolEntry>>;

    /// `functions` lists the shadeops that the shader calls. The list and `out` must outlive the
    /// writer.
    SlcCShadeopTables(SlcText& out, const Functions& functions)
        : SlcCText(out),
          m_functions(functions)
    {
    }

    /// Writes the tables, then, if there are shadeops, data from which a program can read which
    /// libraries and functions the shader needs, and last the function that opens the libraries and
    /// fills the tables when it is first called.
    void GenInitDSO();
    /// Writes the function whose first call runs the cleanup functions of the shadeops and closes
    /// their libraries. The tables must precede it in the file.
    void GenCleanupDSO();

private:
    void GenShadeopTables();
    void GenNeeds();
    void GenOpenLibrary(const SlcFuncDSOSymbolEntry& library);
    void GenFindShadeop(const SlcFuncDSOSymbolEntry& function);

    const Functions& m_functions;
};
