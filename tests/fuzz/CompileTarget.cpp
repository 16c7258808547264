// The whole compile of a preprocessed text, into both outputs, within this process.
//
// A digit in front of the text, which no shader begins with, chooses the optimization level, and
// from 4 on the strict rules too.

#include <cstdio>
#include <exception>
#include <iostream>
#include <memory>
#include <sstream>
#include <streambuf>

#include "backends/SlcGenByteCode.h"
#include "backends/SlcGenCCode.h"
#include "driver/SlcCommandLine.h"
#include "frontend/SlcParseCode.h"
#include "fuzz/FuzzTarget.h"
#include "icode/SlcInterForm.h"
#include "semantics/SlcDeleteTree.h"
#include "semantics/SlcSemantics.h"
#include "support/SlcDiagnostics.h"
#include "support/reports/SlcSemanticError.h"

namespace {

constexpr int k_overlongToken = 2;  // the one exit status that is a report

/// The compiler asked for the end of the process.
struct ExitAsked {
    int status;
};

bool g_isCompiling = false;

/// Keeps the end of what is written to standard error: where the process was ended stands there.
class LastReports : public std::streambuf {
public:
    LastReports() : m_before(std::cerr.rdbuf(this)) {}
    ~LastReports() override { std::cerr.rdbuf(m_before); }
    LastReports(const LastReports&) = delete;
    LastReports& operator=(const LastReports&) = delete;

    [[nodiscard]] const std::string& Text() const { return m_text; }

protected:
    int_type overflow(int_type c) override
    {
        const char character = traits_type::to_char_type(c);
        xsputn(&character, 1);
        return c;
    }

    std::streamsize xsputn(const char* text, std::streamsize size) override
    {
        constexpr std::size_t kept = 1000;
        m_text.append(text, static_cast<std::size_t>(size));
        if (m_text.size() > 2 * kept)
            m_text.erase(0, m_text.size() - kept);
        return size;
    }

private:
    std::streambuf* m_before;
    std::string m_text;
};

SlcOptionsControl Options(char digit, bool shared)
{
    SlcOptionsControl options;
    const int choice = digit - '0';
    SetOptimizationLevel(choice % 4, options);
    options.m_strict = choice >= 4;
    options.m_generateDSO = shared;
    // As the command line has it: byte-code knows no temporaries of another detail.
    options.m_convertTmpVarDetail = options.m_convertTmpVarDetail && shared;
    return options;
}

void Write(SlcInterForm& form, bool shared)
{
    std::ostringstream out;
    if (shared)
        SlcGenCCode(form.m_errors, &form.m_options, out).GenCCode(form);
    else
        SlcGenByteCode(form.m_errors, out).GenByteCode(form);
    if (!form.m_errors->NoError())
        throw SlcCompilationError();
}

void RunStages(std::string_view text, SlcOptionsControl& options,
               std::unique_ptr<SlcDefinitionsNode>& tree)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(
        ::fmemopen(const_cast<char*>(text.data()), text.size(), "r"), &std::fclose);
    tree = ParseCode(file.get(), options.m_strict);
    SlcSemantics(tree.get(), options);
    SlcInterForm form(options);
    form.GenInterForm(tree.get());
    form.Optimize();
    Write(form, options.m_generateDSO);
}

void Compile(std::string_view text, SlcOptionsControl options)
{
    const LastReports reports;
    std::unique_ptr<SlcDefinitionsNode> tree;
    g_isCompiling = true;
    try {
        RunStages(text, options, tree);
        g_isCompiling = false;
        if (NbErrors() != 0)
            FuzzFault("accepted with errors: " + reports.Text());
    } catch (const SlcCompilationError&) {
        if (NbErrors() == 0)
            FuzzFault("refused without an error: " + reports.Text());
    } catch (const ExitAsked& end) {
        if (end.status != k_overlongToken)
            FuzzFault("fatal: " + reports.Text());
    } catch (const std::exception& fault) {
        FuzzFault(std::string("uncaught ") + fault.what() + ": " + reports.Text());
    }
    g_isCompiling = false;
    SlcDeleteTree()(tree.get());
}

}  // namespace

// The linker puts these in the place of `exit`, by which the compiler ends where it gives up.
extern "C" {
[[noreturn]] void __real_exit(int status);
[[noreturn]] void __wrap_exit(int status)
{
    if (g_isCompiling)
        throw ExitAsked{status};
    __real_exit(status);
}
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view text(reinterpret_cast<const char*>(data), size);
    char digit = '2';
    if (!text.empty() && text.front() >= '0' && text.front() <= '7') {
        digit = text.front();
        text.remove_prefix(1);
    }
    if (text.empty())  // the library opens no file of no bytes
        return 0;
    SetWarningLevel(2);
    for (const bool shared : {false, true})
        Compile(text, Options(digit, shared));
    return 0;
}
